#include "postscript/lib/pdf/PdfObject.h"

namespace quillpress {

// The record points into the strings beside it, so it never moves and is never copied.
OwnedPdfObject::OwnedPdfObject(PdfObjectKind kind, std::string name) : name_(std::move(name)) {
  record_.dictionary = dictionary_.data();
  record_.compress = 1;
  record_.name = name_.data();
  record_.kind = static_cast<std::int32_t>(kind);
  record_.content = content_.data();
}

void OwnedPdfObject::setDictionary(std::string text) {
  dictionary_ = std::move(text);
  record_.dictionary = dictionary_.data();
}

// At most 2 GiB: images and page content that are longer have been refused.
void OwnedPdfObject::setData(std::string bytes) {
  data_ = std::move(bytes);
  record_.data = data_.data();
  record_.dataLength = static_cast<std::uint32_t>(data_.size());
}

// The address is the identity of the pattern; while it is held here no other dictionary can get it.
void OwnedPdfObject::keepPatternDictionary(Ref<DictionaryObject> dictionary) {
  patternDictionary_ = std::move(dictionary);
  record_.patternDictionary = patternDictionary_.get();
}

}  // namespace quillpress
