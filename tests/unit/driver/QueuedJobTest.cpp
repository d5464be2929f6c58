#include <gtest/gtest.h>

#include <vector>

#include "umpd/rules/QueuedJob.h"

namespace quillpress::driver {
namespace {

QueuedJob at(std::int32_t position, std::uint32_t id) {
  return {id, L"document", 0, position};
}

// The id of the last job; 0 when there is none.
std::uint32_t lastId(const std::vector<QueuedJob>& jobs) {
  const QueuedJob* last = lastInQueue(jobs);
  return last == nullptr ? 0 : last->id;
}

bool isOkWith(std::uint32_t status) {
  const std::vector<QueuedJob> jobs = {{7, L"document", status, 1}};
  return isStatusOk(jobs, 7);
}

TEST(QueuedJobTest, TheGreatestPositionIsLast) {
  EXPECT_EQ(lastId({at(1, 11), at(3, 13), at(2, 12)}), 13U);
  EXPECT_EQ(lastId({at(3, 13), at(1, 11)}), 13U);
  EXPECT_EQ(lastId({at(1, 11)}), 11U);
}

TEST(QueuedJobTest, OfEqualPositionsTheFirstCounts) {
  EXPECT_EQ(lastId({at(1, 11), at(2, 12), at(2, 13), at(2, 14)}), 12U);
  EXPECT_EQ(lastId({at(0, 11), at(0, 12)}), 11U);
}

TEST(QueuedJobTest, PositionZeroCountsAndMinusOneDoesNot) {
  EXPECT_EQ(lastId({at(0, 11)}), 11U);
  EXPECT_EQ(lastInQueue(std::vector<QueuedJob>{at(-1, 11)}), nullptr);
  EXPECT_EQ(lastId({at(-1, 11), at(0, 12)}), 12U);
}

TEST(QueuedJobTest, AnEmptyQueueHasNoLastJob) {
  EXPECT_EQ(lastInQueue({}), nullptr);
}

// Jobs that the spooler counts without listing them are zero.
TEST(QueuedJobTest, UnlistedJobsDoNotHideListedOnes) {
  EXPECT_EQ(lastId({at(1, 11), at(2, 12), {}, {}}), 12U);
}

TEST(QueuedJobTest, TheLastJobIsTheListsOwn) {
  const std::vector<QueuedJob> jobs = {at(1, 11), at(2, 12)};
  EXPECT_EQ(lastInQueue(jobs), &jobs[1]);
}

TEST(QueuedJobTest, EachBitThatHoldsAJobUpIsBad) {
  for (const std::uint32_t bit : {0x1U, 0x2U, 0x20U, 0x40U, 0x200U}) EXPECT_FALSE(isOkWith(bit)) << bit;
}

TEST(QueuedJobTest, EveryOtherBitIsFine) {
  constexpr std::uint32_t kBad = 0x263;
  for (std::uint32_t bit = 1; bit != 0; bit <<= 1) EXPECT_EQ(isOkWith(bit), (bit & kBad) == 0) << bit;
  EXPECT_TRUE(isOkWith(0));
  EXPECT_TRUE(isOkWith(~kBad));
}

TEST(QueuedJobTest, AJobBeingDeletedIsFineUnlessItIsHeldUpAsWell) {
  EXPECT_TRUE(isOkWith(0x4));
  EXPECT_FALSE(isOkWith(0x4 | 0x2));
  EXPECT_FALSE(isOkWith(0x1 | 0x10));
}

TEST(QueuedJobTest, AJobThatIsNotQueuedIsFine) {
  EXPECT_TRUE(isStatusOk({}, 7));
  const std::vector<QueuedJob> jobs = {{6, L"other", 0x2, 1}};
  EXPECT_TRUE(isStatusOk(jobs, 7));
}

TEST(QueuedJobTest, OnlyTheJobsOwnStatusCounts) {
  const std::vector<QueuedJob> jobs = {{6, L"other", 0x2, 1}, {7, L"document", 0, 2}, {8, L"third", 0x1, 3}};
  EXPECT_TRUE(isStatusOk(jobs, 7));
  EXPECT_FALSE(isStatusOk(jobs, 6));
  EXPECT_FALSE(isStatusOk(jobs, 8));
}

}  // namespace
}  // namespace quillpress::driver
