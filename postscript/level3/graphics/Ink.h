#pragma once

#include <optional>

#include "postscript/level3/graphics/Graphics.h"

namespace quillpress::level3 {

// The current colour and where it goes, for glyphs that are painted one after the other: looked up for the
// first of them, and again only when the graphics state says otherwise.
class Ink {
 public:
  explicit Ink(Graphics& graphics) : graphics_(graphics) {}

  // Null when what is painted cannot be seen. May run a pattern's procedure.
  ContentWriter* content() {
    const GraphicsState& state = graphics_.state();
    if (state.colour != colour_ || state.device->canvas->content() != target_) lookUp();
    return content_;
  }
  // Whether anything within a box could be seen. REQUIRES: content() was not null, for both.
  bool canBeSeen(const Box& bounds) const { return content_->isVisible(bounds, graphics_.state().clip); }
  void show(const TextGlyph& glyph, const Box& bounds, double lineWidth = 0) {
    const GraphicsState& state = graphics_.state();
    content_->showGlyph(glyph, bounds, *paint_, state.clip, state.rare, lineWidth);
  }
  // False when it has to be shown in full. REQUIRES: content() is what the last glyph was shown in, in the
  // same colour, with the same matrix but for its place.
  bool showNext(const NextGlyph& glyph) { return content_->showNext(glyph, graphics_.state().clip); }

 private:
  void lookUp();

  Graphics& graphics_;
  // What the rest was looked up for.
  ColourPointer colour_;
  ContentWriter* target_ = nullptr;
  ContentWriter* content_ = nullptr;
  const Paint* paint_ = nullptr;
  std::optional<Paint> pattern_;
};

}  // namespace quillpress::level3
