#include "cli/conversion/JobRunner.h"

#include "cli/conversion/TextCounter.h"

namespace quillpress::cli {

namespace {

// Enough for what procedures leave on the execution stack; a loop around an error would never end.
constexpr int kMostRunOuts = 64;

}  // namespace

JobRunner::JobRunner() : converter_(std::make_unique<Converter>()) {
  TextCounter::install(*converter_);
}

void JobRunner::record(std::string_view setUp) {
  if (record_ != nullptr) record_->append(setUp);
}

void JobRunner::forgetSetUp() {
  if (record_ != nullptr) record_->cutTo(0);
}

void JobRunner::recover() {
  if (!runOut()) reopen();
}

/** Lets the interpreter finish what the error interrupted; tells whether it listens to new text again. */
bool JobRunner::runOut() {
  for (int i = 0; i < kMostRunOuts; ++i) {
    if (!converter_->convert("")) continue;
    return TextCounter::read(*converter_).has_value();
  }
  return false;
}

void JobRunner::reopen() {
  converter_ = std::make_unique<Converter>();
  TextCounter::install(*converter_);
  if (record_ == nullptr) return;
  const Spool::Piece setUp{0, record_->size()};
  readPiece(*record_, setUp, [this](std::string_view text) { converter_->convert(text); });
}

std::uint64_t JobRunner::textsShown() {
  return TextCounter::read(*converter_).value_or(0);
}

}  // namespace quillpress::cli
