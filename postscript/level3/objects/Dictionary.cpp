#include "postscript/level3/objects/Dictionary.h"

#include <bit>
#include <cmath>
#include <utility>

#include "postscript/level3/objects/Name.h"

namespace quillpress::level3 {

namespace {

// Up to this many entries a walk over them is as fast as the index, and there is nothing to build.
constexpr std::size_t kLargestWithoutIndex = 8;

std::uint32_t mixed(std::uint64_t value) {
  value *= 0x9E3779B97F4A7C15ULL;
  return static_cast<std::uint32_t>(value >> 32);
}

std::uint32_t hashOf(const Object& key) {
  switch (key.type()) {
    case Type::kName:
      return key.asName()->hash;
    case Type::kInteger:
    case Type::kBoolean:
    case Type::kSave:
    case Type::kFontId:
      return mixed(static_cast<std::uint64_t>(key.asInteger()));
    case Type::kReal:
      return mixed(std::bit_cast<std::uint32_t>(key.asReal()));
    case Type::kOperator:
      return mixed(reinterpret_cast<std::uintptr_t>(key.asOperator()));
    case Type::kNull:
    case Type::kMark:
      return 0;
    case Type::kString:
    case Type::kArray:
    case Type::kPackedArray:
    case Type::kDictionary:
    case Type::kFile:
    case Type::kGState:
      return mixed(reinterpret_cast<std::uintptr_t>(key.storage()));
  }
  return 0;
}

// Composite keys are the same when they are the same window into the same storage.
bool isSameKey(const Object& a, const Object& b) {
  if (a.type() != b.type()) return false;
  switch (a.type()) {
    case Type::kName:
      return a.asName() == b.asName();
    case Type::kReal:
      return a.asReal() == b.asReal();
    case Type::kNull:
    case Type::kMark:
      return true;
    case Type::kInteger:
    case Type::kBoolean:
    case Type::kSave:
    case Type::kFontId:
      return a.asInteger() == b.asInteger();
    case Type::kOperator:
      return a.asOperator() == b.asOperator();
    case Type::kString:
    case Type::kArray:
    case Type::kPackedArray:
    case Type::kDictionary:
    case Type::kFile:
    case Type::kGState:
      return a.storage() == b.storage() && a.offset() == b.offset() && a.length() == b.length();
  }
  return false;
}

}  // namespace

Object Dictionary::normalized(const Object& key) {
  if (!key.isReal()) return key.asLiteral();
  const float value = key.asReal();
  const bool isWhole = std::fabs(value) < 9e18F && std::trunc(value) == value;
  return isWhole ? Object::integer(static_cast<std::int64_t>(value)) : key;
}

Dictionary::Dictionary(std::size_t maxLength) : Storage(StorageKind::kDictionary, 0), maxLength_(maxLength) {}

Dictionary::~Dictionary() {
  unbindAll();
}

Dictionary::Index Dictionary::indexOf(Name* name) const {
  if (name->binding != Name::Binding::kMany) {
    const bool isHere = name->binding == Name::Binding::kOne && name->only == this;
    return isHere ? name->onlyIndex : kNone;
  }
  if (index_.empty()) {
    for (std::size_t i = 0; i < entries_.size(); ++i) {
      const Object& key = entries_[i].key;
      if (key.isName() && key.asName() == name) return static_cast<Index>(i);
    }
    return kNone;
  }
  const std::size_t mask = index_.size() - 1;
  for (std::size_t place = name->hash & mask; index_[place] != kNone; place = (place + 1) & mask) {
    if (index_[place] == kRemoved) continue;
    const Object& key = entries_[index_[place]].key;
    if (key.isName() && key.asName() == name) return index_[place];
  }
  return kNone;
}

Dictionary::Index Dictionary::indexOf(const Object& key) const {
  if (key.isName()) return indexOf(key.asName());
  if (key.isNull()) return kNone;
  if (index_.empty()) {
    for (std::size_t i = 0; i < entries_.size(); ++i) {
      if (isSameKey(entries_[i].key, key)) return static_cast<Index>(i);
    }
    return kNone;
  }
  const std::size_t mask = index_.size() - 1;
  for (std::size_t place = hashOf(key) & mask; index_[place] != kNone; place = (place + 1) & mask) {
    if (index_[place] != kRemoved && isSameKey(entries_[index_[place]].key, key)) return index_[place];
  }
  return kNone;
}

void Dictionary::grow() {
  // Removed entries leave first; that alone may be room enough.
  if (length_ < entries_.size()) {
    std::vector<Entry> kept;
    kept.reserve(entries_.capacity());
    for (const Entry& entry : entries_) {
      if (!entry.key.isNull()) kept.push_back(entry);
    }
    entries_.swap(kept);
  }
  if (length_ * 4 >= entries_.capacity() * 3) {
    constexpr std::size_t kFirst = 4;
    entries_.reserve(entries_.empty() ? kFirst : entries_.size() * 2);
  }
  rebuildIndex();
  bindAll();
}

void Dictionary::insert(const Object& key, const Object& value) {
  const Index index = static_cast<Index>(entries_.size());
  entries_.push_back({key, value});
  ++length_;
  if (index_.empty() && entries_.size() > kLargestWithoutIndex) {
    rebuildIndex();
  } else if (!index_.empty()) {
    enter(index);
  }
  bind(index);
  // The language's maximum length grows as it pleases: with a margin, so that it does not grow at every turn.
  constexpr std::size_t kMargin = 10;
  if (length_ > maxLength_) maxLength_ = maxLength_ + kMargin + maxLength_ / 2;
}

bool Dictionary::remove(const Object& key) {
  const Index index = indexOf(key);
  if (index == kNone) return false;
  if (!index_.empty()) {
    const std::size_t mask = index_.size() - 1;
    std::size_t place = hashOf(key) & mask;
    while (index_[place] != index) place = (place + 1) & mask;
    index_[place] = kRemoved;
  }
  unbind(entries_[index].key);
  entries_[index] = {};
  --length_;
  return true;
}

void Dictionary::replace(std::vector<Entry> entries, std::size_t maxLength, Access access) {
  unbindAll();
  entries_ = std::move(entries);
  maxLength_ = maxLength;
  access_ = access;
  length_ = 0;
  for (const Entry& entry : entries_) length_ += entry.key.isNull() ? 0 : 1;
  rebuildIndex();
  bindAll();
}

std::size_t Dictionary::bytes() const {
  return entries_.capacity() * sizeof(Entry) + index_.capacity() * sizeof(Index);
}

void Dictionary::rebuildIndex() {
  if (entries_.size() <= kLargestWithoutIndex) {
    index_.clear();
    return;
  }
  // Twice the room that the entries have: at most half full until they move.
  std::size_t size = 2 * kLargestWithoutIndex;
  while (size < entries_.capacity() * 2) size *= 2;
  index_.assign(size, kNone);
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (!entries_[i].key.isNull()) enter(static_cast<Index>(i));
  }
}

void Dictionary::enter(Index index) {
  const std::size_t mask = index_.size() - 1;
  std::size_t place = hashOf(entries_[index].key) & mask;
  while (index_[place] != kNone) place = (place + 1) & mask;
  index_[place] = index;
}

void Dictionary::bindAll() {
  for (std::size_t i = 0; i < entries_.size(); ++i) bind(static_cast<Index>(i));
}

void Dictionary::unbindAll() {
  for (const Entry& entry : entries_) unbind(entry.key);
}

void Dictionary::bind(Index index) {
  const Object& key = entries_[index].key;
  if (!key.isName()) return;
  Name& name = *key.asName();
  name.stamp = 0;
  if (name.binding == Name::Binding::kNone || name.only == this) {
    name.binding = Name::Binding::kOne;
    name.only = this;
    name.onlyIndex = index;
  } else {
    name.binding = Name::Binding::kMany;
    name.only = nullptr;
  }
}

// A name that two dictionaries had stays with its searches, even when one of them lets it go: which other one
// has it is not known.
void Dictionary::unbind(const Object& key) {
  if (!key.isName()) return;
  Name& name = *key.asName();
  name.stamp = 0;
  if (name.only != this) return;
  name.binding = Name::Binding::kNone;
  name.only = nullptr;
}

}  // namespace quillpress::level3
