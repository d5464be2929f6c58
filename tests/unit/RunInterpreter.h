#pragma once

#include <string>
#include <string_view>

#include "postscript/lib/base/Ex.h"
#include "postscript/lib/interpreter/Interpreter.h"

namespace quillpress {

inline void run(Interpreter& interpreter, std::string_view text) {
  interpreter.run(text.data(), static_cast<int>(text.size()));
}

// The operands' print texts, bottom first, joined by blanks.
inline std::string operandsOf(Interpreter& interpreter) {
  std::string line;
  const ObjectStack& operands = interpreter.operandStack();
  const auto count = static_cast<std::ptrdiff_t>(operands.count());
  for (std::ptrdiff_t i = 0; i < count; ++i) line += (i > 0 ? " " : "") + operands.at(i)->printString();
  return line;
}

// What the stack holds after a text has run in a fresh interpreter, without the start-up texts.
inline std::string resultOf(std::string_view text) {
  Interpreter interpreter;
  run(interpreter, text);
  return operandsOf(interpreter);
}

// The message of the Ex that an action throws; empty when it throws none.
template <typename Action>
std::string messageOf(Action action) {
  try {
    action();
  } catch (const Ex& error) {
    return error.message();
  }
  return {};
}

}  // namespace quillpress
