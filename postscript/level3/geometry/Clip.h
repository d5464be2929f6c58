#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "postscript/level3/geometry/Insideness.h"
#include "postscript/level3/geometry/Path.h"

namespace quillpress::level3 {

class Clip;
// No clip at all is the null pointer.
using ClipPointer = std::shared_ptr<const Clip>;

// An area that painting is confined to: the inside of a path, within another area. Clips do not change;
// states that share one share the object, and equal ones are recognised by content.
class Clip {
 public:
  // What both `parent` and the path leave. Where both are rectangles the result is one, too, without a
  // parent.
  static ClipPointer within(const ClipPointer& parent, const Path& path, FillRule rule);

  Clip(ClipPointer parent, Path path, FillRule rule);
  ~Clip();
  Clip(const Clip&) = delete;
  Clip& operator=(const Clip&) = delete;

  const ClipPointer& parent() const { return parent_; }
  const Path& path() const { return path_; }
  FillRule rule() const { return rule_; }

  // Around the whole area, parents included.
  const Box& bounds() const { return bounds_; }

  // The area, when it is a rectangle and has no parent.
  const std::optional<Box>& rectangle() const { return rectangle_; }

  bool isEmpty() const { return bounds_.isEmpty(); }

  // Also when they are different objects.
  bool isSameAs(const Clip& other) const;

 private:
  mutable ClipPointer parent_;
  Path path_;
  FillRule rule_;
  Box bounds_;
  std::optional<Box> rectangle_;
  std::uint64_t hash_ = 0;
};

}  // namespace quillpress::level3
