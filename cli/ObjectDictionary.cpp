#include "cli/ObjectDictionary.h"

#include <stdexcept>

namespace quillpress::cli {

namespace {

QPDFObjectHandle parsed(const std::string& body) {
  QPDFObjectHandle dictionary = QPDFObjectHandle::parse("<<" + body + ">>", "object dictionary");
  if (!dictionary.isDictionary()) throw std::runtime_error("not a dictionary");
  return dictionary;
}

bool isNumbers(QPDFObjectHandle array, int count) {
  if (!array.isArray() || array.getArrayNItems() != count) return false;
  for (int i = 0; i < count; ++i) {
    if (!array.getArrayItem(i).isNumber()) return false;
  }
  return true;
}

/** A step that moves: zero would tile for ever. */
bool isStep(QPDFObjectHandle value) {
  return value.isNumber() && value.getNumericValue() != 0;
}

/**
 * The converter writes nothing for a matrix without extent, which leaves its bracket open. Zeros say the
 * same in PDF: such a pattern has no visible cell.
 */
void closeMatrix(std::string& text) {
  constexpr std::string_view kOpen = "/Matrix [";
  const std::size_t at = text.find(kOpen);
  if (at == std::string::npos) return;
  const std::size_t behind = text.find_first_not_of(" \n", at + kOpen.size());
  if (behind == std::string::npos || text[behind] != '/') return;
  text.insert(behind, "0 0 0 0 0 0]\n");
}

void completeBox(QPDFObjectHandle dictionary) {
  if (isNumbers(dictionary.getKey("/BBox"), 4)) return;
  auto box = QPDFObjectHandle::parse("[0 0 1 1]");
  if (isStep(dictionary.getKey("/XStep"))) box.setArrayItem(2, dictionary.getKey("/XStep"));
  if (isStep(dictionary.getKey("/YStep"))) box.setArrayItem(3, dictionary.getKey("/YStep"));
  dictionary.replaceKey("/BBox", box);
}

/** Takes the cell's own extent for a step that is missing; `low` and `high` are places in BBox. */
void completeStep(QPDFObjectHandle dictionary, const std::string& key, int low, int high) {
  if (isStep(dictionary.getKey(key))) return;
  auto box = dictionary.getKey("/BBox");
  const double extent = box.getArrayItem(high).getNumericValue() - box.getArrayItem(low).getNumericValue();
  dictionary.replaceKey(key, QPDFObjectHandle::newReal(extent == 0 ? 1 : extent));
}

void completeTilingType(QPDFObjectHandle dictionary) {
  auto type = dictionary.getKey("/TilingType");
  if (type.isInteger() && type.getIntValue() >= 1 && type.getIntValue() <= 3) return;
  dictionary.replaceKey("/TilingType", QPDFObjectHandle::newInteger(1));
}

}  // namespace

QPDFObjectHandle imageDictionary(const std::string& text) {
  return parsed(text);
}

QPDFObjectHandle patternDictionary(std::string text) {
  closeMatrix(text);
  QPDFObjectHandle dictionary = parsed(text);
  // A tiling pattern, whatever the job calls it. It is selected without colour components, so it can only
  // be one that brings its own colours.
  dictionary.replaceKey("/PatternType", QPDFObjectHandle::newInteger(1));
  dictionary.replaceKey("/PaintType", QPDFObjectHandle::newInteger(1));
  if (!isNumbers(dictionary.getKey("/Matrix"), 6)) dictionary.removeKey("/Matrix");
  completeBox(dictionary);
  completeStep(dictionary, "/XStep", 0, 2);
  completeStep(dictionary, "/YStep", 1, 3);
  completeTilingType(dictionary);
  return dictionary;
}

}  // namespace quillpress::cli
