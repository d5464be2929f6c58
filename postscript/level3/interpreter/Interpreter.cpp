#include "postscript/level3/interpreter/Interpreter.h"

#include <stdexcept>
#include <string>

#include "postscript/level3/streams/CallbackStreams.h"
#include "postscript/level3/streams/MemoryStreams.h"

namespace quillpress::level3 {

void Interpreter::MachineRoots::trace(Tracer& tracer) const {
  tracer.visit(interpreter_.operands_.all());
  tracer.visit(interpreter_.execution_.all());
  tracer.visit(interpreter_.keptObjects_);
  tracer.visit(interpreter_.standardInput_);
  tracer.visit(interpreter_.standardOutput_);
  tracer.visit(interpreter_.standardErrors_);
}

Interpreter::Interpreter() : scanner_(memory_) {
  memory_.addRoots(&roots_);
  memory_.onPressure([this] { patience_ = 0; });
  stopped_ = addInternal("%stopped", nullptr, OperatorKind::kStopped);
  barrier_ = addInternal("%barrier", nullptr, OperatorKind::kBarrier);

  const auto keep = [this](std::size_t size) {
    const Object dictionary = memory_.newDictionary(size);
    keptObjects_.push_back(dictionary);
    return dictionary.asDictionary();
  };
  memory_.setGlobal(true);
  systemDictionary_ = keep(1000);
  globalDictionary_ = keep(100);
  memory_.setGlobal(false);
  userDictionary_ = keep(200);
  errorDictionary_ = keep(kErrorNameCount);
  errorState_ = keep(12);
  noStack_ = memory_.newArray(std::size_t{0});
  keptObjects_.push_back(noStack_);
  dictionaries().begin(systemDictionary_);
  dictionaries().begin(globalDictionary_);
  dictionaries().begin(userDictionary_);
  setStandardFiles(std::make_shared<MemorySource>(Bytes()), std::make_shared<NullSink>(),
                   std::make_shared<NullSink>());
}

Interpreter::~Interpreter() {
  for (const auto& extension : extensions_) {
    if (extension != nullptr) memory_.removeRoots(extension.get());
  }
  memory_.removeRoots(&roots_);
}

void Interpreter::addOperators(std::span<const OperatorRow> rows) {
  for (const OperatorRow& row : rows) {
    Name* const name = memory_.name(row.name);
    operators_.push_back(makeOperator(name, row.operands, row.function));
    define(row.name, Object::operatorOf(&operators_.back()));
  }
}

Object Interpreter::addInternal(std::string_view name, OperatorFunction function, OperatorKind kind,
                                std::size_t frameSize) {
  Operator& made = operators_.emplace_back(makeOperator(memory_.name(name), "", function));
  made.kind = kind;
  made.frameSize = static_cast<std::uint8_t>(frameSize);
  const Object object = Object::operatorOf(&made);
  if (function != nullptr) internals_.emplace(function, object);
  return object;
}

Object Interpreter::addInternal(std::string_view name, OperatorFunction function, std::string_view operands) {
  operators_.push_back(makeOperator(memory_.name(name), operands, function));
  const Object object = Object::operatorOf(&operators_.back());
  internals_.emplace(function, object);
  return object;
}

// systemdict is global; the few local dictionaries that it names are permanent, so nothing can dangle.
void Interpreter::define(std::string_view name, const Object& value) {
  memory_.putPermanent(*systemDictionary_, memory_.name(name), value);
}

void Interpreter::attach(Slot slot, std::unique_ptr<Extension> extension) {
  auto& place = extensions_[static_cast<std::size_t>(slot)];
  if (place != nullptr) throw std::logic_error("a folder's state was added twice");
  place = std::move(extension);
  memory_.addRoots(place.get());
}

std::uint32_t Interpreter::saveState() {
  const std::uint32_t serial = memory_.save();
  savedModes_.push_back({serial, memory_.isGlobal(), scanner_.isPacking(), scanner_.objectFormat()});
  for (const auto& extension : extensions_) {
    if (extension != nullptr) extension->onSave(serial);
  }
  return serial;
}

void Interpreter::restoreState(std::uint32_t serial) {
  for (const auto& extension : extensions_) {
    if (extension != nullptr) extension->onRestore(serial);
  }
  memory_.restore(serial);
  while (savedModes_.back().serial > serial) savedModes_.pop_back();
  memory_.setGlobal(savedModes_.back().isGlobal);
  scanner_.setPacking(savedModes_.back().isPacking);
  scanner_.setObjectFormat(savedModes_.back().objectFormat);
  savedModes_.pop_back();
}

void Interpreter::runSetUp(std::string_view program) {
  memory_.setGlobal(true);
  dictionaries().begin(systemDictionary_);
  const Outcome outcome = run(std::make_shared<MemorySource>(bytesOf(program)));
  dictionaries().end();
  memory_.setGlobal(false);
  if (outcome.kind != Outcome::Kind::kDone) {
    throw std::logic_error("set-up: " + outcome.errorName + " in " + outcome.command);
  }
}

void Interpreter::finishSetUp() {
  memory_.setAccess(*systemDictionary_, Access::kReadOnly);
}

Object Interpreter::newFile(SourcePointer source, std::span<const Object> dependsOn) {
  return memory_.newForeign(Type::kFile, std::make_unique<File>(std::move(source), dependsOn));
}

Object Interpreter::newFile(SinkPointer sink, std::span<const Object> dependsOn) {
  return memory_.newForeign(Type::kFile, std::make_unique<File>(std::move(sink), dependsOn));
}

Object Interpreter::currentFile() const {
  const std::span<const Object> frames = execution_.all();
  for (std::size_t i = frames.size(); i > 0; --i) {
    if (frames[i - 1].isFile()) return frames[i - 1].asLiteral();
  }
  return Object::null();
}

void Interpreter::setStandardFiles(SourcePointer input, SinkPointer output, SinkPointer errors) {
  memory_.setGlobal(true);
  standardInput_ = newFile(std::move(input)).withAccess(Access::kReadOnly);
  standardOutput_ = newFile(std::move(output));
  standardErrors_ = newFile(std::move(errors));
  memory_.setGlobal(false);
}

Interpreter::Outcome Interpreter::run(const SourcePointer& program) {
  Outcome outcome;
  const std::size_t depth = execution_.depth();
  try {
    const Object file = newFile(program).asExecutable();
    execution_.push(barrier_);
    runStopped(file);
    runLoop();
    const bool wasStopped = operands_.top().asBoolean();
    operands_.pop();
    outcome = outcomeOf(wasStopped);
  } catch (const Quit&) {
    outcome.kind = Outcome::Kind::kQuit;
  } catch (const Abort& abort) {
    outcome.kind = Outcome::Kind::kAborted;
    outcome.errorName = textOf(abort.reason);
  }
  execution_.popTo(depth);
  wasCut_ = false;
  return outcome;
}

Interpreter::Outcome Interpreter::outcomeOf(bool wasStopped) {
  Outcome outcome;
  if (!wasStopped) return outcome;
  outcome.kind = Outcome::Kind::kStopped;
  const Object* const isNew = errorState_->find(memory_.name("newerror"));
  if (isNew == nullptr || !isNew->is(Type::kBoolean) || !isNew->asBoolean()) return outcome;
  outcome.kind = Outcome::Kind::kError;
  if (const Object* const name = errorState_->find(memory_.name("errorname"));
      name != nullptr && name->isName()) {
    outcome.errorName = name->asName()->text();
  }
  if (const Object* const command = errorState_->find(memory_.name("command"))) {
    if (command->isName()) outcome.command = command->asName()->text();
    if (command->is(Type::kOperator)) outcome.command = command->asOperator()->name->text();
  }
  callErrorHandler();
  return outcome;
}

// handleerror, in a context of its own: an error in it is not reported again.
void Interpreter::callErrorHandler() {
  const Object* const handler = errorDictionary_->find(memory_.name("handleerror"));
  if (handler == nullptr) return;
  execution_.push(barrier_);
  runStopped(*handler);
  runLoop();
  operands_.pop();
}

}  // namespace quillpress::level3
