#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "postscript/level3/geometry/Box.h"

namespace quillpress::level3 {

// The number of an indirect object; 0 is none.
using ObjectNumber = std::uint32_t;

// "/Name", with characters that names must not hold written as #xx.
void appendName(std::string& text, std::string_view name);

// Bytes as a string in parentheses or in hexadecimal digits, whichever is shorter.
void appendString(std::string& text, std::string_view bytes);

// "12 0 R"
void appendReference(std::string& text, ObjectNumber number);

// "[a b c d tx ty]" with up to 6 significant places for what turns, 3 for what moves.
void appendMatrix(std::string& text, const Matrix& matrix);

// The six numbers alone, as `cm` wants them.
void appendMatrixNumbers(std::string& text, const Matrix& matrix);

// "[left bottom right top]"
void appendBox(std::string& text, const Box& box, int decimals = 3);

// Puts a dictionary together: each call adds one entry, text() closes it.
class DictionaryText {
 public:
  DictionaryText& entry(std::string_view key, std::string_view value);
  DictionaryText& name(std::string_view key, std::string_view value);
  DictionaryText& integer(std::string_view key, std::int64_t value);
  DictionaryText& number(std::string_view key, double value, int decimals = 5);
  DictionaryText& numbers(std::string_view key, std::span<const double> values, int decimals = 5);
  DictionaryText& string(std::string_view key, std::string_view bytes);
  DictionaryText& boolean(std::string_view key, bool value);
  DictionaryText& reference(std::string_view key, ObjectNumber number);
  DictionaryText& box(std::string_view key, const Box& box);
  DictionaryText& matrix(std::string_view key, const Matrix& matrix);

  bool isEmpty() const { return entries_.empty(); }

  // The entries without the brackets around them.
  const std::string& entries() const { return entries_; }
  std::string text() const { return "<<" + entries_ + ">>"; }

 private:
  void key(std::string_view key);
  // A blank where the value would run into the key.
  void separate(char next);

  std::string entries_;
};

}  // namespace quillpress::level3
