#include "postscript/level3/objects/VirtualMemory.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace quillpress::level3 {

namespace {

// A collection walks over everything alive, so it waits until as much again has been allocated, and at least
// this: memory that is used again is at hand, while new pages of the machine's are not.
constexpr std::size_t kSmallestThreshold = 512UL * 1024;

#if defined(__has_feature)
#define QUILLPRESS_CHECKS_ADDRESSES __has_feature(address_sanitizer)
#elif defined(__SANITIZE_ADDRESS__)
#define QUILLPRESS_CHECKS_ADDRESSES 1
#else
#define QUILLPRESS_CHECKS_ADDRESSES 0
#endif

// Under AddressSanitizer every value has memory of its own, so that use of one that was collected is seen.
constexpr bool isSmall(std::size_t bytes) {
  return QUILLPRESS_CHECKS_ADDRESSES == 0 && bytes <= SmallBlocks::kLargest;
}

std::uint32_t checkedLength(std::size_t length) {
  if (length > Object::kMaxLength) raise(ErrorName::kLimitCheck);
  return static_cast<std::uint32_t>(length);
}

}  // namespace

VirtualMemory::VirtualMemory() : threshold_(kSmallestThreshold) {}

VirtualMemory::~VirtualMemory() {
  // Dictionaries take themselves off their names, which are therefore still there.
  for (Storage* storage : storages_) destroy(storage);
}

void VirtualMemory::reserve(std::size_t bytes) {
  if (bytes > limit_ || bytesUsed() > limit_ - bytes) raise(ErrorName::kVmError);
}

void VirtualMemory::account(std::size_t bytes) {
  used_ += bytes;
  const bool wanted = wantsCollection();
  sinceCollection_ += bytes;
  if (!wanted && wantsCollection() && notifyPressure_) notifyPressure_();
}

// Null when the machine has none.
void* VirtualMemory::memoryFor(std::size_t bytes) {
  return isSmall(bytes) ? smallBlocks_.take(bytes) : ::operator new(bytes, std::nothrow);
}

void VirtualMemory::release(void* memory, std::size_t bytes) {
  if (isSmall(bytes)) {
    smallBlocks_.give(memory, bytes);
  } else {
    ::operator delete(memory);
  }
}

template <typename T, typename... Arguments>
T* VirtualMemory::allocate(std::size_t tail, Arguments&&... arguments) {
  static_assert(alignof(T) <= alignof(std::uint64_t));
  const std::size_t bytes = sizeof(T) + tail;
  reserve(bytes);
  // Its place first, so that nothing can fail once there is something to lose.
  storages_.push_back(nullptr);
  void* const memory = memoryFor(bytes);
  if (memory == nullptr) {
    storages_.pop_back();
    raise(ErrorName::kVmError);
  }
  T* const storage = new (memory) T(std::forward<Arguments>(arguments)...);
  storage->isGlobal_ = isGlobal_;
  storage->epoch_ = isGlobal_ ? Storage::kGlobalEpoch : epoch_;
  storage->madeIn_ = epoch_;
  storages_.back() = storage;
  account(bytes);
  return storage;
}

Object VirtualMemory::newString(std::size_t length) {
  const std::uint32_t count = checkedLength(length);
  StringStorage* const storage = allocate<StringStorage>(count, count);
  std::memset(storage->bytes(), 0, count);
  return Object::string(storage, count);
}

Object VirtualMemory::newString(std::string_view text) {
  const std::uint32_t count = checkedLength(text.size());
  StringStorage* const storage = allocate<StringStorage>(count, count);
  if (count != 0) std::memcpy(storage->bytes(), text.data(), count);
  return Object::string(storage, count);
}

Object VirtualMemory::newArray(std::size_t length) {
  const std::uint32_t count = checkedLength(length);
  ArrayStorage* const storage = allocate<ArrayStorage>(count * sizeof(Object), count);
  std::uninitialized_default_construct_n(storage->elements(), count);
  return Object::array(storage, count);
}

Object VirtualMemory::newArray(std::span<const Object> elements) {
  const std::uint32_t count = checkedLength(elements.size());
  if (isGlobal_ && std::any_of(elements.begin(), elements.end(), isLocal)) raise(ErrorName::kInvalidAccess);
  ArrayStorage* const storage = allocate<ArrayStorage>(count * sizeof(Object), count);
  std::uninitialized_copy(elements.begin(), elements.end(), storage->elements());
  return Object::array(storage, count);
}

Object VirtualMemory::newPackedArray(std::span<const Object> elements) {
  const Object array = newArray(elements);
  return Object::packedArray(array.arrayStorage(), array.length());
}

Object VirtualMemory::newDictionary(std::size_t maxLength) {
  checkedLength(maxLength);
  return Object::dictionary(allocate<Dictionary>(0, maxLength));
}

Object VirtualMemory::newForeign(Type type, std::unique_ptr<Foreign> contents) {
  const std::size_t bytes = contents->bytes();
  reserve(bytes);
  const Object object = Object::foreign(type, allocate<ForeignStorage>(0, std::move(contents)));
  account(bytes);
  return object;
}

void VirtualMemory::put(Dictionary& dictionary, const Object& key, const Object& value) {
  if (key.isNull()) raise(ErrorName::kTypeCheck);
  checkStorable(dictionary, value);
  const Object normal = keyOf(key);
  checkStorable(dictionary, normal);
  willChange(dictionary);
  if (Object* const place = dictionary.find(normal)) {
    *place = value;
  } else {
    insert(dictionary, normal, value);
  }
}

void VirtualMemory::put(Dictionary& dictionary, Name* key, const Object& value) {
  checkStorable(dictionary, value);
  willChange(dictionary);
  putPermanent(dictionary, key, value);
}

void VirtualMemory::putPermanent(Dictionary& dictionary, Name* key, const Object& value) {
  if (Object* const place = dictionary.find(key)) {
    *place = value;
  } else {
    insert(dictionary, Object::literalName(key), value);
  }
}

void VirtualMemory::insert(Dictionary& dictionary, const Object& key, const Object& value) {
  if (dictionary.isFull()) {
    const std::size_t before = dictionary.bytes();
    reserve(2 * before);
    dictionary.grow();
    if (dictionary.bytes() > before) account(dictionary.bytes() - before);
    if (dictionary.isOnStack()) dictionaryStack_.restamp();
  }
  const std::size_t before = dictionary.bytes();
  dictionary.insert(key, value);
  if (dictionary.bytes() > before) account(dictionary.bytes() - before);
}

bool VirtualMemory::remove(Dictionary& dictionary, const Object& key) {
  const Object normal = keyOf(key);
  if (dictionary.find(normal) == nullptr) return false;
  willChange(dictionary);
  return dictionary.remove(normal);
}

void VirtualMemory::setAccess(Dictionary& dictionary, Access access) {
  willChange(dictionary);
  dictionary.access_ = access;
}

std::uint32_t VirtualMemory::save() {
  epoch_ = ++lastSerial_;
  journals_.emplace_back(epoch_);
  return epoch_;
}

bool VirtualMemory::isOpenSave(std::uint32_t serial) const {
  return std::any_of(journals_.begin(), journals_.end(),
                     [&](const Journal& journal) { return journal.serial() == serial; });
}

void VirtualMemory::restore(std::uint32_t serial) {
  while (!journals_.empty() && journals_.back().serial() >= serial) {
    journals_.back().undo();
    journals_.pop_back();
  }
  epoch_ = journals_.empty() ? 0 : journals_.back().serial();
  dictionaryStack_.restamp();
}

void VirtualMemory::removeRoots(const Roots* roots) {
  // Scopes end in the reverse order of their beginning, so it is nearly always the last.
  const auto found = std::find(roots_.rbegin(), roots_.rend(), roots);
  if (found != roots_.rend()) roots_.erase(std::next(found).base());
}

void VirtualMemory::collect() {
  Tracer tracer;
  for (const Roots* roots : roots_) roots->trace(tracer);
  for (std::size_t level = 0; level < dictionaryStack_.depth(); ++level) {
    tracer.visit(dictionaryStack_.at(level));
  }
  for (const Journal& journal : journals_) journal.trace(tracer);
  tracer.finish();
  sweep();
  names_.sweep();
  sinceCollection_ = 0;
  threshold_ = step_ > 0 ? step_ : std::max(kSmallestThreshold, used_);
}

void VirtualMemory::sweep() {
  auto kept = storages_.begin();
  used_ = 0;
  for (Storage* storage : storages_) {
    if (storage->isMarked_) {
      storage->isMarked_ = false;
      used_ += sizeOf(*storage);
      *kept++ = storage;
    } else {
      destroy(storage);
    }
  }
  storages_.erase(kept, storages_.end());
}

std::size_t VirtualMemory::sizeOf(const Storage& storage) {
  switch (storage.kind()) {
    case StorageKind::kString:
      return sizeof(StringStorage) + storage.capacity();
    case StorageKind::kArray:
      return sizeof(ArrayStorage) + storage.capacity() * sizeof(Object);
    case StorageKind::kDictionary:
      return sizeof(Dictionary) + static_cast<const Dictionary&>(storage).bytes();
    case StorageKind::kForeign:
      return sizeof(ForeignStorage) + static_cast<const ForeignStorage&>(storage).contents().bytes();
  }
  return 0;
}

void VirtualMemory::destroy(Storage* storage) {
  switch (storage->kind()) {
    case StorageKind::kString:
    case StorageKind::kArray:
      release(storage, sizeOf(*storage));
      break;
    case StorageKind::kDictionary:
      static_cast<Dictionary*>(storage)->~Dictionary();
      release(storage, sizeof(Dictionary));
      break;
    case StorageKind::kForeign:
      static_cast<ForeignStorage*>(storage)->~ForeignStorage();
      release(storage, sizeof(ForeignStorage));
      break;
  }
}

}  // namespace quillpress::level3
