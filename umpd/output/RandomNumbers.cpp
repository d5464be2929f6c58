#include "umpd/output/RandomNumbers.h"

#include "umpd/win32/Windows.h"

namespace quillpress {
namespace {

// Jobs of one thread may follow each other within one tick.
unsigned nextCount() {
  static LONG count = 0;
  return static_cast<unsigned>(InterlockedIncrement(&count));
}

}  // namespace

RandomNumbers::RandomNumbers() : engine_(GetCurrentThreadId() * GetTickCount() + nextCount()) {}

}  // namespace quillpress
