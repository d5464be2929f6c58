#include "cli/content/ObjectUses.h"

namespace quillpress::cli {

void ObjectUseTracker::take(const ContentMark& mark, std::string_view text) {
  switch (mark.kind) {
    case ContentMark::Kind::Save:
      matrix_.save();
      break;
    case ContentMark::Kind::Restore:
      matrix_.restore();
      break;
    case ContentMark::Kind::Concat:
      if (const auto matrix = matrixBefore(text, mark.begin)) matrix_.concat(*matrix);
      break;
    case ContentMark::Kind::Object:
      uses_.try_emplace(mark.number, matrix_.current());
      break;
    case ContentMark::Kind::InlineImage:
      break;
  }
}

}  // namespace quillpress::cli
