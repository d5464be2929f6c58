#include "tools/launcher/Launcher.h"

#include <utility>

#include "tools/launcher/Deadline.h"
#include "tools/launcher/LogLine.h"
#include "umpd/win32/ProgramRunner.h"
#include "umpd/win32/SystemInformation.h"
#include "umpd/win32/Windows.h"

namespace quillpress::launcher {
namespace {

// Milliseconds after the last message in which a sender may still come that has found the mutex before it
// went.
constexpr DWORD kTimeForLatecomers = 250;

bool isFile(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

// Starts a program and lets it run; it shows whatever window it likes.
bool start(std::wstring commandLine) {
  driver::ProgramRun run;
  run.commandLine = std::move(commandLine);
  return driver::startProgram(run);
}

}  // namespace

Launcher::Launcher(const Options& options, Receiver& receiver, Log& log, HANDLE stop)
    : options_(options), receiver_(receiver), log_(log), stop_(stop), conversion_(options, log, stop) {}

bool Launcher::run() {
  const Deadline deadline(options_.timeLimit);
  if (receiver_.takeOverRequest()) serve();
  while (!done_ && receiver_.wait(stop_, deadline.remaining()) == Receiver::Woken::kByRequest) serve();
  receiver_.close();
  while (receiver_.isRequestedWithin(kTimeForLatecomers)) serve();
  return finishActions();
}

// Those that write first: they hand over to those that convert. Who wants the program to end at once ends the
// conversions; otherwise the last files are converted, as there is nobody who would do it later.
bool Launcher::finishActions() {
  if (!actions_.finish()) return false;
  const bool isStopped = WaitForSingleObject(stop_, 0) == WAIT_OBJECT_0;
  return conversions_.finish(isStopped ? ActionQueue::kTimeForAnAction : INFINITE);
}

// Acknowledged first: the program that prints stands still until then, and so does every other job of the
// machine.
void Launcher::serve() {
  Message message = readMessage(receiver_.record());
  done_ = done_ || isDoneAfter(message.kind);
  // The sender may print again at once, and must not find a launcher that is leaving.
  if (done_) receiver_.close();
  receiver_.acknowledge();
  actions_.push(std::move(message));
}

void Launcher::act(const Message& message) {
  write(message);
  if (message.kind == Message::Kind::kStopPrint) finishFile(message);
}

void Launcher::write(const Message& message) {
  const std::wstring command = driver::fromAnsi(message.command);
  switch (message.kind) {
    case Message::Kind::kStartPrint:
      log_.writeLine(logLine({command, driver::fromAnsi(message.printerName)}));
      break;
    case Message::Kind::kStopPrint:
      log_.writeLine(logLine({command, driver::fromAnsi(message.printerName),
                              driver::fromAnsi(message.outputPath), driver::fromAnsi(message.documentName)}));
      break;
    case Message::Kind::kUnknownCommand:
      log_.writeLine(logLine({L"unknown command", command}));
      break;
    case Message::Kind::kEndlessText:
      log_.writeLine(logLine({L"text without an end", command}));
      break;
  }
}

void Launcher::finishFile(const Message& message) {
  const bool isConverted = conversion_.isWanted();
  if (!isConverted && !options_.command) return;
  const std::wstring path = driver::fromAnsi(message.outputPath);
  // A job that went wrong in the queue has lost its file. And who may write messages need not be the printer:
  // no command for what is no file.
  if (!isFile(path)) {
    log_.writeLine(logLine({L"no such file", path}));
    return;
  }
  if (isConverted) {
    conversions_.push(message);
  } else {
    runCommand(path, message);
  }
}

void Launcher::convert(const Message& message) {
  const auto pdf = conversion_.convert(driver::fromAnsi(message.outputPath));
  if (!pdf) return;
  if (options_.command) {
    runCommand(*pdf, message);
  } else if (!options_.fileOnly) {
    conversion_.open(*pdf);
  }
}

void Launcher::runCommand(const std::wstring& path, const Message& message) {
  const std::wstring commandLine =
      options_.command->commandLine(path, driver::fromAnsi(message.documentName));
  if (!start(commandLine)) log_.writeLine(logLine({L"cannot run", commandLine}));
}

bool Launcher::isDoneAfter(Message::Kind kind) const {
  switch (options_.leaveAfter) {
    case LeaveAfter::kNothing:
      return false;
    case LeaveAfter::kFirstMessage:
      return true;
    case LeaveAfter::kFirstStopPrint:
      return kind == Message::Kind::kStopPrint;
  }
  return false;
}

}  // namespace quillpress::launcher
