#include "tests/umpd/together/TogetherTest.h"

#include "tests/umpd/harness/UserName.h"
#include "tests/umpd/together/JobBytes.h"

namespace quillpress::harness {

TogetherTest::TogetherTest() : channel(channelOf(currentUserName())) {
  for (const Printer* each : {&printer, &otherPrinter}) {
    const SettingsKey settings = SettingsKey::ofPrinter(each->name());
    settings.setText(L"DefaultSaveDir", folder.path());
    // Names of documents here have dashes.
    settings.setNumber(L"TrimNameChar", L'|');
  }
}

std::wstring TogetherTest::printJobs(const Printer& on, const std::wstring& prefix, int jobs, int blocks,
                                     const std::wstring& event) const {
  return L"\"" + folderOf(nullptr) + L"print_jobs.exe\" \"" + on.name() + L"\" " + prefix + L" " +
         std::to_wstring(jobs) + L" " + std::to_wstring(blocks) + L" " + event;
}

std::string TogetherTest::bytesOfJob(const std::wstring& documentName, int blocks) {
  std::string bytes;
  for (int block = 0; block < blocks; ++block)
    bytes += blockOf(documentName, static_cast<std::size_t>(block));
  return bytes;
}

}  // namespace quillpress::harness
