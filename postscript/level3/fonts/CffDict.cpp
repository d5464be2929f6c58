#include "postscript/level3/fonts/CffDict.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "postscript/level3/fonts/ByteReader.h"
#include "postscript/level3/fonts/ByteWriter.h"

namespace quillpress::level3 {

namespace {

// The format allows 48.
constexpr std::size_t kMostDictOperands = 513;

constexpr std::array<std::string_view, 16> kNibbles{"0", "1", "2", "3", "4",  "5", "6", "7",
                                                    "8", "9", ".", "E", "E-", "",  "-", ""};
constexpr unsigned kEndNibble = 15;

double readReal(ByteReader& reader) {
  std::string text;
  while (text.size() < 64) {
    const unsigned byte = reader.u8();
    for (const unsigned nibble : {byte >> 4, byte & 15U}) {
      if (nibble == kEndNibble) {
        const double value = std::strtod(text.c_str(), nullptr);
        return std::isfinite(value) ? value : 0;
      }
      text += kNibbles[nibble];
    }
  }
  throw FontError("a number of a CFF dictionary has no end");
}

double readNumber(std::uint8_t first, ByteReader& reader) {
  if (first == 28) return reader.i16();
  if (first == 29) return reader.i32();
  if (first == 30) return readReal(reader);
  if (first <= 246) return first - 139;
  if (first <= 250) return (first - 247) * 256 + reader.u8() + 108;
  return -(first - 251) * 256 - reader.u8() - 108;
}

void appendReal(std::string& bytes, double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.9g", value);
  std::vector<unsigned> nibbles;
  for (const char* at = text; *at != '\0'; ++at) {
    if (*at >= '0' && *at <= '9') nibbles.push_back(static_cast<unsigned>(*at - '0'));
    if (*at == '.') nibbles.push_back(10);
    if (*at == '-') nibbles.push_back(14);
    if (*at != 'e') continue;
    ++at;
    nibbles.push_back(*at == '-' ? 12 : 11);
  }
  nibbles.push_back(kEndNibble);
  if (nibbles.size() % 2 != 0) nibbles.push_back(kEndNibble);
  append8(bytes, 30);
  for (std::size_t i = 0; i < nibbles.size(); i += 2) append8(bytes, nibbles[i] << 4 | nibbles[i + 1]);
}

void appendDictNumber(std::string& bytes, double value) {
  constexpr double kLargest = 2147483647;
  if (value != std::floor(value) || std::abs(value) > kLargest) {
    appendReal(bytes, value);
    return;
  }
  const auto integer = static_cast<std::int32_t>(value);
  const auto distance = static_cast<std::uint32_t>(std::abs(integer));
  if (distance <= 107) {
    append8(bytes, static_cast<std::uint32_t>(integer + 139));
  } else if (distance <= 1131) {
    append16(bytes, (integer > 0 ? 247U << 8 : 251U << 8) + distance - 108);
  } else if (distance <= 32767) {
    append8(bytes, 28);
    append16(bytes, static_cast<std::uint32_t>(integer));
  } else {
    append8(bytes, 29);
    append32(bytes, static_cast<std::uint32_t>(integer));
  }
}

}  // namespace

CffDict::CffDict(std::string_view bytes) {
  ByteReader reader(bytes);
  std::vector<double> operands;
  while (!reader.atEnd()) {
    const std::uint8_t first = reader.u8();
    if (first > 21) {
      if (operands.size() >= kMostDictOperands) throw FontError("a CFF dictionary has too many operands");
      operands.push_back(readNumber(first, reader));
      continue;
    }
    const unsigned key = first == 12 ? 12U << 8 | reader.u8() : first;
    entries_[static_cast<CffKey>(key)] = std::move(operands);
    operands.clear();
  }
}

double CffDict::number(CffKey key, double otherwise) const {
  const auto found = entries_.find(key);
  return found != entries_.end() && !found->second.empty() ? found->second.back() : otherwise;
}

std::size_t CffDict::size(CffKey key, std::size_t index) const {
  const auto found = entries_.find(key);
  if (found == entries_.end() || index >= found->second.size()) return 0;
  const double value = found->second[index];
  return value > 0 && value < 4294967296.0 ? static_cast<std::size_t>(value) : 0;
}

std::span<const double> CffDict::numbers(CffKey key) const {
  const auto found = entries_.find(key);
  if (found == entries_.end()) return {};
  return found->second;
}

std::vector<double> CffDict::sums(CffKey key) const {
  std::vector<double> result;
  double sum = 0;
  for (const double difference : numbers(key)) result.push_back(sum += difference);
  return result;
}

CffDictWriter& CffDictWriter::numbers(CffKey key, std::span<const double> values) {
  for (const double value : values) appendDictNumber(bytes_, std::isfinite(value) ? value : 0);
  finish(key);
  return *this;
}

CffDictWriter& CffDictWriter::differences(CffKey key, std::span<const double> values) {
  if (values.empty()) return *this;
  std::vector<double> differences;
  double before = 0;
  for (const double value : values) {
    differences.push_back(value - before);
    before = value;
  }
  return numbers(key, differences);
}

CffDictWriter& CffDictWriter::places(CffKey key, std::initializer_list<std::size_t> values) {
  for (const std::size_t value : values) {
    append8(bytes_, 29);
    append32(bytes_, static_cast<std::uint32_t>(value));
  }
  finish(key);
  return *this;
}

void CffDictWriter::finish(CffKey key) {
  const auto code = static_cast<std::uint32_t>(key);
  appendBytes(bytes_, code, code > 0xFF ? 2 : 1);
}

}  // namespace quillpress::level3
