#include "postscript/level3/operators/Equality.h"

#include "postscript/level3/objects/Dictionary.h"
#include "postscript/level3/objects/ErrorName.h"
#include "postscript/level3/objects/Name.h"

namespace quillpress::level3 {

namespace {

bool isText(const Object& object) {
  return object.isString() || object.isName();
}

std::string_view readText(const Object& object) {
  if (object.isName()) return object.asName()->text();
  if (!object.isReadable()) raise(ErrorName::kInvalidAccess);
  return textOf(object);
}

}  // namespace

bool areEqual(const Object& a, const Object& b) {
  if (a.isInteger() && b.isInteger()) return a.asInteger() == b.asInteger();
  if (a.isNumber() && b.isNumber()) return a.asNumber() == b.asNumber();
  if (isText(a) && isText(b)) return readText(a) == readText(b);
  if (a.isArray() && b.isArray()) {
    // Empty pieces have nothing to differ in.
    if (a.length() != b.length()) return false;
    return a.length() == 0 || (a.storage() == b.storage() && a.offset() == b.offset());
  }
  if (a.type() != b.type()) return false;
  switch (a.type()) {
    case Type::kNull:
    case Type::kMark:
      return true;
    case Type::kBoolean:
    case Type::kSave:
    case Type::kFontId:
      return a.asInteger() == b.asInteger();
    case Type::kOperator:
      return a.asOperator() == b.asOperator();
    default:
      return a.storage() == b.storage();
  }
}

}  // namespace quillpress::level3
