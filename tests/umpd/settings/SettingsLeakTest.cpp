// Whatever settings open, they close.

#include "tests/umpd/harness/HandleCount.h"
#include "tests/umpd/harness/Watchdog.h"
#include "tests/umpd/settings/SettingsTest.h"

namespace quillpress::harness {
namespace {

class SettingsLeakTest : public SettingsTest {
 protected:
  SettingsLeakTest() { Watchdog::allow(240); }

  // As many handles are open after many rounds as after few.
  template <class Round>
  void expectNoLeak(Round round) {
    for (int i = 0; i < 10; ++i) round();
    const unsigned long few = handleCount();
    for (int i = 0; i < 990; ++i) round();
    expectNoMoreHandlesThan(few);
  }
};

TEST_F(SettingsLeakTest, JobsThatReadTheirSettingsLeaveNoHandle) {
  expectNoLeak([this] {
    const Job job(library, printer);
    EXPECT_EQ(job.number(L"imageDPI"), 300);
    EXPECT_EQ(job.text(L"DefaultSaveFilename"), L"tmp.pdf");
  });
}

TEST_F(SettingsLeakTest, JobsStartedByNameLeaveNoHandle) {
  expectNoLeak([this] { EXPECT_NE(Job(library, printer.name()).handle(), 0U); });
}

TEST_F(SettingsLeakTest, JobsOfNewPrintersWithAnIniFileLeaveNoHandle) {
  folder.writeIni("[init]\noverrideUserSettings=1\nimageDPI=600\nwatermark=Draft\n");
  expectNoLeak([this] {
    key.removeTree();
    EXPECT_EQ(Job(library, printer).number(L"imageDPI"), 600);
  });
}

TEST_F(SettingsLeakTest, JobsOnNt4LeaveNoHandle) {
  pretend(library, kWindowsNt4);
  byName.makeAbsent("RegOpenCurrentUser");
  expectNoLeak([this] { EXPECT_NE(Job(library, printer.name()).handle(), 0U); });
}

TEST_F(SettingsLeakTest, RefusedJobsLeaveNoHandle) {
  expectNoLeak([this] {
    EXPECT_EQ(Job(library, std::wstring(L"No such printer")).handle(), 0U);
    EXPECT_EQ(boxes.take().size(), 1U);
  });
}

}  // namespace
}  // namespace quillpress::harness
