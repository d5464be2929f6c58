#include "postscript/level3/images/TeeSource.h"

namespace quillpress::level3 {

void TeeSource::settle() {
  const auto count = static_cast<std::size_t>(position() - settled_);
  copy_->write(source_->peek().first(count));
  source_->consume(count);
  settled_ = position();
}

Bytes TeeSource::nextBlock() {
  settle();
  if (source_->refill()) return source_->peek();
  if (source_->hasFailed()) fail(source_->errorName());
  return {};
}

}  // namespace quillpress::level3
