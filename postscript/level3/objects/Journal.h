#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "postscript/level3/objects/Dictionary.h"
#include "postscript/level3/objects/Tracer.h"

namespace quillpress::level3 {

// What one save must put back: the contents of every local composite at its first change since then. Strings
// are left alone, as the language says.
class Journal {
 public:
  explicit Journal(std::uint32_t serial) : serial_(serial) {}

  // The save's number; later saves have greater ones.
  [[nodiscard]] std::uint32_t serial() const { return serial_; }
  [[nodiscard]] std::size_t bytes() const { return bytes_; }

  // Keeps the contents as they are now, and stamps the storage so that this save asks no more.
  void record(Storage& storage);
  // Puts everything back.
  void undo();

  void trace(Tracer& tracer) const;

 private:
  struct Record {
    Storage* storage;
    std::uint32_t epoch;  // before the change
    std::vector<Object> elements;
    std::vector<Dictionary::Entry> entries;
    std::size_t maxLength = 0;
    Access access = Access::kUnlimited;
    std::unique_ptr<Foreign> contents;
  };

  static void putBack(Record& record);

  std::uint32_t serial_;
  std::size_t bytes_ = 0;
  std::vector<Record> records_;
};

}  // namespace quillpress::level3
