#include "postscript/lib/operators/CompositeCopy.h"

#include <algorithm>

#include "postscript/lib/base/Ex.h"
#include "postscript/lib/objects/ArrayObject.h"
#include "postscript/lib/objects/DictionaryObject.h"
#include "postscript/lib/objects/StringObject.h"

namespace quillpress {

namespace {

void copyArray(const ArrayObject& source, ArrayObject& destination) {
  if (destination.count() < source.count()) THROW_EX("array too short for copy operator");
  const auto count = static_cast<std::ptrdiff_t>(source.count());
  for (std::ptrdiff_t i = 0; i < count; ++i) destination.elements().put(i, source.element(i));
}

void copyDictionary(const DictionaryObject& source, DictionaryObject& destination) {
  if (source.sharesPayloadWith(destination)) return;
  for (std::size_t i = 0; i < source.count(); ++i) {
    const DictionaryData::Entry& entry = source.entryInOrder(i);
    destination.define(entry.key, entry.value);
  }
}

void copyString(const StringObject& source, StringObject& destination) {
  if (source.sharesPayloadWith(destination)) return;
  if (destination.length() < source.length()) THROW_EX("string too short for copy operator");
  std::ranges::copy(source.bytes(), destination.data().writableBytes().begin());
}

}  // namespace

void copyComposite(const PostscriptObject& source, PostscriptObject& destination) {
  if (source.typeCode != destination.typeCode) THROW_EX("expected parms to be the same for copy operator");
  if (const auto* array = as<ArrayObject>(&source)) {
    copyArray(*array, static_cast<ArrayObject&>(destination));
  } else if (const auto* dictionary = as<DictionaryObject>(&source)) {
    copyDictionary(*dictionary, static_cast<DictionaryObject&>(destination));
  } else if (const auto* string = as<StringObject>(&source)) {
    copyString(*string, static_cast<StringObject&>(destination));
  } else {
    THROW_EX("unsupported copy type");
  }
}

}  // namespace quillpress
