#include "cli/conversion/JobRunner.h"

#include <algorithm>
#include <chrono>

#include "cli/conversion/Aside.h"
#include "cli/conversion/TextCounter.h"

namespace quillpress::cli {

namespace {

// Enough for what procedures leave on the execution stack; a loop around an error would never end.
constexpr int kMostRunOuts = 64;
// Procedures that end do so in far less.
constexpr std::chrono::milliseconds kLongestRunOut{3000};

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

// The interrupted procedure may be a loop without an end. What an interpreter does depends on nothing but its
// job, so what has come to its end in a copy does so here.
void JobRunner::recover() {
  if (!runOutAside() || !runOut()) reopen();
}

// Runs out in a copy. A job may fail on each of thousands of pages, so what is spent in vain counts for all.
std::optional<std::uint64_t> JobRunner::runOutAside() {
  if (patience_.count() <= 0) return std::nullopt;
  const auto begin = std::chrono::steady_clock::now();
  const auto result = askAside(std::min(patience_, kLongestRunOut), [this] { return runOut(); });
  const auto spent = std::chrono::steady_clock::now() - begin;
  if (!result) patience_ -= std::chrono::duration_cast<std::chrono::milliseconds>(spent);
  return result;
}

// Lets the interpreter finish what the error interrupted, and asks whether it listens to new text again.
std::optional<std::uint64_t> JobRunner::runOut() {
  for (int i = 0; i < kMostRunOuts; ++i) {
    if (converter_->convert("")) return TextCounter::read(*converter_);
  }
  return std::nullopt;
}

void JobRunner::reopen() {
  converter_ = std::make_unique<Converter>();
  TextCounter::install(*converter_);
  // Without a record only the definitions are lost, and the next page says so itself.
  if (record_ == nullptr) return;
  const Spool::Piece setUp{0, record_->size()};
  readPiece(*record_, setUp, [this](std::string_view text) { converter_->convert(text); });
}

std::optional<std::uint64_t> JobRunner::textsShown() {
  return TextCounter::read(*converter_);
}

std::optional<std::uint64_t> JobRunner::textsShownAfterError() {
  return runOutAside();
}

}  // namespace quillpress::cli
