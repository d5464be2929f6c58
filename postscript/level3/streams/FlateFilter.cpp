#include "postscript/level3/streams/FlateFilter.h"

#include <algorithm>
#include <array>
#include <limits>
#include <new>

namespace quillpress::level3 {

namespace {

// zlib counts in 32 bits.
uInt countOf(std::size_t size) {
  return static_cast<uInt>(std::min<std::size_t>(size, std::numeric_limits<uInt>::max()));
}

// zlib's interface is older than const.
Bytef* inputOf(Bytes bytes) {
  return const_cast<Bytef*>(bytes.data());
}

}  // namespace

FlateDecoder::FlateDecoder(SourcePointer source, FilterClosing closing)
    : Decoder(std::move(source), closing) {
  if (inflateInit(&stream_) != Z_OK) throw std::bad_alloc();
  // The sum at the end is read past and not compared: what has been delivered cannot be taken back, and
  // Ghostscript does not mind either.
  inflateValidate(&stream_, 0);
}

FlateDecoder::~FlateDecoder() {
  inflateEnd(&stream_);
}

Decoder::Progress FlateDecoder::decode(Bytes input, std::span<Byte> output) {
  Byte nowhere = 0;
  stream_.next_in = inputOf(input);
  stream_.avail_in = countOf(input.size());
  stream_.next_out = output.empty() ? &nowhere : output.data();
  stream_.avail_out = countOf(output.size());
  const uInt inputBefore = stream_.avail_in;
  const uInt outputBefore = stream_.avail_out;
  const int result = inflate(&stream_, Z_NO_FLUSH);
  if (result == Z_MEM_ERROR) throw std::bad_alloc();
  if (result == Z_STREAM_END) finish();
  // Neither more input nor more room: no error, but nothing to do for now.
  if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR) fail();
  return {inputBefore - stream_.avail_in, outputBefore - stream_.avail_out};
}

FlateEncoder::FlateEncoder(SinkPointer target, int effort, FilterClosing closing)
    : Encoder(std::move(target), closing) {
  if (deflateInit(&stream_, effort) != Z_OK) throw std::bad_alloc();
}

FlateEncoder::~FlateEncoder() {
  deflateEnd(&stream_);
}

void FlateEncoder::compress(Bytes bytes, int flush) {
  std::array<Byte, Decoder::kBlockSize> block;
  do {
    const uInt count = countOf(bytes.size());
    stream_.next_in = inputOf(bytes);
    stream_.avail_in = count;
    do {
      stream_.next_out = block.data();
      stream_.avail_out = countOf(block.size());
      deflate(&stream_, flush);
      emit(Bytes(block).first(block.size() - stream_.avail_out));
    } while (stream_.avail_out == 0 && isOpen());
    bytes = bytes.subspan(count);
  } while (!bytes.empty() && isOpen());
}

}  // namespace quillpress::level3
