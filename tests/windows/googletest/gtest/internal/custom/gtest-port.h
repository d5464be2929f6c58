// GoogleTest's own place for platform code. It includes this file by this very path.
//
// The win32 thread model of MinGW-w64 has no std::mutex, which GoogleTest's Notification would need;
// everything else in GoogleTest calls Windows directly.
#pragma once

#define GTEST_HAS_NOTIFICATION_ 1

namespace testing::internal {

class Notification {
 public:
  Notification();
  ~Notification();
  Notification(const Notification&) = delete;
  Notification& operator=(const Notification&) = delete;

  // The names that GoogleTest calls.
  void Notify();               // NOLINT(readability-identifier-naming)
  void WaitForNotification();  // NOLINT(readability-identifier-naming)

 private:
  void* event_;
};

}  // namespace testing::internal
