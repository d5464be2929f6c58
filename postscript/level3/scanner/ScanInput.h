#pragma once

#include "postscript/level3/streams/ByteSource.h"

namespace quillpress::level3 {

// A source's bytes one by one, taken straight out of its block. The source learns what was consumed when a
// block is used up and at the end.
class ScanInput {
 public:
  static constexpr int kEnd = ByteSource::kNoByte;

  explicit ScanInput(ByteSource& source) : source_(source) { load(); }
  ~ScanInput() { settle(); }
  ScanInput(const ScanInput&) = delete;
  ScanInput& operator=(const ScanInput&) = delete;

  // The next byte, which stays where it is, or kEnd.
  int peek() { return cursor_ != limit_ || refill() ? *cursor_ : kEnd; }
  int get() { return cursor_ != limit_ || refill() ? *cursor_++ : kEnd; }
  // REQUIRES: peek() has just given a byte.
  void skip() { ++cursor_; }

  // The end has come where more is wanted.
  void endedWithin(std::string_view what) { source_.endedWithin(what); }

  // What is left of the block.
  [[nodiscard]] const Byte* cursor() const { return cursor_; }
  [[nodiscard]] const Byte* limit() const { return limit_; }
  void advanceTo(const Byte* place) { cursor_ = place; }

  // Fills `target` whole, or as far as the source goes; returns how far that was.
  std::size_t read(std::span<Byte> target) {
    settle();
    const std::size_t count = source_.read(target);
    load();
    return count;
  }

 private:
  void load() {
    const Bytes block = source_.peek();
    begin_ = cursor_ = block.data();
    limit_ = begin_ + block.size();
  }

  void settle() {
    source_.consume(static_cast<std::size_t>(cursor_ - begin_));
    begin_ = cursor_;
  }

  bool refill() {
    settle();
    const bool hasMore = source_.refill();
    load();
    return hasMore;
  }

  ByteSource& source_;
  const Byte* begin_ = nullptr;
  const Byte* cursor_ = nullptr;
  const Byte* limit_ = nullptr;
};

}  // namespace quillpress::level3
