#include "postscript/level3/images/ImageRows.h"

#include <algorithm>

#include "postscript/level3/images/Samples.h"

namespace quillpress::level3 {

ImageRows::ImageRows(std::vector<SourcePointer> sources, const ImageLayout& layout)
    : sources_(std::move(sources)), layout_(layout) {
  if (sources_.size() > 1) planes_.resize(sources_.size());
}

bool ImageRows::hasFailed() const {
  return std::any_of(sources_.begin(), sources_.end(), [](const SourcePointer& s) { return s->hasFailed(); });
}

Bytes ImageRows::next() {
  if (planes_.empty()) {
    ByteSource& source = *sources_.front();
    const std::size_t size = layout_.rowBytes();
    row_.resize(size);
    return source.read(row_) == size ? Bytes(row_) : Bytes();
  }
  const std::size_t size = layout_.plane().rowBytes();
  for (std::size_t i = 0; i < planes_.size(); ++i) {
    planes_[i].resize(size);
    if (sources_[i]->read(planes_[i]) != size) return {};
  }
  return nextInterleaved();
}

Bytes ImageRows::nextInterleaved() {
  row_.resize(layout_.rowBytes());
  const auto width = static_cast<std::size_t>(layout_.width);
  if (layout_.bits == 8) {
    for (std::size_t plane = 0; plane < planes_.size(); ++plane) {
      for (std::size_t x = 0; x < width; ++x) row_[x * planes_.size() + plane] = planes_[plane][x];
    }
    return row_;
  }
  std::vector<SampleReader> readers;
  for (const std::vector<Byte>& plane : planes_) readers.emplace_back(plane, layout_.bits);
  SampleWriter writer(row_, layout_.bits);
  for (std::size_t x = 0; x < width; ++x) {
    for (SampleReader& reader : readers) writer.put(reader.next());
  }
  return row_;
}

}  // namespace quillpress::level3
