#include "postscript/level3/graphics/Unkept.h"

#include <string_view>

namespace quillpress::level3 {

namespace {

constexpr std::array<std::string_view, static_cast<std::size_t>(Unkept::kCount)> kNames{
    "text",    "halftones", "transfer functions", "black generation", "colour rendering dictionaries",
    "pdfmarks"};

}  // namespace

std::string UnkeptCounter::summary() const {
  std::string text;
  for (std::size_t kind = 0; kind < counts_.size(); ++kind) {
    if (counts_[kind] == 0) continue;
    if (!text.empty()) text += ", ";
    text += kNames[kind];
    text += " (" + std::to_string(counts_[kind]) + (counts_[kind] == 1 ? " time)" : " times)");
  }
  return text;
}

}  // namespace quillpress::level3
