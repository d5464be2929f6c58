#include "cli/content/PatternContent.h"

#include "cli/content/ContentScanner.h"

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
  ObjectUseTracker tracker;
  ContentScanner scanner(captured);
  ContentMark mark{};
  while (scanner.next(captured.size(), mark)) {
    tracker.take(mark, captured);
    if (mark.kind == ContentMark::Kind::Save) ++openSaves;
    if (mark.kind == ContentMark::Kind::Restore) openSaves > 0 ? --openSaves : ++missingSaves;
  }
  result.objects = tracker.uses();
  repeat(result.text, "q\n", missingSaves);
  result.text += captured;
  repeat(result.text, "Q\n", openSaves);
  return result;
}

}  // namespace quillpress::cli
