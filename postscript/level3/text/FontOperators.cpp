#include "postscript/level3/fonts/Encodings.h"
#include "postscript/level3/graphics/MatrixOperands.h"
#include "postscript/level3/operators/Resources.h"
#include "postscript/level3/text/CMapReader.h"
#include "postscript/level3/text/FontEntries.h"
#include "postscript/level3/text/FontInstances.h"
#include "postscript/level3/text/Fonts.h"
#include "postscript/level3/text/TextOperators.h"

namespace quillpress::level3 {

namespace {

// key font -> font
void definefont(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Object font = defineFont(interpreter, "Font", operands.top(1), operands.top());
  operands.pop();
  operands.top() = font;
}

// key ->
void undefinefont(Interpreter& interpreter) {
  Resources(interpreter)
      .undefine(interpreter.memory().name("Font"), interpreter.memory().keyOf(interpreter.operands().top()));
  interpreter.operands().pop();
}

// key -> font
void findfont(Interpreter& interpreter) {
  interpreter.operands().top() = findFont(interpreter, interpreter.operands().top());
}

// font scale -> font'
void scalefont(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const double scale = operands.top().asNumber();
  const Object font = transformedFont(interpreter, operands.top(1), Matrix::scaling(scale, scale));
  operands.pop();
  operands.top() = font;
}

// font matrix -> font'
void makefont(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Object font = transformedFont(interpreter, operands.top(1), matrixOf(operands.top()));
  operands.pop();
  operands.top() = font;
}

void setCurrentFont(Interpreter& interpreter, const Object& font) {
  stateOf(interpreter).font = font;
  stateOf(interpreter).rootFont = font;
}

// key scale|matrix ->
void selectfont(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Object& size = operands.top();
  const Matrix matrix = size.isArray() ? matrixOf(size) : Matrix::scaling(size.asNumber(), size.asNumber());
  setCurrentFont(interpreter, transformedFont(interpreter, findFont(interpreter, operands.top(1)), matrix));
  operands.pop(2);
}

// font ->
void setfont(Interpreter& interpreter) {
  const Object font = interpreter.operands().top();
  const Object* const number = FontEntries(interpreter, font).find("FID");
  if (number == nullptr || !number->is(Type::kFontId)) raise(ErrorName::kInvalidFont);
  setCurrentFont(interpreter, font);
  interpreter.operands().pop();
}

// The font of a job that has set none: without glyphs.
Object invalidFont(Interpreter& interpreter) {
  VirtualMemory& memory = interpreter.memory();
  const Object font = memory.newDictionary(2);
  memory.put(*font.asDictionary(), memory.name("FontName"), Object::literalName(memory.name("")));
  return font;
}

// -> font
void currentfont(Interpreter& interpreter) {
  interpreter.operands().require(1);
  const Object& font = stateOf(interpreter).font;
  interpreter.operands().push(font.isNull() ? invalidFont(interpreter) : font);
}

// -> font      Within cshow's procedure, the font that the string is in.
void rootfont(Interpreter& interpreter) {
  interpreter.operands().require(1);
  const Object& font = stateOf(interpreter).rootFont;
  interpreter.operands().push(font.isNull() ? invalidFont(interpreter) : font);
}

// key -> array
void findencoding(Interpreter& interpreter) {
  Object& key = interpreter.operands().top();
  const Object* const found = Resources(interpreter).find(interpreter.memory().name("Encoding"), key);
  if (found == nullptr) raise(ErrorName::kUndefinedResource);
  key = *found;
}

// The font that is composed of descendants through a CMap or, with a name of one, by its CMap resource.
// name cmap|name array -> font
void composefont(Interpreter& interpreter) {
  VirtualMemory& memory = interpreter.memory();
  ObjectStack& operands = interpreter.operands();
  const Resources resources(interpreter);
  Object map = operands.top(1);
  if (map.isName() || map.isString()) map = findCMap(interpreter, map);
  if (!map.isDictionary()) raise(ErrorName::kTypeCheck);
  std::vector<Object> fonts;
  for (const Object& element : elementsOf(operands.top())) {
    if (element.isDictionary()) {
      fonts.push_back(element);
      continue;
    }
    const Object* const cidFont = resources.find(memory.name("CIDFont"), element);
    fonts.push_back(cidFont != nullptr ? *cidFont : findFont(interpreter, element));
  }
  if (fonts.empty()) raise(ErrorName::kRangeCheck);
  const Object font = memory.newDictionary(10);
  const auto put = [&](std::string_view key, const Object& value) {
    memory.put(*font.asDictionary(), memory.name(key), value);
  };
  std::vector<Object> numbers;
  for (std::size_t i = 0; i < fonts.size(); ++i)
    numbers.push_back(Object::integer(static_cast<std::int64_t>(i)));
  const Object matrix = memory.newArray(6);
  storeMatrix(interpreter, matrix, Matrix());
  put("FontType", Object::integer(0));
  put("FMapType", Object::integer(9));
  put("FontMatrix", matrix);
  put("FontName", memory.keyOf(operands.top(2)));
  put("WMode", Object::integer(FontEntries(interpreter, map).integer("WMode", 0)));
  put("CMap", map);
  put("Encoding", memory.newArray(numbers));
  put("FDepVector", memory.newArray(fonts));
  defineFont(interpreter, "Font", operands.top(2), font);
  operands.pop(2);
  operands.top() = font;
}

constexpr OperatorRow kFontOperators[] = {
    {"definefont", "any dict", definefont},
    {"undefinefont", "any", undefinefont},
    {"findfont", "any", findfont},
    {"scalefont", "dict num", scalefont},
    {"makefont", "dict array", makefont},
    {"selectfont", "any num|array", selectfont},
    {"setfont", "dict", setfont},
    {"currentfont", "", currentfont},
    {"rootfont", "", rootfont},
    {"findencoding", "any", findencoding},
    {"composefont", "name|string name|string|dict array", composefont},
};

Object encodingArray(Interpreter& interpreter, const EncodingTable& table) {
  VirtualMemory& memory = interpreter.memory();
  std::vector<Object> names;
  for (const std::string_view name : table) names.push_back(Object::literalName(memory.name(name)));
  return memory.newArray(names).withAccess(Access::kReadOnly);
}

void addEncodings(Interpreter& interpreter) {
  VirtualMemory& memory = interpreter.memory();
  Resources resources(interpreter);
  const auto add = [&](std::string_view name, const EncodingTable& table) {
    const Object array = encodingArray(interpreter, table);
    resources.define(memory.name("Encoding"), Object::literalName(memory.name(name)), array);
    return array;
  };
  interpreter.define("StandardEncoding", add("StandardEncoding", standardEncoding()));
  interpreter.define("ISOLatin1Encoding", add("ISOLatin1Encoding", isoLatin1Encoding()));
  add("SymbolEncoding", symbolEncoding());
  add("DingbatsEncoding", zapfDingbatsEncoding());
}

// FontDirectory and its like are the resources' own dictionaries.
void addDirectory(Interpreter& interpreter, std::string_view resources, std::string_view directory) {
  VirtualMemory& memory = interpreter.memory();
  const Object* const categories = interpreter.systemDictionary().find(memory.name(resources));
  const Object fonts = memory.newDictionary(100);
  memory.putPermanent(*categories->asDictionary(), memory.name("Font"), fonts);
  interpreter.define(directory, fonts);
}

}  // namespace

void addFontOperators(Interpreter& interpreter) {
  VirtualMemory& memory = interpreter.memory();
  interpreter.addOperators(kFontOperators);
  addDirectory(interpreter, ".localresources", "FontDirectory");
  memory.setGlobal(true);
  addDirectory(interpreter, ".globalresources", "GlobalFontDirectory");
  interpreter.define("SharedFontDirectory",
                     *interpreter.systemDictionary().find(memory.name("GlobalFontDirectory")));
  addEncodings(interpreter);
  memory.setGlobal(false);
}

}  // namespace quillpress::level3
