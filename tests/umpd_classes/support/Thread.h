#pragma once

#include <windows.h>

#include <functional>

#include "win32/Handles.h"

namespace quillpress::classes {

// Another thread, for what belongs to a thread: mutexes. Its end is waited for at the latest by the
// destructor.
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
  KernelHandle thread_;
};

// Runs the body on another thread to its end.
void onAnotherThread(const std::function<void()>& body);

}  // namespace quillpress::classes
