#include "postscript/level3/graphics/Graphics.h"
#include "postscript/level3/graphics/GraphicsOperators.h"
#include "postscript/level3/graphics/MatrixOperands.h"

// The operators that show text, until there are fonts: each takes its operands, needs a current point as it
// should, and counts what the page does not show.

namespace quillpress::level3 {

namespace {

void showNothing(Interpreter& interpreter, std::size_t operands) {
  Graphics& graphics = graphicsOf(interpreter);
  graphics.currentPoint();
  graphics.unkept().add(Unkept::kText);
  interpreter.operands().pop(operands);
}

void show1(Interpreter& interpreter) {
  showNothing(interpreter, 1);
}
void show2(Interpreter& interpreter) {
  showNothing(interpreter, 2);
}
void show4(Interpreter& interpreter) {
  showNothing(interpreter, 4);
}
void show6(Interpreter& interpreter) {
  showNothing(interpreter, 6);
}

// string bool ->
void charPath(Interpreter& interpreter) {
  showNothing(interpreter, 2);
}

// string -> wx wy
void stringWidth(Interpreter& interpreter) {
  interpreter.operands().require(1);
  interpreter.operands().top() = Object::real(0);
  interpreter.operands().push(Object::real(0));
}

// dict ->
void setFont(Interpreter& interpreter) {
  stateOf(interpreter).font = interpreter.operands().top();
  interpreter.operands().pop();
}
// -> dict
void currentFont(Interpreter& interpreter) {
  VirtualMemory& memory = interpreter.memory();
  interpreter.operands().require(1);
  Object& font = stateOf(interpreter).font;
  if (font.isNull()) {
    font = memory.newDictionary(2);
    memory.put(*font.asDictionary(), memory.name("FontName"), Object::literalName(memory.name("Invalid")));
  }
  interpreter.operands().push(font);
}

// wx wy llx lly urx ury ->      Glyph procedures run in `show`, which there is none of.
void setCacheDevice(Interpreter& interpreter) {
  interpreter.operands().pop(6);
}
void setCacheDevice2(Interpreter& interpreter) {
  interpreter.operands().pop(10);
}
// wx wy ->
void setCharWidth(Interpreter& interpreter) {
  interpreter.operands().pop(2);
}

constexpr OperatorRow kTextOperators[] = {
    {"show", "string", show1},
    {"ashow", "num num string", [](Interpreter& i) { showNothing(i, 3); }},
    {"widthshow", "num num int string", show4},
    {"awidthshow", "num num int num num string", show6},
    {"xshow", "string array|string", show2},
    {"yshow", "string array|string", show2},
    {"xyshow", "string array|string", show2},
    {"kshow", "proc string", show2},
    {"cshow", "proc string", show2},
    {"glyphshow", "name|int", show1},
    {"charpath", "string bool", charPath},
    {"stringwidth", "string", stringWidth},
    {"setfont", "dict", setFont},
    {"currentfont", "", currentFont},
    {"setcachedevice", "num num num num num num", setCacheDevice},
    {"setcachedevice2", "num num num num num num num num num num", setCacheDevice2},
    {"setcharwidth", "num num", setCharWidth},
    {"rootfont", "", currentFont},
};

}  // namespace

void addTextOperators(Interpreter& interpreter) {
  interpreter.addOperators(kTextOperators);
}

}  // namespace quillpress::level3
