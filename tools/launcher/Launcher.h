#pragma once

#include "tools/launcher/ActionQueue.h"
#include "tools/launcher/Log.h"
#include "tools/launcher/Message.h"
#include "tools/launcher/Options.h"
#include "tools/launcher/PdfConversion.h"
#include "tools/launcher/Receiver.h"

namespace quillpress::launcher {

// Takes messages from the receiver, one by one, and lets each sender go on at once. Another thread writes the
// message down and runs the command for a finished file, and a third one makes a PDF of it.
class Launcher {
 public:
  // REQUIRES: all outlive the launcher; the receiver is open
  Launcher(const Options& options, Receiver& receiver, Log& log, HANDLE stop);

  // Until told to leave by the options or by the event `stop`. False when the log or a command is held up for
  // good: the process can only be ended with what they still have to do.
  [[nodiscard]] bool run();

 private:
  void serve();
  void act(const Message& message);
  void write(const Message& message);
  void finishFile(const Message& message);
  void runCommand(const std::wstring& path, const Message& message);
  void convert(const Message& message);
  [[nodiscard]] bool finishActions();
  [[nodiscard]] bool isDoneAfter(Message::Kind kind) const;

  const Options& options_;
  Receiver& receiver_;
  Log& log_;
  HANDLE stop_;
  PdfConversion conversion_;
  bool done_ = false;
  // Conversions take long, and the log must not wait for them.
  ActionQueue conversions_{[this](const Message& message) { convert(message); }};
  ActionQueue actions_{[this](const Message& message) { act(message); }};
};

}  // namespace quillpress::launcher
