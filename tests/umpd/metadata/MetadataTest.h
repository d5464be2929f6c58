#pragma once

#include <string>

#include "tests/umpd/harness/Driver.h"
#include "tests/umpd/harness/DriverTest.h"
#include "tests/umpd/harness/Printer.h"
#include "tests/umpd/harness/SettingsKey.h"
#include "tests/umpd/metadata/Packet.h"

namespace quillpress::harness {

// A printer whose document information a test sets and asks a job for.
class MetadataTest : public DriverTest {
 protected:
  // The packet of a new job, with both dates as DATE.
  [[nodiscard]] std::wstring packet(const std::wstring& documentName = L"Document") const {
    const Job job(library, printer, documentName);
    return withoutDates(job.text(L"pdfaXML"));
  }

  // The title in the packet of a new job.
  [[nodiscard]] std::wstring title(const std::wstring& documentName = L"Document") const {
    return between(packet(documentName), L"<dc:title><rdf:Alt><rdf:li xml:lang='x-default'>",
                   L"</rdf:li></rdf:Alt></dc:title>\n");
  }

  const Printer printer;
  const SettingsKey settings = SettingsKey::ofPrinter(printer.name());
};

}  // namespace quillpress::harness
