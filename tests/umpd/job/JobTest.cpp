#include "tests/umpd/job/JobTest.h"

namespace quillpress::harness {

JobTest::JobTest() {
  pretendUser(library, user);
  settings.setNumber(L"FinishPrintEv", 1);
  settings.setText(L"DefaultSaveDir", folder.path());
}

void JobTest::expectErrorBox(const std::wstring& text) {
  const Box box = boxes.takeOne();
  EXPECT_EQ(box.text, text);
  EXPECT_EQ(box.caption, L"Error");
  EXPECT_FALSE(box.wide);
  EXPECT_EQ(box.owner, nullptr);
  EXPECT_NE(box.style & MB_SERVICE_NOTIFICATION, 0U);
}

int JobTest::print(const std::wstring& documentName, const std::string& block) const {
  Job job(library, printer, documentName, 1);
  EXPECT_NE(job.handle(), 0U);
  const int written = job.write(block);
  EXPECT_EQ(job.end(), 1);
  return written;
}

}  // namespace quillpress::harness
