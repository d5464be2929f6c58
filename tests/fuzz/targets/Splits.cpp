// A program whole and cut, up to its first error: content, error text, operands and objects must be equal.
// The last byte tells how it is cut.

#include "tests/fuzz/support/Cuts.h"
#include "tests/fuzz/support/OpenConverter.h"
#include "tests/fuzz/support/Target.h"

namespace quillpress::fuzz {

namespace {

// What looks at the chunk by its nature: read fails at a chunk's end, and an empty line there ends the data
// of readline.
//
// A pattern keeps the content of the call in which its paint procedure ends, so one that reads the current
// file depends on the cuts too: a job has either the one or the other.
constexpr std::string_view kWithoutPatterns =
    "systemdict /read undef systemdict /readline undef systemdict /makepattern undef ";
constexpr std::string_view kWithoutFiles =
    "systemdict /read undef systemdict /readline undef systemdict /currentfile undef ";

// The content before an error goes with the call that fails.
Result withoutContentOfErrors(Result result) {
  if (!result.errors.empty()) result.content.clear();
  return result;
}

}  // namespace

void runSplits(Input input) {
  if (input.empty()) return;
  const std::uint8_t way = input.back();
  const std::string_view text(reinterpret_cast<const char*>(input.data()), input.size() - 1);
  Job job;
  job.preparation = way < 128 ? kWithoutPatterns : kWithoutFiles;
  job.chunks = {text};
  const Result whole = convertInOpenConverter(job);
  if (!whole.isComplete) return;
  job.chunks = cutInto(text, way);
  const Result cut = convertInOpenConverter(job);
  if (cut.isComplete) checkEqual(withoutContentOfErrors(whole), withoutContentOfErrors(cut));
}

}  // namespace quillpress::fuzz
