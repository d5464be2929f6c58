#include "tools/launcher/ActionQueue.h"

#include <utility>

#include "umpd/win32/Windows.h"

namespace quillpress::launcher {
namespace {

using Lock = driver::CriticalSection::Lock;

}  // namespace

ActionQueue::ActionQueue(std::function<void(const Message&)> action)
    : action_(std::move(action)),
      wake_(CreateEventW(nullptr, FALSE, FALSE, nullptr)),
      // The C runtime is a DLL here, which the system tells of each thread, so the runtime's own way to begin
      // one is not needed.
      thread_(CreateThread(nullptr, 0, &runThread, this, 0, nullptr)) {}

void ActionQueue::push(Message message) {
  {
    const Lock lock(section_);
    if (messages_.size() < kCapacity) messages_.push_back(std::move(message));
  }
  SetEvent(wake_.get());
}

bool ActionQueue::finish(DWORD timeForAnAction) {
  {
    const Lock lock(section_);
    isFinishing_ = true;
  }
  SetEvent(wake_.get());
  // A slow reader of the log is waited for as long as it reads at all.
  for (std::size_t before = doneCount();;) {
    if (WaitForSingleObject(thread_.get(), timeForAnAction) == WAIT_OBJECT_0) return true;
    const std::size_t now = doneCount();
    if (now == before) return false;
    before = now;
  }
}

std::size_t ActionQueue::doneCount() {
  const Lock lock(section_);
  return done_;
}

DWORD WINAPI ActionQueue::runThread(void* queue) {
  static_cast<ActionQueue*>(queue)->work();
  return 0;
}

void ActionQueue::work() {
  for (;;) {
    Message message;
    bool isEmpty = false;
    {
      const Lock lock(section_);
      isEmpty = messages_.empty();
      if (isEmpty && isFinishing_) return;
      if (!isEmpty) {
        message = std::move(messages_.front());
        messages_.pop_front();
      }
    }
    if (isEmpty) {
      WaitForSingleObject(wake_.get(), INFINITE);
      continue;
    }
    action_(message);
    const Lock lock(section_);
    ++done_;
  }
}

}  // namespace quillpress::launcher
