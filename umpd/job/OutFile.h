#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "umpd/win32/Handles.h"

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

}  // namespace quillpress::driver
