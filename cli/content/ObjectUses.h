#pragma once

#include <map>

#include "cli/content/ContentScanner.h"
#include "cli/content/Matrix.h"

namespace quillpress::cli {

// Numbers of the images and patterns that a content stream names, each with the transformation matrix at the
// place where it is named first.
using ObjectUses = std::map<unsigned, Matrix>;

// Follows the graphics state of a content stream from mark to mark as far as objects depend on it.
class ObjectUseTracker {
 public:
  // `text` is the one in which the mark was found.
  void take(const ContentMark& mark, std::string_view text);

  [[nodiscard]] const ObjectUses& uses() const { return uses_; }

 private:
  MatrixStack matrix_;
  ObjectUses uses_;
};

}  // namespace quillpress::cli
