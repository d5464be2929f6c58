#include "tests/fuzz/support/FullLanguage.h"

#include <chrono>
#include <memory>

#include "postscript/level3/document/Machine.h"
#include "postscript/level3/streams/MemoryStreams.h"

namespace quillpress::fuzz {

void runProgram(std::string_view program) {
  using level3::Bytes;
  using level3::Machine;
  using level3::MemorySource;
  using level3::NullSink;
  constexpr std::size_t kMemory = 64UL << 20;
  constexpr std::chrono::milliseconds kTime(500);
  level3::NoOutput noPages;
  const Machine::Files files{std::make_shared<MemorySource>(Bytes()), std::make_shared<NullSink>(),
                             std::make_shared<NullSink>()};
  Machine machine(noPages, files, 595, 842);
  machine.interpreter().memory().setLimit(kMemory);
  // A value that a collection takes too early is found by the sanitizers.
  constexpr std::size_t kOften = 16384;
  machine.interpreter().memory().collectEvery(kOften);
  machine.interpreter().setDeadline(std::chrono::steady_clock::now() + kTime);
  machine.interpreter().run(std::make_shared<MemorySource>(level3::bytesOf(program)));
}

}  // namespace quillpress::fuzz
