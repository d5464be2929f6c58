#include <gtest/gtest.h>

#include "cli/base/Errors.h"
#include "cli/conversion/Converter.h"
#include "cli/conversion/TextPages.h"
#include "cli/spool/AtomicOutput.h"
#include "tests/cli_unit/TemporaryFolder.h"

namespace quillpress::cli {
namespace {

class TextPagesTest : public FolderTest {
 protected:
  void addPage(TextPages& pages, std::string_view text) {
    pages.beginPage();
    pages.append(text);
    pages.endPage(std::nullopt, converter_);
  }

  Converter converter_;
  Spool spool_{folder()};
};

TEST_F(TextPagesTest, CompletePagesAreWrittenInOrder) {
  AtomicOutput output(path("out"));
  TextPages pages(spool_, output);
  addPage(pages, "1 w ");
  addPage(pages, "2 w ");
  EXPECT_EQ(pages.pageCount(), 2U);
  output.commit();
  EXPECT_EQ(read("out"), "1 w 2 w ");
}

TEST_F(TextPagesTest, APageThatIsDroppedIsNotWritten) {
  AtomicOutput output(path("out"));
  TextPages pages(spool_, output);
  pages.beginPage();
  pages.append("1 w ");
  pages.dropPage();
  addPage(pages, "2 w ");
  output.commit();
  EXPECT_EQ(read("out"), "2 w ");
}

TEST_F(TextPagesTest, ContentIsWrittenAsItIsHoweverLarge) {
  AtomicOutput output(path("out"));
  TextPages pages(spool_, output);
  addPage(pages, "10000000000000000000 w ");
  output.commit();
  EXPECT_EQ(read("out"), "10000000000000000000 w ");
}

TEST_F(TextPagesTest, AFullDeviceIsSaid) {
  AtomicOutput output("/dev/full");
  TextPages pages(spool_, output);
  EXPECT_THROW(addPage(pages, std::string(100000, ' ')), OutputError);
}

}  // namespace
}  // namespace quillpress::cli
