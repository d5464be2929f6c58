#include "postscript/lib/objects/FileObject.h"

#include "postscript/lib/base/Ex.h"
#include "postscript/lib/interpreter/Interpreter.h"
#include "postscript/lib/objects/VirtualMemoryObject.h"

namespace quillpress {

FileData::FileData(Ref<PostscriptObject> dataSource, std::string filter, std::int32_t parameter)
    : CompositeData(TypeCode::kFile),
      kind(Kind::kFiltered),
      source(std::move(dataSource)),
      filterName(std::move(filter)),
      filterParameter(parameter) {}

FileObject::FileObject(VirtualMemoryObject& memoryArea)
    : CompositeObject(memoryArea, memoryArea.add<FileData>()) {
  executable = false;
}

// The check comes behind the registration: whatever becomes of the handle, the area keeps the payload.
FileObject::FileObject(VirtualMemoryObject& memoryArea, Ref<PostscriptObject> source, std::string filter,
                       std::int32_t parameter)
    : CompositeObject(memoryArea, memoryArea.add<FileData>(std::move(source), std::move(filter), parameter)) {
  executable = false;
  if (as<StringObject>(data().source) == nullptr && as<FileObject>(data().source) == nullptr)
    THROW_EX("Unsupported FileData source object type");
}

Ref<PostscriptObject> FileObject::clone(int /*argument*/) const {
  return Ref<PostscriptObject>(new FileObject(*this));
}

char FileObject::readChar(Interpreter& interpreter) const {
  if (!isCurrentFile()) THROW_EX("Read not supported on this file type");
  Parser& input = interpreter.parser();
  input.skipTokenDelimiter();
  // Kept: "Progam", as the field knows it (ReadTest.AtTheEndOfTheChunkThrows).
  if (input.atEnd()) THROW_EX("Progam attempting to read char when insufficient current file is loaded");
  return input.nextChar();
}

}  // namespace quillpress
