#include "cli/base/ProgressLine.h"

#include <array>
#include <cstdio>

#include "cli/system/StandardStreams.h"

namespace quillpress::cli {

namespace {

constexpr std::chrono::milliseconds kPatience{500};
constexpr std::chrono::milliseconds kPace{150};

}  // namespace

ProgressLine::ProgressLine(bool isWanted)
    : isWanted_(isWanted && isTerminal(StandardStream::kError)), next_(begin_ + kPatience) {}

bool ProgressLine::isDue() {
  return isWanted_ && Clock::now() >= next_;
}

// Blanks remove what a longer text before has left: they work on every terminal.
void ProgressLine::show(std::string_view text) {
  if (!isWanted_) return;
  std::string line = "\r" + std::string(text);
  if (text.size() < shownLength_) line.append(shownLength_ - text.size(), ' ');
  writeToStandardError(line);
  shownLength_ = text.size();
  next_ = Clock::now() + kPace;
}

void ProgressLine::clear() {
  if (shownLength_ == 0) return;
  writeToStandardError("\r" + std::string(shownLength_, ' ') + "\r");
  shownLength_ = 0;
}

double ProgressLine::seconds() const {
  return std::chrono::duration<double>(Clock::now() - begin_).count();
}

std::string roughSize(std::uint64_t bytes) {
  constexpr double kThousand = 1000;
  constexpr std::array kUnits{"bytes", "kB", "MB", "GB"};
  auto size = static_cast<double>(bytes);
  std::size_t unit = 0;
  for (; size >= kThousand && unit + 1 < kUnits.size(); ++unit) size /= kThousand;
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), unit == 0 ? "%.0f %s" : "%.1f %s", size, kUnits[unit]);
  return text.data();
}

}  // namespace quillpress::cli
