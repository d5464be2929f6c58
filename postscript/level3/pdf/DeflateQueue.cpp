#include "postscript/level3/pdf/DeflateQueue.h"

#include <cstdint>
#include <deque>
#include <utility>

#include "postscript/level3/pdf/Deflate.h"
#include "postscript/level3/pdf/Monitor.h"

namespace quillpress::level3 {

namespace {

void deflate(Deflater& deflater, DeflateQueue::Stream& stream) {
  stream.deflatedSize = deflater.deflate(stream.data, stream.deflated.get());
}

}  // namespace

class DeflateQueue::State {
 public:
  explicit State(std::size_t stackSize) : stackSize_(stackSize) {}

  ~State() {
    {
      const Monitor::Lock lock(monitor_);
      isOver_ = true;
    }
    monitor_.notifyAll();
    thread_.join();
  }

  State(const State&) = delete;
  State& operator=(const State&) = delete;

  void add(Stream stream) {
    const Monitor::Lock lock(monitor_);
    const std::size_t size = stream.data.size();
    entries_.push_back({std::move(stream)});
    waiting_ += size;
    if (!isWorthIt()) return;
    if (isIdle_) monitor_.notifyAll();
    if (!wasStarted_) start();
  }

  bool isReady() {
    const Monitor::Lock lock(monitor_);
    return entries_.front().progress == Progress::kDone;
  }

  Stream take() {
    Monitor::Lock lock(monitor_);
    Entry& oldest = entries_.front();
    if (oldest.progress == Progress::kWaiting) {
      begin(oldest);
      lock.unlock();
      deflate(Deflater::ofThisThread(), oldest.stream);
      lock.lock();
    } else {
      lock.wait([&] { return oldest.progress == Progress::kDone; });
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
    thread_.start([](void* state) { static_cast<State*>(state)->work(); }, this, stackSize_);
  }

  [[nodiscard]] bool isWorthIt() const { return waiting_ >= kWorthAThread; }

  void begin(Entry& entry) {
    entry.progress = Progress::kBegun;
    waiting_ -= entry.stream.data.size();
  }

  // Allocates nothing, so that nothing can go wrong here.
  void work() {
    Monitor::Lock lock(monitor_);
    while (!isOver_) {
      Entry* const entry = nextWaiting();
      if (entry == nullptr) {
        isIdle_ = true;
        lock.wait([this] { return isOver_ || isWorthIt(); });
        isIdle_ = false;
        continue;
      }
      begin(*entry);
      lock.unlock();
      deflate(threadsDeflater_, entry->stream);
      lock.lock();
      entry->progress = Progress::kDone;
      monitor_.notifyAll();
    }
  }

  Entry* nextWaiting() {
    for (Entry& entry : entries_) {
      if (entry.progress == Progress::kWaiting) return &entry;
    }
    return nullptr;
  }

  Deflater threadsDeflater_;
  Monitor monitor_;
  std::deque<Entry> entries_;  // Whose elements stay where they are when others come and go.
  std::size_t waiting_ = 0;    // Bytes that nobody has begun with.
  bool isIdle_ = false;
  bool isOver_ = false;
  const std::size_t stackSize_;
  bool wasStarted_ = false;
  WorkerThread thread_;
};

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
