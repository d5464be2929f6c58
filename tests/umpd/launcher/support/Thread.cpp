#include "tests/umpd/launcher/support/Thread.h"

#include <utility>

namespace quillpress::harness {

Thread::Thread(std::function<void()> body)
    : body_(std::move(body)), thread_(CreateThread(nullptr, 0, &run, &body_, 0, nullptr)) {}

Thread::~Thread() {
  WaitForSingleObject(thread_.get(), INFINITE);
}

bool Thread::endsWithin(DWORD milliseconds) const {
  return WaitForSingleObject(thread_.get(), milliseconds) == WAIT_OBJECT_0;
}

DWORD WINAPI Thread::run(void* body) {
  (*static_cast<std::function<void()>*>(body))();
  return 0;
}

}  // namespace quillpress::harness
