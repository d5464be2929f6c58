// The six exported functions: the one place that turns exceptions into results.

#include <quillpress/converter.h>

#include <new>

#include "postscript/lib/pdf/Postscript2Pdf.h"

namespace {

using quillpress::Matrix;
using quillpress::Postscript2Pdf;

Matrix matrixOf(const float* values) {
  if (values == nullptr) return {};
  return {values[0], values[1], values[2], values[3], values[4], values[5]};
}

Postscript2Pdf* converterOf(void* handle) {
  return static_cast<Postscript2Pdf*>(handle);
}

}  // namespace

void* PSOpen(const float matrix[6]) {
  try {
    return new Postscript2Pdf(matrixOf(matrix));
  } catch (...) {
    return nullptr;
  }
}

const char* PSConvertToPdf(void* handle, const char* data, int* length) {
  if (handle == nullptr || length == nullptr) return nullptr;
  Postscript2Pdf* converter = converterOf(handle);
  try {
    const bool done = data == nullptr ? converter->convert("", 0) : converter->convert(data, *length);
    if (!done) return nullptr;
  } catch (...) {
    return nullptr;  // memory ran out; the converter stays usable
  }
  *length = static_cast<int>(converter->pageContent().size());
  return converter->pageContent().c_str();
}

int PSStartPage(void* handle, const float matrix[6]) {
  if (handle == nullptr) return 0;
  try {
    converterOf(handle)->startPage(matrixOf(matrix));
  } catch (...) {
    return 0;
  }
  return 1;
}

PdfObject** PSGetPdfObjects(void* handle, unsigned* count) {
  static PdfObject* none = nullptr;
  if (count != nullptr) *count = 0;
  if (handle == nullptr) return &none;
  try {
    quillpress::PdfObjectList& objects = converterOf(handle)->objects();
    PdfObject** records = objects.snapshot();
    if (count != nullptr) *count = static_cast<unsigned>(objects.count());
    return records;
  } catch (...) {
    return &none;
  }
}

const char* PSGetErrorStr(void* handle) {
  return handle == nullptr ? "" : converterOf(handle)->errorText().c_str();
}

void PSClose(void* handle) {
  try {
    delete converterOf(handle);
  } catch (...) {  // nothing may come out while a host closes a job
  }
}
