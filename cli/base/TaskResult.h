#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/base/ExitCode.h"

namespace quillpress::cli {

// What has come of a job. All of it has been said, too.
struct TaskResult {
  ExitCode code = ExitCode::kDone;
  std::uint64_t pages = 0;  // complete ones
  std::uint64_t bytes = 0;  // of the output, all files of it
  double milliseconds = 0;
  std::string error;  // one line; empty when there was none
  // What is known of an error in the job itself.
  std::string errorName;
  std::optional<std::uint64_t> errorPage;
  std::optional<std::uint64_t> errorByte;
  std::vector<std::string> warnings;
  std::vector<std::string> substitutedFonts;
};

}  // namespace quillpress::cli
