#include "postscript/level3/streams/ByteSink.h"

#include "postscript/level3/streams/ByteSource.h"

namespace quillpress::level3 {

bool ByteSink::write(Bytes bytes) {
  if (!isOpen()) return false;
  if (!bytes.empty()) take(bytes);
  position_ += bytes.size();
  return isOpen();
}

bool ByteSink::flush() {
  if (!isOpen()) return false;
  handOn();
  return isOpen();
}

bool ByteSink::close() {
  if (isClosed()) return true;
  release();
  const bool succeeded = !hasFailed();
  setState(StreamState::kClosed);
  return succeeded;
}

bool ByteSink::seek(std::uint64_t position) {
  if (!isOpen() || !canSeek() || !moveTo(position)) return false;
  position_ = position;
  return true;
}

bool copyAll(ByteSource& source, ByteSink& sink) {
  while (source.refill()) {
    if (!sink.write(source.peek())) return false;
    source.dropBuffered();
  }
  return !source.hasFailed();
}

}  // namespace quillpress::level3
