#include "postscript/lib/objects/NameTable.h"

#include <algorithm>

namespace quillpress {

namespace {

constexpr std::size_t kFirstNameSlots = 256;

}  // namespace

// The slot that holds the text, or the free slot where it would go. REQUIRES: there is a free slot.
std::size_t NameTable::slotOf(DictionaryKey key) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = key.hash & mask;
  while (slots_[slot] != nullptr && (slots_[slot]->hash != key.hash || slots_[slot]->text != key.text)) {
    slot = (slot + 1) & mask;
  }
  return slot;
}

void NameTable::grow() {
  std::vector<KnownName*> grown(std::max(kFirstNameSlots, slots_.size() * 2), nullptr);
  slots_.swap(grown);
  for (KnownName& name : names_) slots_[slotOf(name.key())] = &name;
}

KnownName& NameTable::intern(DictionaryKey key) {
  if (names_.size() * 2 >= slots_.size()) grow();  // at most half full: probes stay short
  KnownName*& slot = slots_[slotOf(key)];
  if (slot == nullptr) slot = &names_.emplace_back(KnownName{std::string(key.text), key.hash});
  return *slot;
}

KnownName* NameTable::find(DictionaryKey key) const {
  return slots_.empty() ? nullptr : slots_[slotOf(key)];
}

void NameTable::noteDefinedElsewhere(DictionaryKey key) {
  KnownName& name = intern(key);
  name.isDefinedElsewhere = true;
  name.remembered = nullptr;
}

void NameTable::forget(DictionaryKey key) {
  if (KnownName* name = find(key)) name->remembered = nullptr;
}

void NameTable::noteReplaced(DictionaryKey key, PostscriptObject* value) {
  KnownName* name = find(key);
  if (name != nullptr && name->remembered != nullptr) name->remembered = value;
}

}  // namespace quillpress
