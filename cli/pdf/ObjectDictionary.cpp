#include "cli/pdf/ObjectDictionary.h"

#include <qpdf/QPDFExc.hh>

#include "cli/base/Errors.h"
#include "cli/base/TextScan.h"
#include "cli/content/NumberRange.h"

namespace quillpress::cli {

namespace {

constexpr int kMatrixNumbers = 6;
constexpr int kMatrixDecimals = 6;

QPDFObjectHandle parsed(const std::string& body) {
  try {
    QPDFObjectHandle dictionary = QPDFObjectHandle::parse("<<" + body + ">>", "object dictionary");
    // Brackets inside the record may have closed ours.
    if (dictionary.isDictionary()) return dictionary;
  } catch (const QPDFExc& error) {
    throw BrokenDictionary(error.getMessageDetail());
  }
  throw BrokenDictionary("it is something else");
}

bool isNumbers(QPDFObjectHandle array, int count) {
  if (!array.isArray() || array.getArrayNItems() != count) return false;
  for (int i = 0; i < count; ++i) {
    if (!array.getArrayItem(i).isNumber()) return false;
  }
  return true;
}

// A step that moves: zero would tile for ever.
bool isStep(QPDFObjectHandle value) {
  return value.isNumber() && value.getNumericValue() != 0;
}

// The converter writes nothing for a matrix without extent, which leaves its bracket open. Zeros say the
// same in PDF: such a pattern has no visible cell.
void closeMatrix(std::string& text) {
  constexpr std::string_view kOpen = "/Matrix [";
  const std::size_t at = text.find(kOpen);
  if (at == std::string::npos) return;
  const std::size_t behind = text.find_first_not_of(" \n", at + kOpen.size());
  if (behind == std::string::npos || text[behind] != '/') return;
  text.insert(behind, "0 0 0 0 0 0]\n");
}

Matrix matrixOf(QPDFObjectHandle array) {
  const auto number = [&](int place) { return array.getArrayItem(place).getNumericValue(); };
  return {number(0), number(1), number(2), number(3), number(4), number(5)};
}

QPDFObjectHandle matrixArray(const Matrix& matrix) {
  auto array = QPDFObjectHandle::newArray();
  for (const double number : {matrix.a, matrix.b, matrix.c, matrix.d, matrix.tx, matrix.ty}) {
    if (!isReadable(number)) throw PageError("the matrix of a pattern is beyond what PDF readers take");
    array.appendItem(QPDFObjectHandle::newReal(number, kMatrixDecimals));
  }
  return array;
}

// Leaves the record's matrix as it is written when there is nothing to add to it.
void placeMatrix(QPDFObjectHandle dictionary, const Matrix& place) {
  const bool isMatrix = isNumbers(dictionary.getKey("/Matrix"), kMatrixNumbers);
  if (isMatrix && place == Matrix()) return;
  // Without one the pattern lies where it is selected.
  const Matrix own = isMatrix ? matrixOf(dictionary.getKey("/Matrix")) : Matrix();
  dictionary.replaceKey("/Matrix", matrixArray(own.then(place)));
}

void completeBox(QPDFObjectHandle dictionary) {
  // PDF requires it, PostScript jobs may have left it to a procedure.
  if (isNumbers(dictionary.getKey("/BBox"), 4)) return;
  auto box = QPDFObjectHandle::parse("[0 0 1 1]");
  if (isStep(dictionary.getKey("/XStep"))) box.setArrayItem(2, dictionary.getKey("/XStep"));
  if (isStep(dictionary.getKey("/YStep"))) box.setArrayItem(3, dictionary.getKey("/YStep"));
  dictionary.replaceKey("/BBox", box);
}

// Takes the cell's own extent for a step that is missing; `low` and `high` are places in BBox.
void completeStep(QPDFObjectHandle dictionary, const std::string& key, int low, int high) {
  if (isStep(dictionary.getKey(key))) return;
  auto box = dictionary.getKey("/BBox");
  const double extent = box.getArrayItem(high).getNumericValue() - box.getArrayItem(low).getNumericValue();
  // Cells then touch each other, which is what a job without steps most likely means.
  dictionary.replaceKey(key, QPDFObjectHandle::newReal(extent == 0 ? 1 : extent));
}

void completeTilingType(QPDFObjectHandle dictionary) {
  auto type = dictionary.getKey("/TilingType");
  if (type.isInteger() && type.getIntValue() >= 1 && type.getIntValue() <= 3) return;
  dictionary.replaceKey("/TilingType", QPDFObjectHandle::newInteger(1));
}

// How the C library writes numbers that are none.
bool isNoNumber(std::string_view word) {
  if (word.starts_with('[')) word.remove_prefix(1);
  if (word.starts_with('-')) word.remove_prefix(1);
  return word.starts_with("inf") || word.starts_with("nan");
}

}  // namespace

void checkRecord(std::string_view text) {
  checkNumbers(text);
  for (std::string_view word = takeWord(text); !word.empty(); word = takeWord(text)) {
    if (isNoNumber(word)) throw PageError("an image or a pattern has no finite size");
  }
}

QPDFObjectHandle imageDictionary(const std::string& text) {
  return parsed(text);
}

QPDFObjectHandle patternDictionary(std::string text, const Matrix& place) {
  closeMatrix(text);
  QPDFObjectHandle dictionary = parsed(text);
  // A tiling pattern, whatever the job calls it. It is selected without colour components, so it can only
  // be one that brings its own colours.
  dictionary.replaceKey("/PatternType", QPDFObjectHandle::newInteger(1));
  dictionary.replaceKey("/PaintType", QPDFObjectHandle::newInteger(1));
  placeMatrix(dictionary, place);
  completeBox(dictionary);
  completeStep(dictionary, "/XStep", 0, 2);
  completeStep(dictionary, "/YStep", 1, 3);
  completeTilingType(dictionary);
  return dictionary;
}

}  // namespace quillpress::cli
