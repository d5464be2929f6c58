#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "postscript/level3/objects/Storage.h"

namespace quillpress::level3 {

// A dictionary's contents: entries in the order in which their keys came, and a hash index over them. It
// keeps the names that are its keys told of where they are bound.
//
// What changes a dictionary goes through VirtualMemory, which keeps the journal for restore; what the job may
// do with it (access, global and local) is checked by the operators.
class Dictionary final : public Storage {
 public:
  struct Entry {
    Object key;  // null when the entry was removed
    Object value;
  };

  // A key as it is kept: a string becomes a name, a real with a whole value that integer.
  // REQUIRES: a string's name has been interned by the caller.
  static Object normalized(const Object& key);

  ~Dictionary();

  // REQUIRES of every `key` below: normalized.
  [[nodiscard]] Object* find(const Object& key) { return at(indexOf(key)); }
  [[nodiscard]] const Object* find(const Object& key) const { return at(indexOf(key)); }
  [[nodiscard]] Object* find(Name* name) { return at(indexOf(name)); }
  [[nodiscard]] const Object* find(Name* name) const { return at(indexOf(name)); }

  [[nodiscard]] std::size_t length() const { return length_; }
  [[nodiscard]] std::size_t maxLength() const { return maxLength_; }
  [[nodiscard]] Access access() const { return access_; }
  [[nodiscard]] bool isReadable() const { return access_ <= Access::kReadOnly; }
  [[nodiscard]] bool isWritable() const { return access_ == Access::kUnlimited; }
  [[nodiscard]] bool isOnStack() const { return levels_ != 0; }

  // For a walk over all entries, by index: removed ones have a null key.
  [[nodiscard]] std::size_t entryCount() const { return entries_.size(); }
  [[nodiscard]] const Entry& entry(std::size_t index) const { return entries_[index]; }
  [[nodiscard]] const std::vector<Entry>& entries() const { return entries_; }

 private:
  friend class VirtualMemory;
  friend class Journal;
  friend class DictionaryStack;

  using Index = std::uint32_t;
  static constexpr Index kNone = UINT32_MAX;
  static constexpr Index kRemoved = UINT32_MAX - 1;

  explicit Dictionary(std::size_t maxLength);

  [[nodiscard]] Index indexOf(const Object& key) const;
  [[nodiscard]] Index indexOf(Name* name) const;
  [[nodiscard]] Object* at(Index index) { return index == kNone ? nullptr : &entries_[index].value; }
  [[nodiscard]] const Object* at(Index index) const {
    return index == kNone ? nullptr : &entries_[index].value;
  }

  // Whether an insertion would move the entries, and with them the values that names point at.
  [[nodiscard]] bool isFull() const { return entries_.size() == entries_.capacity(); }
  // Makes room for one more entry.
  void grow();
  // REQUIRES: !isFull(), no entry with this key
  void insert(const Object& key, const Object& value);
  bool remove(const Object& key);
  // What restore does: the entries of an earlier time come back.
  void replace(std::vector<Entry> entries, std::size_t maxLength, Access access);
  [[nodiscard]] std::size_t bytes() const;

  void rebuildIndex();
  void enter(Index index);
  void bindAll();
  void unbindAll();
  void bind(Index index);
  void unbind(const Object& key);

  std::vector<Entry> entries_;
  std::vector<Index> index_;  // open addressing, a power of two, empty for small dictionaries
  std::size_t length_ = 0;
  std::size_t maxLength_;
  std::uint32_t levels_ = 0;  // how often it is on the dictionary stack
  Access access_ = Access::kUnlimited;
};

inline Storage* Object::storage() const {
  switch (type()) {
    case Type::kString:
      return value_.string;
    case Type::kDictionary:
      return value_.dictionary;
    case Type::kFile:
    case Type::kGState:
      return value_.foreign;
    default:
      return value_.array;
  }
}

}  // namespace quillpress::level3
