// The six exported functions: the one place that turns exceptions into results.

#include <quillpress/converter.h>

#include <new>

#include "postscript/lib/base/Guarded.h"
#include "postscript/lib/pdf/Postscript2Pdf.h"

namespace {

using quillpress::guarded;
using quillpress::Matrix;
using quillpress::Postscript2Pdf;

Matrix matrixOf(const float* values) {
  // A caller without a matrix gets the identity rather than a crash.
  if (values == nullptr) return {};
  return {values[0], values[1], values[2], values[3], values[4], values[5]};
}

Postscript2Pdf* converterOf(void* handle) {
  return static_cast<Postscript2Pdf*>(handle);
}

}  // namespace

void* PSOpen(const float matrix[6]) {
  return guarded<void*>(nullptr, [&] { return new Postscript2Pdf(matrixOf(matrix)); });
}

const char* PSConvertToPdf(void* handle, const char* data, int* length) {
  if (handle == nullptr || length == nullptr) return nullptr;
  Postscript2Pdf& converter = *converterOf(handle);
  const bool done = guarded(false, [&] {
    // Null is a chunk of no bytes, whatever the length: what waits on the execution stack runs all the same.
    return data == nullptr ? converter.convert("", 0) : converter.convert(data, *length);
  });
  if (!done) return nullptr;
  // The page content refuses to grow beyond what fits here.
  *length = static_cast<int>(converter.pageContent().size());
  return converter.pageContent().c_str();
}

int PSStartPage(void* handle, const float matrix[6]) {
  if (handle == nullptr) return 0;
  return guarded(0, [&] {
    converterOf(handle)->startPage(matrixOf(matrix));
    return 1;
  });
}

PdfObject** PSGetPdfObjects(void* handle, unsigned* count) {
  // An array without objects has an address too, so that callers need not ask for NULL.
  static PdfObject* none = nullptr;
  if (count != nullptr) *count = 0;
  if (handle == nullptr) {
    // With no place for a number either, the caller can only mean the list itself: it is emptied, so that the
    // answer is true.
    if (count == nullptr) quillpress::PdfObjectList::ofProcess().clear();
    return &none;
  }
  return guarded(&none, [&] {
    quillpress::PdfObjectList& objects = converterOf(handle)->objects();
    PdfObject** records = objects.snapshot();
    if (count != nullptr) *count = static_cast<unsigned>(objects.count());
    return records;
  });
}

const char* PSGetErrorStr(void* handle) {
  return handle == nullptr ? "" : converterOf(handle)->errorText().c_str();
}

void PSClose(void* handle) {
  // Nothing may come out while a host closes a job.
  guarded(0, [&] {
    delete converterOf(handle);
    return 0;
  });
}
