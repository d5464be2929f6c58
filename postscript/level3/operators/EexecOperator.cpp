#include "postscript/level3/operators/FileOperands.h"
#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/streams/EexecDecoder.h"
#include "postscript/level3/streams/MemoryStreams.h"

namespace quillpress::level3 {

namespace {

// On the execution stack below the decoded file: takes systemdict away again.
void endEexec(Interpreter& interpreter) {
  DictionaryStack& dictionaries = interpreter.dictionaries();
  const bool isOurs = dictionaries.depth() > DictionaryStack::kPermanent &&
                      dictionaries.top() == &interpreter.systemDictionary();
  if (isOurs) dictionaries.end();
}

SourcePointer encryptedSource(const Object& operand) {
  if (operand.isFile()) {
    if (sourceOf(operand) == nullptr) raise(ErrorName::kIoError);
    return fileOf(operand).sourcePointer();
  }
  requireReadable(operand);
  return std::make_shared<MemorySource>(bytesOf(textOf(operand)));
}

// file|string ->
void eexec(Interpreter& interpreter) {
  const Object operand = interpreter.operands().top();
  interpreter.execution().require(2);
  auto decoder = std::make_shared<EexecDecoder>(encryptedSource(operand));
  const Object decoded = interpreter.newFile(std::move(decoder), {&operand, 1});
  interpreter.dictionaries().begin(&interpreter.systemDictionary());
  interpreter.execution().push(interpreter.internal(endEexec));
  interpreter.execution().push(decoded.asExecutable());
  interpreter.operands().pop();
}

constexpr OperatorRow kEexecOperator[] = {{"eexec", "file|string", eexec}};

}  // namespace

void addEexecOperator(Interpreter& interpreter) {
  interpreter.addInternal("eexec", endEexec);
  interpreter.addOperators(kEexecOperator);
}

}  // namespace quillpress::level3
