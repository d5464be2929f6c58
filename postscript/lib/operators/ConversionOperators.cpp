#include "postscript/lib/operators/ConversionOperators.h"

#include <algorithm>
#include <optional>

#include "postscript/lib/base/Ex.h"
#include "postscript/lib/objects/NumberUtils.h"

namespace quillpress {

namespace {

constexpr std::string_view kWhiteSpace(" \t\r\n\f\0", 6);

// A zero byte counts as white space, as it does in the buffers that jobs fill in part.
std::string_view trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(kWhiteSpace);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kWhiteSpace) - first + 1);
}

bool hasDigits(std::string_view text) {
  return std::ranges::any_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

// Here and not in the conversions, because a lone sign is a number in the program's own text.
std::optional<std::int32_t> integerOf(std::string_view text) {
  if (!hasDigits(text)) return std::nullopt;  // a lone sign is no number here
  if (const auto decimal = parseDecimalInteger(text)) return decimal;
  return parseRadixInteger(text);
}

}  // namespace

// Executable, as the language wants it, so that jobs can define type names as procedures.
void TypeOperator::execute(Interpreter& interpreter) {
  const Ref<PostscriptObject> object = interpreter.operandStack().pop();
  interpreter.operandStack().push(make<NameObject>(typeOperatorName(object->typeCode)));
}

void CviOperator::execute(Interpreter& interpreter) {
  const Ref<PostscriptObject> object = interpreter.operandStack().pop();
  if (const auto* real = as<RealObject>(object)) {
    interpreter.pushInteger(truncateToInt32(real->value));
  } else if (object->typeCode == TypeCode::kInteger) {
    interpreter.operandStack().push(object->clone(0));
  } else if (const auto* string = as<StringObject>(object)) {
    // Integers first: a whole number must not take the way through a double.
    const std::string_view spelled = trimmed(string->bytes());
    if (const auto integer = integerOf(spelled)) {
      interpreter.pushInteger(*integer);
    } else if (const auto parsed = parseReal(spelled)) {
      interpreter.pushInteger(truncateToInt32(*parsed));
    } else {
      THROW_EX("Unable to convert in cvi");
    }
  } else {
    THROW_EX("Unsupported conversion type for cvi");
  }
}

void CvrOperator::execute(Interpreter& interpreter) {
  const Ref<PostscriptObject> object = interpreter.operandStack().pop();
  if (object->typeCode == TypeCode::kReal) {
    interpreter.operandStack().push(object->clone(0));
  } else if (const auto* integer = as<IntegerObject>(object)) {
    interpreter.pushReal(integer->value);
  } else if (const auto* string = as<StringObject>(object)) {
    const std::string_view spelled = trimmed(string->bytes());
    if (const auto number = integerOf(spelled)) {
      interpreter.pushReal(*number);
    } else if (const auto parsed = parseReal(spelled)) {
      interpreter.pushReal(*parsed);
    } else {
      THROW_EX("Unable to convert in cvr");
    }
  } else {
    THROW_EX("Unsupported conversion type for cvr");
  }
}

// The flag goes along, so that an executable string gives a name that runs.
void CvnOperator::execute(Interpreter& interpreter) {
  const auto string = interpreter.operandStack().pop<StringObject>(text);
  const auto name = make<NameObject>(string->bytes());
  name->executable = string->executable;
  interpreter.operandStack().push(name);
}

void CvsOperator::execute(Interpreter& interpreter) {
  const Ref<StringObject> buffer = interpreter.popStringObject();
  const Ref<PostscriptObject> object = interpreter.operandStack().pop();
  // A text of its own, since the object may be the buffer. Byte by byte, so that what fits is in the
  // buffer when the rest does not.
  std::string converted = object->cvsString();
  for (std::size_t i = 0; i < converted.size(); ++i) {
    buffer->put(static_cast<std::ptrdiff_t>(i), converted[i]);
  }
  interpreter.pushString(std::move(converted));
}

}  // namespace quillpress
