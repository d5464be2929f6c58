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

namespace quillpress::cli {

namespace {

struct DocumentDeleter {
  void operator()(QuillpressDocument* document) const { QuillpressDocumentFree(document); }
};
using DocumentHandle = std::unique_ptr<QuillpressDocument, DocumentDeleter>;

// No exception may pass through the C functions.
struct Reader {
  JobFile& job;
  std::exception_ptr error;
};

int64_t readJob(void* context, void* buffer, size_t size) {
  auto* const reader = static_cast<Reader*>(context);
  try {
    return static_cast<int64_t>(reader->job.read(static_cast<char*>(buffer), size));
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

// A name says as much as the job's first line.
int cropOf(const Options& options) {
  if (options.keepsPageOfEps) return QUILLPRESS_CROP_NEVER;
  const std::string ending = std::filesystem::path(options.job).extension();
  return ending == ".eps" || ending == ".EPS" ? QUILLPRESS_CROP_ALWAYS : QUILLPRESS_CROP_ENCAPSULATED;
}

void apply(const Options& options, QuillpressDocument* document) {
  if (options.media) {
    QuillpressDocumentSetPageSize(document, options.media->urx - options.media->llx,
                                  options.media->ury - options.media->lly);
  }
  if (options.timeout) QuillpressDocumentSetTimeout(document, *options.timeout);
  if (options.maxMemory) QuillpressDocumentSetMaxMemory(document, *options.maxMemory);
  for (const std::string& folder : options.readableFolders) {
    QuillpressDocumentAllowRead(document, folder.c_str());
  }
  QuillpressDocumentSetCrop(document, cropOf(options));
  if (options.messages) QuillpressDocumentSetMessages(document, writeTo, stderr);
}

void takeMessages(const Options& options, const QuillpressDocument* document, TaskResult& result) {
  const std::string name = jobName(options.job);
  result.error = QuillpressDocumentError(document);
  if (!result.error.empty()) say(name + ": " + result.error);
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
  Reader reader{job, nullptr};
  Target target{output, nullptr};
  const int status = QuillpressDocumentConvert(document.get(), readJob, &reader, writeOutput, &target);
  if (reader.error) std::rethrow_exception(reader.error);
  if (target.error) std::rethrow_exception(target.error);
  if (status == QUILLPRESS_DOCUMENT_OUTPUT) throw OutputError("cannot be written: " + systemReason());
  takeMessages(options, document.get(), result);
  if (status == QUILLPRESS_DOCUMENT_NO_PAGES) {
    result.code = ExitCode::kConversion;
    return;
  }
  output.commit();
  result.pages = QuillpressDocumentPageCount(document.get());
  if (status == QUILLPRESS_DOCUMENT_FAILED) {
    say(outputName(options.output) + ": " + counted(result.pages, "complete page") + " written");
    result.code = ExitCode::kPartial;
  } else if (status == QUILLPRESS_DOCUMENT_INCOMPLETE) {
    result.code = ExitCode::kCutOff;
  }
}

}  // namespace quillpress::cli
