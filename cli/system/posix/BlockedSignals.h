#pragma once

#include <signal.h>

#include <array>

namespace quillpress::cli {

// The signals that end a process which has not asked for them, and that can be asked for.
inline constexpr std::array kEndingSignals{SIGHUP,  SIGINT,  SIGQUIT, SIGTERM,
                                           SIGALRM, SIGUSR1, SIGUSR2, SIGXCPU};

// Holds those signals back from this thread as long as it lives; one that comes meanwhile acts afterwards.
class BlockedSignals {
 public:
  BlockedSignals();
  ~BlockedSignals();
  BlockedSignals(const BlockedSignals&) = delete;
  BlockedSignals& operator=(const BlockedSignals&) = delete;

 private:
  sigset_t before_;
};

}  // namespace quillpress::cli
