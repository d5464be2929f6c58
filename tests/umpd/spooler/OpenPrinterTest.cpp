// How a printer that a job only has the name of is opened.

#include <cstring>
#include <vector>

#include "tests/umpd/spooler/SpoolerTest.h"

namespace quillpress::harness {
namespace {

using DeviceModeBytes = std::vector<BYTE>;

// Where the members of a wide DEVMODE are.
constexpr std::size_t kDeviceName = 0;
constexpr std::size_t kFormName = 102;
constexpr std::size_t kSize = 220;
constexpr std::size_t kDriverExtra = 180;

void put16(DeviceModeBytes& bytes, std::size_t offset, unsigned value) {
  bytes[offset] = static_cast<BYTE>(value);
  bytes[offset + 1] = static_cast<BYTE>(value >> 8);
}

void putText(DeviceModeBytes& bytes, std::size_t offset, const std::wstring& text) {
  std::memcpy(bytes.data() + offset, text.data(), text.size() * sizeof(wchar_t));
}

DeviceModeBytes expectedDeviceMode(const std::wstring& deviceName) {
  DeviceModeBytes bytes(kSize + kDriverExtra);
  putText(bytes, kDeviceName, deviceName);
  put16(bytes, 64, 0x401);  // version of the layout
  put16(bytes, 66, 0x400);  // driver version
  put16(bytes, 68, kSize);
  put16(bytes, 70, kDriverExtra);
  put16(bytes, 72, 0x4F13);  // fields, low half
  put16(bytes, 74, 0x0001);  // fields, high half
  put16(bytes, 76, 1);       // orientation: portrait
  put16(bytes, 78, 1);       // paper size: letter
  put16(bytes, 84, 100);     // scale
  put16(bytes, 86, 1);       // copies
  put16(bytes, 88, 15);      // default source
  put16(bytes, 90, 300);     // print quality
  put16(bytes, 92, 2);       // colour
  put16(bytes, 94, 1);       // duplex: simplex
  put16(bytes, 98, 3);       // TrueType option
  putText(bytes, kFormName, L"A4");
  return bytes;
}

class OpenPrinterTest : public SpoolerTest {
 protected:
  struct Opening {
    std::wstring name;
    std::wstring dataType;
    ACCESS_MASK access;
    DeviceModeBytes deviceMode;
    HANDLE handle;
  };

  // Whatever the name asked for, the fixture's printer is opened.
  OpenPrinterTest() {
    library.replace("OpenPrinterW",
                    [this](LPWSTR name, LPHANDLE handle, LPPRINTER_DEFAULTSW defaults) -> BOOL {
                      std::wstring real = printer.name();
                      const BOOL opened = ::OpenPrinterW(real.data(), handle, nullptr);
                      const auto* mode = reinterpret_cast<const BYTE*>(defaults->pDevMode);
                      openings.push_back({name, defaults->pDatatype, defaults->DesiredAccess,
                                          DeviceModeBytes(mode, mode + kSize + kDriverExtra), *handle});
                      return opened;
                    });
    library.replace("ClosePrinter", [this](HANDLE handle) -> BOOL {
      closed.push_back(handle);
      return ::ClosePrinter(handle);
    });
  }

  // How a printer of this name is opened.
  Opening openingOf(const std::wstring& name) {
    openings.clear();
    const Job job(library, name);
    EXPECT_NE(job.handle(), 0U);
    if (openings.size() == 1) return openings.front();
    ADD_FAILURE() << openings.size() << " openings instead of one";
    return {};
  }

  std::vector<Opening> openings;
  std::vector<HANDLE> closed;
};

TEST_F(OpenPrinterTest, AsksForTheRightToUseIt) {
  const Opening opening = openingOf(printer.name());
  EXPECT_EQ(opening.name, printer.name());
  EXPECT_EQ(opening.access, 8U);
}

TEST_F(OpenPrinterTest, PrintsRawData) {
  EXPECT_EQ(openingOf(printer.name()).dataType, L"RAW");
}

TEST_F(OpenPrinterTest, BringsAFixedDeviceMode) {
  EXPECT_EQ(openingOf(L"Quill").deviceMode, expectedDeviceMode(L"Quill"));
}

TEST_F(OpenPrinterTest, TheDeviceIsTheLastComponentOfTheName) {
  EXPECT_EQ(openingOf(L"a\\b\\Quill").deviceMode, expectedDeviceMode(L"Quill"));
  EXPECT_EQ(openingOf(L"\\\\server\\Quill").deviceMode, expectedDeviceMode(L"Quill"));
}

TEST_F(OpenPrinterTest, ASlashDoesNotSeparateComponents) {
  EXPECT_EQ(openingOf(L"a/b").deviceMode, expectedDeviceMode(L"a/b"));
}

TEST_F(OpenPrinterTest, ANameEndingInASeparatorIsNoDevice) {
  EXPECT_EQ(openingOf(L"server\\").deviceMode, expectedDeviceMode(L""));
}

TEST_F(OpenPrinterTest, ADeviceOf31CharactersIsWhole) {
  const std::wstring name = L"0123456789abcdefghijklmnopqrst!";
  ASSERT_EQ(name.size(), 31U);
  EXPECT_EQ(openingOf(name).deviceMode, expectedDeviceMode(name));
}

TEST_F(OpenPrinterTest, OfALongerDeviceTheFirst31CharactersRemain) {
  const std::wstring start = L"0123456789abcdefghijklmnopqrst!";
  for (const wchar_t* more : {L"x", L"xy", L" and much more of it behind"}) {
    EXPECT_EQ(openingOf(start + more).deviceMode, expectedDeviceMode(start));
    EXPECT_EQ(openingOf(L"server\\" + start + more).deviceMode, expectedDeviceMode(start));
  }
}

TEST_F(OpenPrinterTest, ANameThatIsNoPortIsOpenedAsItStands) {
  EXPECT_EQ(openingOf(L"\\\\nowhere\\queue").name, L"\\\\nowhere\\queue");
  EXPECT_EQ(openingOf(L",,nowhere,queue").name, L",,nowhere,queue");
}

TEST_F(OpenPrinterTest, WithoutANameTheDefaultPrinterIsOpened) {
  SettingsKey::global().remove(L"printerName");
  EXPECT_EQ(openingOf(L"").name, kDriverName);
}

TEST_F(OpenPrinterTest, WithoutANameTheUsersLastPrinterIsOpened) {
  SettingsKey::global().setText(L"printerName", L"The last one");
  EXPECT_EQ(openingOf(L"").name, L"The last one");
  SettingsKey::global().remove(L"printerName");
}

TEST_F(OpenPrinterTest, IsClosedWhenTheJobEnds) {
  Job job(library, printer.name());
  ASSERT_EQ(openings.size(), 1U);
  finish(job);
  EXPECT_EQ(closed, std::vector<HANDLE>{openings.front().handle});
}

TEST_F(OpenPrinterTest, ACallersPrinterIsNeitherOpenedNorClosed) {
  Job job(library, printer);
  finish(job);
  EXPECT_TRUE(openings.empty());
  EXPECT_TRUE(closed.empty());
}

TEST_F(OpenPrinterTest, IsNotOpenedAgainForTheDocument) {
  Job job(library, printer.name());
  finish(job);
  EXPECT_EQ(openings.size(), 1U);
}

TEST_F(OpenPrinterTest, AFailureShowsABoxWithTheName) {
  library.replace("OpenPrinterW", [](LPWSTR, LPHANDLE handle, LPPRINTER_DEFAULTSW) -> BOOL {
    *handle = reinterpret_cast<HANDLE>(0xDEAD);
    SetLastError(ERROR_INVALID_PRINTER_NAME);
    return FALSE;
  });
  const Job job(library, L"No such printer");
  EXPECT_EQ(job.handle(), 0U);
  expectPlainBox(L"umpd - Could not open printer [No such printer]");
  EXPECT_TRUE(closed.empty());
}

TEST_F(OpenPrinterTest, APrinterThatNobodyHasShowsTheBox) {
  library.restore("OpenPrinterW");
  const std::wstring name = Printer::newName();
  const Job job(library, name);
  EXPECT_EQ(job.handle(), 0U);
  expectPlainBox(L"umpd - Could not open printer [" + name + L"]");
}

}  // namespace
}  // namespace quillpress::harness
