#include "cli/system/posix/BlockedSignals.h"

namespace quillpress::cli {

BlockedSignals::BlockedSignals() : before_{} {
  sigset_t ending;
  sigemptyset(&ending);
  for (const int number : kEndingSignals) sigaddset(&ending, number);
  pthread_sigmask(SIG_BLOCK, &ending, &before_);
}

BlockedSignals::~BlockedSignals() {
  pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

}  // namespace quillpress::cli
