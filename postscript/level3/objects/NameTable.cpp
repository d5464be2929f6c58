#include "postscript/level3/objects/NameTable.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include "postscript/level3/objects/ErrorName.h"

namespace quillpress::level3 {

namespace {

constexpr std::size_t kFirstSize = 4096;

// FNV-1a, with the high bits folded in: tables look at the low ones.
std::uint32_t hashOf(std::string_view text) {
  std::uint32_t hash = 2166136261U;
  for (const char character : text) {
    hash = (hash ^ static_cast<unsigned char>(character)) * 16777619U;
  }
  return hash ^ (hash >> 15);
}

// The characters stand behind the name, in one allocation.
Name* make(std::string_view text, std::uint32_t hash) {
  void* const memory = ::operator new(sizeof(Name) + text.size());
  Name* const name = new (memory) Name;
  char* const characters = reinterpret_cast<char*>(name + 1);
  if (!text.empty()) std::memcpy(characters, text.data(), text.size());
  name->hash = hash;
  name->length = static_cast<std::uint32_t>(text.size());
  name->characters = characters;
  return name;
}

void destroy(Name* name) {
  ::operator delete(name);
}

std::size_t sizeOf(const Name& name) {
  return sizeof(Name) + name.length;
}

}  // namespace

NameTable::NameTable() : slots_(kFirstSize, nullptr) {}

NameTable::~NameTable() {
  for (Name* name : slots_) {
    if (name != nullptr) destroy(name);
  }
}

Name* NameTable::pinned(std::string_view text) {
  Name* const name = intern(text);
  name->isPinned = true;
  return name;
}

Name* NameTable::lookUp(std::string_view text) {
  if (text.size() > kMaxLength) raise(ErrorName::kLimitCheck);
  const std::uint32_t hash = hashOf(text);
  Name* const known = slots_[place(text, hash)];
  Name* const name = known != nullptr ? known : add(text, hash);
  if (text.size() == 1) short_[static_cast<unsigned char>(text.front())] = name;
  return name;
}

Name* NameTable::find(std::string_view text) const {
  return slots_[place(text, hashOf(text))];
}

// Where the text stands, or the free place where it would.
std::size_t NameTable::place(std::string_view text, std::uint32_t hash) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t index = hash & mask;
  while (slots_[index] != nullptr && (slots_[index]->hash != hash || slots_[index]->text() != text)) {
    index = (index + 1) & mask;
  }
  return index;
}

Name* NameTable::add(std::string_view text, std::uint32_t hash) {
  if ((count_ + 1) * 2 > slots_.size()) rehash(slots_.size() * 2);
  Name* const name = make(text, hash);
  slots_[place(text, hash)] = name;
  ++count_;
  bytes_ += sizeOf(*name);
  return name;
}

void NameTable::rehash(std::size_t size) {
  std::vector<Name*> old(size, nullptr);
  old.swap(slots_);
  for (Name* name : old) {
    if (name != nullptr) slots_[place(name->text(), name->hash)] = name;
  }
}

void NameTable::sweep() {
  short_ = {};
  for (Name*& name : slots_) {
    if (name == nullptr) continue;
    if (name->isMarked || name->isPinned) {
      name->isMarked = false;
      continue;
    }
    bytes_ -= sizeOf(*name);
    --count_;
    destroy(name);
    name = nullptr;
  }
  rehash(slots_.size());
}

}  // namespace quillpress::level3
