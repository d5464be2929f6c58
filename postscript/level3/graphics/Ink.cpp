#include "postscript/level3/graphics/Ink.h"

namespace quillpress::level3 {

void Ink::lookUp() {
  const GraphicsState& state = graphics_.state();
  content_ = nullptr;
  colour_ = state.colour;
  target_ = state.device->canvas->content();
  if (target_ == nullptr) return;
  if (colour_->isPattern()) {
    pattern_ = graphics_.patterns().visiblePaint(*colour_);
    if (!pattern_) return;
    paint_ = &*pattern_;
  } else {
    paint_ = &colour_->paint(graphics_.document().file());
  }
  content_ = graphics_.content();
}

}  // namespace quillpress::level3
