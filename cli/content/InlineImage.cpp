#include "cli/content/InlineImage.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "cli/base/TextScan.h"

namespace quillpress::cli {

namespace {

// How the converter writes the operators around the data.
constexpr std::string_view kDataBegin = "\nID\n";
constexpr std::string_view kDataEnd = "\nEI\n";

// The entries of an inline image's dictionary that say how much data there must be.
struct Dimensions {
  std::uint64_t width = 0;
  std::uint64_t height = 0;
  std::uint64_t bits = 1;
  std::uint64_t components = 1;
  bool isMask = false;
};

std::uint64_t numberIn(std::string_view word) {
  std::uint32_t number = 0;
  std::from_chars(word.data(), word.data() + word.size(), number);
  return number;
}

// The short names of inline images, as the converter writes them.
std::uint64_t componentsOf(std::string_view space) {
  if (space == "/RGB") return 3;
  return space == "/CMYK" ? 4 : 1;
}

Dimensions readDimensions(std::string_view dictionary) {
  Dimensions result;
  while (!dictionary.empty()) {
    const std::string_view key = takeWord(dictionary);
    if (key == "/W") result.width = numberIn(takeWord(dictionary));
    if (key == "/H") result.height = numberIn(takeWord(dictionary));
    if (key == "/BPC") result.bits = numberIn(takeWord(dictionary));
    if (key == "/CS") result.components = componentsOf(takeWord(dictionary));
    if (key == "/ImageMask") result.isMask = true;
  }
  return result;
}

// An image was gathered up to this many bytes at least, rows not padded.
std::uint64_t leastLength(const Dimensions& image) {
  // More than 32 bits a component is no image, and would only serve to overflow.
  const std::uint64_t rowBits = image.width * std::min<std::uint64_t>(image.bits, 32) * image.components;
  // Sizes that no converter can have held say nothing.
  if (image.height != 0 && rowBits > UINT64_MAX / image.height) return 0;
  return rowBits * image.height / 8;
}

// A mask is one string of any length, which a driver makes as long as its padded rows.
std::uint64_t usualMaskLength(const Dimensions& mask) {
  return (mask.width + 7) / 8 * mask.height;
}

// The length of the data at the start of `text`, which ends before the line of EI.
std::size_t dataLength(std::string_view text, const Dimensions& image) {
  if (image.isMask) {
    const std::uint64_t usual = usualMaskLength(image);
    // Where the usual length leads to an end, data that looks like one before it is data.
    const auto place = static_cast<std::size_t>(std::min<std::uint64_t>(usual, text.size()));
    const bool fits = usual <= text.size() && text.substr(place).starts_with(kDataEnd);
    return fits ? place : std::min(text.find(kDataEnd), text.size());
  }
  const auto least = static_cast<std::size_t>(std::min<std::uint64_t>(leastLength(image), text.size()));
  return std::min(text.find(kDataEnd, least), text.size());
}

}  // namespace

std::size_t inlineImageLength(std::string_view text) {
  const std::size_t dictionaryEnd = text.find(kDataBegin);
  if (dictionaryEnd == std::string_view::npos) return text.size();
  const Dimensions image = readDimensions(text.substr(0, dictionaryEnd));
  const std::size_t dataBegin = dictionaryEnd + kDataBegin.size();
  const std::size_t dataEnd = dataBegin + dataLength(text.substr(dataBegin), image);
  // The line feed behind EI stays, as the white space before the next token.
  return std::min(dataEnd + kDataEnd.size() - 1, text.size());
}

}  // namespace quillpress::cli
