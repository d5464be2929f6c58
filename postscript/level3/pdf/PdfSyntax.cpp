#include "postscript/level3/pdf/PdfSyntax.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "postscript/level3/pdf/PdfNumbers.h"

namespace quillpress::level3 {

namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

void appendHex(std::string& text, char byte) {
  const auto value = static_cast<unsigned char>(byte);
  text += kHexDigits[value >> 4];
  text += kHexDigits[value & 15];
}

bool isRegular(char byte) {
  return byte > ' ' && byte < 0x7F && std::string_view("()<>[]{}/%#").find(byte) == std::string_view::npos;
}

bool isDelimiter(char byte) {
  return std::string_view("()<>[]{}/%").find(byte) != std::string_view::npos;
}

bool mustBeEscaped(char byte) {
  return byte == '(' || byte == ')' || byte == '\\' || byte == '\r';
}

// Places after the point that keep six significant digits.
int placesFor(double value) {
  const double magnitude = std::abs(value);
  if (!(magnitude > 0) || !std::isfinite(magnitude)) return 0;
  return std::clamp(5 - static_cast<int>(std::floor(std::log10(magnitude))), 0, 9);
}

void appendSignificant(std::string& text, double value) {
  appendNumber(text, value, placesFor(value));
}

}  // namespace

void appendName(std::string& text, std::string_view name) {
  text += '/';
  for (const char byte : name) {
    if (isRegular(byte)) {
      text += byte;
    } else {
      text += '#';
      appendHex(text, byte);
    }
  }
}

// Strings are a few bytes as a rule, and so many that each goes out at one go.
void appendString(std::string& text, std::string_view bytes) {
  constexpr std::size_t kMostAtATime = 3;
  std::array<char, 128> piece;
  std::size_t length = 0;
  piece[length++] = '(';
  for (const char byte : bytes) {
    if (mustBeEscaped(byte)) {
      piece[length++] = '\\';
      piece[length++] = byte == '\r' ? 'r' : byte;
    } else {
      piece[length++] = byte;
    }
    if (length > piece.size() - kMostAtATime) text.append(piece.data(), std::exchange(length, 0));
  }
  piece[length++] = ')';
  text.append(piece.data(), length);
}

void appendReference(std::string& text, ObjectNumber number) {
  appendInteger(text, number);
  text += " 0 R";
}

void appendMatrixNumbers(std::string& text, const Matrix& matrix) {
  for (const double value : {matrix.a, matrix.b, matrix.c, matrix.d}) {
    appendSignificant(text, value);
    text += ' ';
  }
  appendNumber(text, matrix.tx, 3);
  text += ' ';
  appendNumber(text, matrix.ty, 3);
}

void appendMatrix(std::string& text, const Matrix& matrix) {
  text += '[';
  appendMatrixNumbers(text, matrix);
  text += ']';
}

void appendBox(std::string& text, const Box& box, int decimals) {
  text += '[';
  appendNumber(text, box.left, decimals);
  text += ' ';
  appendNumber(text, box.bottom, decimals);
  text += ' ';
  appendNumber(text, box.right, decimals);
  text += ' ';
  appendNumber(text, box.top, decimals);
  text += ']';
}

void DictionaryText::key(std::string_view key) {
  appendName(entries_, key);
}

void DictionaryText::separate(char next) {
  if (!isDelimiter(next)) entries_ += ' ';
}

DictionaryText& DictionaryText::entry(std::string_view name, std::string_view value) {
  key(name);
  separate(value.empty() ? ' ' : value.front());
  entries_ += value;
  return *this;
}

DictionaryText& DictionaryText::name(std::string_view name, std::string_view value) {
  key(name);
  appendName(entries_, value);
  return *this;
}

DictionaryText& DictionaryText::integer(std::string_view name, std::int64_t value) {
  key(name);
  separate('0');
  appendInteger(entries_, value);
  return *this;
}

DictionaryText& DictionaryText::number(std::string_view name, double value, int decimals) {
  key(name);
  separate('0');
  appendNumber(entries_, value, decimals);
  return *this;
}

DictionaryText& DictionaryText::numbers(std::string_view name, std::span<const double> values, int decimals) {
  key(name);
  entries_ += '[';
  for (const double& value : values) {
    if (&value != values.data()) entries_ += ' ';
    appendNumber(entries_, value, decimals);
  }
  entries_ += ']';
  return *this;
}

DictionaryText& DictionaryText::string(std::string_view name, std::string_view bytes) {
  key(name);
  appendString(entries_, bytes);
  return *this;
}

DictionaryText& DictionaryText::boolean(std::string_view name, bool value) {
  return entry(name, value ? "true" : "false");
}

DictionaryText& DictionaryText::reference(std::string_view name, ObjectNumber number) {
  key(name);
  separate('0');
  appendReference(entries_, number);
  return *this;
}

DictionaryText& DictionaryText::box(std::string_view name, const Box& box) {
  key(name);
  appendBox(entries_, box);
  return *this;
}

DictionaryText& DictionaryText::matrix(std::string_view name, const Matrix& matrix) {
  key(name);
  appendMatrix(entries_, matrix);
  return *this;
}

}  // namespace quillpress::level3
