#pragma once

#include <string_view>
#include <vector>

#include "postscript/level3/geometry/Box.h"
#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// Reads the entries that operators with dictionary operands want, and throws what they throw: undefined for
// what is missing, typecheck and rangecheck for what is wrong.
class DictionaryReader {
 public:
  // Throws typecheck when it is no dictionary, invalidaccess when it may not be read.
  DictionaryReader(Interpreter& interpreter, const Object& dictionary);

  const Object* find(std::string_view key) const;
  const Object& require(std::string_view key) const;

  std::int64_t integer(std::string_view key) const;
  std::int64_t integer(std::string_view key, std::int64_t otherwise) const;
  double number(std::string_view key) const;
  bool boolean(std::string_view key, bool otherwise) const;
  const Object& procedure(std::string_view key) const;
  Matrix matrix(std::string_view key) const;
  Box box(std::string_view key) const;
  // All numbers of an array; the default when it is not there.
  std::vector<double> numbers(std::string_view key, std::vector<double> otherwise) const;
  std::vector<double> numbers(std::string_view key) const;

 private:
  Interpreter& interpreter_;
  Dictionary* dictionary_;
};

// The numbers of an array. Throws typecheck, invalidaccess.
std::vector<double> numbersOf(const Object& array);

}  // namespace quillpress::level3
