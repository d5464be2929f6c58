#include "postscript/level3/device/PdfValue.h"

#include "postscript/level3/pdf/PdfDocument.h"
#include "postscript/level3/pdf/PdfNumbers.h"
#include "postscript/level3/pdf/PdfSyntax.h"

namespace quillpress::level3 {

namespace {

constexpr int kDeepestNesting = 16;

void append(std::string& text, const Object& object, int depth);

void appendDictionary(std::string& text, const Object& object, int depth) {
  DictionaryText entries;
  for (const Dictionary::Entry& entry : object.asDictionary()->entries()) {
    if (!entry.key.isName()) continue;
    std::string value;
    append(value, entry.value, depth + 1);
    entries.entry(entry.key.asName()->text(), value);
  }
  text += entries.text();
}

void appendArray(std::string& text, const Object& object, int depth) {
  text += '[';
  for (const Object& element : elementsOf(object)) {
    if (text.back() != '[') text += ' ';
    append(text, element, depth + 1);
  }
  text += ']';
}

void append(std::string& text, const Object& object, int depth) {
  if (depth > kDeepestNesting) raise(ErrorName::kLimitCheck);
  switch (object.type()) {
    case Type::kInteger:
      appendInteger(text, object.asInteger());
      return;
    case Type::kReal:
      appendNumber(text, static_cast<double>(object.asReal()), 4);
      return;
    case Type::kBoolean:
      text += object.asBoolean() ? "true" : "false";
      return;
    case Type::kName:
      appendName(text, object.asName()->text());
      return;
    case Type::kString:
      if (!object.isReadable()) raise(ErrorName::kInvalidAccess);
      appendString(text, pdfText(textOf(object)));
      return;
    case Type::kArray:
    case Type::kPackedArray:
      if (!object.isReadable()) raise(ErrorName::kInvalidAccess);
      appendArray(text, object, depth);
      return;
    case Type::kDictionary:
      if (!object.asDictionary()->isReadable()) raise(ErrorName::kInvalidAccess);
      appendDictionary(text, object, depth);
      return;
    default:
      text += "null";
  }
}

}  // namespace

std::string pdfValueOf(const Object& object) {
  std::string text;
  append(text, object, 0);
  return text;
}

}  // namespace quillpress::level3
