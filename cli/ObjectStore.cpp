#include "cli/ObjectStore.h"

#include "cli/PatternContent.h"
#include "quillpress/converter.h"

namespace quillpress::cli {

namespace {

/** Finds the object whose name ends in `number`: names count the places of one list for images and patterns.
 */
const PdfObject* findObject(unsigned number, std::span<const PdfObject* const> list) {
  return number >= 1 && number <= list.size() ? list[number - 1] : nullptr;
}

/** The data of an object; a pattern whose paint procedure failed has none. */
std::string_view dataOf(const PdfObject& object) {
  return object.data == nullptr ? std::string_view() : std::string_view(object.data, object.dataLength);
}

}  // namespace

void ObjectStore::keep(unsigned number, std::span<const PdfObject* const> list) {
  const PdfObject* const source = findObject(number, list);
  if (source == nullptr || has(number)) return;
  StoredObject& object = stored_[number];
  object.name = source->name;
  object.dictionary = source->dictionary == nullptr ? "" : source->dictionary;
  object.isPattern = source->kind == PDF_OBJECT_PATTERN;
  if (!object.isPattern) return keepData(object, dataOf(*source), source->compress == 1);
  PatternContent content = readPatternContent(dataOf(*source));
  keepData(object, content.text, true);
  object.objects = std::move(content.objects);
  for (const unsigned inner : object.objects) keep(inner, list);
}

void ObjectStore::keepData(StoredObject& object, std::string_view data, bool deflate) {
  object.isDeflated = deflate;
  if (deflate) {
    deflater_.deflate(data, [&](std::string_view bytes) { object.data = spool_.append(bytes); });
  } else {
    object.data = spool_.append(data);
  }
}

}  // namespace quillpress::cli
