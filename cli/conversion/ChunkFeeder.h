#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace quillpress::cli {

// Cuts text into chunks of one size, save for the last before each flush.
class ChunkFeeder {
 public:
  using Feed = std::function<void(std::string_view chunk, std::uint64_t offset)>;

  ChunkFeeder(std::size_t chunkSize, Feed feed) : chunkSize_(chunkSize), feed_(std::move(feed)) {}

  // REQUIRES: `text` goes on where the last one ended, unless there was a flush or clear since.
  void add(std::string_view text, std::uint64_t offset);

  // Feeds what has been gathered, if there is any.
  void flush();

  // Forgets what has been gathered.
  void clear() { gathered_.clear(); }

 private:
  std::size_t chunkSize_;
  Feed feed_;
  std::string gathered_;
  std::uint64_t gatheredOffset_ = 0;
};

}  // namespace quillpress::cli
