#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "postscript/level3/objects/Name.h"

namespace quillpress::level3 {

// All names of one virtual memory. A name's address holds as long as an object of the language refers to it,
// and for ever when it was pinned.
class NameTable {
 public:
  // The longest name. A longer one is a limitcheck.
  static constexpr std::size_t kMaxLength = 65535;

  NameTable();
  ~NameTable();
  NameTable(const NameTable&) = delete;
  NameTable& operator=(const NameTable&) = delete;

  // For C++ code: the name stays for the lifetime of the table.
  Name* pinned(std::string_view text);

  // For what a job names: the name goes when nothing refers to it at a collection.
  Name* intern(std::string_view text) {
    Name* const name = text.size() == 1 ? known(static_cast<std::uint8_t>(text.front())) : nullptr;
    return name != nullptr ? name : lookUp(text);
  }

  // The name of one character, or nullptr when it is not at hand.
  [[nodiscard]] Name* known(std::uint8_t character) const { return short_[character]; }
  // The name, or nullptr when nobody has used it.
  [[nodiscard]] Name* find(std::string_view text) const;

  // Frees the names without a mark, takes the mark off the others.
  void sweep();

  [[nodiscard]] std::size_t size() const { return count_; }
  [[nodiscard]] std::size_t bytes() const { return bytes_; }

 private:
  [[nodiscard]] std::size_t place(std::string_view text, std::uint32_t hash) const;
  Name* lookUp(std::string_view text);
  Name* add(std::string_view text, std::uint32_t hash);
  void rehash(std::size_t size);

  std::vector<Name*> slots_;  // open addressing, a power of two
  // Those of one character, where they are known: prologues name so what pages ask for all the time.
  std::array<Name*, 256> short_{};
  std::size_t count_ = 0;
  std::size_t bytes_ = 0;
};

}  // namespace quillpress::level3
