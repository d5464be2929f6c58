#pragma once

#include <string>

#include "tests/umpd/harness/Driver.h"
#include "tests/umpd/harness/DriverTest.h"
#include "tests/umpd/harness/Printer.h"
#include "tests/umpd/harness/SettingsKey.h"
#include "tests/umpd/harness/Text.h"
#include "tests/umpd/launcher/support/Channel.h"
#include "tests/umpd/launcher/support/Process.h"
#include "tests/umpd/launcher/support/TemporaryFolder.h"

namespace quillpress::harness {

// Jobs of several processes of the real user, with nothing replaced that they share.
class TogetherTest : public DriverTest {
 protected:
  TogetherTest();

  // A program that prints, as the header of print_jobs tells.
  [[nodiscard]] std::wstring printJobs(const Printer& on, const std::wstring& prefix, int jobs, int blocks,
                                       const std::wstring& event = L"") const;

  // What the file of a job of print_jobs must hold.
  [[nodiscard]] static std::string bytesOfJob(const std::wstring& documentName, int blocks);

  [[nodiscard]] std::wstring fileOf(const std::wstring& documentName) const {
    return folder.file(documentName + L".pdf");
  }

  const Channel channel;
  const TemporaryFolder folder;
  const Printer printer;
  const Printer otherPrinter;
};

}  // namespace quillpress::harness
