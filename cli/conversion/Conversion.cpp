#include "cli/conversion/Conversion.h"

#include <utility>

#include "cli/base/Errors.h"
#include "cli/base/Messages.h"
#include "cli/base/Names.h"

namespace quillpress::cli {

Conversion::Conversion(ConversionSettings settings, JobRunner& runner, PageOutput& output)
    : settings_(std::move(settings)),
      runner_(runner),
      output_(output),
      feeder_(settings_.chunkSize,
              [this](std::string_view chunk, std::uint64_t offset) { run(chunk, offset); }) {
  output_.beginPage();
}

void Conversion::text(std::string_view bytes, std::uint64_t offset) {
  if (state_ != State::kRunning) return;
  // Kept for a converter that may have to begin anew.
  if (isBeforePages_) runner_.record(bytes);
  feeder_.add(bytes, offset);
}

void Conversion::comment(std::string_view keyword, std::string_view value) {
  if (keyword == "Page") {
    // Before the comments forget the size of the page that ends here.
    feeder_.flush();
    nextPage();
  }
  comments_.take(keyword, value);
}

void Conversion::nextPage() {
  // What the set-up has drawn stands on the first page.
  if (isBeforePages_ && state_ == State::kRunning) {
    isBeforePages_ = false;
    return;
  }
  if (isBeforePages_) {
    runner_.forgetSetUp();
  } else {
    endPage();
    ++page_;
  }
  isBeforePages_ = false;
  // The page that ends here may be the one that stops the job.
  if (state_ == State::kStopped) return;
  if (state_ == State::kSkipping) runner_.recover();
  state_ = State::kRunning;
  // Each page begins with the graphics state of the job's begin, as printers do it.
  runner_.converter().startPage();
  output_.beginPage();
}

void Conversion::endPage() {
  if (state_ != State::kRunning) return;
  try {
    output_.endPage(comments_.pageBox(), runner_.converter());
  } catch (const PageError& error) {
    fail(pageName() + ": " + error.what());
  }
}

void Conversion::endOfJob() {
  feeder_.flush();
  // The converter runs a token only when it has seen the byte behind it.
  if (state_ == State::kRunning) run("\n", endOffset_);
  // Before the page ends, since that may fail for reasons of its own. After an error nobody asks.
  endsInside_ = !hasFailed_ && !runner_.isListening();
  endPage();
}

void Conversion::run(std::string_view chunk, std::uint64_t offset) {
  if (state_ != State::kRunning) return;
  endOffset_ = offset + chunk.size();
  const auto content = runner_.converter().convert(chunk);
  if (!content) {
    fail(place(chunk, offset) + ": " + runner_.converter().errorText());
    return;
  }
  try {
    output_.append(*content);
  } catch (const PageError& error) {
    fail(pageName() + ": " + error.what());
  }
}

void Conversion::fail(const std::string& message) {
  say(jobName(settings_.job) + ": " + message);
  hasFailed_ = true;
  state_ = settings_.keepGoing ? State::kSkipping : State::kStopped;
  // What has been gathered belongs to the page that failed.
  feeder_.clear();
  output_.dropPage();
}

std::string Conversion::pageName() const {
  return "page " + std::to_string(page_);
}

// Where the error is, as closely as it can be told: the converter only says that a chunk failed.
std::string Conversion::place(std::string_view chunk, std::uint64_t offset) const {
  if (chunk.size() == 1) return pageName() + ", byte " + std::to_string(offset);
  const std::string size = counted(chunk.size(), "byte");
  return pageName() + ", in the " + size + " from byte " + std::to_string(offset);
}

}  // namespace quillpress::cli
