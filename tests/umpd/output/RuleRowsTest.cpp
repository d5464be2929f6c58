// The rows of tests/rules about names, asked of the delivered library by printing.

#include "tests/rules/Rows.h"
#include "tests/umpd/harness/Watchdog.h"
#include "tests/umpd/output/NamingTest.h"

namespace quillpress::harness {
namespace {

using rules::Row;
using rules::rowsOf;

class RuleRowsTest : public NamingTest {
 protected:
  RuleRowsTest() { Watchdog::allow(200); }
};

TEST_F(RuleRowsTest, FileNames) {
  for (const Row& row : rowsOf("file_names.txt")) {
    const std::wstring trim = row.settings.at("trim");
    settings.setNumber(L"TrimNameChar", trim.size() == 1 ? DWORD{trim.front()} : 0xFFFF);
    setExtension(row.settings.at("extension"));
    const std::wstring path = place(row.input);
    EXPECT_EQ(path, inFolder(row.output)) << row;
    DeleteFileW(path.c_str());
  }
}

TEST_F(RuleRowsTest, DecodedNames) {
  setAction(1);
  for (const Row& row : rowsOf("decoded_names.txt")) {
    setDefaultName(L"file.pdf");
    const std::wstring path = place(row.input);
    EXPECT_EQ(settings.text(L"DocName"), row.output) << row;
    DeleteFileW(path.c_str());
  }
}

}  // namespace
}  // namespace quillpress::harness
