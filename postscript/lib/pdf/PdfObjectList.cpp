#include "postscript/lib/pdf/PdfObjectList.h"

#include <utility>

namespace quillpress {

// Made at its first use, by whichever face of the library comes first.
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

std::shared_ptr<OwnedPdfObject> PdfObjectList::createImage(std::string_view namePrefix, std::string data) {
  auto image = create(PdfObjectKind::kImage, namePrefix);
  image->setData(std::move(data));
  imagesByData_.emplace(image->data(), image.get());
  return image;
}

const OwnedPdfObject* PdfObjectList::findImage(std::string_view data) const {
  const auto found = imagesByData_.find(data);
  return found == imagesByData_.end() ? nullptr : found->second;
}

void PdfObjectList::identifyPattern(OwnedPdfObject& pattern, const Ref<DictionaryObject>& dictionary) {
  pattern.keepPatternDictionary(dictionary);
  patternsByDictionary_.emplace(dictionary.get(), &pattern);
}

const OwnedPdfObject* PdfObjectList::findPattern(const DictionaryObject& dictionary) const {
  const auto found = patternsByDictionary_.find(&dictionary);
  return found == patternsByDictionary_.end() ? nullptr : found->second;
}

::PdfObject** PdfObjectList::snapshot() {
  // The caller's array of the last call goes with this, as its contract says.
  handedOut_.clear();
  for (const auto& object : objects_) handedOut_.push_back(&object->record());
  handedOut_.push_back(nullptr);  // so that the array of an empty list has an address too
  return handedOut_.data();
}

void PdfObjectList::clear() {
  imagesByData_.clear();
  patternsByDictionary_.clear();
  objects_.clear();
  handedOut_.clear();
}

}  // namespace quillpress
