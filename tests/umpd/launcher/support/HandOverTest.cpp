#include "tests/umpd/launcher/support/HandOverTest.h"

namespace quillpress::harness {

bool HandOverTest::jobMutexIsTaken() {
  return onAnotherThread<bool>([] {
    const Handle mutex(OpenMutexW(SYNCHRONIZE | MUTEX_MODIFY_STATE, FALSE, L"Global\\umdriver"));
    if (!mutex) return false;
    const bool taken = WaitForSingleObject(mutex.get(), 0) == WAIT_TIMEOUT;
    if (!taken) ReleaseMutex(mutex.get());
    return taken;
  });
}

}  // namespace quillpress::harness
