// A filter of CUPS that turns PostScript into PDF: pstopdf-quillpress JOB USER TITLE COPIES OPTIONS [FILE]
//
// A job that is cancelled ends by SIGTERM, as CUPS expects of filters; what was to be standard output is then
// gone with the pipe, and files on the way had no names. https://www.cups.org/doc/api-filter.html

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <string_view>

#include "cli/base/Messages.h"
#include "cli/cups/FilterJob.h"
#include "cli/task/TaskRunner.h"

namespace {

using quillpress::cli::ExitCode;
using quillpress::cli::FilterJob;
using quillpress::cli::FilterPlace;
using quillpress::cli::TaskResult;

FilterPlace placeOfThis() {
  const char* const last = std::getenv("FINAL_CONTENT_TYPE");
  const bool isLast = last == nullptr || std::string_view(last) == "application/pdf";
  return isLast ? FilterPlace::kLast : FilterPlace::kBeforeOthers;
}

// What print servers keep accounts by: a line for each page that has been written, with its copies.
void tellPages(const FilterJob& job, const TaskResult& result) {
  const auto& wanted = job.options.pages;
  const std::size_t count = wanted.isEverything() ? result.pages : wanted.of(result.pages).size();
  for (std::size_t page = 1; page <= count; ++page) {
    std::fprintf(stderr, "PAGE: %zu %u\n", page, job.copies);
  }
  std::fprintf(stderr, "DEBUG: job %s: %s written\n", quillpress::cli::visible(job.id).c_str(),
               quillpress::cli::counted(count, "page").c_str());
}

// 0 or 1, as CUPS knows no others of filters.
int run(int argc, const char* const* argv) {
  // A reader that goes away and a limit on the size of files show as failed writes.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  const auto job = quillpress::cli::readFilterJob(argc, argv, placeOfThis());
  if (!job) {
    quillpress::cli::say("usage: pstopdf-quillpress JOB USER TITLE COPIES OPTIONS [FILE]");
    return 1;
  }
  std::fputs("DEBUG: pstopdf-quillpress " QUILLPRESS_VERSION "\n", stderr);
  const TaskResult result = quillpress::cli::runTask(job->options);
  const bool isComplete = result.code == ExitCode::kDone || result.code == ExitCode::kCutOff;
  if (isComplete || result.code == ExitCode::kPartial) tellPages(*job, result);
  return isComplete ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  quillpress::cli::setMessageForm(quillpress::cli::MessageForm::kPrintServer);
  try {
    return run(argc, argv);
  } catch (const std::exception& error) {
    quillpress::cli::say(error.what());
  }
  return 1;
}
