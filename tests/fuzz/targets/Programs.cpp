// Programs in the full language. Whatever they do, the interpreter ends with an outcome.

#include "tests/fuzz/support/FullLanguage.h"
#include "tests/fuzz/support/Target.h"

namespace quillpress::fuzz {

void runPrograms(Input input) {
  runProgram({reinterpret_cast<const char*>(input.data()), input.size()});
}

}  // namespace quillpress::fuzz
