#pragma once

#include <memory>
#include <optional>

#include "postscript/level3/colour/ColourSpace.h"

namespace quillpress::level3 {

class Colour;
using ColourPointer = std::shared_ptr<const Colour>;

// A colour in its space, as a graphics state holds it. It does not change, so states share it.
class Colour {
 public:
  explicit Colour(ColourSpacePointer space)
      : space_(std::move(space)), components_(space_->initialColour()) {}

  // Values that the space does not allow become the nearest that it does.
  Colour(ColourSpacePointer space, const ColourSpace::Components& components)
      : space_(std::move(space)), components_(components) {
    space_->clamp({components_.data(), space_->componentCount()});
  }

  // REQUIRES: a pattern space
  Colour(ColourSpacePointer space, const ColourSpace::Components& components, const Object& pattern)
      : Colour(std::move(space), components) {
    pattern_ = pattern;
  }

  const ColourSpacePointer& space() const { return space_; }
  const ColourSpace::Components& components() const { return components_; }
  std::span<const float> values() const { return {components_.data(), space_->componentCount()}; }

  // The pattern's dictionary; null for a pattern space in which none has been set.
  const Object& pattern() const { return pattern_; }
  bool isPattern() const { return space_->kind() == ColourSpace::Kind::kPattern; }

  // REQUIRES: !isPattern()
  const Paint& paint(PdfFile& file) const {
    if (!paint_) paint_ = space_->paint(values(), file);
    return *paint_;
  }

  void trace(Tracer& tracer) const {
    space_->trace(tracer);
    tracer.visit(pattern_);
  }

 private:
  ColourSpacePointer space_;
  ColourSpace::Components components_;
  Object pattern_;
  mutable std::optional<Paint> paint_;
};

}  // namespace quillpress::level3
