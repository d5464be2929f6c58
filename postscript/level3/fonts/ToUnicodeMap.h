#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace quillpress::level3 {

// What the codes of a font in a PDF mean, as its ToUnicode stream says it.
class ToUnicodeMap {
 public:
  // codeBytes: 1 for simple fonts, 2 for composite ones.
  explicit ToUnicodeMap(int codeBytes) : codeBytes_(codeBytes) {}

  // The first meaning of a code stays; an empty text is none.
  void add(std::uint32_t code, std::u32string_view text);

  bool isEmpty() const { return texts_.empty(); }

  // The CMap, neighbours joined in ranges.
  std::string cmap() const;

 private:
  int codeBytes_;
  std::map<std::uint32_t, std::u32string> texts_;
};

}  // namespace quillpress::level3
