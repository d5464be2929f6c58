#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "postscript/level3/geometry/Box.h"
#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// Reads a font's dictionary without regard to access, as an interpreter does for itself. What has the wrong
// type counts as missing, except where the name says require: that throws invalidfont.
class FontEntries {
 public:
  // Throws invalidfont when it is no dictionary.
  FontEntries(Interpreter& interpreter, const Object& dictionary);

  const Object* find(std::string_view key) const;
  const Object* find(Name* key) const { return dictionary_->find(key); }
  const Object& require(std::string_view key) const;

  std::int64_t integer(std::string_view key, std::int64_t otherwise) const;
  double number(std::string_view key, double otherwise) const;
  bool boolean(std::string_view key, bool otherwise) const;
  // The numbers of an array; empty when it is missing or holds something else.
  std::vector<double> numbers(std::string_view key) const;
  // An array of six numbers.
  std::optional<Matrix> matrix(std::string_view key) const;
  Matrix requireMatrix(std::string_view key) const;
  Box box(std::string_view key) const;
  // A dictionary, or a null object.
  Object dictionary(std::string_view key) const;
  Object array(std::string_view key) const;
  // Of a name or string.
  std::string_view text(std::string_view key) const;

 private:
  Interpreter& interpreter_;
  const Dictionary* dictionary_;
};

// The numbers of an array; empty when it holds anything else.
std::vector<double> numbersIn(const Object& array);

// The matrix that an array of six numbers is.
std::optional<Matrix> matrixIn(const Object& array);

}  // namespace quillpress::level3
