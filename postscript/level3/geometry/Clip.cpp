#include "postscript/level3/geometry/Clip.h"

#include <bit>
#include <utility>

namespace quillpress::level3 {

namespace {

void mix(std::uint64_t& hash, std::uint64_t value) {
  hash = (std::rotl(hash, 29) ^ value) * 0x9E3779B97F4A7C15U;
}

std::uint64_t hashOf(const Path& path, FillRule rule, const std::uint64_t parent) {
  std::uint64_t hash = parent;
  mix(hash, static_cast<std::uint64_t>(rule) + 1);
  for (const SegmentKind kind : path.kinds()) mix(hash, static_cast<std::uint64_t>(kind));
  for (const Point point : path.points()) {
    mix(hash, std::bit_cast<std::uint64_t>(point.x));
    mix(hash, std::bit_cast<std::uint64_t>(point.y));
  }
  return hash;
}

Path rectanglePath(const Box& box) {
  Path path;
  path.appendRectangle(box);
  return path;
}

// A box that holds nothing, yet has a place: paths must not hold infinities.
constexpr Box kNothing{0, 0, 0, 0};

}  // namespace

ClipPointer Clip::within(const ClipPointer& parent, const Path& path, FillRule rule) {
  const std::optional<Box> box = path.isEmpty() ? std::optional<Box>(kNothing) : asRectangle(path, true);
  if (!box) return std::make_shared<Clip>(parent, path, rule);
  if (!parent) return std::make_shared<Clip>(nullptr, rectanglePath(*box), FillRule::kNonzero);
  if (parent->rectangle()) {
    const Box shared = intersection(*parent->rectangle(), *box);
    if (shared == *parent->rectangle()) return parent;
    return std::make_shared<Clip>(nullptr, rectanglePath(shared.isEmpty() ? kNothing : shared),
                                  FillRule::kNonzero);
  }
  // A rectangle around all that is left changes nothing.
  if (box->contains(parent->bounds())) return parent;
  return std::make_shared<Clip>(parent, rectanglePath(*box), FillRule::kNonzero);
}

Clip::Clip(ClipPointer parent, Path path, FillRule rule)
    : parent_(std::move(parent)), path_(std::move(path)), rule_(rule), bounds_(path_.boundingBox()) {
  if (parent_) {
    bounds_ = intersection(bounds_, parent_->bounds_);
  } else {
    rectangle_ = asRectangle(path_, true);
  }
  hash_ = hashOf(path_, rule_, parent_ ? parent_->hash_ : 0);
}

// One by one, since a job may have nested more of them than the stack has room for.
Clip::~Clip() {
  ClipPointer next = std::move(parent_);
  while (next && next.use_count() == 1) next = std::exchange(next->parent_, nullptr);
}

bool Clip::isSameAs(const Clip& other) const {
  const Clip* one = this;
  const Clip* two = &other;
  while (one != two) {
    if (one == nullptr || two == nullptr) return false;
    if (one->hash_ != two->hash_ || one->rule_ != two->rule_ || !(one->path_ == two->path_)) return false;
    one = one->parent_.get();
    two = two->parent_.get();
  }
  return true;
}

}  // namespace quillpress::level3
