#pragma once

#include <quillpress/converter.h>

#include <cstdint>
#include <string>

#include "postscript/lib/objects/DictionaryObject.h"

namespace quillpress {

enum class PdfObjectKind : std::int32_t { kPattern = PDF_OBJECT_PATTERN, kImage = PDF_OBJECT_IMAGE };

// One PDF object, with the storage behind the record that callers of the library see.
class OwnedPdfObject {
 public:
  OwnedPdfObject(PdfObjectKind kind, std::string name);
  OwnedPdfObject(const OwnedPdfObject&) = delete;
  OwnedPdfObject& operator=(const OwnedPdfObject&) = delete;

  void setDictionary(std::string text);
  void setData(std::string bytes);
  void setCompress(bool compress) { record_.compress = compress ? 1 : 0; }

  // Keeps the dictionary that identifies a pattern. It may outlive its interpreter, so it must only be
  // compared, never followed.
  void keepPatternDictionary(Ref<DictionaryObject> dictionary);

  [[nodiscard]] PdfObjectKind kind() const { return static_cast<PdfObjectKind>(record_.kind); }
  [[nodiscard]] const std::string& name() const { return name_; }
  [[nodiscard]] const std::string& data() const { return data_; }
  [[nodiscard]] bool hasData() const { return record_.data != nullptr; }
  [[nodiscard]] ::PdfObject& record() { return record_; }

 private:
  ::PdfObject record_{};
  std::string dictionary_;
  std::string data_;
  std::string name_;
  std::string content_;
  Ref<DictionaryObject> patternDictionary_;
};

}  // namespace quillpress
