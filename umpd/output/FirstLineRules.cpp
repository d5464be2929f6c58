#include "umpd/output/FirstLine.h"

namespace quillpress {

std::string_view firstLine(std::string_view text) {
  // A zero ends a text as well.
  constexpr std::string_view kEnds("\n\0", 2);
  const std::string_view line = text.substr(0, text.find_first_of(kEnds));
  const std::size_t last = line.find_last_not_of("\r\n\t ");
  return line.substr(0, last + 1);  // none: npos + 1 is 0
}

}  // namespace quillpress
