#include "cli/pdf/ObjectList.h"

#include <quillpress/converter.h>

#include <stdexcept>
#include <string>

#include "cli/base/Messages.h"
#include "cli/pdf/ObjectDictionary.h"

namespace quillpress::cli {

namespace {

std::string valueText(QPDFObjectHandle dictionary, const std::string& key) {
  return dictionary.hasKey(key) ? dictionary.getKey(key).unparse() : "?";
}

std::string filterText(QPDFObjectHandle dictionary) {
  return dictionary.hasKey("/Filter") ? ", filter " + valueText(dictionary, "/Filter") : "";
}

std::string imageText(const std::string& text) {
  const QPDFObjectHandle dictionary = streamDictionary(text);
  return valueText(dictionary, "/Width") + " x " + valueText(dictionary, "/Height") + ", " +
         valueText(dictionary, "/BitsPerComponent") + " bits, " + valueText(dictionary, "/ColorSpace") +
         filterText(dictionary);
}

std::string patternText(const std::string& text) {
  const QPDFObjectHandle dictionary = streamDictionary(text);
  return "cell " + valueText(dictionary, "/BBox") + ", steps " + valueText(dictionary, "/XStep") + " and " +
         valueText(dictionary, "/YStep");
}

std::string description(const PdfObject& object) {
  const bool isPattern = object.kind == PDF_OBJECT_PATTERN;
  const std::string dictionary = object.dictionary == nullptr ? "" : object.dictionary;
  const std::string kind = isPattern ? "pattern: " : "image: ";
  try {
    return kind + (isPattern ? patternText(dictionary) : imageText(dictionary));
  } catch (const std::runtime_error&) {
    return kind + "broken dictionary";
  }
}

std::string pagesText(unsigned number, const PageCounts* pages) {
  // Content text has no resources, so nobody has counted.
  if (pages == nullptr) return "";
  const auto found = pages->find(number);
  return ", on " + counted(found == pages->end() ? 0 : found->second, "page");
}

}  // namespace

void listObjects(std::span<const PdfObject* const> list, const PageCounts* pages, std::FILE* file) {
  unsigned number = 0;
  for (const PdfObject* const object : list) {
    const std::string text = std::string(object->name) + " " + description(*object) + ", " +
                             counted(object->dataLength, "byte") + pagesText(++number, pages);
    const std::string line = visible(text) + "\n";
    std::fwrite(line.data(), 1, line.size(), file);
  }
}

}  // namespace quillpress::cli
