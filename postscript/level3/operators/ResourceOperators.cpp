#include <algorithm>
#include <cstring>

#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/operators/ObjectText.h"
#include "postscript/level3/operators/Operands.h"
#include "postscript/level3/operators/ResourceCategories.h"
#include "postscript/level3/operators/Resources.h"
#include "postscript/level3/operators/Wildcards.h"

// Each operator finds the category's dictionary and calls the procedure in it that does the work, with the
// dictionary on the dictionary stack and the category's name gone from the operands. The procedures of our
// own categories are internal operators; they are called at once, so that on an error the operands are all
// there.

namespace quillpress::level3 {

namespace {

Dictionary& categoryOf(Interpreter& interpreter, Name* category) {
  const Object* const found =
      Resources(interpreter).find(interpreter.memory().name("Category"), Object::literalName(category));
  if (found == nullptr || !found->isDictionary()) raise(ErrorName::kUndefined);
  return *found->asDictionary();
}

// The category whose procedure is running: its dictionary is the current one.
Dictionary& currentCategory(Interpreter& interpreter) {
  return *interpreter.dictionaries().top();
}

Name* nameOf(Interpreter& interpreter, const Dictionary& category) {
  const Object* const name = category.find(interpreter.memory().name("Category"));
  if (name == nullptr || !name->isName()) raise(ErrorName::kUndefined);
  return name->asName();
}

bool isImplicit(Interpreter& interpreter, const Dictionary& category) {
  return category.find(interpreter.memory().name(".Implicit")) != nullptr;
}

// Throws typecheck when the category asks for another type of instance.
void requireType(Interpreter& interpreter, const Dictionary& category, const Object& instance) {
  const Object* const type = category.find(interpreter.memory().name("InstanceType"));
  if (type == nullptr || !type->isName()) return;
  const std::string_view wanted = type->asName()->text();
  const bool isArray = wanted == "arraytype" && instance.isArray();
  if (!isArray && wanted != typeName(instance)) raise(ErrorName::kTypeCheck);
}

// A new category knows its own name; its procedures look for it.
void prepareCategory(Interpreter& interpreter, const Object& key, const Object& instance) {
  VirtualMemory& memory = interpreter.memory();
  if (!key.isName()) raise(ErrorName::kTypeCheck);
  memory.put(*instance.asDictionary(), memory.name("Category"), key.asLiteral());
}

Object readOnly(Interpreter& interpreter, const Object& instance) {
  if (instance.isDictionary() && instance.asDictionary()->isWritable()) {
    interpreter.memory().setAccess(*instance.asDictionary(), Access::kReadOnly);
  }
  const bool hasAccess = instance.isString() || instance.is(Type::kArray);
  return hasAccess && instance.isWritable() ? instance.withAccess(Access::kReadOnly) : instance;
}

// key instance -> instance
void defineInstance(Interpreter& interpreter, const Dictionary& category) {
  ObjectStack& operands = interpreter.operands();
  if (isImplicit(interpreter, category)) raise(ErrorName::kInvalidAccess);
  const Object key = operands.top(1);
  const Object instance = operands.top(0);
  Name* const name = nameOf(interpreter, category);
  requireType(interpreter, category, instance);
  if (name->text() == "Category") prepareCategory(interpreter, key, instance);
  const Object kept = readOnly(interpreter, instance);
  Resources(interpreter).define(name, key, kept);
  operands.pop();
  operands.top() = kept;
}

// key -> instance
void findInstance(Interpreter& interpreter, const Dictionary& category) {
  Object& key = interpreter.operands().top();
  const Object* const instance = Resources(interpreter).find(nameOf(interpreter, category), key);
  if (instance == nullptr) raise(ErrorName::kUndefinedResource);
  key = *instance;
}

// key ->
void undefineInstance(Interpreter& interpreter, const Dictionary& category) {
  if (isImplicit(interpreter, category)) raise(ErrorName::kInvalidAccess);
  Resources(interpreter).undefine(nameOf(interpreter, category), interpreter.operands().top());
  interpreter.operands().pop();
}

// key -> status size true
// key -> false
void instanceStatus(Interpreter& interpreter, const Dictionary& category) {
  ObjectStack& operands = interpreter.operands();
  operands.require(2);
  if (Resources(interpreter).find(nameOf(interpreter, category), operands.top()) == nullptr) {
    operands.top() = Object::boolean(false);
    return;
  }
  // Defined by defineresource or built in; how much memory it takes is known of the latter only: none.
  constexpr std::int64_t kUnknownSize = -1;
  operands.top() = Object::integer(0);
  operands.push(Object::integer(isImplicit(interpreter, category) ? 0 : kUnknownSize));
  operands.push(Object::boolean(true));
}

// Frame: procedure, scratch string, keys that are left, operator.
void turnInstances(Interpreter& interpreter) {
  ObjectStack& execution = interpreter.execution();
  Object& rest = execution.top(1);
  if (rest.length() == 0) {
    execution.pop(4);
    return;
  }
  const Object key = *rest.elements();
  const Object scratch = execution.top(2);
  rest = rest.interval(1, rest.length() - 1);
  Object shown = key;
  if (key.isName()) {
    const std::string_view text = key.asName()->text();
    if (text.size() > scratch.length()) raise(ErrorName::kRangeCheck);
    if (!text.empty()) std::memcpy(scratch.bytes(), text.data(), text.size());
    shown = scratch.interval(0, static_cast<std::uint32_t>(text.size()));
  }
  interpreter.operands().push(shown);
  execution.push(Object(execution.top(3)));
}

// template procedure scratch ->
// Keys that are no names have no text: only stars match them.
void enumerateInstances(Interpreter& interpreter, const Dictionary& category) {
  ObjectStack& operands = interpreter.operands();
  const std::string_view pattern = textOf(operands.top(2));
  std::vector<Object> keys = Resources(interpreter).keys(nameOf(interpreter, category));
  std::erase_if(keys, [&](const Object& key) {
    const std::string_view text = key.isName() ? key.asName()->text() : std::string_view();
    return !matchesWildcards(text, pattern);
  });
  const bool wasGlobal = interpreter.memory().isGlobal();
  interpreter.memory().setGlobal(false);
  const Object list = interpreter.memory().newArray(keys);
  interpreter.memory().setGlobal(wasGlobal);
  interpreter.execution().require(5);
  interpreter.execution().push(operands.top(1));
  interpreter.execution().push(operands.top(0));
  interpreter.execution().push(list);
  interpreter.execution().push(interpreter.internal(turnInstances));
  operands.pop(3);
}

// On the execution stack below a category's own procedure.
void endCategory(Interpreter& interpreter) {
  interpreter.dictionaries().end();
}

using Work = void (*)(Interpreter&, const Dictionary& category);

// The operator within a category's dictionary that does one of the five works.
template <Work kWork>
void workOfCategory(Interpreter& interpreter) {
  kWork(interpreter, currentCategory(interpreter));
}

// The five operators. The category's name is the topmost operand.
template <Work kWork>
void workOfOperator(Interpreter& interpreter, std::string_view procedureName) {
  ObjectStack& operands = interpreter.operands();
  Dictionary& category = categoryOf(interpreter, operands.top().asName());
  const Object* const procedure = category.find(interpreter.memory().name(procedureName));
  if (procedure == nullptr) raise(ErrorName::kUndefined);
  const Object name = operands.top();
  if (procedure->isIdenticalTo(interpreter.internal(workOfCategory<kWork>))) {
    operands.pop();
    try {
      kWork(interpreter, category);
    } catch (const PostscriptError&) {
      operands.push(name);
      throw;
    }
    return;
  }
  interpreter.execution().require(2);
  interpreter.dictionaries().begin(&category);
  interpreter.execution().push(interpreter.internal(endCategory));
  interpreter.execution().push(*procedure);
  operands.pop();
}

// key instance category -> instance
void defineresource(Interpreter& interpreter) {
  workOfOperator<defineInstance>(interpreter, "DefineResource");
}

// key category -> instance
void findresource(Interpreter& interpreter) {
  workOfOperator<findInstance>(interpreter, "FindResource");
}

// key category ->
void undefineresource(Interpreter& interpreter) {
  workOfOperator<undefineInstance>(interpreter, "UndefineResource");
}

// key category -> status size true
// key category -> false
void resourcestatus(Interpreter& interpreter) {
  workOfOperator<instanceStatus>(interpreter, "ResourceStatus");
}

// template procedure scratch category ->
void resourceforall(Interpreter& interpreter) {
  workOfOperator<enumerateInstances>(interpreter, "ResourceForAll");
}

// intent -> name bool         Whether the device has a dictionary for that intent, or only the usual one.
void findcolorrendering(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  operands.require(1);
  VirtualMemory& memory = interpreter.memory();
  const bool isKnown = Resources(interpreter).find(memory.name("ColorRendering"), operands.top()) != nullptr;
  if (!isKnown) operands.top() = Object::literalName(memory.name("DefaultColorRendering"));
  operands.push(Object::boolean(isKnown));
}

constexpr OperatorRow kResourceOperators[] = {
    {"findcolorrendering", "name", findcolorrendering},
    {"defineresource", "count any any name", defineresource},
    {"findresource", "count any name", findresource},
    {"undefineresource", "any name", undefineresource},
    {"resourcestatus", "any name", resourcestatus},
    {"resourceforall", "count string proc string name", resourceforall},
};

}  // namespace

void addResourceOperators(Interpreter& interpreter) {
  interpreter.addOperators(kResourceOperators);
  interpreter.addInternal("resourceforall", turnInstances, OperatorKind::kLoop, 4);
  interpreter.addInternal("endcategory", endCategory);
  const CategoryProcedures procedures = {
      interpreter.addInternal("DefineResource", workOfCategory<defineInstance>, "any any"),
      interpreter.addInternal("FindResource", workOfCategory<findInstance>, "any"),
      interpreter.addInternal("UndefineResource", workOfCategory<undefineInstance>, "any"),
      interpreter.addInternal("ResourceStatus", workOfCategory<instanceStatus>, "any"),
      interpreter.addInternal("ResourceForAll", workOfCategory<enumerateInstances>, "string proc string"),
  };
  addResourceCategories(interpreter, procedures);
}

}  // namespace quillpress::level3
