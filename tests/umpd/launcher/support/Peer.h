#pragma once

#include <windows.h>

#include <functional>
#include <vector>

#include "tests/umpd/launcher/support/Channel.h"
#include "tests/umpd/launcher/support/Handle.h"
#include "tests/umpd/launcher/support/Record.h"
#include "tests/umpd/launcher/support/Thread.h"

namespace quillpress::harness {

// Plays the launcher on a thread of the test: keeps every record that comes and acknowledges it. Its memory
// is filled with a pattern at first, so that bytes show which nobody writes.
class Peer {
 public:
  static constexpr unsigned char kPattern = 0xA5;

  struct Options {
    // What this launcher makes; without a mutex it is not there for the library.
    bool memory = true;
    bool requestEvent = true;
    bool mutex = true;
    // Without this, the sender waits until `acknowledge` is called.
    bool acknowledges = true;
    // Called on the peer's thread for each record, while the sender waits.
    std::function<void(const Record&)> onMessage = [](const Record&) {};
  };

  explicit Peer(const Channel& channel) : Peer(channel, Options()) {}
  Peer(Channel channel, Options options);
  ~Peer();
  Peer(const Peer&) = delete;
  Peer& operator=(const Peer&) = delete;

  // Whether one more record comes within so many milliseconds. Counts each record once.
  [[nodiscard]] bool receives(DWORD milliseconds = 10000) const;

  // Those that came, in order. REQUIRES: no sender is at work, or `receives` has just told of the last one
  [[nodiscard]] const std::vector<Record>& records() const { return records_; }

  // The bytes of the shared memory as they are now. REQUIRES: made with memory
  [[nodiscard]] Record memory() const;

  void acknowledge() const;

 private:
  void makeObjects();
  void listen();

  Channel channel_;
  Options options_;
  std::vector<Record> records_;
  Handle section_;
  Handle request_;
  Handle stop_;
  Handle listening_;
  Handle received_;  // a semaphore
  void* view_ = nullptr;
  // The last member: its thread uses the others.
  Thread thread_;
};

}  // namespace quillpress::harness
