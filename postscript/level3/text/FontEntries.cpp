#include "postscript/level3/text/FontEntries.h"

#include <array>

namespace quillpress::level3 {

FontEntries::FontEntries(Interpreter& interpreter, const Object& dictionary) : interpreter_(interpreter) {
  if (!dictionary.isDictionary()) raise(ErrorName::kInvalidFont);
  dictionary_ = dictionary.asDictionary();
}

const Object* FontEntries::find(std::string_view key) const {
  return dictionary_->find(interpreter_.memory().name(key));
}

const Object& FontEntries::require(std::string_view key) const {
  const Object* const value = find(key);
  if (value == nullptr) raise(ErrorName::kInvalidFont);
  return *value;
}

std::int64_t FontEntries::integer(std::string_view key, std::int64_t otherwise) const {
  const Object* const value = find(key);
  return value != nullptr && value->isInteger() ? value->asInteger() : otherwise;
}

double FontEntries::number(std::string_view key, double otherwise) const {
  const Object* const value = find(key);
  return value != nullptr && value->isNumber() ? value->asNumber() : otherwise;
}

bool FontEntries::boolean(std::string_view key, bool otherwise) const {
  const Object* const value = find(key);
  return value != nullptr && value->is(Type::kBoolean) ? value->asBoolean() : otherwise;
}

std::vector<double> FontEntries::numbers(std::string_view key) const {
  return numbersIn(array(key));
}

std::optional<Matrix> FontEntries::matrix(std::string_view key) const {
  return matrixIn(array(key));
}

Matrix FontEntries::requireMatrix(std::string_view key) const {
  const std::optional<Matrix> value = matrix(key);
  if (!value) raise(ErrorName::kInvalidFont);
  return *value;
}

Box FontEntries::box(std::string_view key) const {
  const std::vector<double> corners = numbers(key);
  if (corners.size() != 4) return {0, 0, 0, 0};
  return Box::ofCorners({corners[0], corners[1]}, {corners[2], corners[3]});
}

Object FontEntries::dictionary(std::string_view key) const {
  const Object* const value = find(key);
  return value != nullptr && value->isDictionary() ? *value : Object();
}

Object FontEntries::array(std::string_view key) const {
  const Object* const value = find(key);
  return value != nullptr && value->isArray() ? *value : Object();
}

std::string_view FontEntries::text(std::string_view key) const {
  const Object* const value = find(key);
  if (value == nullptr) return {};
  if (value->isName()) return value->asName()->text();
  return value->isString() ? textOf(*value) : std::string_view();
}

std::optional<Matrix> matrixIn(const Object& array) {
  std::array<double, 6> values{};
  if (!array.isArray() || array.length() != values.size()) return std::nullopt;
  auto* value = values.begin();
  for (const Object& element : elementsOf(array)) {
    if (!element.isNumber()) return std::nullopt;
    *value++ = element.asNumber();
  }
  return Matrix{values[0], values[1], values[2], values[3], values[4], values[5]};
}

std::vector<double> numbersIn(const Object& array) {
  std::vector<double> numbers;
  if (!array.isArray()) return numbers;
  for (const Object& element : elementsOf(array)) {
    if (!element.isNumber()) return {};
    numbers.push_back(element.asNumber());
  }
  return numbers;
}

}  // namespace quillpress::level3
