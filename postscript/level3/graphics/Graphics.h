#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "postscript/level3/graphics/GraphicsState.h"
#include "postscript/level3/graphics/ImageStrips.h"
#include "postscript/level3/graphics/Patterns.h"
#include "postscript/level3/graphics/Unkept.h"
#include "postscript/level3/interpreter/Interpreter.h"
#include "postscript/level3/pdf/PdfDocument.h"

namespace quillpress::level3 {

// What may be done to images to make the document smaller; nothing unless somebody asks for it.
struct ImageSettings {
  // Of JPEG data, 1 to 100; 0 keeps all samples.
  int quality = 0;
  // Pixels in an inch of the page that are enough; 0 keeps all.
  double resolution = 0;
};

// The graphics state, its stack, and painting with it. One for each interpreter; operators find it with
// graphicsOf().
class Graphics final : public Interpreter::Extension {
 public:
  static constexpr Interpreter::Slot kSlot = Interpreter::Slot::kGraphics;

  // Paths longer than this are counted against the memory of the job, each time that they have grown by as
  // much.
  static constexpr std::size_t kLongPath = 1UL << 16;
  // gsave deeper than this is a limitcheck.
  static constexpr std::size_t kMostStates = 100'000;

  Graphics(Interpreter& interpreter, PdfDocument& document);

  Interpreter& interpreter() { return interpreter_; }
  PdfDocument& document() { return document_; }
  UnkeptCounter& unkept() { return unkept_; }
  Patterns& patterns() { return patterns_; }
  ImageSettings& images() { return images_; }
  ImageStrips& strips() { return strips_; }

  GraphicsState& state() { return state_; }
  const GraphicsState& state() const { return state_; }

  void gsave();
  void grestore();
  void grestoreAll();
  // Takes another state over, as setgstate does: all but the stack.
  void setState(const GraphicsState& state) { state_ = state; }
  std::size_t depth() const { return stack_.size(); }
  // Goes back to a depth, as grestore would, whatever saves lie between.
  void unwindTo(std::size_t depth);

  // Makes a device current, with initgraphics and an empty page.
  void setDevice(DevicePointer device);
  void initGraphics();
  void initMatrix() { state_.ctm = state_.device->defaultMatrix; }
  void initClip();

  // ---- The path. Throw nocurrentpoint where one is needed, rangecheck beyond setbbox.
  Point currentPoint() const {
    const std::optional<Point> point = state_.path.currentPoint();
    if (!point) raise(ErrorName::kNoCurrentPoint);
    return *point;
  }
  void moveTo(Point device) {
    requireInBounds(device);
    state_.path.moveTo(device);
  }
  void lineTo(Point device);
  void curveTo(Point control1, Point control2, Point end);
  void clipTo(const Path& path, FillRule rule);

  // ---- Painting in the current colour, of paths in device space. They leave the current path alone.
  void fill(const Path& path, FillRule rule);
  void stroke(const Path& path);
  // With another matrix for the pen than the current one.
  void stroke(const Path& path, const Matrix& penMatrix);
  // The current colour, as content takes it; runs a pattern's procedure.
  Paint currentPaint();
  Path strokeOutlineOf(const Path& path) const;

  // Null when what is painted goes nowhere.
  ContentWriter* content();

  // ---- Colour spaces, each made once.
  const ColourSpacePointer& deviceSpace(ColourSpace::Kind kind);
  // Without a base for patterns that have colours of their own.
  ColourSpacePointer patternSpace(const ColourSpacePointer& base);
  // What setcolorspace takes. Throws what it throws.
  ColourSpacePointer colourSpace(const Object& description);

  void trace(Tracer& tracer) const override;
  void onSave(std::uint32_t serial) override;
  void onRestore(std::uint32_t serial) override;

 private:
  struct Saved {
    GraphicsState state;
    // The save that kept this one; 0 for gsave.
    std::uint32_t serial;
  };

  // A colour space that was read from an array, to be found again.
  struct KnownSpace {
    Object description;
    ColourSpacePointer space;
  };

  void requireInBounds(Point point) const {
    const bool isShort = state_.path.segmentCount() < kLongPath;
    if (!isShort || state_.pathBounds || !isCoordinate(point.x) || !isCoordinate(point.y)) {
      requireUncommon(point);
    }
  }
  static bool isCoordinate(double value) {
    // Beyond this, single precision does not tell pixels apart, and sums of coordinates could overflow.
    constexpr double kGreatest = 1e15;
    return std::abs(value) < kGreatest;
  }
  void requireUncommon(Point point) const;
  void requireRoomForPaths() const;

  Interpreter& interpreter_;
  PdfDocument& document_;
  GraphicsState state_;
  std::vector<Saved> stack_;
  Patterns patterns_;
  UnkeptCounter unkept_;
  ImageSettings images_;
  ImageStrips strips_;
  std::array<ColourSpacePointer, 3> deviceSpaces_;
  std::vector<KnownSpace> knownSpaces_;
};

inline Graphics& graphicsOf(Interpreter& interpreter) {
  return interpreter.extension<Graphics>();
}
inline GraphicsState& stateOf(Interpreter& interpreter) {
  return graphicsOf(interpreter).state();
}

// Whatever happens meanwhile, the graphics state and its stack are as before at the end of the scope.
class GraphicsScope {
 public:
  explicit GraphicsScope(Graphics& graphics) : graphics_(graphics), depth_(graphics.depth()) {
    graphics.gsave();
  }
  ~GraphicsScope() { graphics_.unwindTo(depth_); }
  GraphicsScope(const GraphicsScope&) = delete;
  GraphicsScope& operator=(const GraphicsScope&) = delete;

 private:
  Graphics& graphics_;
  std::size_t depth_;
};

}  // namespace quillpress::level3
