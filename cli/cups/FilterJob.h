#pragma once

#include <optional>
#include <string>

#include "cli/base/Options.h"

namespace quillpress::cli {

// What CUPS asks of a filter.
struct FilterJob {
  std::string id;
  unsigned copies = 1;
  // The job and what is to be made of it, on standard output.
  Options options;
};

// Whether what this filter writes is what the printer gets. When other filters follow, those pick and turn
// pages.
enum class FilterPlace { kLast, kBeforeOthers };

// Reads the arguments of a filter: job, user, title, copies, options and, unless the job comes through
// standard input, its file. Nothing when they are not five or six. Options that make no sense get a warning
// and are left out.
std::optional<FilterJob> readFilterJob(int argc, const char* const* argv, FilterPlace place);

}  // namespace quillpress::cli
