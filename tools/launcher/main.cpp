#include <array>

#include "tools/launcher/CommandLine.h"
#include "tools/launcher/Launcher.h"
#include "tools/launcher/Log.h"
#include "tools/launcher/Options.h"
#include "tools/launcher/Receiver.h"
#include "tools/launcher/StopSignal.h"
#include "umpd/win32/SystemInformation.h"
#include "umpd/win32/Windows.h"

namespace quillpress::launcher {
namespace {

enum class ExitCode { kLeft = 0, kBadOptions = 1, kSomebodyElseListens = 2, kCannotListen = 3 };

std::wstring environmentVariable(const wchar_t* name) {
  std::array<wchar_t, 4096> value{};
  const DWORD length = GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size()));
  return length < value.size() ? std::wstring(value.data(), length) : std::wstring();
}

// Without the program's own name. The environment comes first, so that the command line has the last word.
std::vector<std::wstring> arguments() {
  std::vector<std::wstring> all = splitCommandLine(L"twsmsnd " + environmentVariable(L"TWSMSND_OPTIONS"));
  const std::vector<std::wstring> own = splitCommandLine(GetCommandLineW());
  if (!own.empty()) all.insert(all.end(), own.begin() + 1, own.end());
  all.erase(all.begin());
  return all;
}

void say(const std::wstring& text) {
  Log({}).writeLine(L"twsmsnd: " + text);
}

ExitCode listen(const Options& options) {
  Log log(options.logFile);
  if (!log.isOpen()) {
    say(L"cannot write to " + options.logFile);
    return ExitCode::kBadOptions;
  }
  const StopSignal stop;
  Receiver receiver(driver::channelNames(driver::windowsVersion().sessionPrefix(), driver::kLauncherChannel,
                                         driver::userName()));
  switch (receiver.open()) {
    case Receiver::Opened::kSomebodyElseListens:
      say(L"another launcher listens for this user");
      return ExitCode::kSomebodyElseListens;
    case Receiver::Opened::kFailed:
      say(L"the objects of the channel cannot be made");
      return ExitCode::kCannotListen;
    case Receiver::Opened::kListening:
      break;
  }
  Launcher launcher(options, receiver, log, stop.event());
  // Lines that nobody takes are lost; their thread cannot be told to end.
  if (!launcher.run()) TerminateProcess(GetCurrentProcess(), static_cast<UINT>(ExitCode::kLeft));
  return ExitCode::kLeft;
}

ExitCode run() {
  std::wstring complaint;
  const std::optional<Options> options = parseOptions(arguments(), complaint);
  if (!options) {
    say(complaint + L" (--help shows the options)");
    return ExitCode::kBadOptions;
  }
  if (options->help) {
    Log({}).writeLine(kHelpText);
    return ExitCode::kLeft;
  }
  return listen(*options);
}

}  // namespace
}  // namespace quillpress::launcher

int main() {
  return static_cast<int>(quillpress::launcher::run());
}
