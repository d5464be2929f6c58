#include "postscript/lib/pdf/FontOperators.h"

#include "postscript/lib/base/Ex.h"

namespace quillpress {

namespace {

DictionaryKey helveticaKey() {
  static const DictionaryKey key("Helvetica");
  return key;
}

// A job may clear the font directory or replace the entry, so it is looked up each time.
// The entry that stands for fonts that are not there. Throws Ex when a job has removed it.
PostscriptObject& helvetica(Interpreter& interpreter) {
  PostscriptObject* font = interpreter.dictionaries().fontDirectory().lookup(helveticaKey());
  if (font == nullptr) THROW_EX("could not find helvetica");
  return *font;
}

const ArrayObject& fontMatrixOf(const DictionaryObject& font) {
  const auto* matrix = font.lookupAs<ArrayObject>("FontMatrix");
  if (matrix == nullptr) THROW_EX("expected fontmatrix array");
  return *matrix;
}

}  // namespace

// No error for a font that is missing: the text is not drawn, and its metrics are fixed.
void FindfontOperator::execute(Interpreter& interpreter) {
  const Ref<PostscriptObject> key = interpreter.operandStack().pop();
  PostscriptObject* font = interpreter.dictionaries().fontDirectory().lookup(*key);
  interpreter.operandStack().push(font != nullptr ? font : &helvetica(interpreter));
}

void ScalefontOperator::execute(Interpreter& interpreter) {
  const double scale = popNumber(interpreter);
  const auto* font = as<DictionaryObject>(interpreter.operandStack().peek(0));
  if (font == nullptr) THROW_EX("expected font dictionary");
  const ArrayObject& fontMatrix = fontMatrixOf(*font);
  Matrix::of(fontMatrix).times({scale, 0, 0, scale, 0, 0}).storeTo(fontMatrix);
}

void SetfontOperator::execute(Interpreter& interpreter) {
  const Ref<DictionaryObject> font = interpreter.popDictionaryObject();
  const Matrix fontMatrix = Matrix::of(fontMatrixOf(*font));
  const auto* name = font->lookupAs<NameObject>("FontName");
  if (name == nullptr) THROW_EX("expected nameobject for fontname");
  // Kept: the vertical column of the matrix alone
  // (Postscript2PdfTest.TheFontSizeIsTheVerticalColumnOfItsMatrix).
  converter.state().fontSize = 1000 * fontMatrix.b + 1000 * fontMatrix.d;
  converter.state().fontName = name->text;
  converter.setCurrentFont(font);
}

void CurrentfontOperator::execute(Interpreter& interpreter) {
  Ref<PostscriptObject> font = converter.currentFont();
  // No setfont yet: the state of a page names Helvetica.
  if (!font) font = &helvetica(interpreter);
  interpreter.operandStack().push(std::move(font));
}

// One directory for both areas: fonts that a job defines are found whichever area is current.
void FontDirectoryOperator::execute(Interpreter& interpreter) {
  interpreter.operandStack().push(&interpreter.dictionaries().fontDirectory());
}

void GlobalFontDirectoryOperator::execute(Interpreter& interpreter) {
  interpreter.operandStack().push(&interpreter.dictionaries().fontDirectory());
}

// The string is wanted as one, so that a job that counts its operands wrong is told.
void ShowOperator::execute(Interpreter& interpreter) {
  interpreter.popStringObject();
}

void StringwidthOperator::execute(Interpreter& interpreter) {
  interpreter.popStringObject();
  interpreter.pushReal(10.0);
  interpreter.pushReal(100.0);
}

}  // namespace quillpress
