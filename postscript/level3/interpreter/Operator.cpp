#include "postscript/level3/interpreter/Operator.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace quillpress::level3 {

namespace {

constexpr std::uint32_t either(Type type) {
  return (1U << Object::literal(type)) | (1U << Object::executable(type));
}

struct Kind {
  std::string_view name;
  std::uint32_t tags;
};

constexpr std::array kKinds = {
    Kind{"any", UINT32_MAX},
    Kind{"null", either(Type::kNull)},
    Kind{"int", either(Type::kInteger)},
    Kind{"real", either(Type::kReal)},
    Kind{"num", either(Type::kInteger) | either(Type::kReal)},
    Kind{"bool", either(Type::kBoolean)},
    Kind{"mark", either(Type::kMark)},
    Kind{"name", either(Type::kName)},
    Kind{"oper", either(Type::kOperator)},
    Kind{"string", either(Type::kString)},
    Kind{"array", either(Type::kArray) | either(Type::kPackedArray)},
    Kind{"packed", either(Type::kPackedArray)},
    Kind{"proc", (1U << Object::executable(Type::kArray)) | (1U << Object::executable(Type::kPackedArray))},
    Kind{"dict", either(Type::kDictionary)},
    Kind{"file", either(Type::kFile)},
    Kind{"save", either(Type::kSave)},
    Kind{"fontid", either(Type::kFontId)},
    Kind{"gstate", either(Type::kGState)},
};

// The next piece of `text` up to `separator`, taken off it.
std::string_view takePiece(std::string_view& text, char separator) {
  const std::size_t end = std::min(text.find(separator), text.size());
  const std::string_view piece = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return piece;
}

std::uint32_t tagsOf(std::string_view alternatives) {
  std::uint32_t tags = 0;
  while (!alternatives.empty()) {
    const std::string_view name = takePiece(alternatives, '|');
    const auto* const kind =
        std::find_if(kKinds.begin(), kKinds.end(), [&](const Kind& known) { return known.name == name; });
    if (kind == kKinds.end()) throw std::logic_error("unknown kind of operand: " + std::string(name));
    tags |= kind->tags;
  }
  return tags;
}

}  // namespace

Operator makeOperator(Name* name, std::string_view operands, OperatorFunction function) {
  Operator made;
  made.name = name;
  made.function = function;
  constexpr std::string_view kCount = "count ";
  made.countsFirst = operands.starts_with(kCount);
  if (made.countsFirst) operands.remove_prefix(kCount.size());
  while (!operands.empty()) made.operands.at(made.operandCount++) = tagsOf(takePiece(operands, ' '));
  std::reverse(made.operands.begin(), made.operands.begin() + made.operandCount);
  return made;
}

}  // namespace quillpress::level3
