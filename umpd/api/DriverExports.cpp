// The functions that the driver calls: the life of a job from its start over its blocks to its end, and what
// the rest of the driver asks a running job.

#include <quillpress/driver.h>

#include <algorithm>
#include <memory>
#include <string_view>

#include "postscript/lib/base/Guarded.h"
#include "umpd/api/JobTable.h"
#include "umpd/metadata/PdfaXml.h"
#include "umpd/rules/Text.h"
#include "umpd/rules/Trace.h"
#include "umpd/win32/Diagnostics.h"

namespace quillpress::driver {
namespace {
// Not a setting: the name by which the XMP packet is asked for. The case counts.
constexpr std::wstring_view kPdfaXml = L"pdfaXML";
constexpr std::string_view kPdfaXmlNarrow = "pdfaXML";

// As much as fits, with the final zero.
void copyText(std::wstring_view text, wchar_t* buffer, unsigned length) {
  if (buffer == nullptr || length == 0) return;
  // A text that is too long is cut rather than refused: the caller's default may be longer than its buffer.
  *std::copy_n(text.begin(), fitting(text, length).size(), buffer) = L'\0';
}

void copyPacket(UmDriver& job, wchar_t* buffer, unsigned length) {
  const std::wstring packet = buildPdfaXml(job.settings(), job.documentName());
  // Half a packet is no XML, so one that does not fit is no packet.
  copyText(packet.size() < length ? packet : std::wstring(), buffer, length);
}

// False, with an empty text, when the packet does not fit or cannot be converted.
bool copyPacketAsUtf8(UmDriver& job, char* buffer, unsigned length) {
  if (buffer == nullptr || length == 0) return false;
  const std::wstring packet = buildPdfaXml(job.settings(), job.documentName());
  // The conversion counts in signed integers; a length above them would be a negative one.
  const int room = static_cast<int>(std::min<unsigned>(length, 0x7FFFFFFF));
  // With -1 for the length the final zero is converted too. Before Vista UTF-8 allows no flags, and a default
  // character not at all.
  if (WideCharToMultiByte(CP_UTF8, 0, packet.c_str(), -1, buffer, room, nullptr, nullptr) != 0) return true;
  // A failed conversion may have left the beginning of the packet behind.
  *buffer = '\0';
  return false;
}
}  // namespace

extern "C" {
unsigned long QUILLPRESS_CALL DocStart(wchar_t* printerName) {
  if (printerName == nullptr) {
    // Kept: the text ends in a line break, as if it were a trace
    // (StartTest.WithoutANameShowsABoxAndGivesNoJob).
    showErrorBox("DocStart - invalid printer name %s\n", "(null)");
    return 0;
  }
  return guarded(JobHandle{0}, [&]() -> JobHandle {
    auto job = std::make_unique<UmDriver>();
    // A job that has any other flag after its start is not one that blocks can be written to.
    if (!job->init(nullptr, 0, printerName) || job->stateFlags() != UmDriver::kInitialised) return 0;
    return JobTable::add(std::move(job));
  });
}

unsigned long QUILLPRESS_CALL DocStart2K(void* printer, unsigned long jobId, wchar_t* printerName,
                                         wchar_t* documentName) {
  QUILLPRESS_TRACE(L"Printer handle=%d, jobId=%d, printerName=[%s], docName=[%s]\n", printer, jobId,
                   printerName, documentName);
  return guarded(JobHandle{0}, [&]() -> JobHandle {
    // The spooler of Windows 2000 and later tells the document's name, so the queue need not be searched for
    // it.
    auto job = std::make_unique<UmDriver2k>();
    if (!job->init(printer, jobId, documentName) || job->stateFlags() != UmDriver::kInitialised) return 0;
    return JobTable::add(std::move(job));
  });
}

int QUILLPRESS_CALL DocWrite(unsigned long job, const void* bytes, unsigned long count) {
  UmDriver* const driver = validJob(job, "DocWrite invalid parms");
  return driver != nullptr && writeBlock(*driver, bytes, count) ? 1 : 0;
}

int QUILLPRESS_CALL DocEnd(unsigned long job) {
  UmDriver* const driver = validJob(job, "DocEnd invalid parms");
  if (driver == nullptr) return 0;
  // The handle goes whatever the end says: the caller may not use it again, and nobody else would free the
  // job.
  const bool isEnded = guarded(false, [&] { return driver->endDoc(); });
  JobTable::remove(job);
  return isEnded ? 1 : 0;
}

int QUILLPRESS_CALL getIntVal(unsigned long job, const wchar_t* name, int defaultValue) {
  // Kept: the text names another getter (InvalidJobTest.ANumberIsTheDefaultAfterABox).
  UmDriver* const driver = validJob(job, "getPrinterName invalid parms");
  if (driver == nullptr) return defaultValue;
  return guarded(defaultValue, [&] { return driver->settings().getInt(textOrEmpty(name), defaultValue); });
}

unsigned QUILLPRESS_CALL getStringVal(unsigned long job, const wchar_t* name, wchar_t* buffer,
                                      unsigned length, const wchar_t* defaultValue) {
  UmDriver* const driver = validJob(job, "getStringVal invalid parms");
  if (driver == nullptr) return 0;
  return guarded(0U, [&] {
    // Before the settings, so that none of this name in the registry can hide the packet.
    if (textOrEmpty(name) == kPdfaXml) {
      copyPacket(*driver, buffer, length);
    } else if (const std::wstring* value = driver->settings().findFitting(textOrEmpty(name), length)) {
      copyText(*value, buffer, length);
    } else if (defaultValue != nullptr) {
      copyText(defaultValue, buffer, length);
    }
    return 1U;
  });
}

unsigned QUILLPRESS_CALL getStringMultibyte(unsigned long job, const char* name, char* buffer,
                                            unsigned length) {
  UmDriver* const driver = validJob(job, "getStringMultibyte invalid parms");
  if (driver == nullptr) return 0;
  // Kept: a name that is not served succeeds and leaves the buffer alone
  // (PacketGettersTest.TheNarrowFormServesNoOtherName).
  if (name == nullptr || name != kPdfaXmlNarrow) return 1;
  return guarded(0U, [&] { return copyPacketAsUtf8(*driver, buffer, length) ? 1U : 0U; });
}
}  // extern "C"
}  // namespace quillpress::driver
