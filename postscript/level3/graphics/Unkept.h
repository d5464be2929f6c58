#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace quillpress::level3 {

// What a job may ask for and a PDF page does not show.
enum class Unkept : std::uint8_t {
  kText,
  kHalftone,
  kTransferFunction,
  kBlackGeneration,
  kColorRendering,
  kPdfMark,
  kCount,
};

// Counts what was not kept, for one warning line at the end.
class UnkeptCounter {
 public:
  void add(Unkept kind) { ++counts_[static_cast<std::size_t>(kind)]; }
  std::uint64_t count(Unkept kind) const { return counts_[static_cast<std::size_t>(kind)]; }

  // "text shown (12 times), halftones (3 times)"; empty when all was kept.
  std::string summary() const;

 private:
  std::array<std::uint64_t, static_cast<std::size_t>(Unkept::kCount)> counts_{};
};

}  // namespace quillpress::level3
