#include "postscript/lib/objects/FileObject.h"

#include "postscript/lib/base/Ex.h"
#include "postscript/lib/interpreter/Interpreter.h"

namespace quillpress {

FileData::FileData(Ref<PostscriptObject> dataSource, std::string filter, std::int32_t parameter)
    : CompositeData(TypeCode::kFile),
      kind(Kind::kFiltered),
      source(std::move(dataSource)),
      filterName(std::move(filter)),
      filterParameter(parameter) {}

// The check comes behind the registration: whatever becomes of the handle, the area keeps the payload.
FileObject::FileObject(VirtualMemoryObject& memoryArea, std::unique_ptr<FileData> payload)
    : CompositeObject(memoryArea, std::move(payload)) {
  executable = false;
  const FileData& file = data();
  if (file.kind == FileData::Kind::kFiltered && as<StringObject>(file.source) == nullptr &&
      as<FileObject>(file.source) == nullptr) {
    THROW_EX("Unsupported FileData source object type");
  }
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
