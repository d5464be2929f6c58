#pragma once

#include <string>

#include "postscript/lib/objects/CompositeObject.h"

namespace quillpress {

// What handles on a file share: the text being interpreted, or a filter over a string or another file.
class FileData final : public CompositeData {
 public:
  enum class Kind : std::int32_t { kCurrentFile = 1, kFiltered = 2 };

  // The current file.
  FileData() : CompositeData(TypeCode::kFile), kind(Kind::kCurrentFile) {}

  // A filtered file over a string or another file, which it holds.
  FileData(Ref<PostscriptObject> dataSource, std::string filter, std::int32_t parameter);

  const Kind kind;
  const Ref<PostscriptObject> source;
  const std::string filterName;
  const std::int32_t filterParameter = 0;
};

// A handle on a file.
class FileObject final : public CompositeObject {
 public:
  static constexpr TypeCode kTypeCode = TypeCode::kFile;

  // A literal handle on the current file.
  explicit FileObject(VirtualMemoryObject& memoryArea);

  // A literal handle on a filtered file. Throws Ex for a source that is neither a string nor a file.
  FileObject(VirtualMemoryObject& memoryArea, Ref<PostscriptObject> source, std::string filter,
             std::int32_t parameter);

  [[nodiscard]] Ref<PostscriptObject> clone(int argument) const override;

  [[nodiscard]] const FileData& data() const { return static_cast<FileData&>(payload()); }
  [[nodiscard]] bool isCurrentFile() const { return data().kind == FileData::Kind::kCurrentFile; }

  // One byte of the current file. Throws Ex at the end of the chunk and for any other file.
  char readChar(Interpreter& interpreter) const;

 private:
  FileObject(const FileObject& other) = default;
};

}  // namespace quillpress
