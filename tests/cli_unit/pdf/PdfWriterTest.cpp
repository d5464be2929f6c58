#include <gtest/gtest.h>

#include <qpdf/QPDF.hh>

#include "cli/base/Errors.h"
#include "cli/pdf/PdfWriter.h"
#include "tests/cli_unit/TemporaryFolder.h"
#include "tests/cli_unit/pdf/RecordFixture.h"

namespace quillpress::cli {
namespace {

class PdfWriterTest : public FolderTest {
 protected:
  PdfWriterTest() {
    setenv("SOURCE_DATE_EPOCH", "0", 1);
    document_.defaultBox = Box{0, 0, 100, 200};
  }
  ~PdfWriterTest() override { unsetenv("SOURCE_DATE_EPOCH"); }

  void addPage(const std::string& content, std::vector<unsigned> objects = {}) {
    DocumentPage page;
    page.content.push_back(worker_.submit([this, content](Spool& spool) {
      Spool::Piece piece;
      deflater_.deflate(content, [&](std::string_view bytes) { piece = spool.append(bytes); });
      return piece;
    }));
    page.objects = std::move(objects);
    document_.pages.push_back(std::move(page));
  }

  // The file that comes of the document, as another program reads it.
  QPDF& written() {
    document_.pieces = worker_.finish();
    const std::string file = path("out.pdf");
    std::FILE* const out = std::fopen(file.c_str(), "w");
    writePdf(document_, store_, spool_, out);
    std::fclose(out);
    pdf_.processFile(file.c_str());
    EXPECT_FALSE(pdf_.anyWarnings());
    return pdf_;
  }

  QPDFObjectHandle page(std::size_t number) { return pdf_.getAllPages().at(number); }

  static std::string textOf(QPDFObjectHandle stream) {
    const auto buffer = stream.getStreamData();
    return {reinterpret_cast<const char*>(buffer->getBuffer()), buffer->getSize()};
  }

  Spool spool_{folder()};
  Deflater deflater_;
  SpoolWorker worker_{spool_};
  ObjectStore store_{worker_, deflater_};
  Document document_;
  QPDF pdf_;
};

TEST_F(PdfWriterTest, PagesComeInOrderWithTheirContent) {
  addPage("1 w");
  addPage("2 w");
  ASSERT_EQ(written().getAllPages().size(), 2U);
  EXPECT_EQ(textOf(page(0).getKey("/Contents")), "1 w");
  EXPECT_EQ(textOf(page(1).getKey("/Contents")), "2 w");
}

TEST_F(PdfWriterTest, APageHasItsOwnSizeOrTheDefaultOne) {
  addPage("1 w");
  addPage("2 w");
  document_.pages[1].box = Box{0, 0, 20.5, 30};
  written();
  EXPECT_EQ(page(0).getKey("/MediaBox").unparse(), "[ 0 0 100 200 ]");
  EXPECT_EQ(page(1).getKey("/MediaBox").unparse(), "[ 0 0 20.5 30 ]");
}

TEST_F(PdfWriterTest, TheUsersSizeGoesBeforeAll) {
  addPage("1 w");
  document_.pages[0].box = Box{0, 0, 20.5, 30};
  document_.media = Box{0, 0, 595, 842};
  written();
  EXPECT_EQ(page(0).getKey("/MediaBox").unparse(), "[ 0 0 595 842 ]");
}

TEST_F(PdfWriterTest, PagesNameWhatTheyDrawAndShareIt) {
  Records records;
  records.addImage(kGrayImage, "abcd");
  records.addPattern(kCell, "q /PSI1 Do Q ");
  store_.keep({2}, records.list());
  addPage("/PSI1 Do", {1});
  addPage("/PA2 scn", {2});
  written();
  auto image = page(0).getKey("/Resources").getKey("/XObject").getKey("/PSI1");
  auto pattern = page(1).getKey("/Resources").getKey("/Pattern").getKey("/PA2");
  EXPECT_EQ(textOf(image), "abcd");
  EXPECT_EQ(textOf(pattern), "q /PSI1 Do Q ");
  auto inner = pattern.getDict().getKey("/Resources").getKey("/XObject").getKey("/PSI1");
  EXPECT_EQ(inner.getObjGen(), image.getObjGen());
  EXPECT_FALSE(page(0).getKey("/Resources").hasKey("/Pattern"));
}

TEST_F(PdfWriterTest, APatternIsWrittenAsItWasCaptured) {
  Records records;
  records.addPattern(kCell, "Q 1 w q q ");
  store_.keep({1}, records.list());
  addPage("/PA1 scn", {1});
  written();
  EXPECT_EQ(textOf(page(0).getKey("/Resources").getKey("/Pattern").getKey("/PA1")), "Q 1 w q q ");
}

TEST_F(PdfWriterTest, ObjectsThatNobodyHasAreLeftOut) {
  addPage("/PSI9 Do", {9});
  written();
  EXPECT_EQ(page(0).getKey("/Resources").unparse(), "<< >>");
}

TEST_F(PdfWriterTest, SeveralPiecesAreOneContent) {
  addPage("q");
  addPage("Q");
  document_.pages[0].content.push_back(1);
  document_.pages.pop_back();
  written();
  EXPECT_EQ(page(0).getKey("/Contents").getArrayNItems(), 2);
}

TEST_F(PdfWriterTest, TheDocumentIsDescribed) {
  addPage("1 w");
  document_.title = "R\xC3\xA9sum\xC3\xA9";
  auto information = written().getTrailer().getKey("/Info");
  EXPECT_EQ(information.getKey("/Title").getUTF8Value(), "R\xC3\xA9sum\xC3\xA9");
  EXPECT_EQ(information.getKey("/CreationDate").getUTF8Value(), "D:19700101000000Z");
  EXPECT_TRUE(information.getKey("/Producer").getUTF8Value().starts_with("Quillpress "));
  EXPECT_FALSE(information.hasKey("/Creator"));
}

TEST_F(PdfWriterTest, AFullDeviceIsSaid) {
  addPage(std::string(100000, ' '));
  document_.pieces = worker_.finish();
  std::FILE* const full = std::fopen("/dev/full", "w");
  std::setvbuf(full, nullptr, _IONBF, 0);
  EXPECT_THROW(writePdf(document_, store_, spool_, full), OutputError);
  std::fclose(full);
}

TEST_F(PdfWriterTest, DataThatCannotBeReadBackAreSaid) {
  addPage("1 w");
  document_.pieces = worker_.finish();
  document_.pieces[0].length += 1000;
  std::FILE* const out = std::fopen(path("out.pdf").c_str(), "w");
  EXPECT_THROW(writePdf(document_, store_, spool_, out), OutputError);
  std::fclose(out);
}

}  // namespace
}  // namespace quillpress::cli
