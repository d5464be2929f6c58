#include "cli/finish/FinishedOutput.h"

#include "cli/base/Errors.h"
#include "cli/base/Messages.h"
#include "cli/base/Names.h"
#include "cli/base/PagePattern.h"
#include "cli/finish/PdfFinisher.h"
#include "cli/spool/AtomicOutput.h"
#include "cli/system/Files.h"
#include "cli/system/TemporaryName.h"

namespace quillpress::cli {

namespace {

// The folder and the permission to write there are the same for all files of a pattern.
std::string firstName(const std::string& output) {
  const auto pattern = PagePattern::parse(output);
  return pattern ? pattern->nameOf(1) : output;
}

IntentProfile intentOf(const Options& options) {
  if (options.archive == ArchivePart::kNone) return {};
  return options.outputIntent.empty() ? standardIntent() : readIntent(options.outputIntent, options.archive);
}

// A file that has lost its name already, for reading and writing.
std::FILE* openWaiting(const std::string& folder) {
  Descriptor descriptor = openTemporary(folder);
  std::FILE* const file = streamOf(descriptor, "w+b");
  if (file == nullptr) throw OutputError("cannot be written: " + systemReason());
  return file;
}

}  // namespace

FinishedOutput::FinishedOutput(const Options& options)
    : options_(options),
      intent_(intentOf(options)),
      target_(std::make_unique<AtomicOutput>(firstName(options.output))) {}

FinishedOutput::~FinishedOutput() {
  if (waiting_ != nullptr) std::fclose(waiting_);
}

std::FILE* FinishedOutput::file() {
  if (waiting_ == nullptr) waiting_ = openWaiting(folder());
  return waiting_;
}

void FinishedOutput::commit() {
  std::FILE* const waiting = file();
  if (std::fflush(waiting) != 0 || std::ferror(waiting) != 0) {
    throw OutputError("cannot be written: the temporary file beside it: " + systemReason());
  }
  PdfFinisher finisher(waiting, options_, intent_);
  if (finisher.lacksPages()) {
    warn(jobName(options_.job), "not all of the pages that --pages names are there");
    hasWarned_ = true;
  }
  if (finisher.replacesMetadata()) {
    warn(jobName(options_.job), "the metadata packet of the job is replaced by the archive's");
    hasWarned_ = true;
  }
  const auto pattern = PagePattern::parse(options_.output);
  if (!pattern) {
    finisher.write(target_->file());
    target_->commit();
    bytesWritten_ += target_->bytesWritten();
    return;
  }
  for (std::uint64_t page = 1; page <= finisher.pageCount(); ++page) {
    // The first one has been opened to see whether it can be.
    if (page > 1) target_ = std::make_unique<AtomicOutput>(pattern->nameOf(page));
    finisher.writePage(page - 1, target_->file());
    target_->commit();
    bytesWritten_ += target_->bytesWritten();
  }
}

}  // namespace quillpress::cli
