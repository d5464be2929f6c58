// twsconf.ini, by which an administrator replaces what users have set.

#include <string>
#include <vector>

#include "tests/umpd/harness/PrinterName.h"
#include "tests/umpd/harness/RegistryWrites.h"
#include "tests/umpd/settings/SettingsTest.h"

namespace quillpress::harness {
namespace {

class IniOverrideTest : public SettingsTest {
 protected:
  IniOverrideTest() { usePrinter(); }

  // An ini file that overrides, with these lines in its first section.
  void override(const std::string& lines) const {
    folder.writeIni("[init]\noverrideUserSettings=1\n" + lines);
  }

  [[nodiscard]] std::string printerSection() const { return "[" + narrow(printer.name()) + "]\n"; }
};

TEST_F(IniOverrideTest, ReplacesWhatTheUserHasSet) {
  key.setNumber(L"imageDPI", 150);
  override("imageDPI=600\n");
  EXPECT_EQ(Job(library, printer).number(L"imageDPI"), 600);
  EXPECT_EQ(key.number(L"imageDPI"), 600U);
}

TEST_F(IniOverrideTest, ReplacesForAJobStartedByNameToo) {
  key.setNumber(L"imageDPI", 150);
  override("imageDPI=600\n");
  EXPECT_EQ(Job(library, printer.name()).number(L"imageDPI"), 600);
  EXPECT_EQ(key.number(L"imageDPI"), 600U);
}

TEST_F(IniOverrideTest, ReplacesAgainForEveryJob) {
  override("imageDPI=600\n");
  EXPECT_EQ(Job(library, printer).number(L"imageDPI"), 600);
  key.setNumber(L"imageDPI", 150);
  EXPECT_EQ(Job(library, printer).number(L"imageDPI"), 600);
}

TEST_F(IniOverrideTest, LeavesOtherSettingsAlone) {
  key.setText(L"watermark", L"Draft");
  override("imageDPI=600\n");
  EXPECT_EQ(Job(library, printer).text(L"watermark"), L"Draft");
}

TEST_F(IniOverrideTest, LeavesEverythingAloneWithoutAFile) {
  const RegistryWrites writes(library);
  EXPECT_NE(Job(library, printer).handle(), 0U);
  EXPECT_TRUE(writes.all().empty());
}

class SwitchTest : public IniOverrideTest,
                   public ::testing::WithParamInterface<std::pair<const char*, bool>> {};

TEST_P(SwitchTest, TurnsTheOverrideOnWhenItIsNotZero) {
  key.setNumber(L"imageDPI", 150);
  folder.writeIni("[init]\n" + std::string(GetParam().first) + "\nimageDPI=600\n");
  EXPECT_EQ(Job(library, printer).number(L"imageDPI"), GetParam().second ? 600 : 150);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, SwitchTest,
    ::testing::Values(std::pair("overrideUserSettings=1", true), std::pair("overrideUserSettings=2", true),
                      std::pair("overrideUserSettings=-1", true), std::pair("OVERRIDEUSERSETTINGS = 1", true),
                      std::pair("overrideUserSettings=0", false),
                      std::pair("overrideUserSettings=yes", false), std::pair("overrideUserSettings=", false),
                      std::pair("other=1", false)));

TEST_F(IniOverrideTest, IsNotSwitchedOnInAnotherSection) {
  key.setNumber(L"imageDPI", 150);
  folder.writeIni("[init]\nimageDPI=600\n" + printerSection() + "overrideUserSettings=1\nimageDPI=900\n");
  EXPECT_EQ(Job(library, printer).number(L"imageDPI"), 150);
}

TEST_F(IniOverrideTest, CopiesItsSwitchLikeAnySetting) {
  override("");
  EXPECT_EQ(Job(library, printer).number(L"overrideUserSettings"), 1);
  EXPECT_EQ(key.number(L"overrideUserSettings"), 1U);
}

TEST_F(IniOverrideTest, PutsThePrintersSectionAfterThatOfAllPrinters) {
  override("a=init\nb=init\n" + printerSection() + "b=printer\nc=printer\n");
  const RegistryWrites writes(library);
  const Job job(library, printer);
  EXPECT_EQ(job.text(L"a"), L"init");
  EXPECT_EQ(job.text(L"b"), L"printer");
  EXPECT_EQ(job.text(L"c"), L"printer");
  EXPECT_EQ(writes.names(), (std::vector<std::wstring>{L"overrideUserSettings", L"a", L"b", L"b", L"c"}));
}

TEST_F(IniOverrideTest, LeavesOtherPrintersSectionsAlone) {
  override("[Another printer]\nimageDPI=600\n");
  EXPECT_EQ(Job(library, printer).number(L"imageDPI"), -1);
}

TEST_F(IniOverrideTest, FindsTheSectionOfANetworkPrinterByCommas) {
  pretendPrinterName(library, "\\\\server\\queue");
  const SettingsKey networkKey = SettingsKey::ofPrinter(L"\\\\server\\queue");
  networkKey.setText(L"in use", L"yes");
  override("[,,server,queue]\nimageDPI=600\n[\\\\server\\queue]\nresIndex=9\n");
  const Job job(library, printer);
  EXPECT_EQ(job.number(L"imageDPI"), 600);
  EXPECT_EQ(job.number(L"resIndex"), -1);
  EXPECT_EQ(networkKey.number(L"imageDPI"), 600U);
  networkKey.removeTree();
}

TEST_F(IniOverrideTest, StoresDigitsAsANumber) {
  override("n=300\nzero=0\nleading=0300\n");
  const Job job(library, printer);
  EXPECT_EQ(key.number(L"n"), 300U);
  EXPECT_EQ(key.number(L"zero"), 0U);
  EXPECT_EQ(key.number(L"leading"), 300U);
  EXPECT_EQ(job.text(L"leading"), L"300");
}

TEST_F(IniOverrideTest, StoresEverythingElseAsAText) {
  override("letter=30a\nnegative=-5\nplus=+5\npoint=1.5\ninner=1 2\nhex=0x10\n");
  const Job job(library, printer);
  EXPECT_EQ(key.text(L"letter"), L"30a");
  EXPECT_EQ(key.text(L"negative"), L"-5");
  EXPECT_EQ(key.text(L"plus"), L"+5");
  EXPECT_EQ(key.text(L"point"), L"1.5");
  EXPECT_EQ(key.text(L"inner"), L"1 2");
  EXPECT_EQ(key.text(L"hex"), L"0x10");
  EXPECT_EQ(job.number(L"letter"), 30);
  EXPECT_EQ(job.number(L"negative"), -5);
}

TEST_F(IniOverrideTest, TakesOnlyDecimalDigitsForDigits) {
  folder.writeIni(std::wstring(L"[init]\r\noverrideUserSettings=1\r\na=\u0661\u0662\r\nb=\u00B2\r\n"));
  EXPECT_NE(Job(library, printer).handle(), 0U);
  EXPECT_EQ(key.text(L"a"), L"\u0661\u0662");
  EXPECT_EQ(key.text(L"b"), L"\u00B2");
}

TEST_F(IniOverrideTest, WritesTextsWithTheirFinalZero) {
  override("t=text\n");
  const RegistryWrites writes(library);
  EXPECT_NE(Job(library, printer).handle(), 0U);
  EXPECT_EQ(writes.sizeOf(L"t"), sizeof L"text");
}

TEST_F(IniOverrideTest, SaturatesANumberBeyond32Bits) {
  override("n=99999999999\n");
  EXPECT_EQ(Job(library, printer).number(L"n"), INT_MAX);
  EXPECT_EQ(key.number(L"n"), DWORD{INT_MAX});
}

TEST_F(IniOverrideTest, ChangesTheKindOfASettingWithItsValue) {
  key.setNumber(L"a", 1);
  key.setText(L"b", L"one");
  override("a=one\nb=1\n");
  EXPECT_NE(Job(library, printer).handle(), 0U);
  EXPECT_EQ(key.text(L"a"), L"one");
  EXPECT_EQ(key.number(L"b"), 1U);
}

TEST_F(IniOverrideTest, SkipsLinesWithoutAnEqualsSign) {
  override("nothing\nn=1\n");
  const Job job(library, printer);
  EXPECT_EQ(job.text(L"nothing", L"none"), L"none");
  EXPECT_EQ(key.type(L"nothing"), std::nullopt);
  EXPECT_EQ(job.number(L"n"), 1);
}

TEST_F(IniOverrideTest, SkipsLinesWithoutAValue) {
  key.setText(L"watermark", L"Draft");
  override("watermark=\nn=1\n");
  const Job job(library, printer);
  EXPECT_EQ(job.text(L"watermark"), L"Draft");
  EXPECT_EQ(key.text(L"watermark"), L"Draft");
  EXPECT_EQ(job.number(L"n"), 1);
}

TEST_F(IniOverrideTest, EndsTheNameAtTheFirstEqualsSign) {
  override("t=a=b=c\nu==\n");
  const Job job(library, printer);
  EXPECT_EQ(job.text(L"t"), L"a=b=c");
  EXPECT_EQ(job.text(L"u"), L"=");
}

TEST_F(IniOverrideTest, FillsANewPrinterAfterItsDefaults) {
  key.removeTree();
  override("imageDPI=600\n");
  const Job job(library, printer);
  EXPECT_EQ(job.number(L"imageDPI"), 600);
  EXPECT_EQ(key.number(L"imageDPI"), 600U);
  EXPECT_EQ(job.number(L"jpegImageQuality"), 75);
}

TEST_F(IniOverrideTest, TakesUnicodeTexts) {
  folder.writeIni(std::wstring(L"[init]\r\noverrideUserSettings=1\r\nwatermark=\u0416\u540D\r\n"));
  EXPECT_EQ(Job(library, printer).text(L"watermark"), L"\u0416\u540D");
}

// The section's lines, each with its zero, and one more zero fill the buffer of 5,000 characters.
class LongSectionTest : public IniOverrideTest {
 protected:
  // Has the last line of the printer's section end with the section's character `length`, both zeros
  // included.
  void writeSection(size_t length) const {
    const std::string first = "first=1";
    const std::string last = "last=";
    const size_t filler = length - 1 - (first.size() + 1) - (last.size() + 1);
    override(printerSection() + first + "\n" + last + std::string(filler, 'x') + "\n");
    lastLength = filler;
  }

  mutable size_t lastLength = 0;
};

TEST_F(LongSectionTest, IsTakenWholeWhenItFills5000Characters) {
  writeSection(5000);
  const Job job(library, printer);
  EXPECT_EQ(job.number(L"first"), 1);
  EXPECT_EQ(job.text(L"last"), std::wstring(lastLength, L'x'));
}

TEST_F(LongSectionTest, IsCutWhenItIsLonger) {
  writeSection(5001);
  const Job job(library, printer);
  EXPECT_EQ(job.number(L"first"), 1);
  EXPECT_EQ(job.text(L"last"), std::wstring(lastLength - 1, L'x'));
}

class IniOverrideOnEveryWindowsTest : public EveryWindowsTest {
 protected:
  DriverFolder folder{GetParam()};
  Printer printer;
};

TEST_P(IniOverrideOnEveryWindowsTest, ReplacesWhatTheUserHasSet) {
  const SettingsKey key = SettingsKey::ofPrinter(printer.name());
  key.setNumber(L"imageDPI", 150);
  folder.writeIni("[init]\noverrideUserSettings=1\nimageDPI=600\n");
  EXPECT_EQ(Job(library, printer.name()).number(L"imageDPI"), 600);
  EXPECT_EQ(key.number(L"imageDPI"), 600U);
}

INSTANTIATE_TEST_SUITE_P(Releases, IniOverrideOnEveryWindowsTest, ::testing::ValuesIn(kEveryWindows),
                         releaseName);

}  // namespace
}  // namespace quillpress::harness
