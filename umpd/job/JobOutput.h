#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "umpd/settings/DriverSettings.h"
#include "umpd/win32/Resources.h"

namespace quillpress::driver {
// The file that a job's bytes go into. A file that could not be created counts as begun: writing to it fails,
// and the end of the job takes its course.
class OutFile {
 public:
  // Whether creation has been tried.
  [[nodiscard]] bool isBegun() const { return begun_; }

  // Whether there is a file of this job.
  [[nodiscard]] bool isCreated() const { return static_cast<bool>(file_); }

  // Makes the file or replaces one that exists. Others may read it meanwhile.
  bool create(const std::wstring& path);

  // True when all bytes have been written.
  bool write(std::span<const std::byte> bytes);

  void close();

 private:
  FileHandle file_;
  bool begun_ = false;
};

// Where the blocks of a job go that is not passed through: a file whose path is chosen when the first block
// comes, after the launcher has been told.
class JobOutput {
 public:
  // Tells the launcher that the job begins, chooses the path and creates the file. False, after an error box,
  // when the launcher does not come up or no path can be had. A file that cannot be created counts as begun.
  [[nodiscard]] bool begin(const DriverSettings& settings, const std::wstring& documentName);
  [[nodiscard]] bool isBegun() const { return file_.isBegun(); }

  // Appends a block. Null data with a size is a block that cannot be read.
  [[nodiscard]] bool write(std::span<const std::byte> block);

  void close() { file_.close(); }

  // Whether there is an open file of this job.
  [[nodiscard]] bool isCreated() const { return file_.isCreated(); }

  // Empty before the beginning; at most 779 characters.
  [[nodiscard]] const std::wstring& path() const { return path_; }
  [[nodiscard]] std::uint32_t bytesWritten() const { return bytesWritten_; }

  // Forgets path and size. An open file stays open until this object goes.
  void reset();

 private:
  [[nodiscard]] bool create();
  void createVirtualized();

  std::wstring path_;
  OutFile file_;
  std::uint32_t bytesWritten_ = 0;
};
}  // namespace quillpress::driver
