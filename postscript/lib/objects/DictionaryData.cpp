#include "postscript/lib/objects/DictionaryData.h"

#include <algorithm>

namespace quillpress {

namespace {

constexpr std::size_t kFirstSlots = 8;

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

void DictionaryData::reserve(std::size_t count) {
  entries_.reserve(count);
  std::size_t size = kFirstSlots;
  while (size < count * 2) size *= 2;
  if (size > slots_.size()) growSlots(size);
}

// REQUIRES: a power of two, more than there are entries.
void DictionaryData::growSlots(std::size_t size) {
  std::vector<std::uint32_t> grown(size, kFree);
  const std::size_t mask = grown.size() - 1;
  for (std::size_t position = 0; position < entries_.size(); ++position) {
    std::size_t slot = entries_[position].hash & mask;
    while (grown[slot] != kFree) slot = (slot + 1) & mask;
    grown[slot] = static_cast<std::uint32_t>(position);
  }
  slots_ = std::move(grown);
}

void DictionaryData::define(DictionaryKey key, Ref<PostscriptObject> value) {
  if (slots_.empty()) growSlots(kFirstSlots);
  const std::size_t slot = findSlot(key);
  if (slots_[slot] != kFree) {
    std::swap(entries_[slots_[slot]].value, value);
    if (isPermanent_ && names_ != nullptr) names_->noteReplaced(key, entries_[slots_[slot]].value.get());
    return;
  }
  // Whatever may run out of memory comes before anything changes.
  const auto position = static_cast<std::uint32_t>(entries_.size());
  Entry entry{std::string(key.text), key.hash, std::move(value)};
  if (entries_.size() == entries_.capacity())
    entries_.reserve(std::max(kFirstSlots / 2, entries_.size() * 2));
  noteNewKey(key);
  if (mendsOrder()) order_.insert(position, entry.key, keyOfPosition());
  entries_.push_back(std::move(entry));
  slots_[slot] = position;
  if (entries_.size() * 2 > slots_.size())
    growSlots(slots_.size() * 2);  // at most half full: probes stay short
}

void DictionaryData::noteNewKey(DictionaryKey key) {
  if (names_ == nullptr) return;
  if (isPermanent_) {
    names_->forget(key);
  } else {
    names_->noteDefinedElsewhere(key);
  }
}

void DictionaryData::remove(DictionaryKey key) {
  if (slots_.empty()) return;
  const std::size_t slot = findSlot(key);
  if (slots_[slot] == kFree) return;
  if (isPermanent_ && names_ != nullptr) names_->forget(key);
  const std::size_t position = slots_[slot];
  const std::size_t last = entries_.size() - 1;
  const Ref<PostscriptObject> removed = std::move(entries_[position].value);
  if (mendsOrder()) {
    order_.erase(entries_[position].key, keyOfPosition());
    if (position != last)
      order_.move(entries_[last].key, static_cast<std::uint32_t>(position), keyOfPosition());
  }
  closeGap(slot);
  if (position != last) {
    slots_[slotOfPosition(entries_[last].hash, last)] = static_cast<std::uint32_t>(position);
    entries_[position] = std::move(entries_[last]);
  }
  entries_.pop_back();
}

// Whether a change has to mend the order. Not when there is none; and when there have been as many changes as
// entries since the last walk, sorting anew is cheaper.
bool DictionaryData::mendsOrder() {
  if (++changesSinceWalk_ > entries_.size()) order_.clear();
  return !order_.empty();
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

const DictionaryData::Entry& DictionaryData::entryInOrder(std::size_t position) const {
  if (order_.empty()) order_.sort(entries_.size(), keyOfPosition());
  changesSinceWalk_ = 0;
  return entries_[order_.at(position)];
}

}  // namespace quillpress
