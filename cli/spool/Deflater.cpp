#include "cli/spool/Deflater.h"

#include <libdeflate.h>

#include <new>

namespace quillpress::cli {

Deflater::Deflater(Effort effort) : compressor_(libdeflate_alloc_compressor(static_cast<int>(effort))) {
  // The only reason that the library knows.
  if (!compressor_) throw std::bad_alloc();
}

std::size_t Deflater::deflatedSize(std::string_view bytes) const {
  std::size_t size = 0;
  deflate(bytes, [&size](std::string_view deflated) { size = deflated.size(); });
  return size;
}

std::size_t Deflater::bound(std::size_t size) const {
  // For the worst case the format adds five bytes a block; the library knows how many.
  return libdeflate_zlib_compress_bound(compressor_.get(), size);
}

std::size_t Deflater::deflateInto(char* room, std::string_view bytes) const {
  return libdeflate_zlib_compress(compressor_.get(), bytes.data(), bytes.size(), room, bound(bytes.size()));
}

void Deflater::Free::operator()(libdeflate_compressor* compressor) const {
  libdeflate_free_compressor(compressor);
}

}  // namespace quillpress::cli
