#include "postscript/level3/images/AveragedRows.h"

#include <algorithm>
#include <cmath>

#include "postscript/level3/images/Samples.h"

namespace quillpress::level3 {

AveragedRows::AveragedRows(const ImageLayout& source, int width, int height)
    : source_(source),
      layout_{width, height, source.components, 8},
      across_(layout_.samplesInRow()),
      sums_(layout_.samplesInRow()),
      row_(layout_.rowBytes()) {}

// Sums of samples, each times its length: whole numbers, so that equal pixels have equal means.
void AveragedRows::averageAcross(Bytes row) {
  std::fill(across_.begin(), across_.end(), 0.0);
  SampleReader samples(row, source_.bits);
  const auto components = static_cast<std::size_t>(source_.components);
  std::size_t target = 0;
  int room = source_.width;
  for (int x = 0; x < source_.width; ++x) {
    const int here = std::min(room, layout_.width);
    const int beyond = layout_.width - here;
    for (std::size_t component = 0; component < components; ++component) {
      const double sample = samples.next();
      across_[target + component] += sample * here;
      if (beyond > 0) across_[target + components + component] += sample * beyond;
    }
    room -= here;
    if (room > 0) continue;
    target += components;
    room = source_.width - beyond;
  }
}

Bytes AveragedRows::next(const RowReader& nextRow) {
  std::fill(sums_.begin(), sums_.end(), 0.0);
  int gathered = 0;
  while (gathered < source_.height) {
    if (left_ == 0) {
      const Bytes row = nextRow();
      if (row.empty()) break;
      averageAcross(row);
      ++rowsRead_;
      left_ = layout_.height;
    }
    const int part = std::min(left_, source_.height - gathered);
    for (std::size_t i = 0; i < sums_.size(); ++i) sums_[i] += across_[i] * part;
    left_ -= part;
    gathered += part;
  }
  return gathered == 0 ? Bytes() : finishRow(gathered);
}

Bytes AveragedRows::finishRow(int gathered) {
  const double most = static_cast<double>((1 << source_.bits) - 1) * source_.width * gathered;
  for (std::size_t i = 0; i < row_.size(); ++i)
    row_[i] = static_cast<Byte>(std::lround(sums_[i] * 255 / most));
  return row_;
}

}  // namespace quillpress::level3
