#pragma once

#include "postscript/lib/operators/GeneratedOps.h"

namespace quillpress {

class DictionarySet;
class Interpreter;

// The three generated operations that do something.
class ImplementedGenOps final : public GeneratedOps {
 public:
  // REQUIRES: `interpreter` outlives this object.
  explicit ImplementedGenOps(Interpreter& interpreter) : interpreter_(interpreter) {}

  // The number of dictionaries on the dictionary stack.
  void countdictstack(Out<IntegerObject> result) override;

  // The operand's text. Never reached by name: the hand-written cvs replaces the generated one.
  void cvs(In<AnyObject> any, In<StringObject> buffer, Out<StringObject> result) override;

  void product(Out<StringObject> result) override;

 private:
  Interpreter& interpreter_;
};

// Fills systemdict with the 316 generated operators, in operation order.
void registerGeneratedOperators(DictionarySet& dictionaries);

}  // namespace quillpress
