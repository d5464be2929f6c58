#pragma once

#include <cstdint>
#include <string_view>

namespace quillpress::level3 {

class Dictionary;
class Object;

// One name of the job, interned: two names are the same when their addresses are.
//
// A name remembers where it is bound, in two ways. `slot` is the value that the dictionary stack gave it
// last, and holds as long as `stamp` is the stack's. `only` is the one dictionary that has this name as a
// key; when that is on the stack, nothing need be searched.
struct Name {
  enum class Binding : std::uint8_t { kNone, kOne, kMany };

  std::uint64_t stamp = 0;
  Object* slot = nullptr;

  Dictionary* only = nullptr;
  std::uint32_t onlyIndex = 0;
  Binding binding = Binding::kNone;
  bool isPinned = false;  // named by C++ code, never collected
  bool isMarked = false;

  std::uint32_t hash = 0;
  std::uint32_t length = 0;
  const char* characters = nullptr;

  [[nodiscard]] std::string_view text() const { return {characters, length}; }
};

}  // namespace quillpress::level3
