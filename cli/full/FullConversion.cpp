#include "cli/full/FullConversion.h"

#include <quillpress/document.h>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <memory>
#include <new>

#include "cli/base/Errors.h"
#include "cli/base/Messages.h"
#include "cli/base/Names.h"
#include "cli/base/ProgressLine.h"
#include "cli/system/Paths.h"

namespace quillpress::cli {

namespace {

struct DocumentDeleter {
  void operator()(QuillpressDocument* document) const { QuillpressDocumentFree(document); }
};
using DocumentHandle = std::unique_ptr<QuillpressDocument, DocumentDeleter>;

// Says how far a job is. The pages and the bytes are told by different functions.
class JobProgress {
 public:
  explicit JobProgress(const Options& options)
      : line_(!options.quiet && !options.isPartOfBatch), name_(jobName(options.job)) {}

  void read(std::uint64_t bytes) {
    bytes_ += bytes;
    show();
  }

  void complete(std::uint64_t pages) {
    pages_ = pages;
    show();
  }

 private:
  void show() {
    if (!line_.isDue()) return;
    const auto rate = static_cast<std::uint64_t>(static_cast<double>(pages_) / line_.seconds());
    line_.show(shortened(visible(name_)) + ": " + counted(pages_, "page") + ", " + roughSize(bytes_) +
               " read, " + counted(rate, "page") + "/s");
  }

  ProgressLine line_;
  std::string name_;
  std::uint64_t bytes_ = 0;
  std::uint64_t pages_ = 0;
};

// No exception may pass through the C functions.
struct Reader {
  JobFile& job;
  JobProgress& progress;
  std::exception_ptr error;
};

int64_t readJob(void* context, void* buffer, size_t size) {
  auto* const reader = static_cast<Reader*>(context);
  try {
    const std::size_t count = reader->job.read(static_cast<char*>(buffer), size);
    reader->progress.read(count);
    return static_cast<int64_t>(count);
  } catch (const InputError&) {
    reader->error = std::current_exception();
    return -1;
  }
}

// The output is opened when the first bytes come, so that a job without pages leaves no trace.
struct Target {
  Output& output;
  std::exception_ptr error;
};

int writeOutput(void* context, const void* data, size_t size) {
  auto* const target = static_cast<Target*>(context);
  try {
    return std::fwrite(data, 1, size, target->output.file()) == size ? 0 : 1;
  } catch (const OutputError&) {
    target->error = std::current_exception();
    return 1;
  }
}

int writeTo(void* context, const void* data, size_t size) {
  return std::fwrite(data, 1, size, static_cast<std::FILE*>(context)) == size ? 0 : 1;
}

int completePage(void* context, uint64_t pages) {
  static_cast<JobProgress*>(context)->complete(pages);
  return 0;
}

// A name says as much as the job's first line.
int cropOf(const Options& options) {
  if (options.keepsPageOfEps) return QUILLPRESS_CROP_NEVER;
  const std::filesystem::path ending = pathOf(options.job).extension();
  return ending == ".eps" || ending == ".EPS" ? QUILLPRESS_CROP_ALWAYS : QUILLPRESS_CROP_ENCAPSULATED;
}

void apply(const Options& options, QuillpressDocument* document) {
  if (options.keepsPagesUnturned) QuillpressDocumentSetPageTurning(document, 0);
  if (options.media) {
    QuillpressDocumentSetPageSize(document, options.media->urx - options.media->llx,
                                  options.media->ury - options.media->lly);
  }
  if (options.timeout) QuillpressDocumentSetTimeout(document, *options.timeout);
  if (options.maxMemory) QuillpressDocumentSetMaxMemory(document, *options.maxMemory);
  QuillpressDocumentSetImageQuality(document, options.imageQuality);
  QuillpressDocumentSetImageResolution(document, options.imageResolution);
  QuillpressDocumentSetSecondThread(document, 1);
  for (const std::string& folder : options.readableFolders) {
    QuillpressDocumentAllowRead(document, folder.c_str());
  }
  QuillpressDocumentSetCrop(document, cropOf(options));
  if (options.messages) QuillpressDocumentSetMessages(document, writeTo, stderr);
}

int convert(const Options& options, QuillpressDocument* document, JobFile& job, Output& output) {
  JobProgress progress(options);
  QuillpressDocumentSetProgress(document, completePage, &progress);
  Reader reader{job, progress, nullptr};
  Target target{output, nullptr};
  const int status = QuillpressDocumentConvert(document, readJob, &reader, writeOutput, &target);
  if (reader.error) std::rethrow_exception(reader.error);
  if (target.error) std::rethrow_exception(target.error);
  return status;
}

void takeMessages(const Options& options, const QuillpressDocument* document, TaskResult& result) {
  const std::string name = jobName(options.job);
  result.error = QuillpressDocumentError(document);
  if (!result.error.empty()) say(name + ": " + result.error);
  result.errorName = QuillpressDocumentErrorName(document);
  if (const uint64_t page = QuillpressDocumentErrorPage(document); page > 0) result.errorPage = page;
  if (const int64_t byte = QuillpressDocumentErrorByte(document); byte >= 0) {
    result.errorByte = static_cast<uint64_t>(byte);
  }
  for (size_t index = 0; const char* font = QuillpressDocumentSubstitutedFont(document, index); ++index) {
    result.substitutedFonts.emplace_back(font);
  }
  for (size_t index = 0; const char* warning = QuillpressDocumentWarning(document, index); ++index) {
    warn(name, warning);
    result.warnings.emplace_back(warning);
  }
}

}  // namespace

void convertFully(const Options& options, JobFile& job, Output& output, TaskResult& result) {
  const DocumentHandle document(QuillpressDocumentNew());
  if (!document) throw std::bad_alloc();
  apply(options, document.get());
  const int status = convert(options, document.get(), job, output);
  if (status == QUILLPRESS_DOCUMENT_OUTPUT) throw OutputError("cannot be written: " + systemReason());
  takeMessages(options, document.get(), result);
  if (status == QUILLPRESS_DOCUMENT_NO_PAGES) {
    result.code = ExitCode::kConversion;
    return;
  }
  output.commit();
  result.pages = QuillpressDocumentPageCount(document.get());
  if (status == QUILLPRESS_DOCUMENT_FAILED) {
    if (!options.quiet) {
      say(outputName(options.output) + ": " + counted(result.pages, "complete page") + " written");
    }
    result.code = ExitCode::kPartial;
  } else if (status == QUILLPRESS_DOCUMENT_INCOMPLETE) {
    result.code = ExitCode::kCutOff;
  }
}

}  // namespace quillpress::cli
