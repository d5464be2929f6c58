#include "cli/full/FullConversion.h"

#include <quillpress/document.h>

#include <cstdio>
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

int writeTo(void* context, const void* data, size_t size) {
  return std::fwrite(data, 1, size, static_cast<std::FILE*>(context)) == size ? 0 : 1;
}

void apply(const Options& options, QuillpressDocument* document) {
  if (options.media) {
    QuillpressDocumentSetPageSize(document, options.media->urx - options.media->llx,
                                  options.media->ury - options.media->lly);
  }
  if (options.timeout) QuillpressDocumentSetTimeout(document, *options.timeout);
  if (options.maxMemory) QuillpressDocumentSetMaxMemory(document, *options.maxMemory);
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
  const int status = QuillpressDocumentConvert(document.get(), readJob, job.get(), writeTo, output.file());
  if (status == QUILLPRESS_DOCUMENT_INPUT) throw InputError("cannot be read: " + systemReason());
  if (status == QUILLPRESS_DOCUMENT_OUTPUT) throw OutputError("cannot be written: " + systemReason());
  sayAll(options, document.get());
  if (status == QUILLPRESS_DOCUMENT_NO_PAGES) return ExitCode::kConversion;
  output.commit();
  if (status == QUILLPRESS_DOCUMENT_FAILED) return ExitCode::kPartial;
  return status == QUILLPRESS_DOCUMENT_INCOMPLETE ? ExitCode::kCutOff : ExitCode::kDone;
}

}  // namespace quillpress::cli
