#include <algorithm>

#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/operators/Operands.h"

namespace quillpress::level3 {

namespace {

constexpr std::int64_t kLarge = 2147483647;

// A parameter's first value; a new one must have its type, and an integer must lie in the range.
struct IntegerParameter {
  std::string_view name;
  std::int64_t value;
  std::int64_t least = 0;
  std::int64_t most = kLarge;
};
struct BooleanParameter {
  std::string_view name;
  bool value;
};
struct TextParameter {
  std::string_view name;
  std::string_view value;
};

constexpr IntegerParameter kUserIntegers[] = {
    {"HalftoneMode", 0},         {"JobTimeout", 0},        {"MaxDictStack", 500},
    {"MaxExecStack", 100000},    {"MaxFontItem", 2000000}, {"MaxFormItem", 10000000},
    {"MaxLocalVM", kLarge},      {"MaxOpStack", 500000},   {"MaxPatternItem", 10000000},
    {"MaxScreenItem", 10000000}, {"MaxSuperScreen", 1024}, {"MaxUPathItem", 10000000},
    {"MinFontCompress", 1000},   {"VMReclaim", 0, -2, 0},  {"VMThreshold", 8388608, -1},
    {"WaitTimeout", 0},
};
constexpr BooleanParameter kUserBooleans[] = {{"AccurateScreens", false}, {"IdiomRecognition", false}};
constexpr TextParameter kUserTexts[] = {{"JobName", ""}};

constexpr IntegerParameter kSystemIntegers[] = {
    {"BuildTime", 0},
    {"CurDisplayList", 0},
    {"CurFontCache", 0},
    {"CurFormCache", 0},
    {"CurOutlineCache", 0},
    {"CurPatternCache", 0},
    {"CurScreenStorage", 0},
    {"CurSourceList", 0},
    {"CurUPathCache", 0},
    {"JobTimeout", 0},
    {"MaxDisplayList", kLarge},
    {"MaxFontCache", kLarge},
    {"MaxFormCache", kLarge},
    {"MaxOutlineCache", kLarge},
    {"MaxPatternCache", kLarge},
    {"MaxScreenStorage", kLarge},
    {"MaxSourceList", kLarge},
    {"MaxUPathCache", kLarge},
    {"PageCount", 0},
    {"Revision", 1},
    {"StartupMode", 0},
    {"WaitTimeout", 0},
};
constexpr BooleanParameter kSystemBooleans[] = {{"ByteOrder", false}, {"DoPrintErrors", true}};
constexpr TextParameter kSystemTexts[] = {
    {"FontResourceDir", ""},       {"GenericResourceDir", ""}, {"GenericResourcePathSep", "/"},
    {"PrinterName", "Quillpress"}, {"RealFormat", "IEEE"},
};

Dictionary& parameters(Interpreter& interpreter, std::string_view set) {
  return *interpreter.systemDictionary().find(interpreter.memory().name(set))->asDictionary();
}

void checkRange(std::span<const IntegerParameter> known, std::string_view name, const Object& value) {
  const auto found = std::find_if(known.begin(), known.end(),
                                  [&](const IntegerParameter& parameter) { return parameter.name == name; });
  if (found == known.end()) return;
  if (value.asInteger() < found->least || value.asInteger() > found->most) raise(ErrorName::kRangeCheck);
}

// Throws typecheck and rangecheck; parameters that are not known are passed over.
void check(const Dictionary& current, std::span<const IntegerParameter> integers, const Dictionary& asked) {
  for (const Dictionary::Entry& entry : asked.entries()) {
    if (entry.key.isNull()) continue;
    const Object* const known = current.find(entry.key);
    if (known == nullptr) continue;
    if (known->type() != entry.value.type()) raise(ErrorName::kTypeCheck);
    if (entry.value.isInteger()) checkRange(integers, entry.key.asName()->text(), entry.value);
    if (entry.value.isString()) requireReadable(entry.value);
  }
}

// A string is copied: what the job does to its own afterwards is no matter of the parameters.
Object ownCopy(VirtualMemory& memory, const Object& value) {
  return value.isString() ? memory.newString(textOf(value)) : value;
}

void setParameters(Interpreter& interpreter, std::string_view set,
                   std::span<const IntegerParameter> integers) {
  const Object operand = interpreter.operands().top();
  requireReadable(operand);
  const Dictionary& asked = *operand.asDictionary();
  Dictionary& current = parameters(interpreter, set);
  check(current, integers, asked);
  VirtualMemory& memory = interpreter.memory();
  const bool wasGlobal = memory.isGlobal();
  memory.setGlobal(current.isGlobal());
  for (std::size_t i = 0; i < asked.entryCount(); ++i) {
    const Dictionary::Entry& entry = asked.entry(i);
    if (!entry.key.isNull() && current.find(entry.key) != nullptr) {
      memory.put(current, entry.key, ownCopy(memory, entry.value));
    }
  }
  memory.setGlobal(wasGlobal);
  interpreter.operands().pop();
}

// A copy, which the job may change as it likes.
void currentParameters(Interpreter& interpreter, std::string_view set) {
  VirtualMemory& memory = interpreter.memory();
  const Dictionary& current = parameters(interpreter, set);
  const Object copy = memory.newDictionary(current.length());
  for (const Dictionary::Entry& entry : current.entries()) {
    memory.put(*copy.asDictionary(), entry.key, ownCopy(memory, entry.value));
  }
  interpreter.operands().push(copy);
}

// dict ->
void setuserparams(Interpreter& interpreter) {
  setParameters(interpreter, ".userparams", kUserIntegers);
}
// The password is empty, so any will do.
void setsystemparams(Interpreter& interpreter) {
  setParameters(interpreter, ".systemparams", kSystemIntegers);
}

// -> dict
void currentuserparams(Interpreter& interpreter) {
  currentParameters(interpreter, ".userparams");
}
void currentsystemparams(Interpreter& interpreter) {
  currentParameters(interpreter, ".systemparams");
}

// string dict ->
// No device has parameters of its own.
void setdevparams(Interpreter& interpreter) {
  requireReadable(interpreter.operands().top(1));
  raise(ErrorName::kUndefined);
}

// string -> dict
void currentdevparams(Interpreter& interpreter) {
  requireReadable(interpreter.operands().top());
  interpreter.operands().top() = interpreter.memory().newDictionary(0);
}

constexpr OperatorRow kParameterOperators[] = {
    {"setuserparams", "dict", setuserparams},      {"currentuserparams", "", currentuserparams},
    {"setsystemparams", "dict", setsystemparams},  {"currentsystemparams", "", currentsystemparams},
    {"setdevparams", "string dict", setdevparams}, {"currentdevparams", "string", currentdevparams},
};

template <typename Integers, typename Booleans, typename Texts>
void defineSet(Interpreter& interpreter, std::string_view set, const Integers& integers,
               const Booleans& booleans, const Texts& texts) {
  VirtualMemory& memory = interpreter.memory();
  const Object made = memory.newDictionary(40);
  Dictionary& dictionary = *made.asDictionary();
  for (const IntegerParameter& parameter : integers) {
    memory.put(dictionary, memory.name(parameter.name), Object::integer(parameter.value));
  }
  for (const BooleanParameter& parameter : booleans) {
    memory.put(dictionary, memory.name(parameter.name), Object::boolean(parameter.value));
  }
  for (const TextParameter& parameter : texts) {
    memory.put(dictionary, memory.name(parameter.name), memory.newString(parameter.value));
  }
  interpreter.define(set, made);
}

}  // namespace

void addParameterOperators(Interpreter& interpreter) {
  interpreter.addOperators(kParameterOperators);
  // In local memory, so that restore brings the user's parameters back; the system's are for all jobs.
  defineSet(interpreter, ".userparams", kUserIntegers, kUserBooleans, kUserTexts);
  interpreter.memory().setGlobal(true);
  defineSet(interpreter, ".systemparams", kSystemIntegers, kSystemBooleans, kSystemTexts);
  interpreter.memory().setGlobal(false);
}

}  // namespace quillpress::level3
