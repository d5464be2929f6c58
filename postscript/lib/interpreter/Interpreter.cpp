#include "postscript/lib/interpreter/Interpreter.h"

#include <array>
#include <cstring>

#include "postscript/lib/base/DebugOutput.h"
#include "postscript/lib/base/Ex.h"
#include "postscript/lib/interpreter/PrologueText.h"
#include "postscript/lib/operators/ImplementedGenOps.h"
#include "postscript/lib/operators/LanguageOperators.h"

namespace quillpress {

namespace {

bool isBrace(const PostscriptObject& token) {
  const auto* name = as<NameObject>(&token);
  return name != nullptr && (name->text == "{" || name->text == "}");
}

}  // namespace

Interpreter::Interpreter() : generatedOps_(std::make_unique<ImplementedGenOps>(*this)) {
  registerGeneratedOperators(dictionaries_);
  registerLanguageOperators(dictionaries_);

  // After the operators, whose rows of the same names these replace.
  DictionaryObject& system = dictionaries_.systemDictionary();
  system.define("systemdict", &system);
  system.define("globaldict", &dictionaries_.globalDictionary());
  system.define("userdict", &dictionaries_.userDictionary());
  system.define("errordict", &dictionaries_.errorDictionary());
  system.define("languagelevel", make<IntegerObject>(2));
  system.define("version", memory_.newString("49"));
}

Interpreter::~Interpreter() = default;

void Interpreter::run(const char* text, int length) {
  parser_.setInput(text, length < 0 ? std::strlen(text) : static_cast<std::size_t>(length));
  waitingForInput_ = false;
  runLoop();
}

// Runs a started procedure of one element that comes down to a plain operator, as programs make them to have
// short names. Nobody can see that it never was on the execution stack, but for an error, which finds it
// there. False when the procedure is of another kind; it has not been touched then.
[[gnu::always_inline]] inline bool Interpreter::runsWhole(ArrayObject& procedure) {
  if (procedure.count() != 1) return false;
  PostscriptObject* object = procedure.element(0);
  const auto* name = as<NameObject>(object);
  if (name == nullptr || !name->executable) return false;
  if (PostscriptObject* value = dictionaries_.remembered(name->known())) object = value;
  if (!object->isPlainOperator || !object->executable) return false;
  (void)procedure.takeNext();
  try {
    object->execute(*this);
  } catch (...) {
    executionStack_.push(&procedure);
    throw;
  }
  procedure.retire();
  return true;
}

// Pushes what is literal and runs what is executable. A name that remembers its value is followed at once:
// nobody can see the value on the execution stack between two steps of the loop, except a procedure, which
// stays there.
[[gnu::always_inline]] inline void Interpreter::dispatch(PostscriptObject* object) {
  if (!object->executable) {
    operandStack_.push(object);
    return;
  }
  const auto* name = as<NameObject>(object);
  PostscriptObject* value = name == nullptr ? nullptr : dictionaries_.remembered(name->known());
  if (value != nullptr) {
    auto* array = as<ArrayObject>(value);
    if (array != nullptr) array->startIfProcedure();
    if (!value->executable) {
      operandStack_.push(value);
      return;
    }
    if (array != nullptr) {
      if (!runsWhole(*array)) executionStack_.push(array);
      return;
    }
    object = value;
  }
  const Ref<PostscriptObject> held(object);  // it may be redefined while it runs
  held->execute(*this);
}

// Runs the procedure on top of the execution stack where it lies, until it has come to its end and is gone,
// or something else has to run first. To whatever an element runs the stacks look as if the procedure had
// been popped and pushed back below the element, and the element had been popped then.
[[gnu::always_inline]] inline void Interpreter::runProcedure(ArrayObject& procedure) {
  const Ref<ArrayObject> held(&procedure);
  while (PostscriptObject* element = procedure.takeNext()) {
    if (!element->executable) {
      operandStack_.push(element);  // most elements are literal, and cannot get in the procedure's way
      continue;
    }
    if (const auto* name = as<NameObject>(element)) {
      PostscriptObject* value = dictionaries_.remembered(name->known());
      if (value != nullptr && value->isPlainOperator && value->executable) {
        value->execute(*this);
        continue;
      }
    }
    dispatch(element);
    if (executionStack_.top() != &procedure || !procedure.executable) return;
  }
  procedure.retire();
  executionStack_.drop();
}

// The road of every token and every scheduled object; nothing here throws by itself, and nothing catches.
void Interpreter::runLoop() {
  while (!waitingForInput_) {
    auto* procedure = as<ArrayObject>(executionStack_.top());
    if (procedure != nullptr && procedure->executable) {
      runProcedure(*procedure);
      continue;
    }
    Ref<PostscriptObject> object;
    if (!executionStack_.empty()) {
      object = executionStack_.pop();
    } else if (!takeToken(object)) {
      return;
    }
    if (object) dispatch(object.get());
  }
}

// Takes the next token; false when the chunk is used up. While a procedure is being built, braces are
// executed and other tokens go into it; `object` is empty then.
bool Interpreter::takeToken(Ref<PostscriptObject>& object) {
  object = parser_.nextToken();
  if (!object) return false;
  if (deferredStack_.empty()) return true;
  const Ref<PostscriptObject> token = std::move(object);
  if (isBrace(*token)) {
    token->execute(*this);
  } else {
    as<ArrayObject>(deferredStack_.peek(0))->elements().push(token);
  }
  return true;
}

void Interpreter::loadPrologue() {
  try {
    for (const std::string_view text : {kAbbreviationsText, kStandardEncodingText, kHelveticaText}) {
      run(text.data(), static_cast<int>(text.size()));
    }
  } catch (const Ex& error) {
    writeDebugOutput("Exception in Procset:" + error.formatted());
  }
}

void Interpreter::waitForInput(PostscriptObject& operatorObject) {
  executionStack_.push(&operatorObject);
  waitingForInput_ = true;
}

void Interpreter::writeMessage(const std::string& text) {
  writeDebugOutput(text);
}

}  // namespace quillpress
