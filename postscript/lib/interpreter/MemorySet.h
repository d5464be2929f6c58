#pragma once

#include <memory>
#include <string>

#include "postscript/lib/interpreter/SpareObjects.h"
#include "postscript/lib/objects/ArrayObject.h"
#include "postscript/lib/objects/BooleanObject.h"
#include "postscript/lib/objects/DictionaryObject.h"
#include "postscript/lib/objects/FileObject.h"
#include "postscript/lib/objects/MarkObject.h"
#include "postscript/lib/objects/StringObject.h"
#include "postscript/lib/objects/VirtualMemoryObject.h"

namespace quillpress {

// The two memory areas of an interpreter and which of them is current. Everything that a job makes goes
// to the current one.
class MemorySet {
 public:
  MemorySet();

  // The table that the dictionaries of both areas keep right.
  [[nodiscard]] NameTable& names() const { return *names_; }

  [[nodiscard]] VirtualMemoryObject& local() const { return *local_; }
  [[nodiscard]] VirtualMemoryObject& global() const { return *global_; }
  [[nodiscard]] VirtualMemoryObject& current() const { return *current_; }
  [[nodiscard]] bool isGlobalCurrent() const { return current_ == global_.get(); }

  // Kept: nothing ever goes back to the local area (status/setglobal.ps).
  void useGlobal() { current_ = global_.get(); }

  // New values in the current area.
  [[nodiscard]] Ref<StringObject> newString(std::string text) const;
  [[nodiscard]] Ref<ArrayObject> newArray() const;      // opened with '['
  [[nodiscard]] Ref<ArrayObject> newProcedure() const;  // opened with '{'
  [[nodiscard]] Ref<DictionaryObject> newDictionary() const;
  [[nodiscard]] Ref<FileObject> newCurrentFile() const;
  [[nodiscard]] Ref<FileObject> newFilteredFile(Ref<PostscriptObject> source, std::string filter,
                                                std::int32_t parameter) const;

  // New literal numbers, which belong to no area.
  [[nodiscard]] Ref<IntegerObject> newInteger(std::int32_t value) const { return integers_.take(value); }
  [[nodiscard]] Ref<RealObject> newReal(double value) const { return reals_.take(value); }

  // Objects that nothing can change and nobody can tell apart, so that one serves for many.
  [[nodiscard]] Ref<BooleanObject> boolean(bool value) const {
    return value ? true_.get(true) : false_.get(false);
  }
  [[nodiscard]] Ref<MarkObject> mark() const { return mark_.get(); }

  // What clone gives, made like the above.
  [[nodiscard]] Ref<PostscriptObject> newClone(const PostscriptObject& object) const;

 private:
  std::unique_ptr<NameTable> names_;  // before the areas, which tell it of their changes
  Ref<VirtualMemoryObject> local_;
  Ref<VirtualMemoryObject> global_;
  VirtualMemoryObject* current_;
  mutable SpareNumbers<IntegerObject> integers_;
  mutable SpareNumbers<RealObject> reals_;
  mutable SharedObject<BooleanObject> true_;
  mutable SharedObject<BooleanObject> false_;
  mutable SharedObject<MarkObject> mark_;
};

}  // namespace quillpress
