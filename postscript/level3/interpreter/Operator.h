#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "postscript/level3/objects/Name.h"
#include "postscript/level3/objects/Object.h"

namespace quillpress::level3 {

class Interpreter;

using OperatorFunction = void (*)(Interpreter&);

// One row of a family's table: the name, what the operands must be, and the function.
//
// The operands are written as in the manual, the topmost last, separated by blanks; alternatives are
// separated by
// "|". Kinds: any null int real num bool mark name oper string array packed proc dict file save fontid
// gstate; "array" is an array of either kind, "proc" an executable one.
//
// As a rule an operand of the wrong type is found before a missing one below it. Operators that begin with
// "count " look first whether all are there.
//
// The function finds the operands there, of these types. What the types do not say - ranges, access - it
// checks itself, before it pops: on an error the operands must still be on the stack.
struct OperatorRow {
  std::string_view name;
  std::string_view operands;
  OperatorFunction function;
};

// What the run loop does with an operator that it meets on the execution stack, where it continues a loop or
// ends a context.
enum class OperatorKind : std::uint8_t {
  kPlain,    // taken off the stack, then called
  kLoop,     // called with its frame in place; `exit` takes the frame away
  kStopped,  // ends a `stopped` context
  kBarrier,  // ends a nested run of the interpreter
};

// An operator as it is called.
struct Operator {
  static constexpr std::size_t kMaxOperands = 10;

  Name* name = nullptr;
  OperatorFunction function = nullptr;
  OperatorKind kind = OperatorKind::kPlain;
  // How many objects a loop keeps on the execution stack, itself included.
  std::uint8_t frameSize = 1;
  std::uint8_t operandCount = 0;
  bool countsFirst = false;
  // For each operand, the topmost first, a bit for each Object::Tag that it may have.
  std::array<std::uint32_t, kMaxOperands> operands{};
};

// REQUIRES: the operands are written as above.
Operator makeOperator(Name* name, std::string_view operands, OperatorFunction function);

}  // namespace quillpress::level3
