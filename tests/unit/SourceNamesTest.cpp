// The source that an error names, by which the field knows where it comes from.

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "tests/unit/ConverterFixture.h"

namespace quillpress {
namespace {

class SourceNamesTest : public ConverterFixture {
 protected:
  // "Exception:[File.cpp:12] message" and a line feed gives "File.cpp: message".
  std::string failure(std::string_view job) {
    const std::string text = message(job);
    const std::string& whole = converter_.errorText();
    const auto begin = whole.find('[') + 1;
    return whole.substr(begin, whole.find(':', begin) - begin) + ": " + text;
  }
};

TEST_F(SourceNamesTest, ComparisonsNameTheirOperators) {
  EXPECT_EQ(failure("/a (a) eq "), "ComparisonOperators.cpp: Unsupported type comparison");
  EXPECT_EQ(failure("1 1 (a) {} for "), "ComparisonOperators.cpp: Unsupported type comparison");
  EXPECT_EQ(failure("systemdict systemdict eq "),
            "ComparisonOperators.cpp: Structures nested too deeply to compare");
}

TEST_F(SourceNamesTest, CopyNamesTheStackOperators) {
  EXPECT_EQ(failure("-1 copy "), "StackOperators.cpp: Illegal negative count passed to copy operator");
  EXPECT_EQ(failure("[1] 0 array copy "), "StackOperators.cpp: array too short for copy operator");
  EXPECT_EQ(failure("(a) () copy "), "StackOperators.cpp: string too short for copy operator");
  EXPECT_EQ(failure("(a) [] copy "), "StackOperators.cpp: expected parms to be the same for copy operator");
  EXPECT_EQ(failure("null null copy "), "StackOperators.cpp: unsupported copy type");
}

TEST_F(SourceNamesTest, TheByteStoreOfCvsIsTheString) {
  EXPECT_EQ(failure("1234 (xx) cvs "), "StringObject.cpp: String index out of range");
}

TEST_F(SourceNamesTest, ArraysReportTheirStackOrThemselves) {
  EXPECT_EQ(failure("[1] 5 0 put "), "ObjectStack.cpp: Illegal array index");
  EXPECT_EQ(failure("[1 0 0] concat "), "ArrayObject.cpp: No object at given array index");
}

TEST_F(SourceNamesTest, ImageDictionariesNameTheConverter) {
  EXPECT_EQ(failure("1 dict image "), "Postscript2Pdf.cpp: expecting datasource");
  EXPECT_EQ(failure("9 dict dup /DataSource (a) put image "), "Postscript2Pdf.cpp: expecting width");
}

TEST_F(SourceNamesTest, ImageDataNamesTheImageOperators) {
  EXPECT_EQ(failure("9 9 8 matrix (a) image "), "ImageOperators.cpp: invalid data in image, excpecting proc");
  EXPECT_EQ(failure("1 1 8 matrix (a)(b)(c)(d) true 4 colorimage "),
            "ImageOperators.cpp: unsupported image color seperation");
  EXPECT_EQ(failure("1 1 true matrix 5 imagemask "),
            "ImageOperators.cpp: Could not find image mask data source string");
}

TEST_F(SourceNamesTest, PatternDictionariesNameTheConverter) {
  EXPECT_EQ(failure("1 dict [1 2] makepattern "), "Postscript2Pdf.cpp: expecting array of 6 doubles");
  EXPECT_EQ(failure("4 dict dup /XStep 1 put dup /YStep 1 put matrix makepattern "),
            "Postscript2Pdf.cpp: expected array to be here");
}

TEST_F(SourceNamesTest, ArcsNameTheArcOperators) {
  EXPECT_EQ(failure("0 0 1 0 1e12 arc "), "ArcOperators.cpp: arc angles out of range");
}

TEST_F(SourceNamesTest, FilesNameTheFileObject) {
  EXPECT_EQ(failure("(a) /X filter read "), "FileObject.cpp: Read not supported on this file type");
}

}  // namespace
}  // namespace quillpress
