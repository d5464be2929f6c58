#include "postscript/level3/images/ImageFlateEncoder.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "postscript/level3/images/Repetitions.h"
#include "postscript/level3/pdf/Monitor.h"

namespace quillpress::level3 {

namespace {

constexpr std::size_t kPiece = 32UL * 1024;
// zlib holds back no more than its window and its buffer of symbols before it writes them.
constexpr std::size_t kRoom = kPiece + 192UL * 1024;
constexpr std::size_t kPieces = 6;

// Each piece of the data goes round: the caller fills it, the thread (or the caller) deflates it, the caller
// emits what has come of it and fills it again.
class ImageFlateEncoder final : public Encoder {
 public:
  ImageFlateEncoder(SinkPointer target, const ImageFlateSettings& settings)
      : Encoder(std::move(target), FilterClosing::kSourceOrTargetToo), settings_(settings) {
    if (deflateInit(&stream_, settings.effort) != Z_OK) throw std::bad_alloc();
    if (!settings.usesThread) return;
    hasThread_ = thread_.start([](void* self) { static_cast<ImageFlateEncoder*>(self)->work(); }, this,
                               settings.stackSize);
  }

  ~ImageFlateEncoder() override {
    {
      const Monitor::Lock lock(monitor_);
      isOver_ = true;
    }
    monitor_.notifyAll();
    thread_.join();
    deflateEnd(&stream_);
  }

  ImageFlateEncoder(const ImageFlateEncoder&) = delete;
  ImageFlateEncoder& operator=(const ImageFlateEncoder&) = delete;

 private:
  enum class Progress : std::uint8_t { kFree, kWaiting, kDone };
  struct Piece {
    std::vector<Byte> input;
    std::unique_ptr<Byte[]> output;
    std::size_t outputRoom = 0;
    std::size_t outputSize = 0;
    int flush = Z_NO_FLUSH;
    Progress progress = Progress::kFree;
    bool hasFailed = false;
  };

  void encode(Bytes bytes) override {
    while (!bytes.empty() && isOpen()) {
      Piece& piece = pieceToFill();
      if (!isOpen()) return;
      const std::size_t count = std::min(bytes.size(), kPiece - piece.input.size());
      piece.input.insert(piece.input.end(), bytes.begin(),
                         bytes.begin() + static_cast<std::ptrdiff_t>(count));
      bytes = bytes.subspan(count);
      if (piece.input.size() == kPiece) handOver(piece, Z_NO_FLUSH);
    }
  }

  void encodeEnd() override {
    handOver(pieceToFill(), Z_FINISH);
    while (oldest_ != filled_) emitOldest();
  }

  // Free, or begun already.
  Piece& pieceToFill() {
    Piece& piece = pieces_[filled_ % kPieces];
    if (filled_ - oldest_ == kPieces) emitOldest();
    if (!piece.output) {
      piece.input.reserve(kPiece);
      piece.output = std::make_unique_for_overwrite<Byte[]>(kRoom);
      piece.outputRoom = kRoom;
    }
    return piece;
  }

  void handOver(Piece& piece, int flush) {
    piece.flush = flush;
    ++filled_;
    if (!hasThread_) {
      deflateOne(piece);
      piece.progress = Progress::kDone;
      emitOldest();
      return;
    }
    {
      const Monitor::Lock lock(monitor_);
      piece.progress = Progress::kWaiting;
    }
    monitor_.notifyAll();
  }

  void emitOldest() {
    Piece& piece = pieces_[oldest_ % kPieces];
    {
      Monitor::Lock lock(monitor_);
      lock.wait([&] { return piece.progress == Progress::kDone; });
      piece.progress = Progress::kFree;
    }
    ++oldest_;
    piece.input.clear();
    if (piece.hasFailed) throw std::bad_alloc();
    emit({piece.output.get(), piece.outputSize});
  }

  void work() {
    Monitor::Lock lock(monitor_);
    for (std::size_t next = 0;; ++next) {
      Piece& piece = pieces_[next % kPieces];
      lock.wait([&] { return isOver_ || piece.progress == Progress::kWaiting; });
      if (isOver_) return;
      lock.unlock();
      deflateOne(piece);
      lock.lock();
      piece.progress = Progress::kDone;
      monitor_.notifyAll();
    }
  }

  void deflateOne(Piece& piece) noexcept {
    stream_.next_out = piece.output.get();
    stream_.avail_out = static_cast<uInt>(piece.outputRoom);
    if (settings_.isPredicted && !piece.input.empty()) chooseSearch(piece.input);
    stream_.next_in = piece.input.data();
    stream_.avail_in = static_cast<uInt>(piece.input.size());
    do {
      deflate(&stream_, piece.flush);
    } while (stream_.avail_out == 0 && hasGrown(piece));
    piece.outputSize = static_cast<std::size_t>(stream_.next_out - piece.output.get());
  }

  // For the bytes that come; those before are written as they were begun.
  void chooseSearch(Bytes bytes) noexcept {
    stream_.avail_in = 0;
    // Were there no room for what must be written before, all would stay as it is.
    deflateParams(&stream_, settings_.effort, holdsRepetitions(bytes) ? Z_DEFAULT_STRATEGY : Z_RLE);
  }

  bool hasGrown(Piece& piece) noexcept {
    std::unique_ptr<Byte[]> larger(new (std::nothrow) Byte[2 * piece.outputRoom]);
    piece.hasFailed = larger == nullptr;
    if (piece.hasFailed) return false;
    std::copy_n(piece.output.get(), piece.outputRoom, larger.get());
    stream_.next_out = larger.get() + piece.outputRoom;
    stream_.avail_out = static_cast<uInt>(piece.outputRoom);
    piece.output = std::move(larger);
    piece.outputRoom *= 2;
    return true;
  }

  const ImageFlateSettings settings_;
  z_stream stream_{};
  std::array<Piece, kPieces> pieces_;
  // Counted from the first: the piece that is being filled, and the one to be emitted next.
  std::size_t filled_ = 0;
  std::size_t oldest_ = 0;
  Monitor monitor_;
  bool isOver_ = false;
  bool hasThread_ = false;
  WorkerThread thread_;
};

}  // namespace

SinkPointer imageFlateEncoder(SinkPointer target, const ImageFlateSettings& settings) {
  return std::make_shared<ImageFlateEncoder>(std::move(target), settings);
}

}  // namespace quillpress::level3
