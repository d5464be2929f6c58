#include <gtest/gtest.h>

#include "cli/base/Errors.h"
#include "cli/conversion/Converter.h"
#include "cli/pdf/PdfPages.h"
#include "tests/cli_unit/TemporaryFolder.h"

namespace quillpress::cli {
namespace {

class PdfPagesTest : public FolderTest {
 protected:
  void addPage(std::string_view text, const std::optional<Box>& box = std::nullopt) {
    pages_.beginPage();
    pages_.append(text);
    pages_.endPage(box, converter_);
  }

  Converter converter_;
  Spool spool_{folder()};
  PdfPages pages_{spool_};
};

TEST_F(PdfPagesTest, PagesHaveTheirContentAndTheirBox) {
  addPage("1 w ", Box{0, 0, 20, 30});
  addPage("2 w ");
  pages_.finish();
  const Document& document = pages_.document();
  ASSERT_EQ(document.pages.size(), 2U);
  EXPECT_EQ(document.pages[0].box, (Box{0, 0, 20, 30}));
  EXPECT_EQ(document.pages[1].box, std::nullopt);
  EXPECT_EQ(document.pages[0].content, std::vector<std::size_t>{0});
  EXPECT_EQ(document.pages[1].content, std::vector<std::size_t>{1});
  EXPECT_EQ(document.pieces.size(), 2U);
}

TEST_F(PdfPagesTest, ADroppedPageIsNone) {
  pages_.beginPage();
  pages_.append("1 w ");
  pages_.dropPage();
  addPage("2 w ");
  pages_.finish();
  EXPECT_EQ(pages_.document().pages.size(), 1U);
}

TEST_F(PdfPagesTest, APageWithNumbersOutOfRangeCanBeDropped) {
  pages_.beginPage();
  EXPECT_THROW(pages_.append("1000000000000000000000 w "), PageError);
  pages_.dropPage();
  addPage("2 w ");
  pages_.finish();
  EXPECT_EQ(pages_.document().pages.size(), 1U);
}

TEST_F(PdfPagesTest, ObjectsThatAPageNamesAreListedInOrder) {
  addPage("/PSI9001 Do /PA9000 scn ");
  EXPECT_EQ(pages_.document().pages[0].objects, (std::vector<unsigned>{9000, 9001}));
  EXPECT_TRUE(pages_.objects().objects().empty());
}

}  // namespace
}  // namespace quillpress::cli
