#pragma once

#include "tools/launcher/ActionQueue.h"
#include "tools/launcher/Log.h"
#include "tools/launcher/Message.h"
#include "tools/launcher/Options.h"
#include "tools/launcher/Receiver.h"

namespace quillpress::launcher {

// Takes messages from the receiver, one by one, and lets each sender go on at once. Another thread writes the
// message down and runs the command for a finished file.
class Launcher {
 public:
  // REQUIRES: all outlive the launcher; the receiver is open
  Launcher(const Options& options, Receiver& receiver, Log& log);

  // Until told to leave by the options or by the event `stop`. False when the log or a command is held up for
  // good: the process can only be ended with what they still have to do.
  [[nodiscard]] bool run(HANDLE stop);

 private:
  void serve();
  void act(const Message& message);
  void write(const Message& message);
  void runCommand(const Message& message);
  [[nodiscard]] bool isDoneAfter(Message::Kind kind) const;

  const Options& options_;
  Receiver& receiver_;
  Log& log_;
  bool done_ = false;
  ActionQueue actions_{[this](const Message& message) { act(message); }};
};

}  // namespace quillpress::launcher
