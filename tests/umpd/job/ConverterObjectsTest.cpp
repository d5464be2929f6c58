// What jobs do to the converter's list of objects, which is one for the process.

#include <quillpress/converter.h>

#include <array>
#include <string>

#include "tests/umpd/job/JobTest.h"

namespace quillpress::harness {
namespace {

class ConverterObjectsTest : public JobTest {
 protected:
  ConverterObjectsTest() : converter(open()) { makeImage(); }
  ~ConverterObjectsTest() override { close(converter); }

  void* open() const {
    const std::array<float, 6> matrix{1, 0, 0, 1, 0, 0};
    return library.find<decltype(PSOpen)>("PSOpen")(matrix.data());
  }

  void close(void* handle) const { library.find<decltype(PSClose)>("PSClose")(handle); }

  void makeImage() const {
    // Too large to stand in the page itself.
    const std::string program = "4001 1 8 [1 0 0 1 0 0] (" + std::string(4001, 'x') + ") image ";
    int length = static_cast<int>(program.size());
    EXPECT_NE(library.find<decltype(PSConvertToPdf)>("PSConvertToPdf")(converter, program.data(), &length),
              nullptr);
    EXPECT_EQ(countOf(converter), 1U);
  }

  [[nodiscard]] unsigned countOf(void* handle) const {
    unsigned count = 0;
    library.find<decltype(PSGetPdfObjects)>("PSGetPdfObjects")(handle, &count);
    return count;
  }

  // As the converter that has made images and as one that is opened now see it.
  void expectEmpty() const {
    EXPECT_EQ(countOf(converter), 0U);
    void* const another = open();
    EXPECT_EQ(countOf(another), 0U);
    close(another);
  }

  void* const converter;
};

TEST_F(ConverterObjectsTest, AreClearedWhenAJobBegins) {
  const Job job(library, printer);
  expectEmpty();
}

TEST_F(ConverterObjectsTest, AreClearedWhenAJobBeginsByName) {
  const Job job(library, printer.name());
  expectEmpty();
}

TEST_F(ConverterObjectsTest, AreClearedWhenADocumentEnds) {
  Job job(library, printer);
  job.write("x");
  makeImage();
  job.end();
  expectEmpty();
}

TEST_F(ConverterObjectsTest, AreClearedWhenAJobEndsInPassThrough) {
  settings.setNumber(L"passthru", 1);
  Job job(library, printer);
  makeImage();
  job.end();
  expectEmpty();
}

TEST_F(ConverterObjectsTest, AreClearedByAJobThatCannotBegin) {
  EXPECT_EQ(Job(library, Printer::newName()).handle(), 0U);
  EXPECT_EQ(boxes.take().size(), 1U);
  expectEmpty();
}

TEST_F(ConverterObjectsTest, AreLeftAloneByBlocks) {
  const Job job(library, printer);
  makeImage();
  job.write("x");
  EXPECT_EQ(countOf(converter), 1U);
}

TEST_F(ConverterObjectsTest, CanBeMadeAgainAfterwards) {
  print(L"Document");
  makeImage();
}

}  // namespace
}  // namespace quillpress::harness
