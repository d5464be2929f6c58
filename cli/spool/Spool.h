#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "cli/system/Descriptor.h"

namespace quillpress::cli {

// A nameless temporary file for what has been made of the job so far, so that memory does not grow with it.
// The system removes it however the process ends.
class Spool {
 public:
  // A stretch of the file.
  struct Piece {
    std::uint64_t offset = 0;
    std::uint64_t length = 0;
  };

  // Throws OutputError when no file can be made in `folder`, and from append when the disk is full.
  explicit Spool(const std::string& folder);
  Spool(const Spool&) = delete;
  Spool& operator=(const Spool&) = delete;

  Piece append(std::string_view bytes);

  // Reads `size` bytes from `offset`; REQUIRES: they have been written.
  void read(std::uint64_t offset, char* buffer, std::size_t size) const;

  [[nodiscard]] std::uint64_t size() const { return size_; }

  // Gives back everything behind the first `size` bytes.
  void cutTo(std::uint64_t size);

 private:
  Descriptor file_;
  std::uint64_t size_ = 0;
};

// Calls `take(std::string_view)` for the bytes of `piece`, block by block.
template <typename Take>
void readPiece(const Spool& spool, const Spool::Piece& piece, Take take) {
  char block[16 * 1024];
  std::uint64_t done = 0;
  while (done < piece.length) {
    const std::uint64_t left = piece.length - done;
    const std::size_t size = left < sizeof block ? static_cast<std::size_t>(left) : sizeof block;
    spool.read(piece.offset + done, block, size);
    take(std::string_view(block, size));
    done += size;
  }
}

}  // namespace quillpress::cli
