// From the registry into the settings of a job.

#include <cwchar>
#include <string>
#include <vector>

#include "tests/umpd/settings/SettingsTest.h"

namespace quillpress::harness {
namespace {

constexpr size_t kCapacity = 190;
constexpr wchar_t kFull[] = L"Help!! too many parms \n";

std::vector<BYTE> bytesOf(const std::wstring& text) {
  const auto* first = reinterpret_cast<const BYTE*>(text.data());
  return {first, first + text.size() * sizeof(wchar_t)};
}

// Names in the order in which they are enumerated.
std::wstring nameOf(size_t index) {
  std::wstring name = std::to_wstring(index);
  return L"v" + std::wstring(4 - name.size(), L'0') + name;
}

class LoadingTest : public SettingsTest {
 protected:
  void setValues(size_t count) const {
    for (size_t i = 0; i < count; ++i) key.setNumber(nameOf(i), static_cast<DWORD>(i));
  }
};

TEST_F(LoadingTest, NumbersAndTextsAreTaken) {
  key.setNumber(L"number", 7);
  key.setText(L"text", L"seven");
  const Job job(library, printer);
  EXPECT_EQ(job.text(L"number"), L"7");
  EXPECT_EQ(job.text(L"text"), L"seven");
}

TEST_F(LoadingTest, GreatNumbersAreNegative) {
  key.setNumber(L"n", 0xFFFFFFFF);
  key.setNumber(L"least", 0x80000000);
  const Job job(library, printer);
  EXPECT_EQ(job.text(L"n"), L"-1");
  EXPECT_EQ(job.text(L"least"), L"-2147483648");
}

TEST_F(LoadingTest, OtherKindsAreIgnored) {
  const std::vector<BYTE> text = bytesOf(std::wstring(L"text\0\0", 6));
  key.setBytes(L"binary", REG_BINARY, text);
  key.setBytes(L"expand", REG_EXPAND_SZ, text);
  key.setBytes(L"multi", REG_MULTI_SZ, text);
  key.setBytes(L"none", REG_NONE, text);
  key.setBytes(L"big endian", REG_DWORD_BIG_ENDIAN, {0, 0, 0, 1});
  key.setBytes(L"quad", REG_QWORD, {1, 0, 0, 0, 0, 0, 0, 0});
  const Job job(library, printer);
  for (const wchar_t* name : {L"binary", L"expand", L"multi", L"none", L"big endian", L"quad"}) {
    EXPECT_EQ(job.text(name, L"default"), L"default") << narrow(name);
    EXPECT_EQ(job.number(name, 17), 17) << narrow(name);
  }
}

TEST_F(LoadingTest, TheValueWithoutANameIsIgnored) {
  key.setText(L"", L"unnamed");
  const Job job(library, printer);
  EXPECT_EQ(job.text(L"", L"default"), L"default");
}

TEST_F(LoadingTest, ANumberWithoutANameIsIgnored) {
  key.setNumber(L"", 5);
  EXPECT_EQ(Job(library, printer).number(L"", 17), 17);
}

TEST_F(LoadingTest, TextsOfEveryLengthAroundTheSmallestBufferAreTaken) {
  for (size_t length = 1; length <= 24; ++length) key.setText(nameOf(length), std::wstring(length, L'x'));
  const Job job(library, printer);
  for (size_t length = 1; length <= 24; ++length) {
    EXPECT_EQ(job.text(nameOf(length)), std::wstring(length, L'x'));
  }
}

TEST_F(LoadingTest, ANumberFitsWhenAllTextsAreShort) {
  key.setText(L"a", L"");
  key.setNumber(L"n", 0x80000000);
  EXPECT_EQ(Job(library, printer).number(L"n", 1), INT_MIN);
}

TEST_F(LoadingTest, ATextStoredWithoutItsFinalZeroIsTaken) {
  key.setBytes(L"t", REG_SZ, bytesOf(L"0123456789012345"));
  key.setBytes(L"u", REG_SZ, bytesOf(L"ab"));
  const Job job(library, printer);
  EXPECT_EQ(job.text(L"t"), L"0123456789012345");
  EXPECT_EQ(job.text(L"u"), L"ab");
}

TEST_F(LoadingTest, ATextEndsAtItsFirstZero) {
  key.setBytes(L"t", REG_SZ, bytesOf(std::wstring(L"ab\0cd\0", 6)));
  EXPECT_EQ(Job(library, printer).text(L"t"), L"ab");
}

TEST_F(LoadingTest, TheBufferForDataHoldsAtLeastTenCharacters) {
  key.setText(L"t", L"1");
  std::vector<DWORD> sizes;
  library.replace("RegEnumValueW",
                  [&sizes](HKEY opened, DWORD index, LPWSTR name, LPDWORD nameLength, LPDWORD reserved,
                           LPDWORD type, LPBYTE data, LPDWORD size) -> LONG {
                    sizes.push_back(*size);
                    return ::RegEnumValueW(opened, index, name, nameLength, reserved, type, data, size);
                  });
  EXPECT_EQ(Job(library, printer).text(L"t"), L"1");
  ASSERT_FALSE(sizes.empty());
  for (const DWORD size : sizes) EXPECT_GE(size, 10 * sizeof(wchar_t));
}

TEST_F(LoadingTest, ATextOfNoBytesIsEmpty) {
  key.setBytes(L"t", REG_SZ, {});
  const Job job(library, printer);
  EXPECT_EQ(job.text(L"t", L"default"), L"default");
  EXPECT_EQ(job.number(L"t", 17), 0);
}

TEST_F(LoadingTest, NamesOfTheGreatestLengthAreTaken) {
  const std::wstring name(255, L'n');
  key.setText(name, L"value");
  EXPECT_EQ(Job(library, printer).text(name), L"value");
}

TEST_F(LoadingTest, TextsOutsideTheAnsiCodePageAreTaken) {
  key.setText(L"\u540D", L"\u503C \u0416");
  EXPECT_EQ(Job(library, printer).text(L"\u540D"), L"\u503C \u0416");
}

TEST_F(LoadingTest, SettingsAreThoseAtTheStartOfTheJob) {
  key.setNumber(L"n", 1);
  key.setNumber(L"gone", 1);
  const Job job(library, printer);
  key.setNumber(L"n", 2);
  key.remove(L"gone");
  EXPECT_EQ(job.number(L"n"), 1);
  EXPECT_EQ(job.number(L"gone"), 1);
  const Job next(library, printer);
  EXPECT_EQ(next.number(L"n"), 2);
  EXPECT_EQ(next.number(L"gone"), -1);
}

TEST_F(LoadingTest, PrintersHaveTheirOwnSettings) {
  const Printer other;
  key.setNumber(L"n", 1);
  SettingsKey::ofPrinter(other.name()).setNumber(L"n", 2);
  const Job job(library, printer);
  const Job otherJob(library, other);
  EXPECT_EQ(job.number(L"n"), 1);
  EXPECT_EQ(otherJob.number(L"n"), 2);
}

TEST_F(LoadingTest, ThereIsRoomFor190Names) {
  setValues(kCapacity);
  const Job job(library, printer);
  EXPECT_EQ(job.number(nameOf(0)), 0);
  EXPECT_EQ(job.number(nameOf(kCapacity - 1)), 189);
  EXPECT_TRUE(debuggerOutput.take().empty());
}

TEST_F(LoadingTest, The191stNameIsRefusedAndReported) {
  setValues(kCapacity + 1);
  const Job job(library, printer);
  EXPECT_EQ(job.number(nameOf(kCapacity - 1)), 189);
  EXPECT_EQ(job.number(nameOf(kCapacity), 17), 17);
  EXPECT_EQ(debuggerOutput.take(), (std::vector<std::wstring>{kFull}));
}

TEST_F(LoadingTest, EveryNameThatIsRefusedIsReported) {
  setValues(kCapacity + 3);
  const Job job(library, printer);
  EXPECT_EQ(debuggerOutput.take(), (std::vector<std::wstring>{kFull, kFull, kFull}));
}

TEST_F(LoadingTest, ANameThatIsKnownCanBeChangedWhenThereIsNoRoom) {
  pretend(library, kWindows98);
  setValues(kCapacity - 1);
  key.setNumber(L"printerData4", 0);
  // The 9x family sets this one at the start of the job.
  const Job job(library, printer.name());
  EXPECT_EQ(job.number(L"printerData4"), 1);
  EXPECT_TRUE(debuggerOutput.take().empty());
}

TEST_F(LoadingTest, ANewNameIsStoredInTheRegistryAloneWhenThereIsNoRoom) {
  pretend(library, kWindows98);
  setValues(kCapacity);
  const Job job(library, printer.name());
  EXPECT_EQ(job.number(L"printerData4", 17), 17);
  EXPECT_EQ(key.number(L"printerData4"), 1U);
  EXPECT_EQ(debuggerOutput.take(), (std::vector<std::wstring>{kFull}));
}

class LoadingOnEveryWindowsTest : public LoadingTest, public ::testing::WithParamInterface<WindowsRelease> {
 protected:
  LoadingOnEveryWindowsTest() { pretend(library, GetParam()); }
};

TEST_P(LoadingOnEveryWindowsTest, AJobBegunByHandleHasItsSettings) {
  key.setText(L"watermark", L"Draft");
  EXPECT_EQ(Job(library, printer).text(L"watermark"), L"Draft");
}

TEST_P(LoadingOnEveryWindowsTest, AJobBegunByNameHasItsSettings) {
  key.setText(L"watermark", L"Draft");
  EXPECT_EQ(Job(library, printer.name()).text(L"watermark"), L"Draft");
}

INSTANTIATE_TEST_SUITE_P(Releases, LoadingOnEveryWindowsTest, ::testing::ValuesIn(kEveryWindows),
                         releaseName);

}  // namespace
}  // namespace quillpress::harness
