#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

#include "postscript/level3/objects/Dictionary.h"
#include "postscript/level3/objects/DictionaryStack.h"
#include "postscript/level3/objects/ErrorName.h"
#include "postscript/level3/objects/Journal.h"
#include "postscript/level3/objects/NameTable.h"
#include "postscript/level3/objects/Object.h"
#include "postscript/level3/objects/SmallBlocks.h"
#include "postscript/level3/objects/Storage.h"
#include "postscript/level3/objects/Tracer.h"

namespace quillpress::level3 {

// All composite values of a job, local and global, and its names.
//
// Values that nothing refers to are found by marking and sweeping. That happens only when the interpreter
// stands between two objects (collect() is never called from within an allocation), so an operator may hold
// objects in C++ variables; one that runs a procedure of the job meanwhile keeps them on the operand stack or
// in Roots.
//
// save and restore: a local composite that is about to change goes into the journal of the innermost save,
// once. All writes into arrays and dictionaries therefore go through this class.
class VirtualMemory {
 public:
  static constexpr std::size_t kDefaultLimit = 1024UL * 1024 * 1024;

  VirtualMemory();
  ~VirtualMemory();
  VirtualMemory(const VirtualMemory&) = delete;
  VirtualMemory& operator=(const VirtualMemory&) = delete;

  // ---- Names.

  // For C++ code: lives as long as the memory.
  Name* name(std::string_view text) { return names_.pinned(text); }
  // For what comes out of a job.
  Name* internName(std::string_view text) { return names_.intern(text); }
  [[nodiscard]] const NameTable& names() const { return names_; }

  // ---- New values, in global or local memory as isGlobal() says. Throw VMerror beyond the limit, and
  // limitcheck beyond Object::kMaxLength. Strings are filled with zeros, arrays with null.

  Object newString(std::size_t length);
  Object newString(std::string_view text);
  Object newArray(std::size_t length);
  Object newArray(std::span<const Object> elements);
  Object newPackedArray(std::span<const Object> elements);
  Object newDictionary(std::size_t maxLength);
  Object newForeign(Type type, std::unique_ptr<Foreign> contents);

  [[nodiscard]] bool isGlobal() const { return isGlobal_; }
  void setGlobal(bool isGlobal) { isGlobal_ = isGlobal; }

  // ---- Changes. `container` may be of either memory; a local composite in a global container is an
  // invalidaccess.

  void setElement(const Object& array, std::uint32_t index, const Object& value) {
    ArrayStorage& storage = *array.arrayStorage();
    checkStorable(storage, value);
    willChange(storage);
    array.elements()[index] = value;
  }
  // Throws typecheck for a null key.
  void put(Dictionary& dictionary, const Object& key, const Object& value);
  void put(Dictionary& dictionary, Name* key, const Object& value);
  // For what is never freed, such as userdict in systemdict: without the check, and restore leaves it alone.
  void putPermanent(Dictionary& dictionary, Name* key, const Object& value);
  // True when there was such an entry.
  bool remove(Dictionary& dictionary, const Object& key);
  void setAccess(Dictionary& dictionary, Access access);
  // To be called before the contents of an array or a foreign value are changed in place.
  void willChange(Storage& storage) {
    if (storage.epoch_ < epoch_) journals_.back().record(storage);
  }
  // Throws invalidaccess when `value` is local and `container` is global.
  static void checkStorable(const Storage& container, const Object& value) {
    if (container.isGlobal() && isLocal(value)) raise(ErrorName::kInvalidAccess);
  }
  static bool isLocal(const Object& value) { return value.isComposite() && !value.storage()->isGlobal(); }

  // A key as dictionaries keep it.
  Object keyOf(const Object& key) {
    return key.isString() ? Object::literalName(internName(textOf(key))) : Dictionary::normalized(key);
  }

  DictionaryStack& dictionaryStack() { return dictionaryStack_; }
  [[nodiscard]] const DictionaryStack& dictionaryStack() const { return dictionaryStack_; }

  // ---- save and restore.

  // The serial number of the new save.
  std::uint32_t save();
  // How many saves are open.
  [[nodiscard]] std::size_t saveLevel() const { return journals_.size(); }
  [[nodiscard]] bool isOpenSave(std::uint32_t serial) const;
  // Whether the value would not survive restoring that save.
  static bool isNewerThan(const Object& value, std::uint32_t serial) {
    return isLocal(value) && value.storage()->madeIn() >= serial;
  }
  // Ends that save and all inside it. REQUIRES: isOpenSave(serial)
  void restore(std::uint32_t serial);

  // ---- Collection.

  void addRoots(const Roots* roots) { roots_.push_back(roots); }
  // In any order.
  void removeRoots(const Roots* roots);

  // So much has been allocated that a collection is worth its time.
  [[nodiscard]] bool wantsCollection() const { return sinceCollection_ >= threshold_; }
  // Called when wantsCollection() becomes true; must be cheap and must not collect.
  void onPressure(std::function<void()> notify) { notifyPressure_ = std::move(notify); }
  // REQUIRES: every live object is in a root.
  void collect();
  // Wants a collection each time that so much has been allocated, whatever is in use. Tests find with it what
  // a collection takes too early.
  void collectEvery(std::size_t bytes) { step_ = threshold_ = bytes; }
  [[nodiscard]] std::size_t allocatedSinceCollection() const { return sinceCollection_; }

  [[nodiscard]] std::size_t bytesUsed() const { return used_ + names_.bytes(); }
  [[nodiscard]] std::size_t limit() const { return limit_; }
  void setLimit(std::size_t bytes) { limit_ = bytes; }

 private:
  template <typename T, typename... Arguments>
  T* allocate(std::size_t tail, Arguments&&... arguments);
  void reserve(std::size_t bytes);
  void account(std::size_t bytes);
  void insert(Dictionary& dictionary, const Object& key, const Object& value);
  void* memoryFor(std::size_t bytes);
  void release(void* memory, std::size_t bytes);
  void destroy(Storage* storage);
  static std::size_t sizeOf(const Storage& storage);
  void sweep();

  NameTable names_;
  SmallBlocks smallBlocks_;
  // Of all composite values. In pieces, which never move; not a list, whose next element is known too late.
  std::deque<Storage*> storages_;
  DictionaryStack dictionaryStack_;
  std::vector<Journal> journals_;  // the innermost save is last
  std::uint32_t epoch_ = 0;        // serial of the innermost save
  std::uint32_t lastSerial_ = 0;
  bool isGlobal_ = false;

  std::vector<const Roots*> roots_;
  std::function<void()> notifyPressure_;
  std::size_t used_ = 0;
  std::size_t limit_ = kDefaultLimit;
  std::size_t sinceCollection_ = 0;
  std::size_t threshold_;
  std::size_t step_ = 0;  // between two collections; 0 when that depends on what is in use
};

// Keeps roots known for a scope.
class RootsScope {
 public:
  RootsScope(VirtualMemory& memory, const Roots& roots) : memory_(memory), roots_(roots) {
    memory_.addRoots(&roots_);
  }
  ~RootsScope() { memory_.removeRoots(&roots_); }
  RootsScope(const RootsScope&) = delete;
  RootsScope& operator=(const RootsScope&) = delete;

 private:
  VirtualMemory& memory_;
  const Roots& roots_;
};

// Objects that a C++ function holds while it runs a procedure of the job.
class Rooted final : public Roots {
 public:
  explicit Rooted(VirtualMemory& memory, const Object& object = {}) : value(object), scope_(memory, *this) {}
  void trace(Tracer& tracer) const override { tracer.visit(value); }

  Object value;

 private:
  RootsScope scope_;
};

}  // namespace quillpress::level3
