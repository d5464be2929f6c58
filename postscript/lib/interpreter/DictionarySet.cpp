#include "postscript/lib/interpreter/DictionarySet.h"

#include "postscript/lib/base/Ex.h"

namespace quillpress {

namespace {

constexpr std::size_t kSystemEntries = 512;

}  // namespace

DictionarySet::DictionarySet(const MemorySet& memory)
    : names_(memory.names()),
      system_(make<DictionaryObject>(memory.global(), "System")),
      global_(make<DictionaryObject>(memory.global(), "Global")),
      user_(make<DictionaryObject>(memory.local(), "User")),
      error_(make<DictionaryObject>(memory.local(), "Error")),
      fontDirectory_(make<DictionaryObject>(memory.global(), "Font")) {
  // About as many as there are operators, so that opening a converter does not begin with moving them about.
  system_->reserve(kSystemEntries);
  generatedNames_.reserve(kSystemEntries);
  system_->makePermanent();
  global_->makePermanent();
  user_->makePermanent();
  resetStack();
}

void DictionarySet::begin(Ref<PostscriptObject> dictionary) {
  const bool isDictionary = dictionary->typeCode == TypeCode::kDictionary;
  stack_.push(std::move(dictionary));
  noteStackChange();
  if (!isDictionary) permanentsAreInPlace_ = false;
}

void DictionarySet::end() {
  stack_.pop();
  noteStackChange();
}

// What lies above the permanent dictionaries does not matter, so only a stack as low as they can differ. One
// that holds them again, after `end` took them off, counts when it holds the very same handles.
void DictionarySet::noteStackChange() {
  if (stack_.count() > kPermanentCount) return;
  permanentsAreInPlace_ =
      stack_.at(0) == system_.get() && stack_.at(1) == global_.get() && stack_.at(2) == user_.get();
}

void DictionarySet::resetStack() {
  stack_.clear();
  stack_.push(system_);
  stack_.push(global_);
  stack_.push(user_);
  noteStackChange();
}

PostscriptObject* DictionarySet::searchAndRemember(KnownName*& known, DictionaryKey key) {
  if (known == nullptr) {  // another object with this text may have been executed before
    known = names_.find(key);
    if (PostscriptObject* value = remembered(known)) return value;
  }
  PostscriptObject* value = search(key);
  if (value == nullptr) return nullptr;
  if (known == nullptr) known = &names_.intern(key);
  if (!known->isDefinedElsewhere) known->remembered = onlyPermanentValue(key);
  return value;
}

// The value in the one permanent dictionary that has the key; null when several have it, or none.
PostscriptObject* DictionarySet::onlyPermanentValue(DictionaryKey key) const {
  PostscriptObject* only = nullptr;
  for (const DictionaryObject* dictionary : {user_.get(), global_.get(), system_.get()}) {
    PostscriptObject* value = dictionary->lookup(key);
    if (value != nullptr && only != nullptr) return nullptr;
    if (value != nullptr) only = value;
  }
  return only;
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
  system_->define(key, std::move(operatorObject));
}

void DictionarySet::registerGenerated(Ref<NameObject> operatorObject) {
  generatedNames_.push_back(operatorObject->text);
  registerOperator(std::move(operatorObject));
}

}  // namespace quillpress
