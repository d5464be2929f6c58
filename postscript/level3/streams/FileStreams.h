#pragma once

#include <cstdio>
#include <filesystem>
#include <vector>

#include "postscript/level3/streams/ByteSink.h"
#include "postscript/level3/streams/ByteSource.h"

namespace quillpress::level3 {

enum class FileOwnership { kBorrowed, kOwned };

// Closes the file at the end when it is ours.
struct FileCloser {
  FileOwnership ownership = FileOwnership::kOwned;
  void operator()(std::FILE* file) const;
};
using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

// Opens a file of the machine without a buffer of the C library; null when that fails. `mode` as for fopen.
FileHandle openFile(const std::filesystem::path& path, const char* mode);
FileHandle borrowFile(std::FILE* file);

// A file of the machine, read in large blocks. It is not mapped: a mapped file that somebody cuts short ends
// the whole process, and a block costs no more than the page faults that it saves.
class FileSource final : public ByteSource {
 public:
  // `file` is not null and stands at its start or cannot be moved at all.
  explicit FileSource(FileHandle file);

  [[nodiscard]] bool canSeek() const override { return length_.has_value(); }
  [[nodiscard]] std::optional<std::uint64_t> available() const override;

 private:
  Bytes nextBlock() override;
  bool moveTo(std::uint64_t position) override;
  void release() override { file_.reset(); }

  FileHandle file_;
  std::optional<std::uint64_t> length_;  // of a file that can be moved in
  std::vector<Byte> block_;
};

class FileSink final : public ByteSink {
 public:
  // `file` is not null.
  explicit FileSink(FileHandle file);

  [[nodiscard]] bool canSeek() const override { return true; }

 private:
  void take(Bytes bytes) override;
  void handOn() override;
  void release() override;
  bool moveTo(std::uint64_t position) override;
  void writeOut(Bytes bytes);

  FileHandle file_;
  std::vector<Byte> block_;
};

}  // namespace quillpress::level3
