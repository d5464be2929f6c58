#include <gtest/gtest.h>
#include <signal.h>

#include <atomic>
#include <stdexcept>

#include "cli/spool/DeflateTask.h"
#include "cli/spool/SpoolWorker.h"
#include "cli/system/posix/BlockedSignals.h"
#include "tests/cli_unit/TemporaryFolder.h"

namespace quillpress::cli {
namespace {

class SpoolWorkerTest : public FolderTest {
 protected:
  static SpoolWorker::Task appending(std::string text) {
    return [text = std::move(text)](Spool& spool) { return spool.append(text); };
  }

  Spool spool_{folder()};
};

TEST_F(SpoolWorkerTest, TasksRunInTheirOrder) {
  SpoolWorker worker(spool_);
  for (std::size_t i = 0; i < 100; ++i) EXPECT_EQ(worker.submit(appending(std::string(i, 'a'))), i);
  const auto pieces = worker.finish();
  ASSERT_EQ(pieces.size(), 100U);
  std::uint64_t offset = 0;
  for (std::size_t i = 0; i < 100; ++i) {
    EXPECT_EQ(pieces[i].offset, offset);
    EXPECT_EQ(pieces[i].length, i);
    offset += i;
  }
}

TEST_F(SpoolWorkerTest, NothingToDoIsDone) {
  SpoolWorker worker(spool_);
  EXPECT_TRUE(worker.finish().empty());
}

TEST_F(SpoolWorkerTest, AFailureComesOutAtTheEnd) {
  SpoolWorker worker(spool_);
  worker.submit([](Spool&) -> Spool::Piece { throw std::runtime_error("full"); });
  EXPECT_THROW(worker.finish(), std::runtime_error);
}

TEST_F(SpoolWorkerTest, AFailureStopsTheOneWhoHandsOver) {
  SpoolWorker worker(spool_);
  worker.submit([](Spool&) -> Spool::Piece { throw std::runtime_error("full"); });
  EXPECT_THROW(
      {
        for (int i = 0; i < 100; ++i) worker.submit(appending("x"));
      },
      std::runtime_error);
}

TEST_F(SpoolWorkerTest, WaitingTasksAreDroppedWithTheWorker) {
  std::atomic<int> ran = 0;
  {
    std::atomic<bool> mayEnd = false;
    SpoolWorker worker(spool_);
    worker.submit([&](Spool&) {
      while (!mayEnd) std::this_thread::yield();
      ++ran;
      return Spool::Piece{};
    });
    mayEnd = true;
  }
  EXPECT_LE(ran, 1);
}

TEST_F(SpoolWorkerTest, ItsThreadHoldsEndingSignalsBack) {
  sigset_t held;
  sigemptyset(&held);
  SpoolWorker worker(spool_);
  worker.submit([&](Spool&) {
    pthread_sigmask(SIG_SETMASK, nullptr, &held);
    return Spool::Piece{};
  });
  worker.finish();
  for (const int number : kEndingSignals) EXPECT_EQ(sigismember(&held, number), 1) << number;
  pthread_sigmask(SIG_SETMASK, nullptr, &held);
  for (const int number : kEndingSignals) EXPECT_EQ(sigismember(&held, number), 0) << number;
}

TEST_F(SpoolWorkerTest, ADeflateTaskCompressesIntoTheSpool) {
  const Deflater deflater;
  SpoolWorker worker(spool_);
  worker.submit(deflateTask(deflater, std::string(10000, 'a')));
  const auto pieces = worker.finish();
  ASSERT_EQ(pieces.size(), 1U);
  EXPECT_EQ(pieces[0].length, deflater.deflatedSize(std::string(10000, 'a')));
  EXPECT_EQ(spool_.size(), pieces[0].length);
}

}  // namespace
}  // namespace quillpress::cli
