#include "postscript/level3/operators/Resources.h"
#include "postscript/level3/text/CMapReader.h"
#include "postscript/level3/text/FontInstances.h"
#include "postscript/level3/text/Fonts.h"
#include "postscript/level3/text/TextOperators.h"

// The categories of fonts do more than keep what they are given: definefont's work when an instance is
// defined, and the system's fonts and CMaps where a job finds none of its own.

namespace quillpress::level3 {

namespace {

// key font -> font
void defineFontResource(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Object font = defineFont(interpreter, "Font", operands.top(1), operands.top());
  operands.pop();
  operands.top() = font;
}

// key font -> font
void defineCidFontResource(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Object font = defineFont(interpreter, "CIDFont", operands.top(1), operands.top());
  operands.pop();
  operands.top() = font;
}

// key -> font
void findFontResource(Interpreter& interpreter) {
  interpreter.operands().top() = findFont(interpreter, interpreter.operands().top());
}

// key -> cmap
void findCMapResource(Interpreter& interpreter) {
  // It may have to be read, with the operands in place.
  const Object map = findCMap(interpreter, interpreter.operands().top());
  interpreter.operands().top() = map;
}

// key -> status size true  or  key -> false
void fontStatus(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  operands.require(2);
  VirtualMemory& memory = interpreter.memory();
  const Object name = memory.keyOf(operands.top());
  const bool isDefined = Resources(interpreter).find(memory.name("Font"), name) != nullptr;
  const bool isKnown =
      isDefined || (name.isName() && fontsOf(interpreter).systemFonts().findExactly(name.asName()->text()));
  if (!isKnown) {
    operands.top() = Object::boolean(false);
    return;
  }
  // 0: defined by the job; 2: found where fonts are kept.
  constexpr std::int64_t kUnknownSize = -1;
  operands.top() = Object::integer(isDefined ? 0 : 2);
  operands.push(Object::integer(kUnknownSize));
  operands.push(Object::boolean(true));
}

// A category with other procedures for some of its work.
void changeCategory(Interpreter& interpreter, std::string_view name,
                    std::initializer_list<std::pair<std::string_view, Object>> procedures) {
  VirtualMemory& memory = interpreter.memory();
  const Object* const category =
      Resources(interpreter).find(memory.name("Category"), Object::literalName(memory.name(name)));
  Dictionary& dictionary = *category->asDictionary();
  memory.setAccess(dictionary, Access::kUnlimited);
  for (const auto& [key, procedure] : procedures) memory.put(dictionary, memory.name(key), procedure);
  memory.setAccess(dictionary, Access::kReadOnly);
}

}  // namespace

void addFontResources(Interpreter& interpreter) {
  changeCategory(
      interpreter, "Font",
      {{"DefineResource", interpreter.addInternal("DefineResource", defineFontResource, "any dict")},
       {"FindResource", interpreter.addInternal("FindResource", findFontResource, "any")},
       {"ResourceStatus", interpreter.addInternal("ResourceStatus", fontStatus, "any")}});
  changeCategory(
      interpreter, "CIDFont",
      {{"DefineResource", interpreter.addInternal("DefineResource", defineCidFontResource, "any dict")}});
  changeCategory(interpreter, "CMap",
                 {{"FindResource", interpreter.addInternal("FindResource", findCMapResource, "any")}});
}

}  // namespace quillpress::level3
