#include "postscript/level3/text/FontInstances.h"

#include "postscript/level3/graphics/MatrixOperands.h"
#include "postscript/level3/operators/Resources.h"
#include "postscript/level3/text/FontEntries.h"
#include "postscript/level3/text/Fonts.h"
#include "postscript/level3/text/StandardFonts.h"

namespace quillpress::level3 {

namespace {

// Throws invalidfont for what could never be shown.
void requireFont(Interpreter& interpreter, const Object& font) {
  const FontEntries entries(interpreter, font);
  const Object& type = entries.require("FontType");
  if (!type.isInteger()) raise(ErrorName::kInvalidFont);
  entries.requireMatrix("FontMatrix");
  const auto require = [&](std::string_view key) { entries.require(key); };
  if (entries.find("CIDFontType") != nullptr) return;
  if (!entries.require("Encoding").isArray()) raise(ErrorName::kInvalidFont);
  switch (type.asInteger()) {
    case 0:
      require("FMapType");
      require("FDepVector");
      break;
    case 1:
      require("CharStrings");
      require("Private");
      break;
    case 3:
      if (entries.find("BuildGlyph") == nullptr) require("BuildChar");
      break;
    case 42:
      require("sfnts");
      break;
    case 2:
      break;
    default:
      raise(ErrorName::kInvalidFont);
  }
}

// A CIDFont gets the FontType that goes with its CIDFontType, and what it may leave out.
void completeCidFont(Interpreter& interpreter, const Object& font) {
  constexpr std::int64_t kFontTypes[] = {9, 10, 11, -1, 32};
  VirtualMemory& memory = interpreter.memory();
  const FontEntries entries(interpreter, font);
  const std::int64_t type = entries.integer("CIDFontType", -1);
  if (type < 0 || type >= std::ssize(kFontTypes) || kFontTypes[type] < 0) raise(ErrorName::kInvalidFont);
  Dictionary& dictionary = *font.asDictionary();
  if (!dictionary.isWritable()) return;
  memory.put(dictionary, memory.name("FontType"), Object::integer(kFontTypes[type]));
  if (entries.find("FontMatrix") == nullptr) {
    const Object matrix = memory.newArray(6);
    storeMatrix(interpreter, matrix, Matrix());
    memory.put(dictionary, memory.name("FontMatrix"), matrix);
  }
  if (kFontTypes[type] != 32) return;
  memory.put(dictionary, memory.name("CharStrings"), memory.newDictionary(20));
  memory.put(dictionary, memory.name("BuildGlyph"),
             *interpreter.systemDictionary().find(memory.name(".buildbitmapglyph")));
}

}  // namespace

Object fontWithMatrix(Interpreter& interpreter, const Object& font, const Matrix& matrix) {
  VirtualMemory& memory = interpreter.memory();
  const Dictionary& source = *font.asDictionary();
  // Instances of a global font are local all the same; a job makes them where it will.
  const Object copy = memory.newDictionary(source.length() + 1);
  const Object array = memory.newArray(6);
  storeMatrix(interpreter, array, matrix);
  for (const Dictionary::Entry& entry : source.entries()) {
    if (!entry.key.isNull()) memory.put(*copy.asDictionary(), entry.key, entry.value);
  }
  memory.put(*copy.asDictionary(), memory.name("FontMatrix"), array);
  memory.setAccess(*copy.asDictionary(), Access::kReadOnly);
  return copy;
}

Object transformedFont(Interpreter& interpreter, const Object& font, const Matrix& matrix) {
  const FontEntries entries(interpreter, font);
  const Object* const number = entries.find("FID");
  if (number == nullptr || !number->is(Type::kFontId)) raise(ErrorName::kInvalidFont);
  return fontWithMatrix(interpreter, font, entries.requireMatrix("FontMatrix") * matrix);
}

Object defineFont(Interpreter& interpreter, std::string_view category, const Object& key,
                  const Object& font) {
  VirtualMemory& memory = interpreter.memory();
  if (!font.isDictionary()) raise(ErrorName::kTypeCheck);
  Dictionary& dictionary = *font.asDictionary();
  if (FontEntries(interpreter, font).find("CIDFontType") != nullptr) completeCidFont(interpreter, font);
  requireFont(interpreter, font);
  const Object* const number = dictionary.find(memory.name("FID"));
  if (number == nullptr || !number->is(Type::kFontId)) {
    if (!dictionary.isWritable()) raise(ErrorName::kInvalidAccess);
    const Matrix matrix = FontEntries(interpreter, font).requireMatrix("FontMatrix");
    memory.put(dictionary, memory.name("FID"), fontsOf(interpreter).newFontId(matrix));
  }
  Resources(interpreter).define(memory.name(category), memory.keyOf(key), font);
  if (dictionary.isWritable()) memory.setAccess(dictionary, Access::kReadOnly);
  return font;
}

Object findFont(Interpreter& interpreter, const Object& key) {
  VirtualMemory& memory = interpreter.memory();
  const Resources resources(interpreter);
  if (const Object* const known = resources.find(memory.name("Font"), key)) return *known;
  const Object name = memory.keyOf(key);
  const std::optional<Object> standard =
      name.isName() ? standardFont(interpreter, name.asName()->text()) : std::nullopt;
  if (!standard) raise(ErrorName::kInvalidFont);
  return *standard;
}

}  // namespace quillpress::level3
