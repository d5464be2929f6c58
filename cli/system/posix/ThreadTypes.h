#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>

#include "cli/system/posix/BlockedSignals.h"

namespace quillpress::cli {

using Mutex = std::mutex;
using ConditionVariable = std::condition_variable;

// A thread to which no signals come: they are for the main one, see TemporaryName.
template <typename Work>
std::thread startThread(Work work) {
  // A thread inherits what is held back.
  const BlockedSignals quiet;
  return std::thread(std::move(work));
}
using Thread = std::thread;

}  // namespace quillpress::cli
