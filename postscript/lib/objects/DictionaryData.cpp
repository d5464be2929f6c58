#include "postscript/lib/objects/DictionaryData.h"

#include <algorithm>
#include <numeric>

namespace quillpress {

namespace {

constexpr std::size_t kFirstSlots = 8;

// Mending moves a quarter of the order's bytes or so; this many mends cost about one sort.
constexpr std::uint32_t kMostMends = 1000;

}  // namespace

// The slot that holds the key, or the free slot where it would go. REQUIRES: there is a free slot.
std::size_t DictionaryData::findSlot(DictionaryKey key) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = key.hash & mask;
  while (slots_[slot] != kFree) {
    const Entry& entry = entries_[slots_[slot]];
    if (entry.hash == key.hash && entry.key == key.text) break;
    slot = (slot + 1) & mask;
  }
  return slot;
}

std::size_t DictionaryData::slotOfPosition(std::uint32_t hash, std::size_t position) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = hash & mask;
  while (slots_[slot] != position) slot = (slot + 1) & mask;
  return slot;
}

void DictionaryData::growSlots() {
  std::vector<std::uint32_t> grown(std::max(kFirstSlots, slots_.size() * 2), kFree);
  const std::size_t mask = grown.size() - 1;
  for (std::size_t position = 0; position < entries_.size(); ++position) {
    std::size_t slot = entries_[position].hash & mask;
    while (grown[slot] != kFree) slot = (slot + 1) & mask;
    grown[slot] = static_cast<std::uint32_t>(position);
  }
  slots_ = std::move(grown);
}

void DictionaryData::define(DictionaryKey key, Ref<PostscriptObject> value) {
  if (slots_.empty()) growSlots();
  const std::size_t slot = findSlot(key);
  if (slots_[slot] != kFree) {
    std::swap(entries_[slots_[slot]].value, value);
    return;
  }
  const bool mends = mendsOrder();  // before anything changes: it may run out of memory
  const auto position = static_cast<std::uint32_t>(entries_.size());
  entries_.push_back({std::string(key.text), key.hash, std::move(value)});
  slots_[slot] = position;
  if (mends) order_.insert(order_.begin() + placeInOrder(entries_.back().key), position);
  if (entries_.size() * 2 > slots_.size()) growSlots();  // at most half full: probes stay short
}

void DictionaryData::remove(DictionaryKey key) {
  if (slots_.empty()) return;
  const std::size_t slot = findSlot(key);
  if (slots_[slot] == kFree) return;
  const std::size_t position = slots_[slot];
  const std::size_t last = entries_.size() - 1;
  const Ref<PostscriptObject> removed = std::move(entries_[position].value);
  if (mendsOrder()) {
    const auto place = order_.begin() + placeInOrder(entries_[position].key);
    const auto placeOfLast = order_.begin() + placeInOrder(entries_[last].key);
    *placeOfLast = static_cast<std::uint32_t>(position);  // where the last entry is about to go
    order_.erase(place);
  }
  closeGap(slot);
  if (position != last) {
    slots_[slotOfPosition(entries_[last].hash, last)] = static_cast<std::uint32_t>(position);
    entries_[position] = std::move(entries_[last]);
  }
  entries_.pop_back();
}

// Where the key stands in the order, or would stand. std::string compares its characters as unsigned bytes.
std::ptrdiff_t DictionaryData::placeInOrder(const std::string& key) const {
  const auto place = std::lower_bound(
      order_.begin(), order_.end(), key,
      [this](std::uint32_t a, const std::string& sought) { return entries_[a].key < sought; });
  return place - order_.begin();
}

// Whether a change has to mend the order, which then has room for one more. Not when there is none, and not
// after so many changes without a walk that sorting it anew is cheaper.
bool DictionaryData::mendsOrder() {
  if (order_.empty()) return false;
  if (++changesSinceWalk_ > kMostMends) {
    order_.clear();
    return false;
  }
  if (order_.size() == order_.capacity()) order_.reserve(order_.size() * 2);
  return true;
}

// Moves later slots of a probe run into the gap, so that no search ends too early.
void DictionaryData::closeGap(std::size_t gap) {
  const std::size_t mask = slots_.size() - 1;
  slots_[gap] = kFree;
  for (std::size_t slot = (gap + 1) & mask; slots_[slot] != kFree; slot = (slot + 1) & mask) {
    const std::size_t home = entries_[slots_[slot]].hash & mask;
    const bool reachesGap = ((slot - home) & mask) >= ((slot - gap) & mask);
    if (!reachesGap) continue;
    slots_[gap] = slots_[slot];
    slots_[slot] = kFree;
    gap = slot;
  }
}

void DictionaryData::sortOrder() const {
  order_.resize(entries_.size());
  std::iota(order_.begin(), order_.end(), 0U);
  std::sort(order_.begin(), order_.end(),
            [this](std::uint32_t a, std::uint32_t b) { return entries_[a].key < entries_[b].key; });
}

const DictionaryData::Entry& DictionaryData::entryInOrder(std::size_t position) const {
  if (order_.empty()) sortOrder();
  changesSinceWalk_ = 0;
  return entries_[order_[position]];
}

void DictionaryData::clear() {
  // Values may go away only when the dictionary is consistent again.
  const std::vector<Entry> released = std::move(entries_);
  entries_.clear();
  slots_.clear();
  order_.clear();
}

}  // namespace quillpress
