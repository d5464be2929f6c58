// The rows of tests/rules about metadata and numbers, asked of the delivered library.

#include <cwchar>

#include "tests/rules/Rows.h"
#include "tests/umpd/metadata/MetadataTest.h"

namespace quillpress::harness {
namespace {

using rules::Row;
using rules::rowsOf;

using RuleRowsTest = MetadataTest;

TEST_F(RuleRowsTest, XmlTexts) {
  settings.setNumber(L"DocInfoEnable", 1);
  for (const Row& row : rowsOf("xml_texts.txt")) {
    settings.setText(L"DocInfoTitle", row.input);
    EXPECT_EQ(title(), row.output) << row;
  }
}

TEST_F(RuleRowsTest, Integers) {
  for (const Row& row : rowsOf("integers.txt")) {
    settings.setText(L"number", row.input);
    EXPECT_EQ(std::to_wstring(Job(library, printer).number(L"number")), row.output) << row;
  }
}

TEST_F(RuleRowsTest, Dates) {
  for (const Row& row : rowsOf("dates.txt")) {
    SYSTEMTIME time{};
    LONG bias = 0;
    ASSERT_EQ(std::swscanf(row.input.c_str(), L"%hu-%hu-%hu %hu:%hu:%hu | %ld", &time.wYear, &time.wMonth,
                           &time.wDay, &time.wHour, &time.wMinute, &time.wSecond, &bias),
              7)
        << row;
    library.replace("GetLocalTime", [=](LPSYSTEMTIME now) { *now = time; });
    // Kept: in summer the offset is that of the winter.
    library.replace("GetTimeZoneInformation", [=](LPTIME_ZONE_INFORMATION zone) -> DWORD {
      *zone = {};
      zone->Bias = bias;
      zone->DaylightBias = -60;
      return TIME_ZONE_ID_DAYLIGHT;
    });
    EXPECT_EQ(dateOf(Job(library, printer).text(L"pdfaXML")), row.output) << row;
  }
}

}  // namespace
}  // namespace quillpress::harness
