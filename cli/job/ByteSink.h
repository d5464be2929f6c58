#pragma once

#include <cstdint>
#include <string_view>

namespace quillpress::cli {

// Takes the bytes of a job piece by piece, in order.
class ByteSink {
 public:
  ByteSink() = default;
  ByteSink(const ByteSink&) = delete;
  ByteSink& operator=(const ByteSink&) = delete;
  virtual ~ByteSink() = default;

  // `offset` counts from the start of the file; the bytes are borrowed for the call.
  virtual void write(std::string_view bytes, std::uint64_t offset) = 0;

  // No more bytes follow. Called once.
  virtual void finish() = 0;
};

}  // namespace quillpress::cli
