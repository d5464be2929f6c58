#include "cli/base/OptionGroups.h"

#include "cli/base/PagePattern.h"

namespace quillpress::cli {

bool wantsFinishing(const Options& options) {
  return !options.pages.isEverything() || options.rotation != 0 || options.title || options.author ||
         options.subject || options.keywords || options.linearize || !options.pdfVersion.empty() ||
         options.encrypt || options.archive != ArchivePart::kNone || PagePattern::parse(options.output);
}

bool wantsBatch(const Options& options) {
  return !options.batch.empty() || options.workers > 0 || options.skipExisting || !options.report.empty() ||
         options.shard != Shard();
}

}  // namespace quillpress::cli
