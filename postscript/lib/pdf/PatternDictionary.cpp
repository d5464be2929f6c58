#include "postscript/lib/pdf/PatternDictionary.h"

#include "postscript/lib/objects/NumberUtils.h"
#include "postscript/lib/pdf/PageContent.h"
#include "postscript/lib/pdf/Postscript2PdfObject.h"

namespace quillpress {

namespace {

std::string boxText(const DictionaryObject& dictionary) {
  const auto* box = dictionary.lookupAs<ArrayObject>("BBox");
  if (box == nullptr) Postscript2Pdf::refuse("expected array to be here");
  // No rule of PDF: four numbers end with a blank, and six with none.
  constexpr std::ptrdiff_t kNumbersWithBlank = 5;
  std::string text("[");
  const auto count = static_cast<std::ptrdiff_t>(box->count());
  for (std::ptrdiff_t i = 0; i < count; ++i) {
    appendNumber(text, box->number(i));
    if (i < kNumbersWithBlank) text.push_back(' ');
  }
  return text + "]\n";
}

}  // namespace

double patternNumber(const DictionaryObject& dictionary, std::string_view key) {
  const PostscriptObject* number = dictionary.lookup(key);
  if (number == nullptr) Postscript2Pdf::refuse("expecting " + std::string(key));
  return toDouble(*number);
}

std::string patternDictionaryText(const DictionaryObject& dictionary, const Matrix& matrix) {
  std::string text("/Type /Pattern\n/Matrix [");
  // Kept: a degenerate matrix leaves the bracket open (PatternTest.ADegenerateMatrixLeavesItsBracketOpen).
  appendMatrix(text, matrix, "]");
  // In this order and only these: the rest of the dictionary is the job's own.
  for (const std::string_view key : {"XStep", "YStep", "PaintType", "PatternType", "TilingType"}) {
    if (dictionary.lookup(key) == nullptr) continue;
    text.append("/").append(key).append(" ");
    appendNumber(text, patternNumber(dictionary, key));
    text.append("\n");
  }
  text.append("/BBox ").append(boxText(dictionary));
  return text + "/Resources <<>> ";
}

}  // namespace quillpress
