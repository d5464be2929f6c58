#pragma once

#include <memory>
#include <string>

#include "postscript/lib/objects/ArrayObject.h"
#include "postscript/lib/objects/DictionaryObject.h"
#include "postscript/lib/objects/FileObject.h"
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
  [[nodiscard]] Ref<FileObject> newFile(std::unique_ptr<FileData> payload) const;

 private:
  std::unique_ptr<NameTable> names_;  // before the areas, which tell it of their changes
  Ref<VirtualMemoryObject> local_;
  Ref<VirtualMemoryObject> global_;
  VirtualMemoryObject* current_;
};

}  // namespace quillpress
