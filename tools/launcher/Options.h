#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "tools/launcher/CommandTemplate.h"

namespace quillpress::launcher {

// When the launcher leaves by itself.
enum class LeaveAfter { kNothing, kFirstMessage, kFirstStopPrint };

struct Options {
  std::wstring logFile;  // empty: standard output
  std::optional<CommandTemplate> command;
  LeaveAfter leaveAfter = LeaveAfter::kNothing;
  std::optional<std::chrono::seconds> timeLimit;
  bool help = false;
};

extern const wchar_t* const kHelpText;

// None, and why, when the arguments make no sense.
std::optional<Options> parseOptions(const std::vector<std::wstring>& arguments, std::wstring& complaint);

}  // namespace quillpress::launcher
