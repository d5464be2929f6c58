#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>

#include "cli/batch/WorkerProcess.h"

namespace quillpress::cli {
namespace {

// A task is a number, and what becomes of it its record.
WorkerAnswer work(std::size_t task) {
  if (task == 13) std::raise(SIGKILL);
  if (task == 14) throw 14;
  if (task == 15) return {ExitCode::kInput, std::string(1000000, 'x')};
  return {ExitCode::kCutOff, std::to_string(task) + " in " + std::to_string(getpid())};
}

TEST(WorkerProcessTest, TasksAreDoneInAnotherProcessOneAfterTheOther) {
  auto worker = WorkerProcess::start(work);
  ASSERT_TRUE(worker);
  std::string process;
  for (const std::size_t task : {1U, 2U}) {
    ASSERT_TRUE(worker->give(task));
    const auto answer = worker->answer();
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->code, ExitCode::kCutOff);
    const std::string number = std::to_string(task) + " in ";
    EXPECT_TRUE(answer->record.starts_with(number)) << answer->record;
    const std::string present = answer->record.substr(number.size());
    EXPECT_TRUE(process.empty() || process == present) << present;
    process = present;
  }
  EXPECT_NE(process, std::to_string(getpid()));
  EXPECT_EQ(worker->howItEnded(), "ended by itself");
}

TEST(WorkerProcessTest, OneThatIsKilledGivesNoAnswer) {
  auto worker = WorkerProcess::start(work);
  ASSERT_TRUE(worker);
  ASSERT_TRUE(worker->give(13));
  EXPECT_FALSE(worker->answer());
  EXPECT_EQ(worker->howItEnded(), "was ended by signal 9: Killed");
}

TEST(WorkerProcessTest, OneThatThrowsGivesNoAnswer) {
  auto worker = WorkerProcess::start(work);
  ASSERT_TRUE(worker);
  ASSERT_TRUE(worker->give(14));
  EXPECT_FALSE(worker->answer());
}

TEST(WorkerProcessTest, OfAnAnswerThatIsTooLongTheCodeComes) {
  auto worker = WorkerProcess::start(work);
  ASSERT_TRUE(worker);
  ASSERT_TRUE(worker->give(15));
  const auto answer = worker->answer();
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->code, ExitCode::kInput);
  EXPECT_EQ(answer->record, "");
}

TEST(WorkerProcessTest, OneEndsWhileOthersThatWereStartedLaterGoOn) {
  auto first = WorkerProcess::start(work);
  auto second = WorkerProcess::start(work);
  ASSERT_TRUE(first && second);
  EXPECT_EQ(first->howItEnded(), "ended by itself");
  ASSERT_TRUE(second->give(1));
  EXPECT_TRUE(second->answer());
}

}  // namespace
}  // namespace quillpress::cli
