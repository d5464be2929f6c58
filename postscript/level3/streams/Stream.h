#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace quillpress::level3 {

using Byte = std::uint8_t;
using Bytes = std::span<const Byte>;

inline Bytes bytesOf(std::string_view text) {
  return {reinterpret_cast<const Byte*>(text.data()), text.size()};
}

inline std::string_view textOf(Bytes bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

enum class StreamState { kOpen, kEnd, kError, kClosed };

// What sources and sinks have in common: whether more can be read or written, and if not, why.
// A stream never throws for bad data or a failing device; it stops and keeps the name of the error that the
// language reports. Exceptions of a callback pass through and leave the stream as it was.
class Stream {
 public:
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;

  [[nodiscard]] StreamState state() const { return state_; }
  [[nodiscard]] bool isOpen() const { return state_ == StreamState::kOpen; }
  [[nodiscard]] bool isClosed() const { return state_ == StreamState::kClosed; }
  [[nodiscard]] bool hasFailed() const { return state_ == StreamState::kError; }

  // The language's name for what went wrong, "ioerror" as a rule; empty without an error.
  [[nodiscard]] std::string_view errorName() const { return errorName_; }

 protected:
  Stream() = default;
  ~Stream() = default;

  // `errorName` is a literal.
  void fail(std::string_view errorName = "ioerror") {
    state_ = StreamState::kError;
    errorName_ = errorName;
  }

  void setState(StreamState state) {
    state_ = state;
    errorName_ = {};
  }

 private:
  StreamState state_ = StreamState::kOpen;
  std::string_view errorName_;
};

}  // namespace quillpress::level3
