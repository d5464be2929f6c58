#include "cli/job/DosEps.h"

namespace quillpress::cli {

namespace {

// Little-endian numbers of four bytes follow: offset and length of the PostScript, of a metafile, of a TIFF
// picture.
constexpr std::string_view kMagic = "\xC5\xD0\xD3\xC6";
constexpr std::size_t kOffsetPlace = 4;
constexpr std::size_t kLengthPlace = 8;
constexpr std::size_t kNeeded = 12;

std::uint32_t littleEndian(std::string_view bytes, std::size_t place) {
  std::uint32_t value = 0;
  for (std::size_t i = 4; i-- > 0;) value = (value << 8) | static_cast<unsigned char>(bytes[place + i]);
  return value;
}

}  // namespace

FileSection postscriptSection(std::string_view start) {
  // A file that ends within its header is read as text, and refused with the words for that.
  if (start.size() < kNeeded || !start.starts_with(kMagic)) return {};
  const std::uint64_t begin = littleEndian(start, kOffsetPlace);
  return {begin, begin + littleEndian(start, kLengthPlace)};
}

}  // namespace quillpress::cli
