// Printers that a driver names by their port.

#include "tests/umpd/spooler/PrinterList.h"
#include "tests/umpd/spooler/SpoolerTest.h"

namespace quillpress::harness {
namespace {

class PortSearchTest : public SpoolerTest {
 protected:
  // The fixture's printer is opened, whatever the name; the name is noted.
  PortSearchTest() {
    library.replace("OpenPrinterW", [this](LPWSTR name, LPHANDLE handle, LPPRINTER_DEFAULTSW) -> BOOL {
      opened = name;
      std::wstring real = printer.name();
      return ::OpenPrinterW(real.data(), handle, nullptr);
    });
  }

  // The name of the printer that a job opens.
  std::wstring find(const std::wstring& name) {
    opened.clear();
    const Job job(library, name);
    EXPECT_NE(job.handle(), 0U);
    return opened;
  }

  std::wstring opened;
  PrinterList printers{library};
};

TEST_F(PortSearchTest, FindsAPrinterByItsPort) {
  printers.add({.name = "Quill", .port = "\\\\server\\queue"});
  EXPECT_EQ(find(L"\\\\server\\queue"), L"Quill");
}

TEST_F(PortSearchTest, FindsThePortWrittenWithCommas) {
  printers.add({.name = "Quill", .port = "\\\\server\\queue"});
  EXPECT_EQ(find(L",,server,queue"), L"Quill");
}

TEST_F(PortSearchTest, APortThatHasCommasIsFoundAsItStands) {
  printers.add({.name = "Quill", .port = ",,server,queue"});
  EXPECT_EQ(find(L",,server,queue"), L"Quill");
}

TEST_F(PortSearchTest, BothWaysOfWritingMayNotBeMixed) {
  printers.add({.name = "Quill", .port = "\\\\server\\queue"});
  EXPECT_EQ(find(L"\\\\server,queue"), L"\\\\server,queue");
  EXPECT_EQ(find(L",,server\\queue"), L",,server\\queue");
}

TEST_F(PortSearchTest, ACommaInThePortIsNotABackslash) {
  printers.add({.name = "Quill", .port = ",,server,queue"});
  EXPECT_EQ(find(L"\\\\server\\queue"), L"\\\\server\\queue");
}

TEST_F(PortSearchTest, TheCaseOfThePortDoesNotCount) {
  printers.add({.name = "Quill", .port = "\\\\Server\\QUEUE"});
  EXPECT_EQ(find(L"\\\\sERVER\\queue"), L"Quill");
  EXPECT_EQ(find(L",,SERVER,queue"), L"Quill");
}

TEST_F(PortSearchTest, TheWholePortCounts) {
  printers.add({.name = "Quill", .port = "\\\\server\\queue"});
  EXPECT_EQ(find(L"\\\\server\\queue2"), L"\\\\server\\queue2");
  EXPECT_EQ(find(L"\\\\server\\queu"), L"\\\\server\\queu");
  EXPECT_EQ(find(L"\\"), L"\\");
}

TEST_F(PortSearchTest, OtherDriversAreSkipped) {
  printers.add({.name = "Other", .port = "\\\\server\\queue", .driver = "Another Driver"});
  printers.add({.name = "Longer", .port = "\\\\server\\queue", .driver = "Tarnwick Quillpress 2"});
  printers.add({.name = "Quill", .port = "\\\\server\\queue"});
  EXPECT_EQ(find(L"\\\\server\\queue"), L"Quill");
}

TEST_F(PortSearchTest, WithOtherDriversOnlyNothingIsFound) {
  printers.add({.name = "Other", .port = "\\\\server\\queue", .driver = "Another Driver"});
  EXPECT_EQ(find(L"\\\\server\\queue"), L"\\\\server\\queue");
}

TEST_F(PortSearchTest, TheCaseOfTheDriverDoesNotCount) {
  printers.add({.name = "Quill", .port = "\\\\server\\queue", .driver = "TARNWICK quillpress"});
  EXPECT_EQ(find(L"\\\\server\\queue"), L"Quill");
}

TEST_F(PortSearchTest, TheFirstOfSeveralPrintersIsTaken) {
  printers.add({.name = "Elsewhere", .port = "FILE:"});
  printers.add({.name = "First", .port = "\\\\server\\queue"});
  printers.add({.name = "Second", .port = "\\\\server\\queue"});
  EXPECT_EQ(find(L"\\\\server\\queue"), L"First");
  EXPECT_EQ(find(L",,server,queue"), L"First");
}

TEST_F(PortSearchTest, APortMayHaveAnyCharacterOfTheCodePage) {
  printers.add({.name = "B\xFCro \x80", .port = "\\\\b\xFCro\\\x80"});
  EXPECT_EQ(find(L"\\\\b\u00FCro\\\u20AC"), L"B\u00FCro \u20AC");
}

TEST_F(PortSearchTest, RecordsWithoutTextsAreSkipped) {
  printers.add({.name = std::nullopt, .port = std::nullopt, .driver = std::nullopt});
  printers.add({.name = "No port", .port = std::nullopt});
  printers.add({.name = "Quill", .port = "\\\\server\\queue"});
  EXPECT_EQ(find(L"\\\\server\\queue"), L"Quill");
}

TEST_F(PortSearchTest, OnAMachineWithoutPrintersNothingIsFound) {
  EXPECT_EQ(find(L"\\\\server\\queue"), L"\\\\server\\queue");
}

TEST_F(PortSearchTest, AListingThatFailsFindsNothing) {
  printers.add({.name = "Quill", .port = "\\\\server\\queue"});
  printers.failListing();
  EXPECT_EQ(find(L"\\\\server\\queue"), L"\\\\server\\queue");
}

TEST_F(PortSearchTest, AListBeyondAllMemoryFindsNothing) {
  library.replace("EnumPrintersA",
                  [](DWORD, LPSTR, DWORD, LPBYTE, DWORD, LPDWORD needed, LPDWORD returned) -> BOOL {
                    *needed = 0xFFFF0000;
                    *returned = 0;
                    SetLastError(ERROR_INSUFFICIENT_BUFFER);
                    return FALSE;
                  });
  EXPECT_EQ(find(L"\\\\server\\queue"), L"\\\\server\\queue");
}

TEST_F(PortSearchTest, LooksAtLocalPrintersAndConnections) {
  printers.add({.name = "Quill", .port = "\\\\server\\queue"});
  EXPECT_EQ(find(L"\\\\server\\queue"), L"Quill");
  ASSERT_EQ(printers.listings().size(), 2U);
  for (const PrinterList::Listing& listing : printers.listings()) {
    EXPECT_EQ(listing.flags, 6U);
    EXPECT_FALSE(listing.hasServer);
    EXPECT_EQ(listing.level, 2U);
  }
  EXPECT_EQ(printers.listings()[0].size, 0U);
}

TEST_F(PortSearchTest, ANameThatIsNoPortIsNotLookedFor) {
  printers.add({.name = "Quill", .port = "FILE:"});
  for (const wchar_t* name : {L"FILE:", L"a\\b", L"a,b", L"/server/queue", L" \\\\server\\queue"}) {
    EXPECT_EQ(find(name), name);
  }
  EXPECT_TRUE(printers.listings().empty());
}

TEST_F(PortSearchTest, ANameOf300CharactersIsCut) {
  printers.add({.name = std::string(300, 'n'), .port = "\\\\server\\queue"});
  EXPECT_EQ(find(L"\\\\server\\queue"), std::wstring(259, L'n'));
}

TEST_F(PortSearchTest, ThePrinterFoundHasTheSettings) {
  printers.add({.name = "Quill found by port", .port = "\\\\server\\queue"});
  const SettingsKey found = SettingsKey::ofPrinter(L"Quill found by port");
  found.setText(L"mark", L"found");
  EXPECT_EQ(Job(library, L",,server,queue").text(L"mark"), L"found");
  found.removeTree();
}

// The printers that Windows itself lists.
class RealPortSearchTest : public SpoolerTest {};

TEST_F(RealPortSearchTest, FindsThePrinterOfTheSpooler) {
  const std::wstring port = L"\\\\server\\" + Printer::newName();
  const Printer other({.name = L"", .port = port, .driver = L"Another Driver"});
  const Printer found({.name = L"", .port = port});
  SettingsKey::ofPrinter(found.name()).setText(L"mark", L"found");
  EXPECT_EQ(Job(library, port).text(L"mark"), L"found");
}

TEST_F(RealPortSearchTest, APortOfNoPrinterCannotBeOpened) {
  const Job job(library, L"\\\\nowhere\\queue");
  EXPECT_EQ(job.handle(), 0U);
  expectPlainBox(L"umpd - Could not open printer [\\\\nowhere\\queue]");
}

}  // namespace
}  // namespace quillpress::harness
