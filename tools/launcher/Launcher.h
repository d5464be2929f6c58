#pragma once

#include "tools/launcher/Log.h"
#include "tools/launcher/Message.h"
#include "tools/launcher/Options.h"
#include "tools/launcher/Receiver.h"

namespace quillpress::launcher {

// Takes messages from the receiver, one by one: writes each down, lets the sender go on, and runs the command
// for a finished file.
class Launcher {
 public:
  // REQUIRES: all outlive the launcher; the receiver is open
  Launcher(const Options& options, Receiver& receiver, Log& log);

  // Until told to leave by the options or by the event `stop`.
  void run(HANDLE stop);

 private:
  void serve();
  void write(const Message& message);
  void runCommand(const Message& message);
  [[nodiscard]] bool isDoneAfter(Message::Kind kind) const;

  const Options& options_;
  Receiver& receiver_;
  Log& log_;
  bool done_ = false;
};

}  // namespace quillpress::launcher
