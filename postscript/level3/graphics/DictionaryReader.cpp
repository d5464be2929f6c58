#include "postscript/level3/graphics/DictionaryReader.h"

#include "postscript/level3/graphics/MatrixOperands.h"

namespace quillpress::level3 {

DictionaryReader::DictionaryReader(Interpreter& interpreter, const Object& dictionary)
    : interpreter_(interpreter) {
  if (!dictionary.isDictionary()) raise(ErrorName::kTypeCheck);
  dictionary_ = dictionary.asDictionary();
  if (!dictionary_->isReadable()) raise(ErrorName::kInvalidAccess);
}

const Object* DictionaryReader::find(std::string_view key) const {
  return dictionary_->find(interpreter_.memory().name(key));
}

const Object& DictionaryReader::require(std::string_view key) const {
  const Object* value = find(key);
  if (value == nullptr) raise(ErrorName::kUndefined);
  return *value;
}

std::int64_t DictionaryReader::integer(std::string_view key) const {
  const Object& value = require(key);
  if (!value.isInteger()) raise(ErrorName::kTypeCheck);
  return value.asInteger();
}

std::int64_t DictionaryReader::integer(std::string_view key, std::int64_t otherwise) const {
  return find(key) == nullptr ? otherwise : integer(key);
}

double DictionaryReader::number(std::string_view key) const {
  const Object& value = require(key);
  if (!value.isNumber()) raise(ErrorName::kTypeCheck);
  return value.asNumber();
}

bool DictionaryReader::boolean(std::string_view key, bool otherwise) const {
  const Object* value = find(key);
  if (value == nullptr) return otherwise;
  if (!value->is(Type::kBoolean)) raise(ErrorName::kTypeCheck);
  return value->asBoolean();
}

const Object& DictionaryReader::procedure(std::string_view key) const {
  const Object& value = require(key);
  if (!value.isProcedure()) raise(ErrorName::kTypeCheck);
  return value;
}

Matrix DictionaryReader::matrix(std::string_view key) const {
  return matrixOf(require(key));
}

Box DictionaryReader::box(std::string_view key) const {
  const std::vector<double> corners = numbers(key);
  if (corners.size() != 4) raise(ErrorName::kRangeCheck);
  return Box::ofCorners({corners[0], corners[1]}, {corners[2], corners[3]});
}

std::vector<double> DictionaryReader::numbers(std::string_view key) const {
  return numbersOf(require(key));
}

std::vector<double> DictionaryReader::numbers(std::string_view key, std::vector<double> otherwise) const {
  return find(key) == nullptr ? std::move(otherwise) : numbers(key);
}

std::vector<double> numbersOf(const Object& array) {
  if (!array.isArray()) raise(ErrorName::kTypeCheck);
  if (!array.isReadable()) raise(ErrorName::kInvalidAccess);
  std::vector<double> numbers;
  for (const Object& element : elementsOf(array)) {
    if (!element.isNumber()) raise(ErrorName::kTypeCheck);
    numbers.push_back(element.asNumber());
  }
  return numbers;
}

}  // namespace quillpress::level3
