// The bytes that the launcher finds in the shared memory.

#include <array>
#include <string>
#include <vector>

#include "tests/umpd/harness/PrinterName.h"
#include "tests/umpd/launcher/support/HandOverTest.h"

namespace quillpress::harness {
namespace {

const std::string kUntouchedField(260, static_cast<char>(Peer::kPattern));
const std::string kUntouchedHeader(3, static_cast<char>(Peer::kPattern));

class RecordTest : public HandOverTest {
 protected:
  // The records of one job; fails unless they are a "startprint" and a "stopprint".
  struct Records {
    Record start;
    Record stop;
  };
  Records printAndTake(const std::wstring& documentName) {
    const Peer peer(channel);
    print(documentName);
    if (peer.records().size() != 2) {
      ADD_FAILURE() << peer.records().size() << " messages came instead of 2";
      return {};
    }
    return {peer.records()[0], peer.records()[1]};
  }

  [[nodiscard]] std::string printerName() const { return narrow(printer.name()); }
  [[nodiscard]] std::string pathOf(const std::wstring& name) const { return narrow(folder.file(name)); }
};

TEST_F(RecordTest, StartPrintWritesTheCommandAndThePrinterNameOnly) {
  const Record record = printAndTake(L"Document").start;
  EXPECT_EQ(bytesOf(record, field::kHeader), kUntouchedHeader);
  EXPECT_EQ(textOf(record, field::kCommand), "startprint");
  EXPECT_EQ(bytesOf(record, field::kPrinterName), padded(printerName(), field::kPrinterName));
  EXPECT_EQ(bytesOf(record, field::kOutputPath), kUntouchedField);
  EXPECT_EQ(bytesOf(record, field::kDocumentName), kUntouchedField);
  EXPECT_EQ(bytesOf(record, field::kReserved), kUntouchedField);
}

TEST_F(RecordTest, StopPrintWritesAllButHeaderAndReserve) {
  const Record record = printAndTake(L"Document").stop;
  EXPECT_EQ(bytesOf(record, field::kHeader), kUntouchedHeader);
  EXPECT_EQ(textOf(record, field::kCommand), "stopprint");
  EXPECT_EQ(bytesOf(record, field::kPrinterName), padded(printerName(), field::kPrinterName));
  EXPECT_EQ(bytesOf(record, field::kOutputPath), padded(pathOf(L"Document.pdf"), field::kOutputPath));
  EXPECT_EQ(bytesOf(record, field::kDocumentName), padded("Document", field::kDocumentName));
  EXPECT_EQ(bytesOf(record, field::kReserved), kUntouchedField);
}

TEST_F(RecordTest, NothingIsWrittenBehindTheRecord) {
  // The rest of the page belongs to nobody.
  const Peer peer(channel);
  print(L"Document");
  const Handle section(OpenFileMappingW(FILE_MAP_ALL_ACCESS, FALSE, channel.memory().c_str()));
  const auto* view = static_cast<const unsigned char*>(MapViewOfFile(section.get(), FILE_MAP_READ, 0, 0, 0));
  ASSERT_NE(view, nullptr);
  EXPECT_TRUE(std::all_of(view + sizeof(Record), view + 4096, [](unsigned char byte) { return byte == 0; }));
  UnmapViewOfFile(view);
}

TEST_F(RecordTest, StartPrintKeepsPathAndDocumentOfTheLastJob) {
  const Peer peer(channel);
  print(L"First");
  print(L"Second");
  ASSERT_EQ(peer.records().size(), 4U);
  EXPECT_EQ(textOf(peer.records()[2], field::kCommand), "startprint");
  EXPECT_EQ(bytesOf(peer.records()[2], field::kOutputPath), padded(pathOf(L"First.pdf"), field::kOutputPath));
  EXPECT_EQ(bytesOf(peer.records()[2], field::kDocumentName), padded("First", field::kDocumentName));
}

TEST_F(RecordTest, AShorterTextLeavesNothingOfALongerOne) {
  const Peer peer(channel);
  print(L"A rather long name of a document");
  print(L"Short");
  ASSERT_EQ(peer.records().size(), 4U);
  const Record& record = peer.records()[3];
  EXPECT_EQ(textOf(record, field::kCommand), "stopprint");
  EXPECT_EQ(bytesOf(record, field::kOutputPath), padded(pathOf(L"Short.pdf"), field::kOutputPath));
  EXPECT_EQ(bytesOf(record, field::kDocumentName), padded("Short", field::kDocumentName));
}

TEST_F(RecordTest, TheDocumentNameIsDecoded) {
  EXPECT_EQ(textOf(printAndTake(L"a+b%41").stop, field::kDocumentName), "a bA");
  EXPECT_EQ(textOf(printAndTake(L"a%3Ab").stop, field::kDocumentName), "a_b");
}

TEST_F(RecordTest, TheNameOfAPrinterFoundByItsPortIsSent) {
  const std::wstring port = L"\\\\server\\" + user;
  const Printer ported({.name = L"", .port = port});
  SettingsKey::ofPrinter(ported.name()).setText(L"DefaultSaveDir", folder.path());
  const Peer peer(channel);
  for (const std::wstring& name : {port, withReplaced(port, L'\\', L',')}) {
    Job job(library, name);
    EXPECT_EQ(job.write("%!PS"), 1);
  }
  ASSERT_EQ(peer.records().size(), 4U);
  for (const Record& record : peer.records()) {
    EXPECT_EQ(textOf(record, field::kPrinterName), narrow(ported.name()));
  }
}

TEST_F(RecordTest, TextsAreInTheAnsiCodePage) {
  const Record record = printAndTake(L"\u00C4rger f\u00FCr 5 \u20AC").stop;
  EXPECT_EQ(bytesOf(record, field::kDocumentName), padded("\xC4rger f\xFCr 5 \x80", field::kDocumentName));
  EXPECT_EQ(textOf(record, field::kOutputPath), pathOf(L"\u00C4rger f\u00FCr 5 _.pdf"));
}

TEST_F(RecordTest, CharactersOutsideTheCodePageBecomeItsSubstitute) {
  const Record record = printAndTake(L"\u6F22\u5B57 x").stop;
  EXPECT_EQ(bytesOf(record, field::kDocumentName), padded("?? x", field::kDocumentName));
}

TEST_F(RecordTest, APathOutsideTheCodePageIsSentAsNearAsItCan) {
  const std::wstring japanese = folder.file(L"\u6F22");
  settings.setText(L"DefaultSaveDir", japanese);
  const Record record = printAndTake(L"Document").stop;
  EXPECT_EQ(textOf(record, field::kOutputPath), pathOf(L"?\\Document.pdf"));
  EXPECT_TRUE(fileExists(japanese + L"\\Document.pdf"));
  DeleteFileW((japanese + L"\\Document.pdf").c_str());
  RemoveDirectoryW(japanese.c_str());
}

TEST_F(RecordTest, APrinterNameIsCutAtItsFieldsEnd) {
  // A name too long for a key of the registry has no settings: the file goes into the current folder.
  std::array<wchar_t, MAX_PATH> before{};
  GetCurrentDirectoryW(MAX_PATH, before.data());
  SetCurrentDirectoryW(folder.path().c_str());
  for (const std::size_t length : {258U, 259U, 260U, 300U, 1000U}) {
    std::string name(length, 'p');
    name.back() = '!';
    pretendPrinterName(library, name);
    const Records records = printAndTake(L"Document");
    const std::string expected = padded(name.substr(0, 259), field::kPrinterName);
    EXPECT_EQ(bytesOf(records.start, field::kPrinterName), expected) << length;
    EXPECT_EQ(bytesOf(records.stop, field::kPrinterName), expected) << length;
    EXPECT_EQ(bytesOf(records.start, field::kOutputPath).substr(0, 1), kUntouchedField.substr(0, 1));
  }
  SetCurrentDirectoryW(before.data());
}

TEST_F(RecordTest, ADocumentNameIsCutAtItsFieldsEnd) {
  for (const std::size_t length : {258U, 259U, 260U, 300U, 2000U}) {
    std::wstring name(length, L'd');
    name.back() = L'!';
    const Record record = printAndTake(name).stop;
    EXPECT_EQ(bytesOf(record, field::kDocumentName),
              padded(narrow(name.substr(0, 259)), field::kDocumentName));
    EXPECT_EQ(bytesOf(record, field::kReserved), kUntouchedField);
  }
}

TEST_F(RecordTest, APathIsCutAtItsFieldsEnd) {
  // Only the folder that stands in for others in a protected browser makes paths longer than 259 characters.
  byName.replace("IEIsProtectedModeProcess", [](BOOL* isProtected) -> HRESULT {
    *isProtected = TRUE;
    return S_OK;
  });
  std::vector<std::wstring> created;
  library.replace("CreateFileW",
                  [&](LPCWSTR path, DWORD access, DWORD sharing, LPSECURITY_ATTRIBUTES security,
                      DWORD creation, DWORD flags, HANDLE model) -> HANDLE {
                    created.emplace_back(path);
                    if (created.size() > 1) {
                      return CreateFileW(folder.file(L"stand-in").c_str(), access, sharing, security,
                                         creation, flags, model);
                    }
                    SetLastError(ERROR_ACCESS_DENIED);
                    return INVALID_HANDLE_VALUE;
                  });
  const Record record = printAndTake(std::wstring(180, L'd')).stop;
  ASSERT_EQ(created.size(), 2U);
  ASSERT_GT(created[1].size(), 259U);
  EXPECT_EQ(bytesOf(record, field::kOutputPath),
            padded(narrow(created[1].substr(0, 259)), field::kOutputPath));
  EXPECT_EQ(bytesOf(record, field::kDocumentName), padded(std::string(180, 'd'), field::kDocumentName));
}

TEST_F(RecordTest, AnEmptyDocumentNameIsAnEmptyText) {
  settings.setText(L"DefaultSaveFilename", L"Named by default");
  const Record record = printAndTake(L"").stop;
  EXPECT_EQ(bytesOf(record, field::kDocumentName), padded("", field::kDocumentName));
  EXPECT_EQ(textOf(record, field::kOutputPath), pathOf(L"Named by default.pdf"));
}

}  // namespace
}  // namespace quillpress::harness
