#pragma once

#include <cstdint>
#include <vector>

#include "postscript/level3/objects/Dictionary.h"
#include "postscript/level3/objects/Name.h"

namespace quillpress::level3 {

// The dictionary stack, and the look-up of names on it.
//
// Every state of the stack has a stamp. A name that was looked up keeps the stamp and the value's place; as
// long as the stack has that stamp, finding it again is one comparison. `end` brings back the stamp from
// before `begin`, so that a job's outer names stay found. What moves values (a dictionary that grows,
// restore) renews all stamps; a single key that comes or goes only takes the stamp off its name.
class DictionaryStack {
 public:
  // systemdict, globaldict, userdict: never popped.
  static constexpr std::size_t kPermanent = 3;
  static constexpr std::size_t kMaxDepth = 500;

  // The value's place, or nullptr. Borrowed until the stack or one of its dictionaries changes.
  [[nodiscard]] Object* find(Name* name) { return name->stamp == stamp_ ? name->slot : search(name); }
  // The topmost dictionary that has the key, or nullptr.
  [[nodiscard]] Dictionary* where(const Object& key) const;

  // Throws dictstackoverflow.
  void begin(Dictionary* dictionary);
  // Throws dictstackunderflow when only the permanent ones are left.
  void end();
  void clear();

  [[nodiscard]] Dictionary* top() const { return levels_.back().dictionary; }
  [[nodiscard]] std::size_t depth() const { return levels_.size(); }
  // 0 is the bottom.
  [[nodiscard]] Dictionary* at(std::size_t level) const { return levels_[level].dictionary; }

  // To be called when values have moved.
  void restamp();

 private:
  struct Level {
    Dictionary* dictionary;
    std::uint64_t stamp;
  };

  Object* search(Name* name);
  void pop();

  std::vector<Level> levels_;
  std::uint64_t stamp_ = 1;
  std::uint64_t lastStamp_ = 1;
};

}  // namespace quillpress::level3
