#include <gtest/gtest.h>

#include "cli/batch/JobRecord.h"

namespace quillpress::cli {
namespace {

TEST(JobRecordTest, EverythingKnownIsInALine) {
  TaskResult result;
  result.code = ExitCode::kPartial;
  result.pages = 2;
  result.bytes = 345;
  result.milliseconds = 1.25;
  result.error = "undefined: foo, page 3, byte 9";
  result.errorName = "undefined";
  result.errorPage = 3;
  result.errorByte = 9;
  result.warnings = {"a", "b"};
  result.substitutedFonts = {"Font"};
  EXPECT_EQ(jobRecord({"a.ps", "a.pdf"}, result),
            R"({"job":"a.ps","output":"a.pdf","code":6,"error":"undefined",)"
            R"("message":"undefined: foo, page 3, byte 9","page":3,"byte":9,"pages":2,)"
            R"("warnings":["a","b"],"fonts":["Font"],"milliseconds":1.250,"bytes":345})");
}

TEST(JobRecordTest, WhatIsNotKnownIsNull) {
  const std::string record = jobRecord({"a.ps", "a.pdf"}, {});
  EXPECT_NE(record.find(R"("error":null,"message":null,"page":null,"byte":null,)"), std::string::npos)
      << record;
}

TEST(JobRecordTest, OfManyWarningsTheFirstAreTold) {
  TaskResult result;
  result.warnings.assign(1000, std::string(1000, 'x'));
  EXPECT_LT(jobRecord({"a.ps", "a.pdf"}, result).size(), 20000U);
}

TEST(JobRecordTest, ASkippedJobSaysSo) {
  EXPECT_EQ(skippedRecord({"a.ps", "a.pdf"}), R"({"job":"a.ps","output":"a.pdf","code":0,"skipped":true})");
}

TEST(JsonStringTest, CharactersAreWrittenSoThatJsonTakesThem) {
  EXPECT_EQ(jsonString("a\"b\\c"), R"("a\"b\\c")");
  EXPECT_EQ(jsonString("\n\x01"), R"("\u000a\u0001")");
  EXPECT_EQ(jsonString("\xC3\xA9"), "\"\xC3\xA9\"");
  EXPECT_EQ(jsonString("caf\xE9"), R"("caf\udce9")");
  EXPECT_EQ(jsonString(""), R"("")");
}

TEST(OutputOfRecordTest, TheOutputIsFoundAgain) {
  for (const char* const name : {"a.pdf", "a\"b\\.pdf", "caf\xE9.pdf", "x\\", "\\\""}) {
    EXPECT_EQ(outputOfRecord(jobRecord({"a.ps", name}, {})), jsonString(name));
    EXPECT_EQ(outputOfRecord(skippedRecord({"a.ps", name})), jsonString(name));
  }
}

TEST(OutputOfRecordTest, OtherLinesHaveNone) {
  const std::string record = jobRecord({"a.ps", "a.pdf"}, {});
  for (const std::string& line : {std::string(), std::string("text"), record.substr(0, record.size() - 1)}) {
    EXPECT_EQ(outputOfRecord(line), "") << line;
  }
}

}  // namespace
}  // namespace quillpress::cli
