#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "postscript/lib/pdf/PdfObject.h"

namespace quillpress {

// The PDF objects that the page content of this process refers to, in order of creation. They outlive the
// converters that made them. Unguarded: jobs with images or patterns run on one thread at a time.
class PdfObjectList {
 public:
  // The one list of the process.
  static PdfObjectList& ofProcess();

  // Appends a new object, named with the prefix and the number of objects including it.
  std::shared_ptr<OwnedPdfObject> create(PdfObjectKind kind, std::string_view namePrefix);

  // Appends an image of these bytes, named like a new object. findImage knows it from then on.
  std::shared_ptr<OwnedPdfObject> createImage(std::string_view namePrefix, std::string data);

  // The first image with exactly these bytes, borrowed; null when there is none.
  [[nodiscard]] const OwnedPdfObject* findImage(std::string_view data) const;

  // Makes the dictionary object the identity of a pattern of this list. Of several patterns with one
  // dictionary the first is found.
  void identifyPattern(OwnedPdfObject& pattern, const Ref<DictionaryObject>& dictionary);

  // The pattern made from this very dictionary object, borrowed; null when there is none.
  [[nodiscard]] const OwnedPdfObject* findPattern(const DictionaryObject& dictionary) const;

  // The records of all objects. The array, never null, is valid until the next call or clear.
  ::PdfObject** snapshot();

  [[nodiscard]] std::size_t count() const { return objects_.size(); }
  void clear();

 private:
  // Shared, because an operator in the middle of a pattern must survive a clear.
  std::vector<std::shared_ptr<OwnedPdfObject>> objects_;
  std::vector<::PdfObject*> handedOut_;

  // How images and patterns are found again: borrowed from objects_, and cleared with it. The key views an
  // image's own bytes, which never change; a pattern holds its dictionary, so no other takes its address.
  std::unordered_map<std::string_view, const OwnedPdfObject*> imagesByData_;
  std::unordered_map<const DictionaryObject*, const OwnedPdfObject*> patternsByDictionary_;
};

}  // namespace quillpress
