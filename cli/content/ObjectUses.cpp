#include "cli/content/ObjectUses.h"

#include "cli/content/ContentScanner.h"
#include "cli/content/NumberRange.h"

namespace quillpress::cli {

ObjectUses checkedObjectUses(std::string_view content) {
  ObjectUses uses;
  std::size_t checked = 0;  // what stands before it holds no such numbers
  ContentScanner scanner(content);
  for (ContentMark mark{}; scanner.next(content.size(), mark);) {
    checkNumbers(content.substr(checked, mark.begin - checked));
    checked = mark.end;
    if (mark.kind == ContentMark::Kind::kObject) uses.insert(mark.number);
  }
  checkNumbers(content.substr(checked));
  return uses;
}

}  // namespace quillpress::cli
