#pragma once

#include <string>

#include "postscript/lib/objects/CompositeObject.h"
#include "postscript/lib/objects/DictionaryData.h"

namespace quillpress {

// The key text of any object: a name's text, a string's bytes up to the first zero, otherwise the object's
// describe(). Kept: so the integer 5 never meets the name 5 (objects/dictionary_keys.ps).
std::string keyText(const PostscriptObject& key);

// A handle on a dictionary.
class DictionaryObject final : public CompositeObject {
 public:
  static constexpr TypeCode kTypeCode = TypeCode::kDictionary;

  explicit DictionaryObject(VirtualMemoryObject& memoryArea, std::string name = {});

  [[nodiscard]] std::string describe() const override;
  [[nodiscard]] std::string printString() const override;
  [[nodiscard]] Ref<PostscriptObject> clone(int argument) const override;

  void define(const PostscriptObject& key, Ref<PostscriptObject> value);
  void define(std::string_view key, Ref<PostscriptObject> value) {
    define(DictionaryKey(key), std::move(value));
  }
  void define(DictionaryKey key, Ref<PostscriptObject> value) { data().define(key, std::move(value)); }

  // Makes room for that many entries in all.
  void reserve(std::size_t count) { data().reserve(count); }

  // The value, borrowed; null when there is none.
  [[nodiscard]] PostscriptObject* lookup(const PostscriptObject& key) const;
  [[nodiscard]] PostscriptObject* lookup(std::string_view key) const {
    return data().lookup(DictionaryKey(key));
  }
  [[nodiscard]] PostscriptObject* lookup(DictionaryKey key) const { return data().lookup(key); }

  // The value, borrowed; null when there is none, or when it is of another kind.
  template <typename T>
  [[nodiscard]] T* lookupAs(std::string_view key) const {
    return as<T>(lookup(key));
  }

  void remove(const PostscriptObject& key);

  [[nodiscard]] std::size_t count() const { return data().count(); }
  [[nodiscard]] const std::string& name() const { return data().name; }

  // The entry at a position in key order. REQUIRES: position < count()
  [[nodiscard]] const DictionaryData::Entry& entryInOrder(std::size_t position) const {
    return data().entryInOrder(position);
  }

  // Makes this one of the dictionaries whose values names remember. REQUIRES: it is empty.
  void makePermanent() { data().makePermanent(); }

 private:
  DictionaryObject(const DictionaryObject& other) = default;

  [[nodiscard]] DictionaryData& data() const { return static_cast<DictionaryData&>(payload()); }
};

}  // namespace quillpress
