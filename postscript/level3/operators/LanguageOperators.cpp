#include "postscript/level3/operators/LanguageOperators.h"

namespace quillpress::level3 {

void addLanguageOperators(Interpreter& interpreter) {
  addStackOperators(interpreter);
  addArithmeticOperators(interpreter);
  addRelationalOperators(interpreter);
  addControlOperators(interpreter);
  addLoopOperators(interpreter);
  addCompositeOperators(interpreter);
  addArrayOperators(interpreter);
  addDictionaryOperators(interpreter);
  addForallOperators(interpreter);
  addOutputOperators(interpreter);
  addErrorOperators(interpreter);
  addFilterOperators(interpreter);
}

}  // namespace quillpress::level3
