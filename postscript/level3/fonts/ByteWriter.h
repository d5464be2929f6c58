#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace quillpress::level3 {

// Appends the low bytes of a number, high byte first.
inline void appendBytes(std::string& bytes, std::uint32_t value, std::size_t size) {
  for (std::size_t i = size; i > 0; --i) bytes.push_back(static_cast<char>(value >> (8 * (i - 1)) & 0xFF));
}

inline void append8(std::string& bytes, std::uint32_t value) {
  appendBytes(bytes, value, 1);
}
inline void append16(std::string& bytes, std::uint32_t value) {
  appendBytes(bytes, value, 2);
}
inline void append32(std::string& bytes, std::uint32_t value) {
  appendBytes(bytes, value, 4);
}

}  // namespace quillpress::level3
