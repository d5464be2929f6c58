#pragma once

#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// The instances of all resource categories: local ones, which restore takes back, and global ones, which the
// local ones hide. A category is itself an instance of the category Category: a dictionary of procedures.
class Resources {
 public:
  explicit Resources(Interpreter& interpreter);

  // The instance as it was defined, or nullptr.
  [[nodiscard]] const Object* find(Name* category, const Object& key) const;
  // In the memory that is chosen now. Throws invalidaccess for a local instance in global memory.
  void define(Name* category, const Object& key, const Object& instance);
  void undefine(Name* category, const Object& key);
  // All keys, each once.
  [[nodiscard]] std::vector<Object> keys(Name* category) const;

 private:
  [[nodiscard]] Dictionary* instances(const Dictionary& categories, Name* category) const;

  Interpreter& interpreter_;
  Dictionary& local_;  // category -> dictionary of instances
  Dictionary& global_;
};

}  // namespace quillpress::level3
