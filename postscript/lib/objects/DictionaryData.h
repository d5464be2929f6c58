#pragma once

#include <string>
#include <vector>

#include "postscript/lib/objects/CompositeObject.h"
#include "postscript/lib/objects/DictionaryKey.h"
#include "postscript/lib/objects/KeyOrder.h"
#include "postscript/lib/objects/NameTable.h"
#include "postscript/lib/objects/Ref.h"

namespace quillpress {

// The entries that handles on a dictionary share. Entries are found by hash; every walk goes in the order
// of the keys' bytes (unsigned). There is no capacity.
class DictionaryData final : public CompositeData {
 public:
  struct Entry {
    std::string key;
    std::uint32_t hash;
    Ref<PostscriptObject> value;
  };

  // Tells the table of names, if there is one, which keys come and go. REQUIRES: the table outlives the data.
  explicit DictionaryData(std::string dictionaryName = {}, NameTable* names = nullptr)
      : CompositeData(TypeCode::kDictionary), name(std::move(dictionaryName)), names_(names) {}

  // Makes this one of the dictionaries whose values names remember. REQUIRES: it is empty.
  void makePermanent() { isPermanent_ = true; }

  // Stores the value under the key; an old value is released after the new one is held, so a value
  // defined again under its own key survives.
  void define(DictionaryKey key, Ref<PostscriptObject> value);

  // Makes room for that many entries in all.
  void reserve(std::size_t count);

  // The value, borrowed; null when there is none.
  [[nodiscard]] PostscriptObject* lookup(DictionaryKey key) const {
    if (entries_.empty()) return nullptr;
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t slot = key.hash & mask;; slot = (slot + 1) & mask) {
      const std::uint32_t position = slots_[slot];
      if (position == kFree) return nullptr;
      const Entry& entry = entries_[position];
      if (entry.hash == key.hash && entry.key == key.text) return entry.value.get();
    }
  }

  // Removes an entry; nothing happens when there is none.
  void remove(DictionaryKey key);

  [[nodiscard]] std::size_t count() const { return entries_.size(); }

  // The entry at a position in key order. REQUIRES: position < count()
  [[nodiscard]] const Entry& entryInOrder(std::size_t position) const;

  const std::string name;  // empty for dictionaries that a job makes

 private:
  static constexpr std::uint32_t kFree = 0xFFFFFFFF;

  void noteNewKey(DictionaryKey key);

  [[nodiscard]] std::size_t findSlot(DictionaryKey key) const;
  [[nodiscard]] std::size_t slotOfPosition(std::uint32_t hash, std::size_t position) const;
  void growSlots(std::size_t size);
  void closeGap(std::size_t gap);

  bool mendsOrder();

  // A std::string_view compares its characters as unsigned bytes.
  [[nodiscard]] auto keyOfPosition() const {
    return [this](std::uint32_t position) { return std::string_view(entries_[position].key); };
  }

  NameTable* names_;
  bool isPermanent_ = false;

  std::vector<Entry> entries_;        // in no order of interest
  std::vector<std::uint32_t> slots_;  // open addressing, a power of two: positions in entries_

  // Empty until a walk asks. Mended while there are walks; dropped when there is change upon change and no
  // walk.
  mutable KeyOrder order_;
  mutable std::size_t changesSinceWalk_ = 0;
};

}  // namespace quillpress
