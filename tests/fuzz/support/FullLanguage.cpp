#include "tests/fuzz/support/FullLanguage.h"

#include <chrono>
#include <memory>

#include "postscript/level3/document/Machine.h"
#include "postscript/level3/streams/MemoryStreams.h"

namespace quillpress::fuzz {

void runProgram(std::string_view program) {
  using namespace level3;
  constexpr std::size_t kMemory = 64UL << 20;
  constexpr std::chrono::milliseconds kTime(500);
  NoOutput noPages;
  const Machine::Files files{std::make_shared<MemorySource>(Bytes()), std::make_shared<NullSink>(),
                             std::make_shared<NullSink>()};
  Machine machine(noPages, files, 595, 842);
  machine.interpreter().memory().setLimit(kMemory);
  machine.interpreter().setDeadline(std::chrono::steady_clock::now() + kTime);
  machine.interpreter().run(std::make_shared<MemorySource>(bytesOf(program)));
}

}  // namespace quillpress::fuzz
