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

// Rows are missing: one of the sources has ended.
Bytes ImageRows::end() const {
  for (const SourcePointer& source : sources_) {
    if (source->peek().empty() && !source->isOpen()) source->endedWithin("an image");
  }
  return {};
}

Bytes ImageRows::next() {
  if (planes_.empty()) {
    ByteSource& source = *sources_.front();
    const std::size_t size = layout_.rowBytes();
    row_.resize(size);
    return source.read(row_) == size ? Bytes(row_) : end();
  }
  return readPlanes() ? nextInterleaved() : end();
}

// A block from each source in turn: procedures that read one file between them expect to be called so.
bool ImageRows::readPlanes() {
  const std::size_t size = layout_.plane().rowBytes();
  std::vector<std::size_t> filled(planes_.size());
  for (std::vector<Byte>& plane : planes_) plane.resize(size);
  bool isComplete = false;
  while (!isComplete) {
    isComplete = true;
    for (std::size_t i = 0; i < planes_.size(); ++i) {
      if (filled[i] == size) continue;
      if (!sources_[i]->refill()) return false;
      const Bytes block = sources_[i]->peek();
      const std::size_t count = std::min(block.size(), size - filled[i]);
      std::copy_n(block.begin(), count, planes_[i].begin() + static_cast<std::ptrdiff_t>(filled[i]));
      sources_[i]->consume(count);
      filled[i] += count;
      isComplete = isComplete && filled[i] == size;
    }
  }
  return true;
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
