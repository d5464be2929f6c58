#pragma once

#include <cstddef>
#include <deque>
#include <functional>

#include "tools/launcher/Message.h"
#include "umpd/win32/Resources.h"

namespace quillpress::launcher {

// Acts on messages one by one, on a thread of its own: whatever holds up the log or a command, the senders of
// messages go on printing.
class ActionQueue {
 public:
  // REQUIRES: `action` can be called until finish() has returned true
  explicit ActionQueue(std::function<void(const Message&)> action);
  ActionQueue(const ActionQueue&) = delete;
  ActionQueue& operator=(const ActionQueue&) = delete;
  ~ActionQueue() = default;

  // Never waits for an action. When kCapacity messages wait, the message is lost.
  void push(Message message);

  // Waits for the actions, and ends the thread. False when one of them does not end within so many
  // milliseconds: then the process can only be ended with it.
  [[nodiscard]] bool finish(DWORD timeForAnAction = kTimeForAnAction);

  static constexpr DWORD kTimeForAnAction = 5000;

  // Some 100 MB of messages, or the printing of several days.
  static constexpr std::size_t kCapacity = 100'000;

 private:
  static DWORD WINAPI runThread(void* queue);
  void work();
  [[nodiscard]] std::size_t doneCount();

  std::function<void(const Message&)> action_;
  driver::CriticalSection section_;
  std::deque<Message> messages_;
  std::size_t done_ = 0;
  bool isFinishing_ = false;
  driver::KernelHandle wake_;
  driver::KernelHandle thread_;
};

}  // namespace quillpress::launcher
