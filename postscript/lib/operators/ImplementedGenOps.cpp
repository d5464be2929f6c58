#include "postscript/lib/operators/ImplementedGenOps.h"

#include "postscript/lib/operators/GeneratedOperators.h"

namespace quillpress {

void generated::takeAndPush(Interpreter& interpreter, std::span<const Source> sources,
                            std::span<Ref<PostscriptObject>> held) {
  for (std::size_t i = sources.size(); i-- > 0;)
    if (sources[i].pop != nullptr) held[i] = sources[i].pop(interpreter);
  for (std::size_t i = 0; i < sources.size(); ++i) {
    if (sources[i].make == nullptr) continue;
    held[i] = sources[i].make(interpreter);
    interpreter.operandStack().push(held[i]);
  }
}

// Into the result that lies on the operand stack by now: the operations are called behind the pushes.
void ImplementedGenOps::countdictstack(Out<IntegerObject> result) {
  result.object.value = static_cast<std::int32_t>(interpreter_.dictionaries().stack().count());
}

// Never reached by its name, since the hand-written cvs replaces it; a table of operations should not
// have a hole.
void ImplementedGenOps::cvs(In<AnyObject> any, In<StringObject> /*buffer*/, Out<StringObject> result) {
  result.object.data().writableBytes() = any.object.cvsString();
}

void ImplementedGenOps::product(Out<StringObject> result) {
  result.object.data().writableBytes() += "quillpress ps interpreter";
}

// In the table's order, which the list of generated names tells.
void registerGeneratedOperators(DictionarySet& dictionaries) {
#define GENERATED_OP(identifier, className, operatorName, parameters) \
  dictionaries.registerGenerated(make<className##GeneratedOp>());
#include "postscript/lib/operators/GeneratedOps.def"
#undef GENERATED_OP
}

}  // namespace quillpress
