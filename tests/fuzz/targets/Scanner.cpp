// Tokens of the full language, binary ones too.

#include "postscript/level3/scanner/Scanner.h"

#include <memory>

#include "postscript/level3/streams/MemoryStreams.h"
#include "tests/fuzz/support/Check.h"
#include "tests/fuzz/support/Target.h"

namespace quillpress::fuzz {

void runScanner(Input input) {
  level3::VirtualMemory memory;
  memory.setLimit(64UL << 20);
  level3::Scanner scanner(memory);
  level3::MemorySource source(input);
  std::uint64_t before = 0;
  for (bool goesOn = true; goesOn;) {
    level3::Object token;
    try {
      goesOn = scanner.scan(source, token);
    } catch (const level3::PostscriptError&) {
      // What is wrong has been read all the same, or nothing would ever come after it.
      goesOn = source.position() > before;
    }
    FUZZ_CHECK(source.position() >= before && source.position() <= input.size());
    before = source.position();
  }
}

}  // namespace quillpress::fuzz
