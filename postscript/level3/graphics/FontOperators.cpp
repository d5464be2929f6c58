#include "postscript/level3/graphics/DictionaryReader.h"
#include "postscript/level3/graphics/Graphics.h"
#include "postscript/level3/graphics/GraphicsOperators.h"
#include "postscript/level3/graphics/MatrixOperands.h"

// Fonts as dictionaries: defined, found, scaled. Their glyphs are not looked at here.

namespace quillpress::level3 {

namespace {

Dictionary& fontDirectory(Interpreter& interpreter) {
  return *interpreter.systemDictionary().find(interpreter.memory().name("FontDirectory"))->asDictionary();
}

void put(Interpreter& interpreter, const Object& dictionary, std::string_view key, const Object& value) {
  interpreter.memory().put(*dictionary.asDictionary(), interpreter.memory().name(key), value);
}

Object copyOf(Interpreter& interpreter, const Object& dictionary) {
  const Dictionary& source = *dictionary.asDictionary();
  const Object copy = interpreter.memory().newDictionary(source.length() + 1);
  for (const Dictionary::Entry& entry : source.entries()) {
    if (!entry.key.isNull()) interpreter.memory().put(*copy.asDictionary(), entry.key, entry.value);
  }
  return copy;
}

Object matrixArray(Interpreter& interpreter, const Matrix& matrix) {
  const Object array = interpreter.memory().newArray(6);
  storeMatrix(interpreter, array, matrix);
  return array;
}

// A font that the job has not defined: its name, the usual glyph space and no glyphs.
Object standIn(Interpreter& interpreter, const Object& key) {
  VirtualMemory& memory = interpreter.memory();
  const Object font = memory.newDictionary(10);
  const Object* encoding = interpreter.systemDictionary().find(memory.name("StandardEncoding"));
  const Object glyphs = memory.newDictionary(1);
  put(interpreter, font, "FontName", key);
  put(interpreter, font, "FontType", Object::integer(1));
  put(interpreter, font, "PaintType", Object::integer(0));
  put(interpreter, font, "FontMatrix", matrixArray(interpreter, Matrix::scaling(0.001, 0.001)));
  put(interpreter, font, "FontBBox", memory.newArray(std::vector<Object>(4, Object::integer(0))));
  put(interpreter, font, "Encoding", *encoding);
  put(interpreter, glyphs, ".notdef", memory.newString(std::size_t{0}));
  put(interpreter, font, "CharStrings", glyphs);
  put(interpreter, font, "FID", Object::fontId(0));
  return font;
}

Object fontNamed(Interpreter& interpreter, const Object& key) {
  const Object* known = fontDirectory(interpreter).find(interpreter.memory().keyOf(key));
  return known != nullptr ? *known : standIn(interpreter, key);
}

Object transformedFont(Interpreter& interpreter, const Object& font, const Matrix& matrix) {
  const DictionaryReader entries(interpreter, font);
  const Matrix product = entries.matrix("FontMatrix") * matrix;
  const Object copy = copyOf(interpreter, font);
  put(interpreter, copy, "FontMatrix", matrixArray(interpreter, product));
  return copy;
}

// key font -> font
void defineFont(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Object font = operands.top();
  const DictionaryReader entries(interpreter, font);
  if (!entries.require("FontType").isInteger()) raise(ErrorName::kInvalidFont);
  if (entries.find("FID") == nullptr && font.asDictionary()->isWritable()) {
    put(interpreter, font, "FID", Object::fontId(1));
  }
  interpreter.memory().put(fontDirectory(interpreter), interpreter.memory().keyOf(operands.top(1)), font);
  operands.pop();
  operands.top() = font;
}

// key ->
void undefineFont(Interpreter& interpreter) {
  interpreter.memory().remove(fontDirectory(interpreter),
                              interpreter.memory().keyOf(interpreter.operands().top()));
  interpreter.operands().pop();
}

// key -> font
void findFont(Interpreter& interpreter) {
  interpreter.operands().top() = fontNamed(interpreter, interpreter.operands().top());
}

// font scale -> font'
void scaleFont(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const double scale = operands.top().asNumber();
  const Object font = transformedFont(interpreter, operands.top(1), Matrix::scaling(scale, scale));
  operands.pop();
  operands.top() = font;
}

// font matrix -> font'
void makeFont(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Object font = transformedFont(interpreter, operands.top(1), matrixOf(operands.top()));
  operands.pop();
  operands.top() = font;
}

// key scale|matrix ->
void selectFont(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Object& size = operands.top();
  const Matrix matrix = size.isArray() ? matrixOf(size) : Matrix::scaling(size.asNumber(), size.asNumber());
  stateOf(interpreter).font = transformedFont(interpreter, fontNamed(interpreter, operands.top(1)), matrix);
  operands.pop(2);
}

constexpr OperatorRow kFontOperators[] = {
    {"definefont", "any dict", defineFont}, {"undefinefont", "any", undefineFont},
    {"findfont", "any", findFont},          {"scalefont", "dict num", scaleFont},
    {"makefont", "dict array", makeFont},   {"selectfont", "any num|array", selectFont},
};

// 256 names; what they are is the fonts' own business.
Object emptyEncoding(Interpreter& interpreter) {
  const Object notdef = Object::literalName(interpreter.memory().name(".notdef"));
  return interpreter.memory().newArray(std::vector<Object>(256, notdef));
}

}  // namespace

void addFontOperators(Interpreter& interpreter) {
  interpreter.addOperators(kFontOperators);
  interpreter.define("FontDirectory", interpreter.memory().newDictionary(100));
  interpreter.memory().setGlobal(true);
  interpreter.define("StandardEncoding", emptyEncoding(interpreter));
  interpreter.define("ISOLatin1Encoding", emptyEncoding(interpreter));
  interpreter.memory().setGlobal(false);
}

}  // namespace quillpress::level3
