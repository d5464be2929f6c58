#pragma once

#include <vector>

#include "postscript/level3/streams/ByteSink.h"
#include "postscript/level3/streams/ByteSource.h"

namespace quillpress::level3 {

// Bytes in memory, which `keeper` keeps valid as long as the source is open. Nothing is copied.
class MemorySource : public ByteSource {
 public:
  explicit MemorySource(Bytes bytes, std::shared_ptr<const void> keeper = nullptr)
      : bytes_(bytes), keeper_(std::move(keeper)) {}

  // Bytes of its own.
  explicit MemorySource(std::vector<Byte> bytes);

  [[nodiscard]] bool canSeek() const override { return true; }
  [[nodiscard]] std::optional<std::uint64_t> available() const override;

 private:
  Bytes nextBlock() override;
  bool moveTo(std::uint64_t position) override;
  void release() override;

  Bytes bytes_;
  std::size_t next_ = 0;
  std::shared_ptr<const void> keeper_;
};

// Memory of a fixed size, which `keeper` keeps valid. Bytes that do not fit are an error: a string as the
// target of a filter has no more room.
class BufferSink final : public ByteSink {
 public:
  explicit BufferSink(std::span<Byte> buffer, std::shared_ptr<const void> keeper = nullptr)
      : buffer_(buffer), keeper_(std::move(keeper)) {}

  [[nodiscard]] Bytes written() const { return buffer_.first(used_); }

 private:
  void take(Bytes bytes) override;
  void release() override { keeper_.reset(); }

  std::span<Byte> buffer_;
  std::size_t used_ = 0;
  std::shared_ptr<const void> keeper_;
};

// Memory that grows.
class MemorySink final : public ByteSink {
 public:
  [[nodiscard]] const std::vector<Byte>& bytes() const { return bytes_; }
  [[nodiscard]] std::vector<Byte> takeBytes() { return std::move(bytes_); }

 private:
  void take(Bytes bytes) override { bytes_.insert(bytes_.end(), bytes.begin(), bytes.end()); }

  std::vector<Byte> bytes_;
};

// Reads `source` to its end; what comes back can be read again from any place. Null when the source fails.
SourcePointer reusable(ByteSource& source);

// Takes everything, keeps nothing.
class NullSink final : public ByteSink {
 private:
  void take(Bytes /*bytes*/) override {}
};

}  // namespace quillpress::level3
