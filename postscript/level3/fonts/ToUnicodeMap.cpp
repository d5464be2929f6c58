#include "postscript/level3/fonts/ToUnicodeMap.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace quillpress::level3 {

namespace {

// In one operator of a CMap.
constexpr std::size_t kMostEntries = 100;

void appendHex(std::string& text, std::uint32_t value, int digits) {
  char buffer[16];
  std::snprintf(buffer, sizeof buffer, "%0*X", digits, value);
  text += buffer;
}

std::string hexCode(std::uint32_t code, int bytes) {
  std::string text = "<";
  appendHex(text, code, 2 * bytes);
  return text += ">";
}

// In UTF-16, high byte first.
std::string hexText(const std::u32string& characters) {
  std::string text = "<";
  for (const char32_t character : characters) {
    if (character < 0x10000) {
      appendHex(text, character, 4);
    } else {
      appendHex(text, 0xD800 + ((character - 0x10000) >> 10), 4);
      appendHex(text, 0xDC00 + ((character - 0x10000) & 0x3FF), 4);
    }
  }
  return text += ">";
}

struct CodeRange {
  std::uint32_t first;
  std::uint32_t last;
  std::u32string text;
};

// Whether a code and its text go on where the range ends. Neither may carry into the next higher byte: only
// the last byte is counted up.
bool continues(const CodeRange& range, std::uint32_t code, const std::u32string& text) {
  const std::uint32_t step = code - range.first;
  if (code != range.last + 1 || (code & 0xFF) == 0 || text.size() != 1 || range.text.size() != 1)
    return false;
  const std::uint32_t first = range.text[0];
  return text[0] == first + step && (first & 0xFF) + step <= 0xFF;
}

void appendSection(std::string& cmap, const std::vector<std::string>& entries, const char* name) {
  for (std::size_t done = 0; done < entries.size(); done += kMostEntries) {
    const std::size_t count = std::min(kMostEntries, entries.size() - done);
    cmap += std::to_string(count) + " begin" + name + "\n";
    for (std::size_t i = done; i < done + count; ++i) cmap += entries[i] + "\n";
    cmap += std::string("end") + name + "\n";
  }
}

}  // namespace

void ToUnicodeMap::add(std::uint32_t code, std::u32string_view text) {
  if (!text.empty()) texts_.emplace(code, text);
}

std::string ToUnicodeMap::cmap() const {
  std::vector<CodeRange> ranges;
  for (const auto& [code, text] : texts_) {
    if (!ranges.empty() && continues(ranges.back(), code, text)) {
      ranges.back().last = code;
    } else {
      ranges.push_back({code, code, text});
    }
  }
  std::vector<std::string> singles;
  std::vector<std::string> rows;
  for (const CodeRange& range : ranges) {
    if (range.first == range.last) {
      singles.push_back(hexCode(range.first, codeBytes_) + hexText(range.text));
    } else {
      rows.push_back(hexCode(range.first, codeBytes_) + hexCode(range.last, codeBytes_) +
                     hexText(range.text));
    }
  }
  std::string cmap =
      "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n/CIDSystemInfo <</Registry (Adobe) "
      "/Ordering (UCS) /Supplement 0>> def\n/CMapName /Adobe-Identity-UCS def\n/CMapType 2 def\n1 "
      "begincodespacerange\n";
  cmap +=
      hexCode(0, codeBytes_) + hexCode(codeBytes_ == 1 ? 0xFF : 0xFFFF, codeBytes_) + "\nendcodespacerange\n";
  appendSection(cmap, singles, "bfchar");
  appendSection(cmap, rows, "bfrange");
  return cmap + "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";
}

}  // namespace quillpress::level3
