#include "tools/launcher/StopSignal.h"

namespace quillpress::launcher {
namespace {

// Milliseconds; the system itself is not more patient with a program that is told to end.
constexpr DWORD kTimeToEnd = 5000;

// The system passes nothing to the function that it calls.
StopSignal* instance = nullptr;

}  // namespace

StopSignal::StopSignal() : stop_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
  instance = this;
  SetConsoleCtrlHandler(&onControl, TRUE);
}

StopSignal::~StopSignal() {
  SetConsoleCtrlHandler(&onControl, FALSE);
  instance = nullptr;
}

// Runs on a thread of its own, perhaps while the program is leaving already.
BOOL WINAPI StopSignal::onControl(DWORD kind) {
  const StopSignal* const signal = instance;
  if (signal != nullptr) SetEvent(signal->stop_.get());
  const bool endsWithThisCall =
      kind == CTRL_CLOSE_EVENT || kind == CTRL_LOGOFF_EVENT || kind == CTRL_SHUTDOWN_EVENT;
  if (endsWithThisCall) Sleep(kTimeToEnd);  // the end of the process ends this thread
  return TRUE;
}

}  // namespace quillpress::launcher
