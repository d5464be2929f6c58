#pragma once

#include <windows.h>

#include <functional>

#include "tests/umpd/launcher/support/Handle.h"

namespace quillpress::harness {

// A thread of a test. Its end is waited for at the latest by the destructor.
class Thread {
 public:
  explicit Thread(std::function<void()> body);
  ~Thread();
  Thread(const Thread&) = delete;
  Thread& operator=(const Thread&) = delete;

  // Whether it ends within so many milliseconds.
  [[nodiscard]] bool endsWithin(DWORD milliseconds) const;

 private:
  static DWORD WINAPI run(void* body);

  std::function<void()> body_;
  Handle thread_;
};

// Runs `body` on another thread and returns its result: a mutex lets the same thread pass, but no other.
template <class Result>
Result onAnotherThread(const std::function<Result()>& body) {
  Result result{};
  {
    const Thread thread([&] { result = body(); });
  }
  return result;
}

}  // namespace quillpress::harness
