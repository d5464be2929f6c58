// What the driver's functions say to a handle that is no living job.

#include <array>

#include "tests/umpd/job/JobTest.h"

namespace quillpress::harness {
namespace {

class HandleTest : public JobTest {
 protected:
  void expectInvalid(JobHandle handle) {
    EXPECT_EQ(driver.docWrite(handle, "x", 1), 0);
    expectErrorBox(L"DocWrite invalid parms");
    EXPECT_EQ(driver.docEnd(handle), 0);
    expectErrorBox(L"DocEnd invalid parms");
  }
};

TEST_F(HandleTest, NullIsInvalid) {
  expectInvalid(0);
}

TEST_F(HandleTest, OneThatWasNeverGivenIsInvalid) {
  expectInvalid(0x1234);
  expectInvalid(0xFFFFFFFF);
}

TEST_F(HandleTest, OneThatPointsAtSomethingElseIsInvalid) {
  std::array<char, 16384> other{};
  expectInvalid(static_cast<JobHandle>(reinterpret_cast<std::uintptr_t>(other.data())));
}

TEST_F(HandleTest, OneThatHasEndedIsInvalid) {
  Job job(library, printer);
  const JobHandle handle = job.handle();
  job.write("x");
  job.end();
  expectInvalid(handle);
}

TEST_F(HandleTest, OneThatHasEndedWithoutABlockIsInvalid) {
  Job job(library, printer);
  const JobHandle handle = job.handle();
  job.end();
  expectInvalid(handle);
}

TEST_F(HandleTest, AnInvalidOneLeavesOtherJobsAlone) {
  Job job(library, printer);
  expectInvalid(job.handle() + 4);
  EXPECT_EQ(job.write("x"), 1);
  EXPECT_EQ(job.end(), 1);
}

}  // namespace
}  // namespace quillpress::harness
