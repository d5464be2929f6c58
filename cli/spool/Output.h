#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

namespace quillpress::cli {

// Where the bytes of a PDF, or of page text, go. They count only once they are committed.
class Output {
 public:
  Output() = default;
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;
  virtual ~Output() = default;

  // A folder for temporary files, on the same file system as the output if that is a file.
  [[nodiscard]] virtual const std::string& folder() const = 0;

  // Opens the output on the first call. Throws OutputError when that cannot be done.
  virtual std::FILE* file() = 0;

  // Puts the output in its place. Throws OutputError when any of it could not be written.
  virtual void commit() = 0;

  // How much has been committed; 0 where that cannot be told, as in a pipe.
  [[nodiscard]] virtual std::uint64_t bytesWritten() const = 0;

  // Whether something that was asked for could not be had; it has been said then.
  [[nodiscard]] virtual bool hasWarned() const { return false; }
};

}  // namespace quillpress::cli
