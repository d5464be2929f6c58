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

struct FileDeleter {
  void operator()(std::FILE* file) const {
    if (file != stdin) std::fclose(file);
  }
};
using File = std::unique_ptr<std::FILE, FileDeleter>;

File openJob(const std::string& path) {
  if (path == "-") return File(stdin);
  std::error_code error;
  if (std::filesystem::is_directory(path, error)) throw InputError("is a directory, not a job");
  File file(std::fopen(path.c_str(), "rb"));
  if (!file) throw InputError("cannot be opened: " + systemReason());
  return file;
}

int64_t readJob(void* context, void* buffer, size_t size) {
  auto* const file = static_cast<std::FILE*>(context);
  const size_t count = std::fread(buffer, 1, size, file);
  return count == 0 && std::ferror(file) != 0 ? -1 : static_cast<int64_t>(count);
}

// The output is opened when the first bytes come, so that a job without pages leaves no trace.
struct Target {
  AtomicOutput& output;
  std::exception_ptr error;  // no exception may pass through the C functions
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

void sayAll(const Options& options, const QuillpressDocument* document) {
  const std::string name = jobName(options.job);
  const std::string error = QuillpressDocumentError(document);
  if (!error.empty()) say(name + ": " + error);
  for (size_t index = 0; const char* warning = QuillpressDocumentWarning(document, index); ++index) {
    say(name + ": warning: " + warning);
  }
}

}  // namespace

ExitCode convertFully(const Options& options, AtomicOutput& output) {
  const File job = openJob(options.job);
  const DocumentHandle document(QuillpressDocumentNew());
  if (!document) throw std::bad_alloc();
  apply(options, document.get());
  Target target{output, nullptr};
  const int status = QuillpressDocumentConvert(document.get(), readJob, job.get(), writeOutput, &target);
  if (target.error) std::rethrow_exception(target.error);
  if (status == QUILLPRESS_DOCUMENT_INPUT) throw InputError("cannot be read: " + systemReason());
  if (status == QUILLPRESS_DOCUMENT_OUTPUT) throw OutputError("cannot be written: " + systemReason());
  sayAll(options, document.get());
  if (status == QUILLPRESS_DOCUMENT_NO_PAGES) return ExitCode::kConversion;
  output.commit();
  if (status == QUILLPRESS_DOCUMENT_FAILED) {
    const uint64_t pages = QuillpressDocumentPageCount(document.get());
    say(outputName(options.output) + ": " + counted(pages, "complete page") + " written");
    return ExitCode::kPartial;
  }
  return status == QUILLPRESS_DOCUMENT_INCOMPLETE ? ExitCode::kCutOff : ExitCode::kDone;
}

}  // namespace quillpress::cli
