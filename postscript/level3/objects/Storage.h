#pragma once

#include <memory>
#include <span>
#include <string_view>

#include "postscript/level3/objects/Object.h"

namespace quillpress::level3 {

class Tracer;

enum class StorageKind : std::uint8_t { kString, kArray, kDictionary, kForeign };

// What the virtual memory knows of every composite value. Made and destroyed by VirtualMemory alone.
class Storage {
 public:
  // Global storage never needs the journal; its epoch is later than that of every save.
  static constexpr std::uint32_t kGlobalEpoch = UINT32_MAX;

  Storage(const Storage&) = delete;
  Storage& operator=(const Storage&) = delete;

  [[nodiscard]] StorageKind kind() const { return kind_; }
  [[nodiscard]] bool isGlobal() const { return isGlobal_; }
  // The serial number of the save that was innermost when this was made; 0 outside every save.
  [[nodiscard]] std::uint32_t madeIn() const { return madeIn_; }
  // Elements or bytes.
  [[nodiscard]] std::uint32_t capacity() const { return capacity_; }

 protected:
  Storage(StorageKind kind, std::uint32_t capacity) : capacity_(capacity), kind_(kind) {}
  ~Storage() = default;

 private:
  friend class VirtualMemory;
  friend class Journal;
  friend class Tracer;

  std::uint32_t epoch_ = 0;  // the save since which a change needs no journal entry
  std::uint32_t madeIn_ = 0;
  std::uint32_t capacity_;
  StorageKind kind_;
  bool isGlobal_ = false;
  bool isMarked_ = false;
};

// The bytes stand behind the header, in one allocation.
class StringStorage final : public Storage {
 public:
  [[nodiscard]] std::uint8_t* bytes() { return reinterpret_cast<std::uint8_t*>(this + 1); }

 private:
  friend class VirtualMemory;
  explicit StringStorage(std::uint32_t capacity) : Storage(StorageKind::kString, capacity) {}
};

// The elements stand behind the header, in one allocation.
class alignas(Object) ArrayStorage final : public Storage {
 public:
  [[nodiscard]] Object* elements() { return reinterpret_cast<Object*>(this + 1); }

 private:
  friend class VirtualMemory;
  explicit ArrayStorage(std::uint32_t capacity) : Storage(StorageKind::kArray, capacity) {}
};

static_assert(sizeof(ArrayStorage) % alignof(Object) == 0);

// Contents that the objects do not know: files, graphics states. Those that hold objects of the language show
// them to the tracer.
class Foreign {
 public:
  virtual ~Foreign() = default;
  Foreign(const Foreign&) = delete;
  Foreign& operator=(const Foreign&) = delete;

  virtual void trace(Tracer& /*tracer*/) const {}

  // About how much it holds beside the objects, so that many of them bring a collection about.
  [[nodiscard]] virtual std::size_t bytes() const { return 0; }

  // A copy that restore puts back, or nothing when restore leaves this kind of contents alone.
  [[nodiscard]] virtual std::unique_ptr<Foreign> snapshot() const { return nullptr; }

  // Takes over the contents of another one of the same kind, for `copy`.
  virtual void assign(const Foreign& /*other*/) {}

 protected:
  Foreign() = default;
};

class ForeignStorage final : public Storage {
 public:
  [[nodiscard]] Foreign& contents() const { return *contents_; }

 private:
  friend class VirtualMemory;
  friend class Journal;
  explicit ForeignStorage(std::unique_ptr<Foreign> contents)
      : Storage(StorageKind::kForeign, 1), contents_(std::move(contents)) {}

  std::unique_ptr<Foreign> contents_;
};

inline std::uint8_t* Object::bytes() const {
  return value_.string->bytes() + offset();
}

inline Object* Object::elements() const {
  return value_.array->elements() + offset();
}

// A string's bytes as text. Borrowed: valid while the string's storage is.
inline std::string_view textOf(const Object& string) {
  return {reinterpret_cast<const char*>(string.bytes()), string.length()};
}

inline std::span<Object> elementsOf(const Object& array) {
  return {array.elements(), array.length()};
}

}  // namespace quillpress::level3
