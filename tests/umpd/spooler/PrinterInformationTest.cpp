// What the spooler tells of a printer, and what happens when it does not.

#include <cstring>
#include <cwchar>
#include <vector>

#include "tests/umpd/spooler/SpoolerTest.h"

namespace quillpress::harness {
namespace {

class PrinterInformationTest : public SpoolerTest {
 protected:
  struct Question {
    HANDLE printer;
    DWORD level;
    bool hasBuffer;
    DWORD size;
  };

  // The spooler answers as `answer` says; the questions are noted.
  template <class Answer>
  void answerWith(Answer answer) {
    library.replace(
        "GetPrinterA",
        [this, answer](HANDLE handle, DWORD level, LPBYTE buffer, DWORD size, LPDWORD needed) -> BOOL {
          questions.push_back({handle, level, buffer != nullptr, size});
          return answer(handle, level, buffer, size, needed);
        });
  }

  // The spooler gives the printer this name, in the ANSI code page; null for none at all.
  void nameThePrinter(const char* name) {
    answerWith([name](HANDLE, DWORD, LPBYTE buffer, DWORD size, LPDWORD needed) -> BOOL {
      const std::size_t length = name == nullptr ? 0 : std::strlen(name) + 1;
      *needed = static_cast<DWORD>(sizeof(PRINTER_INFO_2A) + length);
      if (size < *needed) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return FALSE;
      }
      auto* record = reinterpret_cast<PRINTER_INFO_2A*>(buffer);
      *record = {};
      if (name == nullptr) return TRUE;
      record->pPrinterName = reinterpret_cast<char*>(record + 1);
      std::memcpy(record->pPrinterName, name, length);
      return TRUE;
    });
  }

  // Jobs of both kinds fail, each with its box.
  void expectBothKindsToFail() {
    const Job byHandle(library, printer);
    EXPECT_EQ(byHandle.handle(), 0U);
    expectPlainBox(L"umpd - Could not retrieve printer info");
    expectFailureByName();
  }

  void expectFailureByName() {
    HANDLE opened = nullptr;
    library.replace("OpenPrinterW", [&](LPWSTR name, LPHANDLE handle, LPPRINTER_DEFAULTSW defaults) -> BOOL {
      const BOOL done = ::OpenPrinterW(name, handle, defaults);
      opened = *handle;
      return done;
    });
    const Job named(library, printer.name());
    EXPECT_EQ(named.handle(), 0U);
    const auto number = static_cast<unsigned>(reinterpret_cast<ULONG_PTR>(opened));
    std::wstring text(300, L'\0');
    text.resize(static_cast<std::size_t>(std::swprintf(
        text.data(), text.size(), L"umpd - Could not retrieve printer info - handle [%d](0x%x), [%ls]",
        static_cast<int>(number), number, printer.name().c_str())));
    expectPlainBox(text);
  }

  std::vector<Question> questions;
};

TEST_F(PrinterInformationTest, IsAskedForItsSizeFirst) {
  answerWith(::GetPrinterA);
  const Job job(library, printer);
  ASSERT_GE(questions.size(), 2U);
  EXPECT_EQ(questions[0].printer, printer.handle());
  EXPECT_EQ(questions[0].level, 2U);
  EXPECT_FALSE(questions[0].hasBuffer);
  EXPECT_EQ(questions[0].size, 0U);
  EXPECT_EQ(questions[1].printer, printer.handle());
  EXPECT_EQ(questions[1].level, 2U);
  EXPECT_TRUE(questions[1].hasBuffer);
  DWORD needed = 0;
  ::GetPrinterA(printer.handle(), 2, nullptr, 0, &needed);
  EXPECT_EQ(questions[1].size, needed);
}

TEST_F(PrinterInformationTest, ItsNameDecidesWhichSettingsAreUsed) {
  const Printer other;
  SettingsKey::ofPrinter(other.name()).setText(L"mark", L"the other's");
  nameThePrinter("no such name");
  const SettingsKey named = SettingsKey::ofPrinter(L"no such name");
  named.setText(L"mark", L"the named one's");
  EXPECT_EQ(Job(library, other).text(L"mark"), L"the named one's");
  named.removeTree();
}

TEST_F(PrinterInformationTest, ItsNameIsInTheAnsiCodePage) {
  nameThePrinter("Drucker \xFC \x80");
  const SettingsKey named = SettingsKey::ofPrinter(L"Drucker \u00FC \u20AC");
  named.setText(L"mark", L"here");
  EXPECT_EQ(Job(library, printer).text(L"mark"), L"here");
  named.removeTree();
}

TEST_F(PrinterInformationTest, ASizeOfZeroIsAFailure) {
  answerWith([](HANDLE, DWORD, LPBYTE, DWORD, LPDWORD needed) -> BOOL {
    *needed = 0;
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
  });
  expectBothKindsToFail();
  for (const Question& question : questions) EXPECT_FALSE(question.hasBuffer);
}

TEST_F(PrinterInformationTest, ASecondCallThatFailsIsAFailure) {
  answerWith([](HANDLE, DWORD, LPBYTE buffer, DWORD, LPDWORD needed) -> BOOL {
    *needed = 1000;
    SetLastError(buffer == nullptr ? ERROR_INSUFFICIENT_BUFFER : ERROR_ACCESS_DENIED);
    return FALSE;
  });
  expectBothKindsToFail();
}

TEST_F(PrinterInformationTest, ASizeBeyondAllMemoryIsAFailure) {
  answerWith([](HANDLE, DWORD, LPBYTE, DWORD, LPDWORD needed) -> BOOL {
    *needed = 0xFFFF0000;
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return FALSE;
  });
  expectBothKindsToFail();
  for (const Question& question : questions) EXPECT_FALSE(question.hasBuffer);
}

TEST_F(PrinterInformationTest, AnEmptyNameIsAFailure) {
  nameThePrinter("");
  expectBothKindsToFail();
}

TEST_F(PrinterInformationTest, AMissingNameIsAFailure) {
  nameThePrinter(nullptr);
  expectBothKindsToFail();
}

TEST_F(PrinterInformationTest, WithoutAPrinterTheSpoolerIsNotAsked) {
  answerWith(::GetPrinterA);
  const Driver driver(library);
  std::wstring document = L"Document";
  EXPECT_EQ(driver.docStart2K(nullptr, 1, document.data(), document.data()), 0U);
  expectPlainBox(L"umpd - Could not retrieve printer info");
  EXPECT_TRUE(questions.empty());
}

TEST_F(PrinterInformationTest, AHandleThatIsNoPrinterIsAFailure) {
  const Driver driver(library);
  std::wstring document = L"Document";
  EXPECT_EQ(driver.docStart2K(reinterpret_cast<HANDLE>(0x12345), 1, document.data(), document.data()), 0U);
  expectPlainBox(L"umpd - Could not retrieve printer info");
}

TEST_F(PrinterInformationTest, AHandleAbove31BitsIsShownAsANegativeNumber) {
  library.replace("OpenPrinterW", [](LPWSTR, LPHANDLE handle, LPPRINTER_DEFAULTSW) -> BOOL {
    *handle = reinterpret_cast<HANDLE>(0x80000001);
    return TRUE;
  });
  library.replace("ClosePrinter", [](HANDLE handle) -> BOOL {
    EXPECT_EQ(handle, reinterpret_cast<HANDLE>(0x80000001));
    return TRUE;
  });
  answerWith([](HANDLE, DWORD, LPBYTE, DWORD, LPDWORD) -> BOOL { return FALSE; });
  EXPECT_EQ(Job(library, L"Quill").handle(), 0U);
  expectPlainBox(L"umpd - Could not retrieve printer info - handle [-2147483647](0x80000001), [Quill]");
}

}  // namespace
}  // namespace quillpress::harness
