#include "cli/batch/Report.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <iterator>

#include "cli/base/Errors.h"
#include "cli/base/Messages.h"
#include "cli/batch/JobRecord.h"

namespace quillpress::cli {

namespace {

constexpr unsigned kPermissions = 0666;

[[noreturn]] void fail() {
  throw OutputError("cannot be written: " + systemReason());
}

}  // namespace

Report::Report(const std::string& path, bool goesOn) {
  if (path.empty()) return;
  if (path == "-") {
    file_.reset(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0));
  } else {
    file_.reset(
        open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | (goesOn ? 0 : O_TRUNC), kPermissions));
  }
  if (!file_) fail();
  struct stat status {};
  // Devices have no lines from before.
  const bool isFile = path != "-" && fstat(file_.get(), &status) == 0 && S_ISREG(status.st_mode);
  if (goesOn && isFile) takeUp(path);
}

void Report::takeUp(const std::string& path) {
  std::ifstream before(path, std::ios::binary);
  off_t whole = 0;
  for (std::string line; std::getline(before, line);) {
    // A line without its end is one that was being written.
    if (before.eof()) break;
    whole += static_cast<off_t>(line.size()) + 1;
    outputs_.emplace(outputOfRecord(line));
  }
  if (ftruncate(file_.get(), whole) != 0) fail();
}

bool Report::knows(const Task& task) const {
  return outputs_.contains(jsonString(task.output));
}

void Report::add(std::string_view record) {
  if (!file_) return;
  std::string line(record);
  line += '\n';
  // A disk that is nearly full takes part of it.
  std::string_view rest = line;
  while (!rest.empty()) {
    const ssize_t count = write(file_.get(), rest.data(), rest.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) fail();
    rest.remove_prefix(static_cast<std::size_t>(count));
  }
}

}  // namespace quillpress::cli
