#include "postscript/lib/operators/ImplementedGenOps.h"

#include "postscript/lib/operators/GeneratedOperators.h"

namespace quillpress {

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
