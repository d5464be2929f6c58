#include "postscript/lib/pdf/PdfObjectList.h"

#include <string>

namespace quillpress {

PdfObjectList& PdfObjectList::ofProcess() {
  static PdfObjectList list;
  return list;
}

std::shared_ptr<OwnedPdfObject> PdfObjectList::create(PdfObjectKind kind, std::string_view namePrefix) {
  std::string name(namePrefix);
  name += std::to_string(objects_.size() + 1);
  objects_.push_back(std::make_shared<OwnedPdfObject>(kind, std::move(name)));
  return objects_.back();
}

const OwnedPdfObject* PdfObjectList::findImage(std::string_view data) const {
  for (const auto& object : objects_) {
    if (object->kind() == PdfObjectKind::kImage && object->data() == data) return object.get();
  }
  return nullptr;
}

const OwnedPdfObject* PdfObjectList::findPattern(const DictionaryObject& dictionary) const {
  for (const auto& object : objects_) {
    if (object->patternDictionary() == &dictionary) return object.get();
  }
  return nullptr;
}

::PdfObject** PdfObjectList::snapshot() {
  handedOut_.clear();
  for (const auto& object : objects_) handedOut_.push_back(&object->record());
  handedOut_.push_back(nullptr);  // so that the array of an empty list has an address too
  return handedOut_.data();
}

void PdfObjectList::clear() {
  objects_.clear();
  handedOut_.clear();
}

}  // namespace quillpress
