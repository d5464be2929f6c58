#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>

#include "cli/batch/WorkerProcess.h"

namespace quillpress::cli {
namespace {

// What becomes of a task is its record: its job, and the process that has done it.
WorkerAnswer work(const Task& task) {
  if (task.job == "killed") std::raise(SIGKILL);
  if (task.job == "thrown") throw 14;
  if (task.job == "long") return {ExitCode::kInput, std::string(1000000, 'x')};
  return {ExitCode::kCutOff, task.job + " in " + std::to_string(getpid())};
}

const std::vector<Task> kTasks{{"one", ""}, {"two", ""}, {"killed", ""}, {"thrown", ""}, {"long", ""}};
constexpr std::size_t kKilled = 2;
constexpr std::size_t kThrown = 3;
constexpr std::size_t kLong = 4;

TEST(WorkerProcessTest, TasksAreDoneInAnotherProcessOneAfterTheOther) {
  auto worker = WorkerProcess::start(kTasks, work);
  ASSERT_TRUE(worker);
  std::string process;
  for (const std::size_t task : {0U, 1U}) {
    ASSERT_TRUE(worker->give(task));
    const auto answer = worker->answer();
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->code, ExitCode::kCutOff);
    const std::string job = kTasks[task].job + " in ";
    EXPECT_TRUE(answer->record.starts_with(job)) << answer->record;
    const std::string present = answer->record.substr(job.size());
    EXPECT_TRUE(process.empty() || process == present) << present;
    process = present;
  }
  EXPECT_NE(process, std::to_string(getpid()));
  EXPECT_EQ(worker->howItEnded(), "ended by itself");
}

TEST(WorkerProcessTest, OneThatIsKilledGivesNoAnswer) {
  auto worker = WorkerProcess::start(kTasks, work);
  ASSERT_TRUE(worker);
  ASSERT_TRUE(worker->give(kKilled));
  EXPECT_FALSE(worker->answer());
  EXPECT_EQ(worker->howItEnded(), "was ended by signal 9: Killed");
}

TEST(WorkerProcessTest, OneThatThrowsGivesNoAnswer) {
  auto worker = WorkerProcess::start(kTasks, work);
  ASSERT_TRUE(worker);
  ASSERT_TRUE(worker->give(kThrown));
  EXPECT_FALSE(worker->answer());
}

TEST(WorkerProcessTest, OfAnAnswerThatIsTooLongTheCodeComes) {
  auto worker = WorkerProcess::start(kTasks, work);
  ASSERT_TRUE(worker);
  ASSERT_TRUE(worker->give(kLong));
  const auto answer = worker->answer();
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->code, ExitCode::kInput);
  EXPECT_EQ(answer->record, "");
}

TEST(WorkerProcessTest, OneEndsWhileOthersThatWereStartedLaterGoOn) {
  auto first = WorkerProcess::start(kTasks, work);
  auto second = WorkerProcess::start(kTasks, work);
  ASSERT_TRUE(first && second);
  EXPECT_EQ(first->howItEnded(), "ended by itself");
  ASSERT_TRUE(second->give(1));
  EXPECT_TRUE(second->answer());
}

TEST(WorkerProcessTest, ThoseAreWaitedForThatHaveAnAnswerOrHaveEnded) {
  auto idle = WorkerProcess::start(kTasks, work);
  auto busy = WorkerProcess::start(kTasks, work);
  auto gone = WorkerProcess::start(kTasks, work);
  ASSERT_TRUE(idle && busy && gone);
  const std::vector<const WorkerProcess*> all{&*idle, &*busy, &*gone};
  EXPECT_TRUE(WorkerProcess::waitForAny(all, std::chrono::milliseconds(1)).empty());
  ASSERT_TRUE(busy->give(0));
  EXPECT_EQ(WorkerProcess::waitForAny(all, std::chrono::seconds(60)), std::vector<std::size_t>{1});
  EXPECT_TRUE(busy->answer());
  ASSERT_TRUE(gone->give(kKilled));
  EXPECT_EQ(WorkerProcess::waitForAny(all, std::chrono::seconds(60)), std::vector<std::size_t>{2});
  EXPECT_FALSE(gone->answer());
}

}  // namespace
}  // namespace quillpress::cli
