#include "postscript/level3/colour/Procedures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <vector>

#include "postscript/level3/pdf/PdfNumbers.h"

namespace quillpress::level3 {

namespace {

constexpr std::array<std::string_view, 42> kCalculatorOperators{
    "abs",   "add",  "and",   "atan", "bitshift", "ceiling", "copy", "cos",      "cvi",  "cvr", "div",
    "dup",   "eq",   "exch",  "exp",  "false",    "floor",   "ge",   "gt",       "idiv", "if",  "ifelse",
    "index", "le",   "ln",    "log",  "lt",       "mod",     "mul",  "ne",       "neg",  "not", "or",
    "pop",   "roll", "round", "sin",  "sqrt",     "sub",     "true", "truncate", "xor"};

constexpr int kDeepestProcedure = 16;
constexpr std::size_t kLongestText = 16UL * 1024;

class CalculatorWriter {
 public:
  explicit CalculatorWriter(Interpreter& interpreter) : interpreter_(interpreter) {}

  bool write(const Object& procedure, int depth) {
    if (depth > kDeepestProcedure || !procedure.isReadable()) return false;
    text_ += '{';
    for (std::uint32_t index = 0; index < procedure.length(); ++index) {
      const Object& element = procedure.elements()[index];
      if (text_.size() > kLongestText || !writeElement(element, depth)) return false;
    }
    text_ += '}';
    return true;
  }

  std::string take() { return std::move(text_); }

 private:
  bool writeElement(const Object& element, int depth) {
    switch (element.type()) {
      case Type::kInteger:
        separate();
        appendInteger(text_, element.asInteger());
        return true;
      case Type::kReal:
        separate();
        return writeReal(static_cast<double>(element.asReal()));
      case Type::kBoolean:
        return writeWord(element.asBoolean() ? "true" : "false");
      case Type::kOperator:
        return writeWord(element.asOperator()->name->text());
      case Type::kName:
        return element.isExecutable() && writeName(element);
      case Type::kArray:
      case Type::kPackedArray:
        return element.isExecutable() && write(element, depth + 1);
      default:
        return false;
    }
  }

  // Places enough for seven digits.
  bool writeReal(double value) {
    const double magnitude = std::abs(value);
    if (!(magnitude < 1e9)) return false;
    const int places =
        magnitude == 0 ? 0 : std::clamp(7 - static_cast<int>(std::floor(std::log10(magnitude))), 0, 9);
    appendNumber(text_, value, places);
    // What is a real stays one, for the operators that tell the difference.
    if (value == std::trunc(value)) text_ += ".0";
    return true;
  }

  // A name counts when it stands for the operator that it says.
  bool writeName(const Object& name) {
    const Object* value = interpreter_.dictionaries().find(name.asName());
    if (value == nullptr) return false;
    if (value->is(Type::kBoolean)) return writeWord(value->asBoolean() ? "true" : "false");
    if (value->is(Type::kOperator)) return writeWord(value->asOperator()->name->text());
    if (value->isNumber()) return writeElement(*value, 0);
    return false;
  }

  bool writeWord(std::string_view word) {
    if (!std::binary_search(kCalculatorOperators.begin(), kCalculatorOperators.end(), word)) return false;
    separate();
    text_ += word;
    return true;
  }

  void separate() {
    if (text_.back() != '{' && text_.back() != '}') text_ += ' ';
  }

  Interpreter& interpreter_;
  std::string text_;
};

}  // namespace

void evaluate(Interpreter& interpreter, const Object& procedure, std::span<const Object> inputs,
              std::span<double> results) {
  ObjectStack& operands = interpreter.operands();
  const std::size_t before = operands.depth();
  operands.require(inputs.size());
  for (const Object& input : inputs) operands.push(input);
  interpreter.runAndWait(procedure);
  if (operands.depth() < before + results.size()) raise(ErrorName::kStackUnderflow);
  for (std::size_t index = 0; index < results.size(); ++index) {
    const Object& result = operands.top(results.size() - 1 - index);
    if (!result.isNumber()) raise(ErrorName::kTypeCheck);
    results[index] = result.asNumber();
  }
  operands.popTo(before);
}

void evaluate(Interpreter& interpreter, const Object& procedure, std::span<const double> inputs,
              std::span<double> results) {
  std::vector<Object> objects;
  for (const double input : inputs) objects.push_back(Object::real(static_cast<float>(input)));
  evaluate(interpreter, procedure, std::span<const Object>(objects), results);
}

std::string calculatorText(Interpreter& interpreter, const Object& procedure) {
  CalculatorWriter writer(interpreter);
  return writer.write(procedure, 0) ? writer.take() : std::string();
}

}  // namespace quillpress::level3
