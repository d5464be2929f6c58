// The rows of tests/rules, asked of the functions themselves.

#include <gtest/gtest.h>

#include <cwchar>

#include "tests/rules/Rows.h"
#include "umpd/rules/DocumentName.h"
#include "umpd/rules/OutputPath.h"
#include "umpd/rules/SettingText.h"
#include "umpd/rules/XmpPacket.h"

namespace quillpress::driver {
namespace {

using rules::Row;
using rules::rowsOf;

TEST(RuleRowsTest, FileNames) {
  const NamingWorld world{[](const std::wstring&) { return false; },
                          [](const std::wstring&) { return false; }, [] { return 1; }};
  for (const Row& row : rowsOf("file_names.txt")) {
    NamingRules rules;
    rules.action = 3;
    rules.folder = L"C:\\Out";
    const std::wstring trim = row.settings.at("trim");
    rules.trimCharacter = trim.size() == 1 ? trim.front() : wchar_t{0xFFFF};
    rules.extension = row.settings.at("extension");
    EXPECT_EQ(chooseOutputPath(rules, row.input, 780, world), L"C:\\Out\\" + row.output) << row;
  }
}

TEST(RuleRowsTest, DecodedNames) {
  for (const Row& row : rowsOf("decoded_names.txt"))
    EXPECT_EQ(decodeDocumentName(row.input), row.output) << row;
}

TEST(RuleRowsTest, XmlTexts) {
  for (const Row& row : rowsOf("xml_texts.txt")) EXPECT_EQ(xmlEscape(row.input), row.output) << row;
}

TEST(RuleRowsTest, Integers) {
  for (const Row& row : rowsOf("integers.txt"))
    EXPECT_EQ(std::to_wstring(toInteger(row.input)), row.output) << row;
}

TEST(RuleRowsTest, Dates) {
  for (const Row& row : rowsOf("dates.txt")) {
    std::tm time{};
    long bias = 0;
    ASSERT_EQ(std::swscanf(row.input.c_str(), L"%d-%d-%d %d:%d:%d | %ld", &time.tm_year, &time.tm_mon,
                           &time.tm_mday, &time.tm_hour, &time.tm_min, &time.tm_sec, &bias),
              7)
        << row;
    time.tm_year -= 1900;
    time.tm_mon -= 1;
    EXPECT_EQ(formatXmpDate(time, bias), row.output) << row;
  }
}

}  // namespace
}  // namespace quillpress::driver
