#include "postscript/level3/pdf/DeflateQueue.h"

#include <cstdint>
#include <deque>
#include <utility>

#include "postscript/level3/pdf/Deflate.h"

#ifndef _WIN32
#include <pthread.h>

#include <condition_variable>
#include <csignal>
#include <mutex>
#include <thread>
#endif

namespace quillpress::level3 {

namespace {

void deflate(Deflater& deflater, DeflateQueue::Stream& stream) {
  stream.deflatedSize = deflater.deflate(stream.data, stream.deflated.get());
}

}  // namespace

#ifdef _WIN32

// The standard library of this compiler comes without threads.
bool DeflateQueue::isOffered() {
  return false;
}

class DeflateQueue::State {
 public:
  explicit State(std::size_t /*stackSize*/) {}

  void add(Stream stream) { streams_.push_back(std::move(stream)); }
  bool isReady() { return true; }
  Stream take() {
    Stream stream = std::move(streams_.front());
    streams_.pop_front();
    deflate(Deflater::ofThisThread(), stream);
    return stream;
  }

  std::size_t bytes = 0;
  std::size_t count = 0;

 private:
  std::deque<Stream> streams_;
};

#else

bool DeflateQueue::isOffered() {
  return std::thread::hardware_concurrency() > 1;
}

namespace {

// The process's signals are for threads that know what to do with them; a new thread inherits what is held
// back.
class NoSignals {
 public:
  NoSignals() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  ~NoSignals() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  NoSignals(const NoSignals&) = delete;
  NoSignals& operator=(const NoSignals&) = delete;

 private:
  sigset_t before_{};
};

}  // namespace

class DeflateQueue::State {
 public:
  explicit State(std::size_t stackSize) : stackSize_(stackSize) {}

  ~State() {
    if (!hasThread_) return;
    {
      const std::lock_guard lock(mutex_);
      isOver_ = true;
    }
    changed_.notify_all();
    pthread_join(thread_, nullptr);
  }

  State(const State&) = delete;
  State& operator=(const State&) = delete;

  void add(Stream stream) {
    const std::lock_guard lock(mutex_);
    waiting_ += stream.data.size();
    entries_.push_back({std::move(stream)});
    if (!isWorthIt()) return;
    if (isIdle_) changed_.notify_all();
    if (!wasStarted_) start();
  }

  bool isReady() {
    const std::lock_guard lock(mutex_);
    return entries_.front().progress == Progress::kDone;
  }

  Stream take() {
    std::unique_lock lock(mutex_);
    Entry& oldest = entries_.front();
    if (oldest.progress == Progress::kWaiting) {
      begin(oldest);
      lock.unlock();
      deflate(Deflater::ofThisThread(), oldest.stream);
      lock.lock();
    } else {
      changed_.wait(lock, [&] { return oldest.progress == Progress::kDone; });
    }
    Stream stream = std::move(oldest.stream);
    entries_.pop_front();
    return stream;
  }

  std::size_t bytes = 0;
  std::size_t count = 0;

 private:
  enum class Progress : std::uint8_t { kWaiting, kBegun, kDone };
  struct Entry {
    Stream stream;
    Progress progress = Progress::kWaiting;
  };

  // Where no thread can be had, take() does it all.
  void start() {
    wasStarted_ = true;
    const NoSignals quiet;
    pthread_attr_t attributes;
    if (pthread_attr_init(&attributes) != 0) return;
    // std::thread cannot be told the size of its stack.
    hasThread_ = pthread_attr_setstacksize(&attributes, stackSize_) == 0 &&
                 pthread_create(&thread_, &attributes, &State::runThread, this) == 0;
    pthread_attr_destroy(&attributes);
  }

  [[nodiscard]] bool isWorthIt() const { return waiting_ >= kWorthAThread; }

  void begin(Entry& entry) {
    entry.progress = Progress::kBegun;
    waiting_ -= entry.stream.data.size();
  }

  static void* runThread(void* state) {
    static_cast<State*>(state)->work();
    return nullptr;
  }

  // Allocates nothing, so that nothing can go wrong here.
  void work() {
    std::unique_lock lock(mutex_);
    while (!isOver_) {
      Entry* const entry = nextWaiting();
      if (entry == nullptr) {
        isIdle_ = true;
        changed_.wait(lock, [this] { return isOver_ || isWorthIt(); });
        isIdle_ = false;
        continue;
      }
      begin(*entry);
      lock.unlock();
      deflate(threadsDeflater_, entry->stream);
      lock.lock();
      entry->progress = Progress::kDone;
      changed_.notify_all();
    }
  }

  Entry* nextWaiting() {
    for (Entry& entry : entries_) {
      if (entry.progress == Progress::kWaiting) return &entry;
    }
    return nullptr;
  }

  Deflater threadsDeflater_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Entry> entries_;  // Whose elements stay where they are when others come and go.
  std::size_t waiting_ = 0;    // Bytes that nobody has begun with.
  bool isIdle_ = false;
  bool isOver_ = false;
  const std::size_t stackSize_;
  pthread_t thread_{};
  bool wasStarted_ = false;
  bool hasThread_ = false;
};

#endif

DeflateQueue::DeflateQueue(std::size_t stackSize) : state_(std::make_unique<State>(stackSize)) {}

DeflateQueue::~DeflateQueue() = default;

void DeflateQueue::add(ObjectNumber number, std::string_view entries, std::string_view data) {
  Stream stream;
  stream.number = number;
  stream.entries = entries;
  stream.data = data;
  stream.deflated = std::make_unique_for_overwrite<char[]>(Deflater::ofThisThread().bound(data.size()));
  state_->add(std::move(stream));
  state_->bytes += data.size();
  ++state_->count;
}

bool DeflateQueue::isEmpty() const {
  return state_->count == 0;
}

std::size_t DeflateQueue::bytes() const {
  return state_->bytes;
}

bool DeflateQueue::isReady() const {
  return state_->isReady();
}

DeflateQueue::Stream DeflateQueue::take() {
  Stream stream = state_->take();
  state_->bytes -= stream.data.size();
  --state_->count;
  return stream;
}

}  // namespace quillpress::level3
