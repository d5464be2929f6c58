#include "postscript/lib/interpreter/MemorySet.h"

namespace quillpress {

// The names are what describe tells, and so part of the texts of dictionaries.
MemorySet::MemorySet()
    : names_(std::make_unique<NameTable>()),
      local_(make<VirtualMemoryObject>("Local Memory", names_.get())),
      global_(make<VirtualMemoryObject>("Global Memory", names_.get())),
      current_(local_.get()) {}

Ref<StringObject> MemorySet::newString(std::string text) const {
  return make<StringObject>(current(), std::move(text));
}

Ref<ArrayObject> MemorySet::newArray() const {
  return make<ArrayObject>(current(), '[');
}

Ref<ArrayObject> MemorySet::newProcedure() const {
  return make<ArrayObject>(current(), '{');
}

// A dictionary that an operator makes is literal; only the built-in ones keep the base flag.
Ref<DictionaryObject> MemorySet::newDictionary() const {
  auto dictionary = make<DictionaryObject>(current());
  dictionary->executable = false;
  return dictionary;
}

Ref<FileObject> MemorySet::newCurrentFile() const {
  return make<FileObject>(current());
}

Ref<FileObject> MemorySet::newFilteredFile(Ref<PostscriptObject> source, std::string filter,
                                           std::int32_t parameter) const {
  return make<FileObject>(current(), std::move(source), std::move(filter), parameter);
}

Ref<PostscriptObject> MemorySet::newClone(const PostscriptObject& object) const {
  if (const auto* integer = as<IntegerObject>(&object)) return newInteger(integer->value);
  if (const auto* real = as<RealObject>(&object)) return newReal(real->value);
  return object.clone(0);
}

}  // namespace quillpress
