// Whole jobs, converted to PDF with all that stands around the language: wrapping, comments, cropping.

#include <atomic>
#include <memory>

#include "postscript/level3/document/DocumentJob.h"
#include "postscript/level3/document/Machine.h"
#include "postscript/level3/streams/MemoryStreams.h"
#include "tests/fuzz/support/Check.h"
#include "tests/fuzz/support/Target.h"

namespace quillpress::fuzz {

void runJobs(Input input) {
  using level3::DocumentResult;
  level3::DocumentOptions options;
  options.timeoutSeconds = 0.5;
  options.maxMemory = 64UL << 20;
  level3::NoOutput output;
  const std::atomic<bool> isCancelled{false};
  const DocumentResult result =
      convertDocument(std::make_shared<level3::MemorySource>(input), output, options, isCancelled);
  FUZZ_CHECK((result.status == DocumentResult::Status::kNoPages) == (result.pages == 0));
  const bool hasFailed =
      result.status == DocumentResult::Status::kFailed || result.status == DocumentResult::Status::kNoPages;
  FUZZ_CHECK(hasFailed != result.error.empty());
}

}  // namespace quillpress::fuzz
