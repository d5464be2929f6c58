#include "cli/batch/Report.h"

#include <fstream>

#include "cli/base/Errors.h"
#include "cli/base/Messages.h"
#include "cli/batch/JobRecord.h"
#include "cli/system/Files.h"
#include "cli/system/Paths.h"

namespace quillpress::cli {

namespace {

[[noreturn]] void fail() {
  throw OutputError("cannot be written: " + systemReason());
}

}  // namespace

Report::Report(const std::string& path, bool goesOn) {
  if (path.empty()) return;
  const Contents contents = goesOn ? Contents::kKept : Contents::kDropped;
  file_ = path == "-" ? copyOfStandardOutput() : openForAppending(path, contents);
  if (!file_) fail();
  const auto status = statusOf(file_);
  // Devices have no lines from before.
  const bool isFile = path != "-" && status && status->kind == FileStatus::Kind::kPlain;
  if (goesOn && isFile) takeUp(path);
}

void Report::takeUp(const std::string& path) {
  std::ifstream before(pathOf(path), std::ios::binary);
  std::uint64_t whole = 0;
  for (std::string line; std::getline(before, line);) {
    // A line without its end is one that was being written.
    if (before.eof()) break;
    whole += line.size() + 1;
    outputs_.emplace(outputOfRecord(line));
  }
  if (!cutFile(file_, whole)) fail();
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
    const std::ptrdiff_t count = writeTo(file_, rest);
    if (count < 0) fail();
    rest.remove_prefix(static_cast<std::size_t>(count));
  }
}

}  // namespace quillpress::cli
