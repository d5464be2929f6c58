#include "postscript/level3/fonts/SfntTables.h"

#include <algorithm>

#include "postscript/level3/fonts/ByteReader.h"
#include "postscript/level3/fonts/ByteWriter.h"

namespace quillpress::level3 {

namespace {

constexpr std::size_t kMostTables = 256;
constexpr std::uint32_t kTrueTypeVersion = 0x00010000;
// What the checksum of a whole font file shall be, with the adjustment in `head`.
constexpr std::uint32_t kWholeSum = 0xB1B0AFBA;
constexpr std::size_t kAdjustmentPlace = 8;

std::string joined(const std::vector<std::string>& pieces) {
  std::string bytes;
  for (const std::string& piece : pieces) bytes.append(piece, 0, piece.size() & ~std::size_t{1});
  return bytes;
}

std::uint32_t checksum(std::string_view bytes) {
  std::uint32_t sum = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    sum += static_cast<std::uint32_t>(static_cast<std::uint8_t>(bytes[i])) << (24 - 8 * (i % 4));
  }
  return sum;
}

void replace32(std::string& bytes, std::size_t at, std::uint32_t value) {
  std::string number;
  append32(number, value);
  bytes.replace(at, 4, number);
}

}  // namespace

SfntTables::SfntTables(const std::vector<std::string>& pieces) : bytes_(joined(pieces)) {
  ByteReader reader(bytes_);
  // A collection has its fonts' places first; the first one counts.
  if (bytes_.starts_with("ttcf")) reader = ByteReader(bytes_, ByteReader(bytes_, 12).u32());
  reader.skip(4);
  const std::size_t count = std::min<std::size_t>(reader.u16(), kMostTables);
  reader.skip(6);
  for (std::size_t i = 0; i < count && reader.left() >= 16; ++i) {
    std::string tag(reader.take(4));
    reader.skip(4);
    const std::size_t offset = reader.u32();
    const std::size_t size = reader.u32();
    if (offset >= bytes_.size()) continue;
    places_.emplace(std::move(tag), Place{offset, std::min(size, bytes_.size() - offset)});
  }
}

std::string_view SfntTables::find(std::string_view tag) const {
  const auto found = places_.find(tag);
  if (found == places_.end()) return {};
  return std::string_view(bytes_).substr(found->second.offset, found->second.size);
}

std::string sfntOf(const std::map<std::string, std::string>& tables) {
  const auto count = static_cast<std::uint32_t>(tables.size());
  std::uint32_t power = 1;
  std::uint32_t exponent = 0;
  for (; power * 2 <= count; power *= 2) ++exponent;

  std::string file;
  append32(file, kTrueTypeVersion);
  append16(file, count);
  append16(file, power * 16);
  append16(file, exponent);
  append16(file, (count - power) * 16);

  std::string contents;
  const std::size_t start = 12 + 16 * tables.size();
  std::size_t headPlace = 0;
  for (const auto& [tag, table] : tables) {
    if (tag == "head") headPlace = start + contents.size();
    file += tag;
    append32(file, checksum(table));
    append32(file, static_cast<std::uint32_t>(start + contents.size()));
    append32(file, static_cast<std::uint32_t>(table.size()));
    contents += table;
    contents.append((4 - table.size() % 4) % 4, '\0');
  }
  file += contents;
  if (headPlace != 0) replace32(file, headPlace + kAdjustmentPlace, kWholeSum - checksum(file));
  return file;
}

}  // namespace quillpress::level3
