#pragma once

#include <span>
#include <vector>

#include "postscript/level3/objects/Dictionary.h"
#include "postscript/level3/objects/Name.h"

namespace quillpress::level3 {

// Marks what can be reached. Depth is kept in a list of its own, so that a long chain of arrays needs no C++
// stack.
class Tracer {
 public:
  void visit(const Object& object) {
    if (object.isName()) {
      object.asName()->isMarked = true;
    } else if (object.isComposite()) {
      visit(object.storage());
    }
  }

  void visit(std::span<const Object> objects) {
    for (const Object& object : objects) visit(object);
  }

  void visit(Storage* storage) {
    if (storage == nullptr || storage->isMarked_) return;
    storage->isMarked_ = true;
    // A string holds nothing more.
    if (storage->kind() != StorageKind::kString) pending_.push_back(storage);
  }

  // Follows what has been visited until nothing is left.
  void finish();

 private:
  void follow(Storage& storage);

  std::vector<Storage*> pending_;
};

// Whoever holds objects of the language outside the stacks and dictionaries says so here, while it does.
class Roots {
 public:
  virtual void trace(Tracer& tracer) const = 0;

 protected:
  ~Roots() = default;
};

}  // namespace quillpress::level3
