#include "postscript/level3/operators/ObjectText.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>

#include "postscript/level3/interpreter/Operator.h"
#include "postscript/level3/objects/Dictionary.h"

namespace quillpress::level3 {

namespace {

constexpr std::string_view kNoText = "--nostringval--";
constexpr int kDeepest = 100;
// A text that a hostile array makes must not fill the memory.
constexpr std::size_t kLongest = 16UL * 1024 * 1024;

std::string realText(float value, int digits) {
  if (value == 0) return "0.0";
  std::array<char, 40> buffer{};
  std::snprintf(buffer.data(), buffer.size(), "%g", static_cast<double>(value));
  // Six digits are enough when they give the number back.
  if (digits > 6 && std::strtof(buffer.data(), nullptr) != value) {
    std::snprintf(buffer.data(), buffer.size(), "%.*g", digits, static_cast<double>(value));
  }
  std::string text = buffer.data();
  if (text.find_first_of(".e") == std::string::npos) text += ".0";
  return text;
}

void appendByte(std::string& text, std::uint8_t byte) {
  switch (byte) {
    case '\n':
      text += "\\n";
      return;
    case '\r':
      text += "\\r";
      return;
    case '\t':
      text += "\\t";
      return;
    case '\b':
      text += "\\b";
      return;
    case '\f':
      text += "\\f";
      return;
    case '(':
    case ')':
    case '\\':
      text += '\\';
      text += static_cast<char>(byte);
      return;
    default:
      break;
  }
  if (byte >= ' ' && byte < 127) {
    text += static_cast<char>(byte);
  } else {
    text += '\\';
    for (int shift = 6; shift >= 0; shift -= 3) text += static_cast<char>('0' + ((byte >> shift) & 7));
  }
}

std::string stringSyntax(const Object& string) {
  if (!string.isReadable()) return "-string-";
  std::string text = "(";
  for (std::uint32_t i = 0; i < string.length(); ++i) appendByte(text, string.bytes()[i]);
  return text + ")";
}

void appendSyntax(std::string& text, const Object& object, int depth);

void appendArray(std::string& text, const Object& array, int depth) {
  const bool isProcedure = array.isExecutable();
  if (depth >= kDeepest || text.size() > kLongest) {
    text += "...";
    return;
  }
  text += isProcedure ? '{' : '[';
  for (std::uint32_t i = 0; i < array.length() && text.size() < kLongest; ++i) {
    if (i > 0) text += ' ';
    appendSyntax(text, array.elements()[i], depth + 1);
  }
  text += isProcedure ? '}' : ']';
}

void appendSyntax(std::string& text, const Object& object, int depth) {
  switch (object.type()) {
    case Type::kNull:
      text += "null";
      return;
    case Type::kInteger:
    case Type::kReal:
      text += numberText(object, 9);
      return;
    case Type::kBoolean:
      text += object.asBoolean() ? "true" : "false";
      return;
    case Type::kMark:
      text += "-mark-";
      return;
    case Type::kName:
      if (!object.isExecutable()) text += '/';
      text += object.asName()->text();
      return;
    case Type::kOperator:
      text += "--";
      text += object.asOperator()->name->text();
      text += "--";
      return;
    case Type::kString:
      text += stringSyntax(object);
      return;
    case Type::kArray:
    case Type::kPackedArray:
      if (object.isReadable()) {
        appendArray(text, object, depth);
      } else {
        text += object.is(Type::kArray) ? "-array-" : "-packedarray-";
      }
      return;
    case Type::kDictionary:
      text += "-dict-";
      return;
    case Type::kFile:
      text += "-file-";
      return;
    case Type::kSave:
      text += "-save-";
      return;
    case Type::kFontId:
      text += "-fontID-";
      return;
    case Type::kGState:
      text += "-gstate-";
      return;
  }
}

}  // namespace

std::string numberText(const Object& number, int digits) {
  return number.isInteger() ? std::to_string(number.asInteger()) : realText(number.asReal(), digits);
}

std::string plainText(const Object& object) {
  switch (object.type()) {
    case Type::kInteger:
    case Type::kReal:
      return numberText(object, 6);
    case Type::kBoolean:
      return object.asBoolean() ? "true" : "false";
    case Type::kName:
      return std::string(object.asName()->text());
    case Type::kOperator:
      return std::string(object.asOperator()->name->text());
    case Type::kString:
      return object.isReadable() ? std::string(textOf(object)) : std::string(kNoText);
    default:
      return std::string(kNoText);
  }
}

std::string syntaxText(const Object& object) {
  std::string text;
  appendSyntax(text, object, 0);
  return text;
}

std::string_view typeName(const Object& object) {
  switch (object.type()) {
    case Type::kNull:
      return "nulltype";
    case Type::kInteger:
      return "integertype";
    case Type::kReal:
      return "realtype";
    case Type::kBoolean:
      return "booleantype";
    case Type::kMark:
      return "marktype";
    case Type::kName:
      return "nametype";
    case Type::kOperator:
      return "operatortype";
    case Type::kString:
      return "stringtype";
    case Type::kArray:
      return "arraytype";
    case Type::kPackedArray:
      return "packedarraytype";
    case Type::kDictionary:
      return "dicttype";
    case Type::kFile:
      return "filetype";
    case Type::kSave:
      return "savetype";
    case Type::kFontId:
      return "fonttype";
    case Type::kGState:
      return "gstatetype";
  }
  return {};
}

}  // namespace quillpress::level3
