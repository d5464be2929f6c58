#include "cli/conversion/JobRunner.h"

#include <algorithm>
#include <chrono>

#include "cli/conversion/Aside.h"

namespace quillpress::cli {

namespace {

// Enough for what procedures leave on the execution stack; a loop around an error would never end.
constexpr int kMostRunOuts = 64;
// Procedures that end do so in far less.
constexpr std::chrono::milliseconds kLongestRunOut{3000};

// A line width is the plainest operator that brings something into page content. The procedure holds the
// operator itself, so that nothing that the job defines can get between.
constexpr std::string_view kDefineProbe = "systemdict begin /quillpress.probe {7 //setlinewidth} def end\n";
constexpr std::string_view kProbe = "\nquillpress.probe\n";
constexpr std::string_view kProbeContent = "7 w ";

std::unique_ptr<Converter> newConverter() {
  auto converter = std::make_unique<Converter>();
  converter->convert(kDefineProbe);
  return converter;
}

}  // namespace

JobRunner::JobRunner() : converter_(newConverter()) {}

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
bool JobRunner::runOutAside() {
  if (patience_.count() <= 0) return false;
  const auto begin = std::chrono::steady_clock::now();
  const bool result = askAside(std::min(patience_, kLongestRunOut), [this] { return runOut(); });
  const auto spent = std::chrono::steady_clock::now() - begin;
  if (!result) patience_ -= std::chrono::duration_cast<std::chrono::milliseconds>(spent);
  return result;
}

// Lets the interpreter finish what the error interrupted, and asks whether it listens to new text again.
bool JobRunner::runOut() {
  for (int i = 0; i < kMostRunOuts; ++i) {
    if (converter_->convert("")) return isListening();
  }
  return false;
}

void JobRunner::reopen() {
  converter_ = newConverter();
  // Without a record only the definitions are lost, and the next page says so itself.
  if (record_ == nullptr) return;
  const Spool::Piece setUp{0, record_->size()};
  readPiece(*record_, setUp, [this](std::string_view text) { converter_->convert(text); });
}

bool JobRunner::isListening() {
  // Anything else is content of the job itself, which has gone on with what it was in the middle of.
  return converter_->convert(kProbe) == kProbeContent;
}

}  // namespace quillpress::cli
