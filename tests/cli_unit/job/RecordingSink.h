#pragma once

#include <gtest/gtest.h>

#include <string>

#include "cli/job/ByteSink.h"

namespace quillpress::cli {

// Joins what it gets, and checks that each piece stands where it says.
class RecordingSink final : public ByteSink {
 public:
  void write(std::string_view bytes, std::uint64_t offset) override {
    if (text_.empty()) begin_ = offset;
    EXPECT_EQ(offset, begin_ + text_.size());
    EXPECT_FALSE(isFinished_);
    text_.append(bytes);
  }

  void finish() override {
    EXPECT_FALSE(isFinished_);
    isFinished_ = true;
  }

  [[nodiscard]] const std::string& text() const { return text_; }
  [[nodiscard]] std::uint64_t begin() const { return begin_; }
  [[nodiscard]] bool isFinished() const { return isFinished_; }

 private:
  std::string text_;
  std::uint64_t begin_ = 0;
  bool isFinished_ = false;
};

// Writes `text` to `sink` in pieces of `size` bytes, and finishes it.
inline void writeInPieces(ByteSink& sink, std::string_view text, std::size_t size) {
  for (std::size_t at = 0; at < text.size(); at += size) sink.write(text.substr(at, size), at);
  sink.finish();
}

}  // namespace quillpress::cli
