#include "postscript/lib/interpreter/DictionarySet.h"

#include "postscript/lib/base/Ex.h"

namespace quillpress {

DictionarySet::DictionarySet(const MemorySet& memory)
    : system_(make<DictionaryObject>(memory.global(), "System")),
      global_(make<DictionaryObject>(memory.global(), "Global")),
      user_(make<DictionaryObject>(memory.local(), "User")),
      error_(make<DictionaryObject>(memory.local(), "Error")),
      fontDirectory_(make<DictionaryObject>(memory.global(), "Font")) {
  resetStack();
}

void DictionarySet::resetStack() {
  stack_.clear();
  stack_.push(system_);
  stack_.push(global_);
  stack_.push(user_);
}

PostscriptObject* DictionarySet::lookup(const PostscriptObject& key) const {
  if (const auto* name = as<NameObject>(&key)) return lookup(name->key());
  const std::string text = keyText(key);
  return lookup(DictionaryKey(text));
}

DictionaryObject* DictionarySet::findHolder(const PostscriptObject& key) const {
  const std::string text = keyText(key);
  return findHolder(DictionaryKey(text));
}

DictionaryObject* DictionarySet::findHolder(DictionaryKey key) const {
  for (std::ptrdiff_t depth = 0;; ++depth) {
    auto* dictionary = as<DictionaryObject>(stack_.peek(depth));
    if (dictionary == nullptr || dictionary->lookup(key) != nullptr) return dictionary;
  }
}

DictionaryObject& DictionarySet::current() const {
  auto* dictionary = as<DictionaryObject>(stack_.peek(0));
  if (dictionary == nullptr) THROW_EX("expected dictionary on dictionary stack");
  return *dictionary;
}

void DictionarySet::registerOperator(Ref<NameObject> operatorObject) {
  const DictionaryKey key = operatorObject->key();
  if (system_->lookup(key) != nullptr) replacedNames_.emplace_back(key.text);
  system_->define(key.text, std::move(operatorObject));
}

void DictionarySet::registerGenerated(Ref<NameObject> operatorObject) {
  generatedNames_.push_back(operatorObject->text);
  registerOperator(std::move(operatorObject));
}

}  // namespace quillpress
