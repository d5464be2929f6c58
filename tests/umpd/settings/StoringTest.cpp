// Settings that the library itself stores while a job runs.

#include <string>

#include "tests/umpd/harness/RegistryWrites.h"
#include "tests/umpd/settings/SettingsTest.h"

namespace quillpress::harness {
namespace {

class StoringTest : public SettingsTest {
 protected:
  StoringTest() { usePrinter(); }

  // A job of this printer whose end is told by an event, from its start to its end.
  void runFinishEventJob(const std::wstring& documentName) {
    key.setNumber(L"FinishPrintEv", 1);
    key.setText(L"DefaultSaveDir", L"c:\\quillpress storing");
    Job job(library, printer, documentName);
    EXPECT_EQ(job.write("%!PS\n"), 1);
    EXPECT_EQ(job.end(), 1);
    outputPath = key.text(L"lastfile").value_or(L"");
    DeleteFileW(outputPath.c_str());
  }

  std::wstring outputPath;
};

TEST_F(StoringTest, The9xFamilySetsPrinterData4) {
  pretend(library, kWindows98);
  const Job job(library, printer.name());
  EXPECT_EQ(job.number(L"printerData4"), 1);
  EXPECT_EQ(key.number(L"printerData4"), 1U);
}

TEST_F(StoringTest, The9xFamilyResetsPrinterData4ThatIsKnownInAnotherCase) {
  pretend(library, kWindows98);
  key.setNumber(L"PRINTERDATA4", 7);
  const Job job(library, printer.name());
  EXPECT_EQ(job.number(L"printerData4"), 1);
  EXPECT_EQ(key.number(L"PRINTERDATA4"), 1U);
}

class NtFamilyStoringTest : public StoringTest, public ::testing::WithParamInterface<WindowsRelease> {};

TEST_P(NtFamilyStoringTest, LeavesPrinterData4Alone) {
  pretend(library, GetParam());
  const Job job(library, printer.name());
  EXPECT_EQ(job.number(L"printerData4", 17), 17);
  EXPECT_EQ(key.type(L"printerData4"), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Releases, NtFamilyStoringTest, ::testing::ValuesIn(kNtFamily), releaseName);

TEST_F(StoringTest, ANumberThatCannotBeWrittenIsNotASetting) {
  pretend(library, kWindows98);
  RegistryWrites writes(library);
  writes.refuse = [](const std::wstring& name) { return name == L"printerData4"; };
  const Job job(library, printer.name());
  ASSERT_NE(job.handle(), 0U);
  EXPECT_EQ(job.number(L"printerData4", 17), 17);
}

TEST_F(StoringTest, ANumberThatCannotBeWrittenKeepsItsFormerValue) {
  pretend(library, kWindows98);
  key.setNumber(L"printerData4", 7);
  RegistryWrites writes(library);
  writes.refuse = [](const std::wstring& name) { return name == L"printerData4"; };
  EXPECT_EQ(Job(library, printer.name()).number(L"printerData4"), 7);
}

TEST_F(StoringTest, TheEndOfAFinishEventJobStoresDocumentAndFile) {
  const RegistryWrites writes(library);
  runFinishEventJob(L"Report");
  EXPECT_EQ(key.text(L"DocName"), L"Report");
  EXPECT_EQ(outputPath, L"c:\\quillpress storing\\Report.pdf");
  EXPECT_EQ(writes.names(), (std::vector<std::wstring>{L"DocName", L"lastfile"}));
}

TEST_F(StoringTest, TextsAreWrittenWithTheirFinalZero) {
  const RegistryWrites writes(library);
  runFinishEventJob(L"Report");
  EXPECT_EQ(key.type(L"DocName"), DWORD{REG_SZ});
  EXPECT_EQ(writes.sizeOf(L"DocName"), sizeof L"Report");
  EXPECT_EQ(writes.sizeOf(L"lastfile"), (outputPath.size() + 1) * sizeof(wchar_t));
}

TEST_F(StoringTest, AKeyThatHasGoneIsMadeAgainWithItsDefaults) {
  key.setNumber(L"FinishPrintEv", 1);
  key.setText(L"DefaultSaveDir", L"c:\\quillpress storing");
  Job job(library, printer, L"Report");
  EXPECT_EQ(job.write("%!PS\n"), 1);
  key.removeTree();
  EXPECT_EQ(job.end(), 1);
  EXPECT_EQ(key.text(L"DocName"), L"Report");
  EXPECT_EQ(key.number(L"imageDPI"), 300U);
  DeleteFileW(key.text(L"lastfile")->c_str());
}

}  // namespace
}  // namespace quillpress::harness
