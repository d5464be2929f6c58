#include "postscript/level3/operators/Wildcards.h"

namespace quillpress::level3 {

// One star at a time can be undone, which is enough: a later star makes an earlier one's choice final.
bool matchesWildcards(std::string_view text, std::string_view pattern) {
  std::size_t inText = 0;
  std::size_t inPattern = 0;
  std::size_t star = std::string_view::npos;  // behind the last star
  std::size_t starText = 0;                   // what it covers ends here
  while (inText < text.size()) {
    const bool isEscape = inPattern + 1 < pattern.size() && pattern[inPattern] == '\\';
    const std::size_t literal = isEscape ? inPattern + 1 : inPattern;
    if (!isEscape && inPattern < pattern.size() && pattern[inPattern] == '*') {
      star = ++inPattern;
      starText = inText;
    } else if (literal < pattern.size() &&
               ((!isEscape && pattern[literal] == '?') || pattern[literal] == text[inText])) {
      inPattern = literal + 1;
      ++inText;
    } else if (star != std::string_view::npos) {
      inPattern = star;
      inText = ++starText;
    } else {
      return false;
    }
  }
  while (inPattern < pattern.size() && pattern[inPattern] == '*') ++inPattern;
  return inPattern == pattern.size();
}

}  // namespace quillpress::level3
