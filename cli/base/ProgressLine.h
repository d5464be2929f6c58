#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace quillpress::cli {

// A line on the terminal that says how far the work is. It comes when the work has taken half a second,
// changes a few times a second, and goes with this object, so that nothing of it is left between messages.
class ProgressLine {
 public:
  using Clock = std::chrono::steady_clock;

  // Nothing is ever shown when it is not wanted, or standard error is no terminal.
  explicit ProgressLine(bool isWanted);
  ~ProgressLine() { clear(); }
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  // Whether it is time to show something new. Costs little, so that it can be asked for each block.
  [[nodiscard]] bool isDue();
  void show(std::string_view text);
  void clear();

  [[nodiscard]] double seconds() const;

 private:
  bool isWanted_;
  Clock::time_point begin_ = Clock::now();
  Clock::time_point next_;
  std::size_t shownLength_ = 0;
};

// "1.2 MB", for people.
std::string roughSize(std::uint64_t bytes);

}  // namespace quillpress::cli
