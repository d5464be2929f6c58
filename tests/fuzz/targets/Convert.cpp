// Any program. A form feed ends a chunk, and the job goes on after chunks that fail.

#include "tests/fuzz/support/OpenConverter.h"
#include "tests/fuzz/support/Target.h"

namespace quillpress::fuzz {

namespace {

// Opening a converter for each input as well would take nearly all of the time.
#ifdef QUILLPRESS_FUZZ
constexpr std::size_t kOpenedForOneIn = 16;
#else
constexpr std::size_t kOpenedForOneIn = 1;
#endif

Job jobOf(std::string_view text) {
  Job job;
  job.goesOn = true;
  for (;;) {
    const std::size_t end = text.find('\f');
    job.chunks.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return job;
    text.remove_prefix(end + 1);
  }
}

std::size_t sumOf(Input input) {
  std::size_t sum = 0;
  for (const std::uint8_t byte : input) sum = sum * 31 + byte;
  return sum;
}

}  // namespace

void runConvert(Input input) {
  const Job job = jobOf({reinterpret_cast<const char*>(input.data()), input.size()});
  const Result result = convertInOpenConverter(job);
  if (result.isComplete && sumOf(input) % kOpenedForOneIn == 0)
    checkEqual(result, convertInNewConverter(job));
}

}  // namespace quillpress::fuzz
