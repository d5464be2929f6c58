// What libFuzzer calls. Each fuzzer is this with the name of its target.

#include <cstddef>
#include <cstdint>

#include "tests/fuzz/support/Target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const quillpress::fuzz::Target& target = *quillpress::fuzz::findTarget(QUILLPRESS_FUZZ_TARGET);
  target.run({data, size});
  return 0;
}
