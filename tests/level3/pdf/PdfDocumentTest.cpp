#include <gtest/gtest.h>

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFOutlineDocumentHelper.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>

#include "postscript/level3/pdf/PdfDocument.h"
#include "tests/level3/pdf/MemoryOutput.h"

namespace quillpress::level3 {
namespace {

class PdfDocumentTest : public ::testing::Test {
 protected:
  void addPage(std::string_view content = "0 0 1 1 re f") {
    PageParts parts;
    parts.mediaBox = {0, 0, 612, 792};
    parts.contents.push_back(document_.file().addStream("", content, StreamData::kDeflate));
    parts.resources = "<<>>";
    document_.addPage(parts);
  }
  // What another library reads from the file.
  QPDF& read() {
    document_.finish();
    qpdf_.setSuppressWarnings(true);
    qpdf_.processMemoryFile("test", memory_.bytes().data(), memory_.bytes().size());
    return qpdf_;
  }

  MemoryOutput memory_;
  PdfDocument document_{memory_};
  QPDF qpdf_;
};

TEST_F(PdfDocumentTest, PagesComeBackInOrder) {
  for (int page = 0; page < 120; ++page) addPage(std::to_string(page));
  auto pages = QPDFPageDocumentHelper(read()).getAllPages();
  ASSERT_EQ(pages.size(), 120U);
  for (std::size_t page = 0; page < 120; ++page) {
    auto contents = pages[page].getObjectHandle().getKey("/Contents").getStreamData();
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(contents->getBuffer()), contents->getSize()),
              std::to_string(page));
  }
  EXPECT_FALSE(qpdf_.anyWarnings());
}

TEST_F(PdfDocumentTest, InformationKeepsTheLastValue) {
  addPage();
  document_.setInformation("Title", "One");
  document_.setInformation("Title", "Two \xC3\xA9");
  EXPECT_EQ(read().getTrailer().getKey("/Info").getKey("/Title").getUTF8Value(), "Two \xC3\xA9");
}

TEST_F(PdfDocumentTest, BookmarksNest) {
  addPage();
  document_.outline().add({"One", 2, ""});
  document_.outline().add({"One.One", 0, ""});
  document_.outline().add({"One.Two", -1, ""});
  document_.outline().add({"Hidden", 0, ""});
  document_.outline().add({"Two", 0, "/Dest[0/Fit]"});
  QPDFOutlineDocumentHelper outlines(read());
  auto top = outlines.getTopLevelOutlines();
  ASSERT_EQ(top.size(), 2U);
  EXPECT_EQ(top[0].getTitle(), "One");
  ASSERT_EQ(top[0].getKids().size(), 2U);
  EXPECT_EQ(top[0].getKids()[1].getKids()[0].getTitle(), "Hidden");
  EXPECT_EQ(top[0].getKids()[1].getCount(), -1);
  EXPECT_EQ(qpdf_.getRoot().getKey("/Outlines").getKey("/Count").getIntValue(), 4);
}

TEST_F(PdfDocumentTest, CountsThatPromiseTooMuchDoNoHarm) {
  addPage();
  document_.outline().add({"One", 100, ""});
  document_.outline().add({"Child", 0, ""});
  EXPECT_EQ(QPDFOutlineDocumentHelper(read()).getTopLevelOutlines()[0].getKids().size(), 1U);
}

TEST_F(PdfDocumentTest, DestinationsAreSortedByName) {
  addPage();
  document_.addDestination("b", "[0/Fit]");
  document_.addDestination("a", "[0/FitH 3]");
  auto names = read().getRoot().getKey("/Names").getKey("/Dests").getKey("/Names");
  EXPECT_EQ(names.getArrayItem(0).getStringValue(), "a");
  EXPECT_EQ(names.getArrayItem(2).getStringValue(), "b");
}

TEST_F(PdfDocumentTest, EqualContentsShareOneObject) {
  PdfFile& file = document_.file();
  EXPECT_EQ(file.addShared("[1 2]"), file.addShared("[1 2]"));
  EXPECT_NE(file.addShared("[1 2]"), file.addShared("[1 3]"));
  EXPECT_EQ(file.addSharedStream("/A 1", "data", StreamData::kPlain),
            file.addSharedStream("/A 1", "data", StreamData::kPlain));
  EXPECT_NE(file.addSharedStream("/A 1", "data", StreamData::kPlain),
            file.addSharedStream("/A 2", "data", StreamData::kPlain));
}

TEST_F(PdfDocumentTest, StreamsCanBeWrittenInPieces) {
  addPage();
  const std::string line(1000, 'x');
  auto stream = document_.file().openStream("/Kind/Long", StreamData::kDeflate);
  for (int index = 0; index < 1000; ++index) stream.write(line);
  stream.finish();
  const int number = static_cast<int>(stream.number());
  auto object = read().getObjectByID(number, 0);
  EXPECT_EQ(object.getStreamData()->getSize(), 1'000'000U);
  EXPECT_LT(object.getRawStreamData()->getSize(), 10'000U);
}

TEST_F(PdfDocumentTest, SameContentsMakeTheSameFile) {
  MemoryOutput other;
  PdfDocument again(other);
  addPage();
  PageParts parts;
  parts.mediaBox = {0, 0, 612, 792};
  parts.contents.push_back(again.file().addStream("", "0 0 1 1 re f", StreamData::kDeflate));
  parts.resources = "<<>>";
  again.addPage(parts);
  document_.finish();
  again.finish();
  EXPECT_EQ(memory_.bytes(), other.bytes());
}

}  // namespace
}  // namespace quillpress::level3
