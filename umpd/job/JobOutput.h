#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "umpd/job/OutFile.h"
#include "umpd/settings/DriverSettings.h"

namespace quillpress::driver {

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
