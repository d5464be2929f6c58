#pragma once

#include <algorithm>
#include <optional>

#include "postscript/level3/graphics/Ink.h"
#include "postscript/level3/text/OutlineProgram.h"

namespace quillpress::level3 {

// Which glyph of a font is meant: by name, or by character code or CID where there is no name.
struct GlyphKey {
  Name* name = nullptr;
  std::uint32_t code = 0;
};

// A glyph of a face, as it is shown. Distances are in character space.
struct FaceGlyph {
  // What the font had for it when it was read; another value means another glyph.
  Object source;
  GlyphIndex index = 0;
  // How far it moves the current point, after Metrics and CDevProc.
  Point advance;
  // Where its outline's origin lies, from the current point.
  Point shift;
  VerticalMetrics vertical;
  Box bounds;
  // How far from the current point what it fills reaches, in each direction; below 0 when it has to be
  // painted each time as if it were new.
  double reach = -1;
  GlyphSlot slot;
  // PDF's idea of the advance: text space units at font size 1.
  double width = 0;
  // Another glyph, .notdef, is shown for it: it means nothing to a reader.
  bool isStandIn = false;
  // Nothing is shown for glyphs that are missing, or .notdef without an outline.
  bool isShown = false;
};

inline double reachOf(const Box& bounds) {
  return std::max({-bounds.left, -bounds.bottom, bounds.right, bounds.top, 0.0});
}

// Where a glyph goes.
struct GlyphPlace {
  // The font's dictionary, of which there may be many for one face.
  const Object& font;
  GlyphKey key;
  // Character space to device space, with the origin that the glyph's outline has.
  Matrix toDevice;
  // Around it, in device space, for painting.
  Box bounds;
};

// A font as the job defined it, whatever instances are made of it: the glyphs that have been shown, and how
// they come into the PDF.
class Face {
 public:
  virtual ~Face() = default;
  Face() = default;
  Face(const Face&) = delete;
  Face& operator=(const Face&) = delete;

  // The glyph, read when it is first asked for. May run procedures of the job. The reference stays valid.
  virtual FaceGlyph& glyph(const Object& font, const GlyphKey& key) = 0;
  // Around what it may paint there, in device space; an empty box when it shows nothing.
  virtual Box boundsOf(const FaceGlyph& glyph, const Matrix& toDevice) const = 0;
  // REQUIRES: ink.content() was not null
  virtual void paint(FaceGlyph& glyph, const GlyphPlace& place, Ink& ink) = 0;
  // Adds its outline to a path in device space.
  virtual void appendOutline(FaceGlyph& glyph, const GlyphPlace& place, Path& path) = 0;
  virtual void trace(Tracer& /*tracer*/) const {}
};

}  // namespace quillpress::level3
