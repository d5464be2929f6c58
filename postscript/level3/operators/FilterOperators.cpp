#include "postscript/level3/interpreter/ProcedureStreams.h"
#include "postscript/level3/operators/Filters.h"
#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/operators/Operands.h"

namespace quillpress::level3 {

namespace {

// How many operands stand between the dictionary and the name. Throws stackunderflow and typecheck.
std::size_t countOperands(const ObjectStack& operands, const FilterRow& row) {
  // A part of a file may have its parameters in the dictionary instead.
  if (row.decode != nullptr && operands.depth() > 1 && operands.top(1).isDictionary()) return 0;
  const std::size_t count = row.operands.size();
  for (std::size_t i = 1; i <= count; ++i) {
    if (operands.depth() <= i) raise(ErrorName::kStackUnderflow);
    if (!operands.top(i).is(row.operands.begin()[count - i])) raise(ErrorName::kTypeCheck);
  }
  return count;
}

// source dict param1 ... paramN name -> file
// target dict param1 ... paramN name -> file
void filter(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Object& name = operands.top();
  const FilterRow* const row = findFilter(name.isName() ? name.asName()->text() : textOf(name));
  if (row == nullptr) raise(ErrorName::kUndefined);
  const std::size_t count = countOperands(operands, *row);
  if (operands.depth() < count + 2) raise(ErrorName::kStackUnderflow);
  const Object* const dictionary =
      operands.top(count + 1).isDictionary() ? &operands.top(count + 1) : nullptr;
  if (dictionary != nullptr) requireReadable(*dictionary);
  const std::size_t used = count + (dictionary == nullptr ? 2 : 3);
  if (operands.depth() < used) raise(ErrorName::kStackUnderflow);

  // Reading may run a procedure, which finds the operands below its own; so they are looked at by copies.
  const Object data = operands.top(used - 1);
  if (data.isFile() && fileOf(data).depth() >= kDeepestChain) raise(ErrorName::kLimitCheck);
  const std::span<const Object> between = operands.last(count + 1).first(count);
  const std::vector<Object> others(between.begin(), between.end());
  const FilterParameters parameters(interpreter, dictionary == nullptr ? nullptr : dictionary->asDictionary(),
                                    !data.isFile());
  const Object file =
      row->decode != nullptr
          ? interpreter.newFile(row->decode(sourceOf(interpreter, data), parameters, others), {&data, 1})
          : interpreter.newFile(row->encode(targetOf(interpreter, data), parameters, others), {&data, 1});
  operands.pop(used);
  operands.push(file);
}

constexpr OperatorRow kFilterOperators[] = {{"filter", "name|string", filter}};

}  // namespace

void addFilterOperators(Interpreter& interpreter) {
  interpreter.addOperators(kFilterOperators);
}

}  // namespace quillpress::level3
