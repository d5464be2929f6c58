#include "postscript/level3/images/IndexedRows.h"

#include <algorithm>
#include <cmath>

#include "postscript/level3/images/Samples.h"

namespace quillpress::level3 {

IndexedRows::IndexedRows(const ImageLayout& indexed, std::string table, int components, double low,
                         double high)
    : indexed_(indexed),
      table_(std::move(table)),
      components_(components),
      low_(low),
      step_((high - low) / ((1 << indexed.bits) - 1)),
      row_(layout().rowBytes()) {}

Bytes IndexedRows::expand(Bytes row) {
  const auto components = static_cast<std::size_t>(components_);
  const std::size_t colours = table_.size() / components;
  const auto highest = static_cast<double>(colours) - 1;
  SampleReader reader(row, indexed_.bits);
  auto target = row_.begin();
  for (int x = 0; x < indexed_.width; ++x) {
    const double colour = std::clamp(std::floor(low_ + reader.next() * step_ + 1e-6), 0.0, highest);
    const auto* const entry = table_.data() + static_cast<std::size_t>(colour) * components;
    target = std::transform(entry, entry + components, target, [](char c) { return static_cast<Byte>(c); });
  }
  return row_;
}

}  // namespace quillpress::level3
