#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>

#include "postscript/level3/graphics/GraphicsState.h"
#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

class Graphics;

// The patterns that makepattern has made. A pattern's dictionary carries a number; what belongs to it, its
// matrix and the graphics state of its making, is kept here. The cell is drawn when the pattern is first
// painted with.
class Patterns {
 public:
  explicit Patterns(Graphics& graphics) : graphics_(graphics) {}

  // Makes the copy of a prototype that makepattern gives back. The matrix maps pattern space to user space.
  Object make(const Object& prototype, const Matrix& matrix);

  // 1 or 2, and whether setcolor needs components with it. Throws typecheck for what is no pattern.
  bool isUncoloured(const Object& pattern);

  // What painting with it writes; runs the pattern's procedure the first time. REQUIRES: colour.isPattern()
  Paint paint(const Colour& colour);
  // The same for every colour; nothing when a pattern space has no pattern, so that nothing is painted.
  std::optional<Paint> visiblePaint(const Colour& colour);

  void forgetSince(std::uint32_t serial);
  void trace(Tracer& tracer) const;

 private:
  struct Made {
    Matrix toDevice;
    int type = 1;
    bool isUncoloured = false;
    std::uint32_t serial = 0;
    std::shared_ptr<const GraphicsState> state;
    // The object in the file, for content that begins in this space.
    ObjectNumber object = 0;
    Matrix space;
  };

  Made& find(const Object& pattern);
  ObjectNumber write(Made& made, const Object& pattern, const Matrix& initialSpace);
  ObjectNumber writeTiling(const Made& made, const Object& pattern, const Matrix& initialSpace);
  ObjectNumber writeShading(const Made& made, const Object& pattern, const Matrix& initialSpace);

  Graphics& graphics_;
  std::map<std::int64_t, Made> made_;
  std::int64_t lastNumber_ = 0;
};

}  // namespace quillpress::level3
