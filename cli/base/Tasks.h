#pragma once

#include <string>
#include <vector>

#include "cli/base/Options.h"

namespace quillpress::cli {

// A job and where its PDF goes, each a path or "-".
struct Task {
  std::string job;
  std::string output;

  friend bool operator==(const Task&, const Task&) = default;
};

// What the options ask to be converted, in order. Throws UsageError when two jobs would go to one place, or
// one to the place of another, so that nothing is written then; InputError when a manifest cannot be read.
std::vector<Task> tasksOf(const Options& options);

// The options for one of them.
Options optionsFor(const Options& options, const Task& task);

}  // namespace quillpress::cli
