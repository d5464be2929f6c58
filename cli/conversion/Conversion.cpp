#include "cli/conversion/Conversion.h"

#include "cli/base/Messages.h"
#include "cli/base/Names.h"
#include "cli/conversion/ErrorSearch.h"

namespace quillpress::cli {

Conversion::Conversion(const Options& options, JobRunner& runner, PageOutput& output)
    : options_(options),
      runner_(runner),
      output_(output),
      feeder_(options.chunkSize,
              [this](std::string_view chunk, std::uint64_t offset) { run(chunk, offset); }) {
  output_.beginPage();
}

void Conversion::text(std::string_view bytes, std::uint64_t offset) {
  if (state_ != State::Running) return;
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
  if (state_ == State::Stopped) return;
  if (isBeforePages_ && state_ == State::Running) {
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
  if (state_ == State::Skipping) runner_.recover();
  state_ = State::Running;
  runner_.converter().startPage();
  output_.beginPage();
}

void Conversion::endPage() {
  if (state_ == State::Running) output_.endPage(comments_.pageBox(), runner_.converter());
}

void Conversion::endOfJob() {
  feeder_.flush();
  // The converter runs a token only when it has seen the byte behind it.
  if (state_ == State::Running) run("\n", endOffset_);
  endPage();
}

void Conversion::run(std::string_view chunk, std::uint64_t offset) {
  if (state_ != State::Running) return;
  endOffset_ = offset + chunk.size();
  const auto content = runner_.converter().convert(chunk);
  if (content) {
    output_.append(*content);
  } else {
    fail(chunk, offset);
  }
}

void Conversion::fail(std::string_view chunk, std::uint64_t offset) {
  say(jobName(options_.job) + ": " + place(chunk, offset) + ": " + runner_.converter().errorText());
  hasFailed_ = true;
  state_ = options_.keepGoing ? State::Skipping : State::Stopped;
  feeder_.clear();
  output_.dropPage();
}

/** Where the error is, as closely as it can be told. */
std::string Conversion::place(std::string_view chunk, std::uint64_t offset) const {
  const std::string page = "page " + std::to_string(page_);
  // Only the first error comes up again when the same bytes are run again from the start.
  const auto exact = hasFailed_ ? std::nullopt : findError(options_.job, offset, offset + chunk.size());
  if (exact) return page + ", byte " + std::to_string(*exact);
  const std::string size = counted(chunk.size(), "byte");
  return page + ", in the " + size + " from byte " + std::to_string(offset);
}

}  // namespace quillpress::cli
