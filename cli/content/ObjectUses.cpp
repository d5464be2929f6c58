#include "cli/content/ObjectUses.h"

namespace quillpress::cli {

void ObjectUseTracker::take(const ContentMark& mark, std::string_view text) {
  switch (mark.kind) {
    case ContentMark::Kind::kSave:
      matrix_.save();
      break;
    case ContentMark::Kind::kRestore:
      matrix_.restore();
      break;
    case ContentMark::Kind::kConcat:
      if (const auto matrix = matrixBefore(text, mark.begin)) matrix_.concat(*matrix);
      break;
    case ContentMark::Kind::kObject:
      // The first place counts: a pattern has one matrix in a PDF file, wherever else it is selected.
      uses_.try_emplace(mark.number, matrix_.current());
      break;
    case ContentMark::Kind::kInlineImage:
      break;
  }
}

}  // namespace quillpress::cli
