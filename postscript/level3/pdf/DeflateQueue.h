#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "postscript/level3/pdf/PdfSyntax.h"
#include "postscript/level3/pdf/WorkerThread.h"

namespace quillpress::level3 {

// Streams on their way into a file, first in, first out, which a thread of the queue's own deflates while the
// job goes on. It begins when so much waits that this is worth it, and waits for as much again when it has
// done all. A stream that is asked for before its turn has come is deflated by whoever asks, and so are all
// when no thread can be had.
class DeflateQueue {
 public:
  struct Stream {
    ObjectNumber number = 0;
    std::string entries;
    std::string data;
    std::unique_ptr<char[]> deflated;
    std::size_t deflatedSize = 0;

    [[nodiscard]] std::string_view deflatedData() const { return {deflated.get(), deflatedSize}; }
  };

  // To wake a thread takes about as long as to deflate a KB.
  static constexpr std::size_t kWorthAThread = 8UL * 1024;

  explicit DeflateQueue(std::size_t stackSize = WorkerThread::kStackSize);
  // What nobody has taken is lost.
  ~DeflateQueue();
  DeflateQueue(const DeflateQueue&) = delete;
  DeflateQueue& operator=(const DeflateQueue&) = delete;

  void add(ObjectNumber number, std::string_view entries, std::string_view data);

  [[nodiscard]] bool isEmpty() const;
  // Of what was added and not taken.
  [[nodiscard]] std::size_t bytes() const;

  // REQUIRES: !isEmpty()
  // Whether the oldest stream has been deflated, and take() returns at once.
  [[nodiscard]] bool isReady() const;
  [[nodiscard]] Stream take();

 private:
  class State;
  std::unique_ptr<State> state_;
};

}  // namespace quillpress::level3
