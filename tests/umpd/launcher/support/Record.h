#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

namespace quillpress::harness {

// The record in the shared memory, byte by byte.
using Record = std::array<unsigned char, 1303>;

struct Field {
  std::size_t offset;
  std::size_t size;
};

namespace field {
inline constexpr Field kHeader{0, 3};
inline constexpr Field kCommand{3, 260};
inline constexpr Field kPrinterName{263, 260};
inline constexpr Field kOutputPath{523, 260};
inline constexpr Field kDocumentName{783, 260};
inline constexpr Field kReserved{1043, 260};
}  // namespace field

inline std::string bytesOf(const Record& record, Field field) {
  return {record.begin() + static_cast<std::ptrdiff_t>(field.offset),
          record.begin() + static_cast<std::ptrdiff_t>(field.offset + field.size)};
}

// Up to the first zero; the whole field when it has none.
inline std::string textOf(const Record& record, Field field) {
  const std::string bytes = bytesOf(record, field);
  return bytes.substr(0, bytes.find('\0'));
}

// What a field holds that was cleared and then given a text.
inline std::string padded(std::string text, Field field) {
  text.resize(field.size, '\0');
  return text;
}

inline void setText(Record& record, Field field, const std::string& text) {
  const std::string bytes = padded(text, field);
  std::copy(bytes.begin(), bytes.end(), record.begin() + static_cast<std::ptrdiff_t>(field.offset));
}

}  // namespace quillpress::harness
