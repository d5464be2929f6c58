#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

#include "postscript/lib/objects/DictionaryKey.h"
#include "postscript/lib/objects/PostscriptObject.h"

namespace quillpress {

// What an interpreter knows about one name text. All name objects with that text share it.
struct KnownName {
  [[nodiscard]] DictionaryKey key() const { return {text, hash}; }

  const std::string text;
  const std::uint32_t hash;

  // The value, borrowed, or null. Not null: exactly one of the three permanent dictionaries defines the name,
  // with this value, and no other dictionary of the interpreter has ever defined it. So, as long as the
  // permanent dictionaries are on the dictionary stack, a search would find this value whatever is begun.
  PostscriptObject* remembered = nullptr;

  // Whether a dictionary other than the permanent ones has ever defined the name.
  bool isDefinedElsewhere = false;
};

// The name texts that an interpreter has executed, and those that its jobs' own dictionaries define. Every
// dictionary of the interpreter tells the table of its changes, which keeps what is remembered right.
// Interpreters share nothing, so each has a table of its own.
class NameTable {
 public:
  // The entry for a text; it stays where it is for as long as the table.
  KnownName& intern(DictionaryKey key);

  // The entry, or null when the text has never been interned.
  [[nodiscard]] KnownName* find(DictionaryKey key) const;

  // A dictionary that is none of the permanent ones has a new key.
  void noteDefinedElsewhere(DictionaryKey key);

  // A permanent dictionary has a new key, or one less.
  void forget(DictionaryKey key);

  // A permanent dictionary has a new value under a key that it had already.
  void noteReplaced(DictionaryKey key, PostscriptObject* value);

 private:
  [[nodiscard]] std::size_t slotOf(DictionaryKey key) const;
  void grow();

  std::deque<KnownName> names_;    // a deque, because entries may not move
  std::vector<KnownName*> slots_;  // open addressing, a power of two
};

}  // namespace quillpress
