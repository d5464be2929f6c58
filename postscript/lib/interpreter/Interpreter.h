#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "postscript/lib/interpreter/DictionarySet.h"
#include "postscript/lib/interpreter/MemorySet.h"
#include "postscript/lib/interpreter/Parser.h"
#include "postscript/lib/objects/ArrayObject.h"
#include "postscript/lib/objects/BooleanObject.h"
#include "postscript/lib/objects/IntegerObject.h"
#include "postscript/lib/objects/MarkObject.h"
#include "postscript/lib/objects/NullObject.h"
#include "postscript/lib/objects/RealObject.h"

namespace quillpress {

class GeneratedOps;

// A PostScript interpreter that is fed its program in chunks. It owns the stacks, the dictionaries and
// all values, and keeps all of that between chunks, so that a job may be cut anywhere. One thread drives
// it at a time; interpreters share nothing.
class Interpreter {
 public:
  Interpreter();
  Interpreter(const Interpreter&) = delete;
  Interpreter& operator=(const Interpreter&) = delete;
  ~Interpreter();

  // Runs one chunk, until it is used up or an operator waits for more input. A length below 0 means up
  // to the first zero byte. Ex leaves the loop at once: the stacks keep what they held at that moment,
  // what is left of the chunk is dropped, procedures that were running go on with the next chunk.
  void run(const char* text, int length);

  // Runs the start-up texts. An Ex of theirs goes to the debugger output and ends the start-up.
  void loadPrologue();

  [[nodiscard]] Parser& parser() { return parser_; }
  [[nodiscard]] ObjectStack& operandStack() { return operandStack_; }
  [[nodiscard]] ObjectStack& executionStack() { return executionStack_; }
  [[nodiscard]] ObjectStack& deferredStack() { return deferredStack_; }
  [[nodiscard]] MemorySet& memory() { return memory_; }
  [[nodiscard]] DictionarySet& dictionaries() { return dictionaries_; }
  [[nodiscard]] GeneratedOps& generatedOps() { return *generatedOps_; }

  // Typed pops from the operand stack; the error names the pop ("Expected ps_integer at
  // popIntegerObject").
  Ref<BooleanObject> popBooleanObject() { return operandStack_.pop<BooleanObject>("popBooleanObject"); }
  Ref<IntegerObject> popIntegerObject() { return operandStack_.pop<IntegerObject>("popIntegerObject"); }
  Ref<MarkObject> popMarkObject() { return operandStack_.pop<MarkObject>("popMarkObject"); }
  Ref<ArrayObject> popArrayObject() { return operandStack_.pop<ArrayObject>("popArrayObject"); }
  Ref<DictionaryObject> popDictionaryObject() {
    return operandStack_.pop<DictionaryObject>("popDictionaryObject");
  }
  Ref<StringObject> popStringObject() { return operandStack_.pop<StringObject>("popStringObject"); }

  // New results on the operand stack.
  void pushInteger(std::int32_t value) { operandStack_.push(memory_.newInteger(value)); }
  void pushReal(double value) { operandStack_.push(memory_.newReal(value)); }
  void pushBoolean(bool value) { operandStack_.push(memory_.boolean(value)); }
  void pushString(std::string text) { operandStack_.push(memory_.newString(std::move(text))); }

  // Schedules an object; a procedure is made executable and rewound first.
  void start(const Ref<PostscriptObject>& object) {
    if (auto* array = as<ArrayObject>(object)) array->startIfProcedure();
    executionStack_.push(object);
  }

  // Called by an operator that found the chunk used up: it is run again, first of all, with the next.
  void waitForInput(PostscriptObject& operatorObject);

  // The message output: what =, ==, stack and print write.
  void writeMessage(const std::string& text);

  // Raised by save, lowered by restore.
  [[nodiscard]] std::int32_t saveLevel() const { return saveLevel_; }
  void changeSaveLevel(std::int32_t change) { saveLevel_ += change; }

 private:
  void runLoop();
  bool runsWhole(ArrayObject& procedure);
  void runProcedure(ArrayObject& procedure);
  void dispatch(PostscriptObject* object);
  bool takeToken(Ref<PostscriptObject>& object);

  ObjectStack operandStack_{"Operand Stack"};
  ObjectStack executionStack_{"Execution Stack"};
  ObjectStack deferredStack_{"Deferred execution stack"};
  MemorySet memory_;
  DictionarySet dictionaries_{memory_};
  Parser parser_{memory_, dictionaries_};
  std::unique_ptr<GeneratedOps> generatedOps_;
  bool waitingForInput_ = false;
  std::int32_t saveLevel_ = 0;
};

}  // namespace quillpress
