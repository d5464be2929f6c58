#include "postscript/level3/objects/DictionaryStack.h"

#include "postscript/level3/objects/ErrorName.h"

namespace quillpress::level3 {

Dictionary* DictionaryStack::where(const Object& key) const {
  for (std::size_t level = levels_.size(); level > 0; --level) {
    Dictionary* const dictionary = levels_[level - 1].dictionary;
    if (dictionary->find(key) != nullptr) return dictionary;
  }
  return nullptr;
}

void DictionaryStack::begin(Dictionary* dictionary) {
  if (levels_.size() >= kMaxDepth) raise(ErrorName::kDictStackOverflow);
  stamp_ = ++lastStamp_;
  levels_.push_back({dictionary, stamp_});
  ++dictionary->levels_;
}

void DictionaryStack::end() {
  if (levels_.size() <= kPermanent) raise(ErrorName::kDictStackUnderflow);
  pop();
}

void DictionaryStack::clear() {
  while (levels_.size() > kPermanent) pop();
}

void DictionaryStack::pop() {
  --levels_.back().dictionary->levels_;
  levels_.pop_back();
  stamp_ = levels_.back().stamp;
}

void DictionaryStack::restamp() {
  for (Level& level : levels_) level.stamp = ++lastStamp_;
  stamp_ = lastStamp_;
}

Object* DictionaryStack::search(Name* name) {
  if (name->binding != Name::Binding::kMany) {
    if (name->binding == Name::Binding::kNone || !name->only->isOnStack()) return nullptr;
    name->slot = name->only->at(name->onlyIndex);
    name->stamp = stamp_;
    return name->slot;
  }
  for (std::size_t level = levels_.size(); level > 0; --level) {
    Object* const value = levels_[level - 1].dictionary->find(name);
    if (value == nullptr) continue;
    name->slot = value;
    name->stamp = stamp_;
    return value;
  }
  return nullptr;
}

}  // namespace quillpress::level3
