#include "postscript/level3/pdf/Deflate.h"

#include <libdeflate.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <limits>
#include <new>

namespace quillpress::level3 {

namespace {

// zlib's usual step, for what is too large to be held.
constexpr int kStreamingLevel = 6;
// libdeflate's least: for an estimate.
constexpr int kRoughLevel = 1;

std::string deflatedBy(Deflater& deflater, std::string_view bytes) {
  std::string result;
  result.resize(deflater.bound(bytes.size()));
  result.resize(deflater.deflate(bytes, result.data()));
  return result;
}

}  // namespace

Deflater::Deflater(int level) : compressor_(libdeflate_alloc_compressor(level)) {
  if (!compressor_) throw std::bad_alloc();
}

Deflater& Deflater::ofThisThread() {
  thread_local Deflater deflater;
  return deflater;
}

std::size_t Deflater::bound(std::size_t count) const {
  return libdeflate_zlib_compress_bound(compressor_.get(), count);
}

std::size_t Deflater::deflate(std::string_view bytes, char* room) {
  return libdeflate_zlib_compress(compressor_.get(), bytes.data(), bytes.size(), room, bound(bytes.size()));
}

void Deflater::Free::operator()(libdeflate_compressor* compressor) const {
  libdeflate_free_compressor(compressor);
}

std::string deflated(std::string_view bytes) {
  return deflatedBy(Deflater::ofThisThread(), bytes);
}

std::size_t roughlyDeflatedSize(std::string_view bytes) {
  thread_local Deflater deflater(kRoughLevel);
  return deflatedBy(deflater, bytes).size();
}

struct StreamingDeflater::State {
  z_stream stream{};
  std::array<unsigned char, 32 * 1024> ready{};
};

StreamingDeflater::StreamingDeflater(Next next) : state_(std::make_unique<State>()), next_(std::move(next)) {
  if (deflateInit(&state_->stream, kStreamingLevel) != Z_OK) throw std::bad_alloc();
}

StreamingDeflater::~StreamingDeflater() {
  deflateEnd(&state_->stream);
}

void StreamingDeflater::run(std::string_view bytes, int flush) {
  z_stream& stream = state_->stream;
  // zlib does not write through its input pointer; the header only says so with z_const.
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
  stream.avail_in = static_cast<uInt>(bytes.size());
  do {
    stream.next_out = state_->ready.data();
    stream.avail_out = static_cast<uInt>(state_->ready.size());
    deflate(&stream, flush);
    next_({reinterpret_cast<const char*>(state_->ready.data()), state_->ready.size() - stream.avail_out});
  } while (stream.avail_out == 0);
}

void StreamingDeflater::write(std::string_view bytes) {
  constexpr std::size_t kMost = std::numeric_limits<uInt>::max() / 2;
  while (!bytes.empty()) {
    const std::size_t count = std::min(bytes.size(), kMost);
    run(bytes.substr(0, count), Z_NO_FLUSH);
    bytes.remove_prefix(count);
  }
}

void StreamingDeflater::finish() {
  run({}, Z_FINISH);
}

}  // namespace quillpress::level3
