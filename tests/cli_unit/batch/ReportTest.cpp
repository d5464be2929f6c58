#include <gtest/gtest.h>

#include "cli/base/Errors.h"
#include "cli/batch/JobRecord.h"
#include "cli/batch/Report.h"
#include "tests/cli_unit/TemporaryFolder.h"

namespace quillpress::cli {
namespace {

class ReportTest : public FolderTest {
 protected:
  static constexpr bool kGoesOn = true;
  static constexpr bool kBeginsAnew = false;
  const Task task_{"a.ps", "a.pdf"};
};

TEST_F(ReportTest, LinesAreThereAtOnce) {
  Report report(path("report"), kBeginsAnew);
  report.add("one");
  report.add("two");
  EXPECT_EQ(read("report"), "one\ntwo\n");
}

TEST_F(ReportTest, AReportThatBeginsAnewForgets) {
  write("report", skippedRecord(task_) + "\n");
  const Report report(path("report"), kBeginsAnew);
  EXPECT_EQ(read("report"), "");
  EXPECT_FALSE(report.knows(task_));
}

TEST_F(ReportTest, AReportThatGoesOnKeepsWholeLinesAndKnowsThem) {
  const std::string before = skippedRecord(task_) + "\n";
  write("report", before + R"({"job":"b.ps","output":"b.pdf")");
  Report report(path("report"), kGoesOn);
  EXPECT_TRUE(report.knows(task_));
  EXPECT_FALSE(report.knows({"b.ps", "b.pdf"}));
  report.add("next");
  EXPECT_EQ(read("report"), before + "next\n");
}

TEST_F(ReportTest, WithoutANameNothingIsWritten) {
  Report report("", kGoesOn);
  EXPECT_FALSE(report.isWanted());
  report.add("line");
}

TEST_F(ReportTest, AFullDeviceIsAnOutputError) {
  Report report("/dev/full", kGoesOn);
  EXPECT_THROW(report.add("line"), OutputError);
  EXPECT_THROW(Report(path("none/report"), kGoesOn), OutputError);
}

}  // namespace
}  // namespace quillpress::cli
