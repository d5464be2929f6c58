#pragma once

#include <memory>
#include <string_view>
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

  // The image with exactly these bytes, borrowed; null when there is none.
  [[nodiscard]] const OwnedPdfObject* findImage(std::string_view data) const;

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
};

}  // namespace quillpress
