#pragma once

#include <string>
#include <vector>

#include "postscript/lib/interpreter/MemorySet.h"
#include "postscript/lib/objects/NameObject.h"

namespace quillpress {

// The built-in dictionaries, the dictionary stack that names are looked up through, and the lists of what
// was registered in systemdict.
class DictionarySet {
 public:
  explicit DictionarySet(const MemorySet& memory);

  [[nodiscard]] DictionaryObject& systemDictionary() const { return *system_; }
  [[nodiscard]] DictionaryObject& globalDictionary() const { return *global_; }
  [[nodiscard]] DictionaryObject& userDictionary() const { return *user_; }
  [[nodiscard]] DictionaryObject& errorDictionary() const { return *error_; }
  [[nodiscard]] DictionaryObject& fontDirectory() const { return *fontDirectory_; }

  // What names are looked up through; a search stops at an entry that is no dictionary.
  [[nodiscard]] const ObjectStack& stack() const { return stack_; }

  // Pushes a dictionary; pops what is on top, the permanent dictionaries too. Throws Ex when nothing is
  // there.
  void begin(Ref<PostscriptObject> dictionary);
  void end();

  // Leaves exactly systemdict, globaldict and userdict on the dictionary stack.
  void resetStack();

  // The value under a key in the topmost dictionary that has it, borrowed; null when there is none.
  [[nodiscard]] PostscriptObject* lookup(DictionaryKey key) const {
    const KnownName* known = permanentsAreInPlace_ ? names_.find(key) : nullptr;
    return known != nullptr && known->remembered != nullptr ? known->remembered : search(key);
  }
  [[nodiscard]] PostscriptObject* lookup(const PostscriptObject& key) const;

  // The same for a name that is executed, which keeps what is known about its text.
  [[nodiscard]] PostscriptObject* valueOf(KnownName*& known, DictionaryKey key) {
    PostscriptObject* value = remembered(known);
    return value != nullptr ? value : searchAndRemember(known, key);
  }

  // The value that a name remembers, if it may be used, borrowed; null otherwise.
  [[nodiscard]] PostscriptObject* remembered(const KnownName* known) const {
    return known != nullptr && permanentsAreInPlace_ ? known->remembered : nullptr;
  }

  // The topmost dictionary that has the key, borrowed; null when there is none.
  [[nodiscard]] DictionaryObject* findHolder(const PostscriptObject& key) const;
  [[nodiscard]] DictionaryObject* findHolder(DictionaryKey key) const;

  // The dictionary on top. Throws Ex when the stack is empty.
  [[nodiscard]] DictionaryObject& current() const;

  // Defines an operator in systemdict under its text; a later registration replaces an earlier one.
  void registerOperator(Ref<NameObject> operatorObject);
  void registerGenerated(Ref<NameObject> operatorObject);

  // In order of registration. A replaced name was registered while systemdict already held it.
  [[nodiscard]] const std::vector<std::string>& replacedNames() const { return replacedNames_; }
  [[nodiscard]] const std::vector<std::string>& generatedNames() const { return generatedNames_; }

 private:
  static constexpr std::size_t kPermanentCount = 3;

  [[nodiscard]] PostscriptObject* search(DictionaryKey key) const {
    for (std::ptrdiff_t depth = 0;; ++depth) {
      const auto* dictionary = as<DictionaryObject>(static_cast<const PostscriptObject*>(stack_.peek(depth)));
      if (dictionary == nullptr) return nullptr;
      if (PostscriptObject* value = dictionary->lookup(key)) return value;
    }
  }
  PostscriptObject* searchAndRemember(KnownName*& known, DictionaryKey key);
  [[nodiscard]] PostscriptObject* onlyPermanentValue(DictionaryKey key) const;
  void noteStackChange();

  NameTable& names_;
  std::vector<std::string> replacedNames_;
  std::vector<std::string> generatedNames_;
  Ref<DictionaryObject> system_;
  Ref<DictionaryObject> global_;
  Ref<DictionaryObject> user_;
  Ref<DictionaryObject> error_;
  Ref<DictionaryObject> fontDirectory_;
  ObjectStack stack_{"Dictionary Stack"};

  // Whether systemdict, globaldict and userdict are at the bottom of the stack with dictionaries only above
  // them. Then a search reaches all three, and names may use what they remember.
  bool permanentsAreInPlace_ = false;
};

}  // namespace quillpress
