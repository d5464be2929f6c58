#include "cli/pdf/ObjectStore.h"

#include <quillpress/converter.h>

#include "cli/base/Errors.h"
#include "cli/base/Messages.h"
#include "cli/pdf/ImageEncoding.h"
#include "cli/pdf/ObjectDictionary.h"
#include "cli/spool/DeflateTask.h"

namespace quillpress::cli {

namespace {

// Finds the object whose name ends in `number`: names count the places of one list for images and patterns.
const PdfObject* findObject(unsigned number, std::span<const PdfObject* const> list) {
  return number >= 1 && number <= list.size() ? list[number - 1] : nullptr;
}

std::string dictionaryOf(const PdfObject& object) {
  return object.dictionary == nullptr ? "" : object.dictionary;
}

// The data of an object; a pattern whose paint procedure failed has none.
std::string_view dataOf(const PdfObject& object) {
  return object.data == nullptr ? std::string_view() : std::string_view(object.data, object.dataLength);
}

}  // namespace

void ObjectStore::keep(const ObjectUses& uses, std::span<const PdfObject* const> list) {
  for (const unsigned number : uses) {
    // A name without an object is passed over, as PDF readers do.
    const PdfObject* const source = findObject(number, list);
    if (source == nullptr || has(number)) continue;
    StoredObject& object = stored_[number];
    object.name = source->name;
    object.isPattern = source->kind == PDF_OBJECT_PATTERN;
    try {
      checkRecord(dictionaryOf(*source));
      if (object.isPattern) {
        keepPattern(object, *source);
      } else {
        keepImage(object, *source);
      }
      keep(object.objects, list);
    } catch (const BrokenDictionary& error) {
      object.isBroken = true;
      say(object.name + " is left out, as its dictionary is broken: " + error.what());
    } catch (const PageError&) {
      // The next page that names it fails too.
      stored_.erase(number);
      throw;
    }
  }
}

void ObjectStore::keepImage(StoredObject& object, const PdfObject& source) {
  object.dictionary = streamDictionary(dictionaryOf(source));
  const std::string_view data = dataOf(source);
  if (source.compress == 1) {
    // The samples stay with the converter; the task only borrows them.
    const ImageEncoding encoding(object.dictionary, data);
    encoding.describe(object.dictionary);
    object.data = worker_.submit([encoding](Spool& spool) { return encoding.encode(spool); });
  } else {
    // The data is filtered already, as its dictionary says.
    object.data = worker_.submit([data](Spool& spool) { return spool.append(data); });
  }
}

void ObjectStore::keepPattern(StoredObject& object, const PdfObject& source) {
  object.dictionary = streamDictionary(dictionaryOf(source));
  object.dictionary.replaceKey("/Filter", QPDFObjectHandle::newName("/FlateDecode"));
  const std::string_view content = dataOf(source);
  object.objects = checkedObjectUses(content);
  object.data = worker_.submit(deflateTask(deflater_, std::string(content)));
}

}  // namespace quillpress::cli
