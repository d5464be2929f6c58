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

  // Holds dictionaries only.
  [[nodiscard]] ObjectStack& stack() { return stack_; }
  [[nodiscard]] const ObjectStack& stack() const { return stack_; }

  // Leaves exactly systemdict, globaldict and userdict on the dictionary stack.
  void resetStack();

  // The value under a key in the topmost dictionary that has it, borrowed; null when there is none.
  [[nodiscard]] PostscriptObject* lookup(DictionaryKey key) const {
    for (std::ptrdiff_t depth = 0;; ++depth) {
      const auto* dictionary = as<DictionaryObject>(static_cast<const PostscriptObject*>(stack_.peek(depth)));
      if (dictionary == nullptr) return nullptr;
      if (PostscriptObject* value = dictionary->lookup(key)) return value;
    }
  }
  [[nodiscard]] PostscriptObject* lookup(const PostscriptObject& key) const;

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
  std::vector<std::string> replacedNames_;
  std::vector<std::string> generatedNames_;
  Ref<DictionaryObject> system_;
  Ref<DictionaryObject> global_;
  Ref<DictionaryObject> user_;
  Ref<DictionaryObject> error_;
  Ref<DictionaryObject> fontDirectory_;
  ObjectStack stack_{"Dictionary Stack"};
};

}  // namespace quillpress
