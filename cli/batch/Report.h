#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

#include "cli/base/Tasks.h"
#include "cli/system/Descriptor.h"

namespace quillpress::cli {

// The file that gets a line for each job as soon as it has ended, so that it is right whenever a run is
// interrupted.
class Report {
 public:
  // `path` may be "-" for standard output, and empty for none. A report that goes on keeps the lines that are
  // there, save one that was cut off. Throws OutputError when it cannot be opened.
  Report(const std::string& path, bool goesOn);

  [[nodiscard]] bool isWanted() const { return static_cast<bool>(file_); }

  // Whether the lines that were there tell of the task.
  [[nodiscard]] bool knows(const Task& task) const;

  // Throws OutputError when the line cannot be written.
  void add(std::string_view record);

 private:
  void takeUp(const std::string& path);

  Descriptor file_;
  std::unordered_set<std::string> outputs_;
};

}  // namespace quillpress::cli
