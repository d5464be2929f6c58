#pragma once

#include <cstddef>
#include <string>

namespace quillpress::harness {

// What one job prints, different for each document, so that a byte in the wrong file shows.
inline constexpr std::size_t kBlockSize = 4096;

inline std::string blockOf(const std::wstring& documentName, std::size_t block) {
  std::string bytes;
  bytes.reserve(kBlockSize);
  for (std::size_t i = 0; i < kBlockSize; ++i) {
    const auto letter = static_cast<std::size_t>(documentName[i % documentName.size()]);
    bytes += static_cast<char>((letter + 31 * block + i / documentName.size()) % 256);
  }
  return bytes;
}

}  // namespace quillpress::harness
