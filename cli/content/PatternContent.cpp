#include "cli/content/PatternContent.h"

#include "cli/content/ContentScanner.h"
#include "cli/content/NumberRange.h"

namespace quillpress::cli {

namespace {

void repeat(std::string& text, std::string_view piece, std::size_t times) {
  for (; times > 0; --times) text += piece;
}

}  // namespace

PatternContent readPatternContent(std::string_view captured) {
  PatternContent result;
  std::size_t openSaves = 0;
  std::size_t missingSaves = 0;
  std::size_t checked = 0;  // what stands before it holds no such numbers
  ObjectUseTracker tracker;
  ContentScanner scanner(captured);
  ContentMark mark{};
  while (scanner.next(captured.size(), mark)) {
    checkNumbers(captured.substr(checked, mark.begin - checked));
    checked = mark.end;
    tracker.take(mark, captured);
    if (mark.kind == ContentMark::Kind::kSave) ++openSaves;
    if (mark.kind != ContentMark::Kind::kRestore) continue;
    if (openSaves > 0) {
      --openSaves;
    } else {
      ++missingSaves;
    }
  }
  checkNumbers(captured.substr(checked));
  result.objects = tracker.uses();
  // In front, so that each restore finds a state to go back to.
  repeat(result.text, "q\n", missingSaves);
  result.text += captured;
  repeat(result.text, "Q\n", openSaves);
  return result;
}

}  // namespace quillpress::cli
