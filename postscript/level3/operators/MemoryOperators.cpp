#include <algorithm>

#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/operators/Operands.h"

namespace quillpress::level3 {

namespace {

// -> save
// The packing mode and the choice of memory come back with restore, so the save remembers them.
void save(Interpreter& interpreter) {
  interpreter.operands().require(1);
  const std::uint32_t serial = interpreter.saveState();
  interpreter.operands().push(Object::save(serial));
}

bool refersToNewer(std::span<const Object> objects, std::uint32_t serial) {
  return std::any_of(objects.begin(), objects.end(),
                     [&](const Object& object) { return VirtualMemory::isNewerThan(object, serial); });
}

// The stacks are not restored, so nothing in them may be about to disappear.
void requireRestorable(const Interpreter& interpreter, std::uint32_t serial) {
  const ObjectStack& operands = interpreter.operands();
  if (refersToNewer(operands.all(), serial) || refersToNewer(interpreter.execution().all(), serial)) {
    raise(ErrorName::kInvalidRestore);
  }
  const DictionaryStack& dictionaries = interpreter.dictionaries();
  for (std::size_t i = 0; i < dictionaries.depth(); ++i) {
    if (VirtualMemory::isNewerThan(Object::dictionary(dictionaries.at(i)), serial)) {
      raise(ErrorName::kInvalidRestore);
    }
  }
}

// Called by way of the execution stack: see restore().
void restoreNow(Interpreter& interpreter) {
  const std::uint32_t serial = interpreter.operands().top().asSave();
  if (!interpreter.memory().isOpenSave(serial)) raise(ErrorName::kInvalidRestore);
  requireRestorable(interpreter, serial);
  interpreter.operands().pop();
  interpreter.restoreState(serial);
}

// save ->
// A procedure that ends with `restore` is done, and may be newer than the save. The run loop takes it off the
// execution stack only when something else is put there, so that is what happens first.
void restore(Interpreter& interpreter) {
  interpreter.execution().push(interpreter.internal(restoreNow));
}

// bool ->
void setglobal(Interpreter& interpreter) {
  interpreter.memory().setGlobal(interpreter.operands().top().asBoolean());
  interpreter.operands().pop();
}

// -> bool
void currentglobal(Interpreter& interpreter) {
  interpreter.operands().push(Object::boolean(interpreter.memory().isGlobal()));
}

// any -> bool
// Simple values may be stored anywhere, as global ones may.
void gcheck(Interpreter& interpreter) {
  Object& operand = interpreter.operands().top();
  operand = Object::boolean(!VirtualMemory::isLocal(operand));
}

// -> level used maximum
void vmstatus(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const VirtualMemory& memory = interpreter.memory();
  operands.require(3);
  operands.push(Object::integer(static_cast<std::int64_t>(memory.saveLevel())));
  operands.push(Object::integer(static_cast<std::int64_t>(memory.bytesUsed())));
  operands.push(Object::integer(static_cast<std::int64_t>(memory.limit())));
}

// int ->
// 1 and 2 ask for a collection at once; the others switch automatic collection off and on, which goes on
// anyway.
void vmreclaim(Interpreter& interpreter) {
  const std::int64_t mode = interpreter.operands().top().asInteger();
  if (mode < -2 || mode > 2) raise(ErrorName::kRangeCheck);
  interpreter.operands().pop();
  if (mode > 0) interpreter.requestCollection();
}

// int ->
void setvmthreshold(Interpreter& interpreter) {
  if (interpreter.operands().top().asInteger() < -1) raise(ErrorName::kRangeCheck);
  interpreter.operands().pop();
}

// bool password -> bool
// A job here is a whole run of the program, so none can be started or ended from within.
void startjob(Interpreter& interpreter) {
  interpreter.operands().pop();
  interpreter.operands().top() = Object::boolean(false);
}

// password ->
// With it, downloads of old stay in a printer's memory: what comes begins as a new job does, and there is
// nothing else to outlast it.
void exitserver(Interpreter& interpreter) {
  interpreter.operands().popTo(0);
  interpreter.dictionaries().clear();
}

constexpr OperatorRow kMemoryOperators[] = {
    {"save", "", save},
    {"restore", "save", restore},
    {"setglobal", "bool", setglobal},
    {"currentglobal", "", currentglobal},
    {"gcheck", "any", gcheck},
    {"vmstatus", "", vmstatus},
    {"vmreclaim", "int", vmreclaim},
    {"setvmthreshold", "int", setvmthreshold},
    {"startjob", "count bool int|string", startjob},
    // The names under which LanguageLevel 1 extensions had them.
    {"setshared", "bool", setglobal},
    {"currentshared", "", currentglobal},
    {"scheck", "any", gcheck},
};

}  // namespace

void addMemoryOperators(Interpreter& interpreter) {
  interpreter.addOperators(kMemoryOperators);
  interpreter.addInternal("restore", restoreNow, "save");
  Dictionary* const server = interpreter.memory().newDictionary(1).asDictionary();
  interpreter.memory().putPermanent(*server, interpreter.memory().name("exitserver"),
                                    interpreter.addInternal("exitserver", exitserver, "int|string"));
  interpreter.define("serverdict", Object::dictionary(server));
  interpreter.define("shareddict", Object::dictionary(&interpreter.globalDictionary()));
}

}  // namespace quillpress::level3
