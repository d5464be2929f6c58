// A launcher that does not answer: the printing thread waits for as long as it takes.

#include "tests/umpd/launcher/support/HandOverTest.h"

namespace quillpress::harness {
namespace {

constexpr DWORD kLongEnough = 700;

class WaitingTest : public HandOverTest {
 protected:
  static Peer::Options silent() {
    Peer::Options options;
    options.acknowledges = false;
    return options;
  }
};

TEST_F(WaitingTest, TheBeginningJobWaits) {
  const Peer peer(channel, silent());
  int result = -1;
  {
    Job job(library, printer, L"Document", 1);
    const Thread writing([&] { result = job.write("a"); });
    ASSERT_TRUE(peer.receives());
    EXPECT_FALSE(writing.endsWithin(kLongEnough));
    EXPECT_TRUE(folder.files().empty());
    peer.acknowledge();
    EXPECT_TRUE(writing.endsWithin(10000));
    const Thread ending([&] { job.end(); });
    ASSERT_TRUE(peer.receives());
    peer.acknowledge();
  }
  EXPECT_EQ(result, 1);
}

TEST_F(WaitingTest, TheEndingJobWaits) {
  settings.setNumber(L"showPrintStatusWin", 0);
  const Peer peer(channel, silent());
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("a"), 1);
  int result = -1;
  {
    const Thread ending([&] { result = job.end(); });
    ASSERT_TRUE(peer.receives());
    EXPECT_FALSE(ending.endsWithin(kLongEnough));
    peer.acknowledge();
  }
  EXPECT_EQ(result, 1);
}

TEST_F(WaitingTest, OtherJobsWaitMeanwhile) {
  settings.setNumber(L"showPrintStatusWin", 0);
  const Peer peer(channel, silent());
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("a"), 1);
  Job other(library, printer, L"Other", 2);
  {
    const Thread ending([&] { job.end(); });
    ASSERT_TRUE(peer.receives());
    const Thread writing([&] { EXPECT_EQ(other.write("b"), 1); });
    EXPECT_FALSE(writing.endsWithin(kLongEnough));
    peer.acknowledge();
    EXPECT_TRUE(writing.endsWithin(10000));
  }
  const Thread ending([&] { other.end(); });
  ASSERT_TRUE(peer.receives());
  peer.acknowledge();
}

TEST_F(WaitingTest, TheAcknowledgeEventLivesForOneMessage) {
  // So the next message cannot be answered beforehand.
  settings.setNumber(L"showPrintStatusWin", 0);
  const Peer peer(channel, silent());
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("a"), 1);
  const Thread ending([&] { job.end(); });
  ASSERT_TRUE(peer.receives());
  peer.acknowledge();
  ASSERT_TRUE(ending.endsWithin(10000));
  const Handle event(OpenEventW(EVENT_MODIFY_STATE, FALSE, channel.acknowledgeEvent().c_str()));
  EXPECT_FALSE(event);
}

TEST_F(WaitingTest, TheAcknowledgeEventResetsItself) {
  std::vector<bool> manual;
  std::vector<bool> signalled;
  library.replace(
      "CreateEventW",
      [&](LPSECURITY_ATTRIBUTES security, BOOL isManual, BOOL isSignalled, LPCWSTR name) -> HANDLE {
        if (name == channel.acknowledgeEvent()) {
          manual.push_back(isManual != FALSE);
          signalled.push_back(isSignalled != FALSE);
        }
        return ::CreateEventW(security, isManual, isSignalled, name);
      });
  const Peer peer(channel);
  print(L"Document");
  EXPECT_EQ(manual, (std::vector<bool>{false, false}));
  EXPECT_EQ(signalled, (std::vector<bool>{false, false}));
}

}  // namespace
}  // namespace quillpress::harness
