// The title that a document without one of its own gets.

#include "tests/umpd/harness/Queue.h"
#include "tests/umpd/metadata/MetadataTest.h"

namespace quillpress::harness {
namespace {

class DocumentTitleTest : public MetadataTest {};

TEST_F(DocumentTitleTest, IsTheWholeNameWhenItHasOneComponent) {
  EXPECT_EQ(title(L"report.txt"), L"report.txt");
}

TEST_F(DocumentTitleTest, IsWhatFollowsTheLastBackslash) {
  EXPECT_EQ(title(L"C:\\docs\\2024\\report.txt"), L"report.txt");
}

TEST_F(DocumentTitleTest, IsWhatFollowsTheLastSlash) {
  EXPECT_EQ(title(L"http://www.example.org/page"), L"page");
}

TEST_F(DocumentTitleTest, IsWhatFollowsTheLastOfBothSeparators) {
  EXPECT_EQ(title(L"a/b\\c"), L"c");
  EXPECT_EQ(title(L"a\\b/c"), L"c");
}

TEST_F(DocumentTitleTest, KeepsColonsAndBlanks) {
  EXPECT_EQ(title(L"Mail: a b - c"), L"Mail: a b - c");
}

TEST_F(DocumentTitleTest, IsNotDecoded) {
  EXPECT_EQ(title(L"a+b%41"), L"a+b%41");
}

TEST_F(DocumentTitleTest, IsMissingWhenTheNameEndsInASeparator) {
  EXPECT_EQ(packet(L"http://www.example.org/"), packetWith(L"pdf:Producer='Quillpress'\n", L""));
  EXPECT_EQ(packet(L"C:\\"), packetWith(L"pdf:Producer='Quillpress'\n", L""));
}

TEST_F(DocumentTitleTest, IsTheTitleOfTheSettingsUntouchedWhenThereIsOne) {
  settings.setNumber(L"DocInfoEnable", 1);
  settings.setText(L"DocInfoTitle", L"Half 1/2 \\ draft");
  EXPECT_EQ(title(L"Document"), L"Half 1/2 \\ draft");
}

TEST_F(DocumentTitleTest, IsEscaped) {
  EXPECT_EQ(title(L"R&D <\"it's\">"), L"R&amp;D &lt;&quot;it&apos;s&quot;&gt;");
}

TEST_F(DocumentTitleTest, ComesFromTheQueueForAJobBegunByPrinterName) {
  Queue queue(library);
  queue.add({.id = 5, .document = "C:\\docs\\from the queue.txt", .status = 0, .position = 1});
  const Job job(library, printer.name());
  EXPECT_EQ(withoutDates(job.text(L"pdfaXML")),
            packetWith(L"pdf:Producer='Quillpress'\n", dublinCore(titleElement(L"from the queue.txt"))));
}

TEST_F(DocumentTitleTest, IsCutWithTheDocumentNameAfter259Characters) {
  EXPECT_EQ(title(std::wstring(259, L'd')), std::wstring(259, L'd'));
  EXPECT_EQ(title(std::wstring(400, L'd')), std::wstring(259, L'd'));
}

}  // namespace
}  // namespace quillpress::harness
