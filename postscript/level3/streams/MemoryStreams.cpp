#include "postscript/level3/streams/MemoryStreams.h"

#include <algorithm>
#include <cstring>

namespace quillpress::level3 {

namespace {

class ReusableSource final : public MemorySource {
 public:
  using MemorySource::MemorySource;
  [[nodiscard]] bool staysOpen() const override { return true; }
};

}  // namespace

MemorySource::MemorySource(std::vector<Byte> bytes) {
  const auto owned = std::make_shared<const std::vector<Byte>>(std::move(bytes));
  bytes_ = *owned;
  keeper_ = owned;
}

std::optional<std::uint64_t> MemorySource::available() const {
  if (isClosed()) return std::nullopt;
  return bytes_.size() - position();
}

Bytes MemorySource::nextBlock() {
  const Bytes rest = bytes_.subspan(next_);
  next_ = bytes_.size();
  return rest;
}

bool MemorySource::moveTo(std::uint64_t position) {
  if (position > bytes_.size()) return false;
  next_ = static_cast<std::size_t>(position);
  return true;
}

void MemorySource::release() {
  // close() has yet to read where the cursor is, but nothing of what it points at.
  bytes_ = {};
  next_ = 0;
  keeper_.reset();
}

void BufferSink::take(Bytes bytes) {
  const std::size_t fits = std::min(bytes.size(), buffer_.size() - used_);
  if (fits > 0) std::memcpy(buffer_.data() + used_, bytes.data(), fits);
  used_ += fits;
  if (fits < bytes.size()) fail();
}

SourcePointer reusable(ByteSource& source) {
  MemorySink all;
  if (!copyAll(source, all)) return nullptr;
  return std::make_shared<ReusableSource>(all.takeBytes());
}

}  // namespace quillpress::level3
