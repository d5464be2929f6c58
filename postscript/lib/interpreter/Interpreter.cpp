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

// One function because it is the road of every token and every scheduled object; nothing here throws by
// itself, and nothing catches.
void Interpreter::runLoop() {
  while (!waitingForInput_) {
    Ref<PostscriptObject> object;
    if (!executionStack_.empty()) {
      object = executionStack_.pop();
    } else if (!takeToken(object)) {
      return;
    }
    if (!object) continue;
    if (object->executable) {
      object->execute(*this);  // held here, so that it may be redefined while it runs
    } else {
      operandStack_.push(std::move(object));
    }
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

void Interpreter::start(const Ref<PostscriptObject>& object) {
  if (auto* array = as<ArrayObject>(object)) array->startIfProcedure();
  executionStack_.push(object);
}

void Interpreter::waitForInput(PostscriptObject& operatorObject) {
  executionStack_.push(&operatorObject);
  waitingForInput_ = true;
}

void Interpreter::writeMessage(const std::string& text) {
  writeDebugOutput(text);
}

}  // namespace quillpress
