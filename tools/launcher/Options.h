#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "tools/launcher/CommandTemplate.h"

namespace quillpress::launcher {

// When the launcher leaves by itself.
enum class LeaveAfter { kNothing, kFirstMessage, kFirstStopPrint };

// Whether finished files become PDFs. Whoever names a command has his own plans for them.
enum class Conversion { kWhenInstalled, kAlways, kNever };

struct Options {
  std::wstring logFile;  // empty: standard output
  Conversion conversion = Conversion::kWhenInstalled;
  std::wstring folder;    // of the PDFs; empty: that of the finished file
  bool fileOnly = false;  // no viewer is to show them
  std::optional<CommandTemplate> command;
  LeaveAfter leaveAfter = LeaveAfter::kNothing;
  std::optional<std::chrono::seconds> timeLimit;
  bool help = false;
};

extern const wchar_t* const kHelpText;

// None, and why, when the arguments make no sense.
std::optional<Options> parseOptions(const std::vector<std::wstring>& arguments, std::wstring& complaint);

}  // namespace quillpress::launcher
