#include <quillpress/document.h>

#include <cstdio>
#include <exception>
#include <new>

#include "postscript/level3/document/DocumentJob.h"
#include "postscript/level3/streams/CallbackStreams.h"
#include "postscript/level3/streams/FileStreams.h"
#include "postscript/level3/streams/MemoryStreams.h"

using quillpress::level3::Byte;
using quillpress::level3::Bytes;
using quillpress::level3::DocumentOptions;
using quillpress::level3::DocumentResult;
using quillpress::level3::Output;
using quillpress::level3::SourcePointer;

struct QuillpressDocument {
  DocumentOptions options;
  DocumentResult result;
  std::atomic<bool> isCancelled{false};
};

namespace {

struct WriteFailed {};

class CallbackOutput final : public Output {
 public:
  CallbackOutput(QuillpressWrite function, void* context) : write_(function), context_(context) {}

  void write(std::string_view bytes) override {
    if (!bytes.empty() && write_(context_, bytes.data(), bytes.size()) != 0) throw WriteFailed();
  }

 private:
  QuillpressWrite write_;
  void* context_;
};

int statusOf(const DocumentResult& result) {
  switch (result.status) {
    case DocumentResult::Status::kDone:
      return QUILLPRESS_DOCUMENT_DONE;
    case DocumentResult::Status::kIncomplete:
      return QUILLPRESS_DOCUMENT_INCOMPLETE;
    case DocumentResult::Status::kFailed:
      return QUILLPRESS_DOCUMENT_FAILED;
    case DocumentResult::Status::kNoPages:
      break;
  }
  return QUILLPRESS_DOCUMENT_NO_PAGES;
}

// The one place where exceptions become results.
int convert(QuillpressDocument& document, const SourcePointer& job, QuillpressWrite write, void* context) {
  document.result = {};
  document.isCancelled = false;
  try {
    CallbackOutput output(write, context);
    document.result = convertDocument(job, output, document.options, document.isCancelled);
    if (document.result.isUnreadable) {
      document.result.error = "the job cannot be read";
      return QUILLPRESS_DOCUMENT_INPUT;
    }
    return statusOf(document.result);
  } catch (const WriteFailed&) {
    document.result.error = "the PDF cannot be written";
    return QUILLPRESS_DOCUMENT_OUTPUT;
  } catch (const std::bad_alloc&) {
    document.result.error = "out of memory";
  } catch (const std::exception& error) {
    document.result.error = error.what();
  }
  return QUILLPRESS_DOCUMENT_NO_PAGES;
}

int writeToFile(void* context, const void* data, size_t size) {
  return std::fwrite(data, 1, size, static_cast<std::FILE*>(context)) == size ? 0 : 1;
}

}  // namespace

extern "C" {

QuillpressDocument* QuillpressDocumentNew(void) {
  return new (std::nothrow) QuillpressDocument;
}

void QuillpressDocumentFree(QuillpressDocument* document) {
  delete document;
}

void QuillpressDocumentSetPageSize(QuillpressDocument* document, double width, double height) {
  if (!(width > 0) || !(height > 0)) return;
  document->options.pageWidth = width;
  document->options.pageHeight = height;
}

void QuillpressDocumentSetCrop(QuillpressDocument* document, int crop) {
  using Crop = DocumentOptions::Crop;
  document->options.crop = crop == QUILLPRESS_CROP_ALWAYS  ? Crop::kAlways
                           : crop == QUILLPRESS_CROP_NEVER ? Crop::kNever
                                                           : Crop::kWhenEncapsulated;
}

void QuillpressDocumentSetPageTurning(QuillpressDocument* document, int isWanted) {
  document->options.turnsPages = isWanted != 0;
}

void QuillpressDocumentSetTimeout(QuillpressDocument* document, double seconds) {
  document->options.timeoutSeconds = seconds > 0 ? std::optional(seconds) : std::nullopt;
}

void QuillpressDocumentSetMaxMemory(QuillpressDocument* document, size_t bytes) {
  document->options.maxMemory = bytes > 0 ? std::optional(bytes) : std::nullopt;
}

void QuillpressDocumentSetImageQuality(QuillpressDocument* document, int quality) {
  document->options.imageQuality = quality >= 1 && quality <= 100 ? quality : 0;
}

void QuillpressDocumentSetImageResolution(QuillpressDocument* document, double dotsPerInch) {
  document->options.imageResolution = dotsPerInch > 0 ? dotsPerInch : 0;
}

void QuillpressDocumentSetSecondThread(QuillpressDocument* document, int isWanted) {
  document->options.usesSecondThread = isWanted != 0;
}

void QuillpressDocumentAllowRead(QuillpressDocument* document, const char* folder) {
  document->options.readableFolders.emplace_back(folder);
}

void QuillpressDocumentSetMessages(QuillpressDocument* document, QuillpressWrite write, void* context) {
  document->options.messages = nullptr;
  if (write == nullptr) return;
  document->options.messages = std::make_shared<quillpress::level3::PieceSink>([write, context](Bytes piece) {
    return piece.empty() || write(context, piece.data(), piece.size()) == 0;
  });
}

void QuillpressDocumentSetProgress(QuillpressDocument* document, QuillpressProgress progress, void* context) {
  document->options.progress = nullptr;
  if (progress == nullptr) return;
  document->options.progress = [progress, context](std::size_t pages) {
    return progress(context, pages) == 0;
  };
}

int QuillpressDocumentConvertFile(QuillpressDocument* document, const char* job, const char* pdf) {
  using quillpress::level3::FileSource;
  auto input = quillpress::level3::openFile(job, "rb");
  if (!input) {
    document->result = {};
    document->result.error = "the job cannot be opened";
    return QUILLPRESS_DOCUMENT_INPUT;
  }
  std::FILE* const output = std::fopen(pdf, "wb");
  if (output == nullptr) {
    document->result = {};
    document->result.error = "the PDF cannot be written";
    return QUILLPRESS_DOCUMENT_OUTPUT;
  }
  int status = convert(*document, std::make_shared<FileSource>(std::move(input)), writeToFile, output);
  if (std::fclose(output) != 0 && status != QUILLPRESS_DOCUMENT_NO_PAGES) status = QUILLPRESS_DOCUMENT_OUTPUT;
  const bool isWhole = status == QUILLPRESS_DOCUMENT_DONE || status == QUILLPRESS_DOCUMENT_INCOMPLETE ||
                       status == QUILLPRESS_DOCUMENT_FAILED;
  if (!isWhole) std::remove(pdf);
  return status;
}

int QuillpressDocumentConvertMemory(QuillpressDocument* document, const void* job, size_t size,
                                    QuillpressWrite write, void* context) {
  const auto source =
      std::make_shared<quillpress::level3::MemorySource>(Bytes(static_cast<const Byte*>(job), size));
  return convert(*document, source, write, context);
}

int QuillpressDocumentConvert(QuillpressDocument* document, QuillpressRead read, void* readContext,
                              QuillpressWrite write, void* writeContext) {
  const auto source = std::make_shared<quillpress::level3::BlockSource>(
      [read, readContext](std::span<Byte> block) -> std::optional<std::size_t> {
        const int64_t count = read(readContext, block.data(), block.size());
        if (count < 0 || static_cast<std::size_t>(count) > block.size()) return std::nullopt;
        return static_cast<std::size_t>(count);
      });
  return convert(*document, source, write, writeContext);
}

void QuillpressDocumentCancel(QuillpressDocument* document) {
  document->isCancelled = true;
}

const char* QuillpressDocumentError(const QuillpressDocument* document) {
  return document->result.error.c_str();
}

const char* QuillpressDocumentWarning(const QuillpressDocument* document, size_t index) {
  const auto& warnings = document->result.warnings;
  return index < warnings.size() ? warnings[index].c_str() : nullptr;
}

const char* QuillpressDocumentErrorName(const QuillpressDocument* document) {
  return document->result.errorName.c_str();
}

uint64_t QuillpressDocumentErrorPage(const QuillpressDocument* document) {
  return document->result.errorPage;
}

int64_t QuillpressDocumentErrorByte(const QuillpressDocument* document) {
  const auto& byte = document->result.errorByte;
  return byte ? static_cast<int64_t>(*byte) : -1;
}

const char* QuillpressDocumentSubstitutedFont(const QuillpressDocument* document, size_t index) {
  const auto& fonts = document->result.substitutedFonts;
  return index < fonts.size() ? fonts[index].c_str() : nullptr;
}

uint64_t QuillpressDocumentPageCount(const QuillpressDocument* document) {
  return document->result.pages;
}

}  // extern "C"
