#include "postscript/level3/graphics/Capture.h"
#include "postscript/level3/graphics/DictionaryReader.h"
#include "postscript/level3/graphics/GraphicsOperators.h"

namespace quillpress::level3 {

namespace {

// What is drawn once stays as it is.
void markAsUsed(Interpreter& interpreter, const Object& form) {
  VirtualMemory& memory = interpreter.memory();
  Dictionary& dictionary = *form.asDictionary();
  Name* const implementation = memory.name("Implementation");
  if (dictionary.find(implementation) != nullptr || !dictionary.isWritable()) return;
  memory.put(dictionary, implementation, Object::null());
  memory.setAccess(dictionary, Access::kReadOnly);
}

// form ->         Each execution is drawn anew, since it may depend on the state; equal results are one
// object.
void execForm(Interpreter& interpreter) {
  Graphics& graphics = graphicsOf(interpreter);
  const Object form = interpreter.operands().top();
  const DictionaryReader entries(interpreter, form);
  if (entries.integer("FormType") != 1) raise(ErrorName::kRangeCheck);
  const Box box = entries.box("BBox");
  const Matrix toDevice = entries.matrix("Matrix") * graphics.state().ctm;
  const Object procedure = entries.procedure("PaintProc");
  markAsUsed(interpreter, form);
  interpreter.operands().pop();
  const Rooted kept(interpreter.memory(), form);
  const auto paint = [&] {
    interpreter.operands().push(form);
    interpreter.runAndWait(procedure);
  };

  if (!toDevice.inverse() || graphics.content() == nullptr) {
    const GraphicsScope scope(graphics);
    graphics.state().ctm = toDevice;
    graphics.state().path.clear();
    paint();
    return;
  }
  const Captured captured = capture(graphics, {toDevice, box}, paint);
  if (captured.content.empty()) return;
  DictionaryText text;
  text.name("Type", "XObject")
      .name("Subtype", "Form")
      .box("BBox", box)
      .entry("Resources", captured.resources);
  const ObjectNumber object =
      graphics.document().file().addSharedStream(text.entries(), captured.content, StreamData::kDeflate);
  graphics.content()->draw(object, toDevice, transformed(box, toDevice), graphics.state().clip,
                           graphics.state().rare);
}

constexpr OperatorRow kFormOperators[] = {{"execform", "dict", execForm}};

}  // namespace

void addFormOperators(Interpreter& interpreter) {
  interpreter.addOperators(kFormOperators);
}

}  // namespace quillpress::level3
