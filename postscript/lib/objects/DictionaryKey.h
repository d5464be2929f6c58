#pragma once

#include <cstdint>
#include <string_view>

namespace quillpress {

// The hash by which dictionaries find a key. A name computes it once, when it is made.
inline std::uint32_t hashOf(std::string_view text) {
  std::uint32_t hash = 2166136261U;  // FNV-1a: cheap for the short names of print jobs
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
  return hash ^ (hash >> 15U);
}

// A key text with its hash. Borrows the text.
struct DictionaryKey {
  DictionaryKey(std::string_view keyText, std::uint32_t keyHash) : text(keyText), hash(keyHash) {}
  explicit DictionaryKey(std::string_view keyText) : DictionaryKey(keyText, hashOf(keyText)) {}

  std::string_view text;
  std::uint32_t hash;
};

}  // namespace quillpress
