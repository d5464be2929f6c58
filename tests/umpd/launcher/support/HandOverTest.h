#pragma once

#include <string>

#include "tests/umpd/harness/Driver.h"
#include "tests/umpd/harness/DriverTest.h"
#include "tests/umpd/harness/Printer.h"
#include "tests/umpd/harness/Queue.h"
#include "tests/umpd/harness/SettingsKey.h"
#include "tests/umpd/harness/Text.h"
#include "tests/umpd/harness/UserName.h"
#include "tests/umpd/launcher/support/Channel.h"
#include "tests/umpd/launcher/support/Peer.h"
#include "tests/umpd/launcher/support/TemporaryFolder.h"

namespace quillpress::harness {

// Jobs of a user of the test's own: no launcher listens to them but the one that the test makes. Their files
// go into a folder of the test, named after the document.
class HandOverTest : public DriverTest {
 protected:
  HandOverTest() {
    pretendUser(library, user);
    settings.setText(L"DefaultSaveDir", folder.path());
  }

  // Whether a job is being served, as another thread or process sees it.
  [[nodiscard]] static bool jobMutexIsTaken();

  // A whole job of one block.
  void print(const std::wstring& documentName) {
    Job job(library, printer, documentName, 1);
    EXPECT_EQ(job.write("%!PS"), 1);
    EXPECT_EQ(job.end(), 1);
  }

  const std::wstring user = ownUserName();
  const Channel channel = channelOf(user);
  const TemporaryFolder folder;
  const Printer printer;
  const SettingsKey settings = SettingsKey::ofPrinter(printer.name());
  Queue queue{library};
};

}  // namespace quillpress::harness
