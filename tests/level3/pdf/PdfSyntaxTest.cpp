#include <gtest/gtest.h>

#include "postscript/level3/pdf/Fingerprint.h"
#include "postscript/level3/pdf/PdfDocument.h"
#include "postscript/level3/pdf/PdfSyntax.h"

namespace quillpress::level3 {
namespace {

std::string name(std::string_view value) {
  std::string text;
  appendName(text, value);
  return text;
}

std::string string(std::string_view value) {
  std::string text;
  appendString(text, value);
  return text;
}

TEST(PdfSyntaxTest, NamesHideTheirDelimiters) {
  EXPECT_EQ(name("DeviceRGB"), "/DeviceRGB");
  EXPECT_EQ(name("A B/C#"), "/A#20B#2FC#23");
  EXPECT_EQ(name("\xE9"), "/#E9");
}

TEST(PdfSyntaxTest, StringsEscapeWhatWouldEndThem) {
  EXPECT_EQ(string("a(b)\\"), "(a\\(b\\)\\\\)");
  EXPECT_EQ(string("a\rb"), "(a\\rb)");
}

TEST(PdfSyntaxTest, StringsOfAnyLengthAreWhole) {
  std::string plain;
  std::string escaped;
  for (std::size_t length = 0; length < 400; ++length) {
    EXPECT_EQ(string(plain), std::string("(").append(plain).append(")"));
    EXPECT_EQ(string(std::string(plain).append("(").append(plain)),
              std::string("(").append(plain).append("\\(").append(plain).append(")"));
    EXPECT_EQ(string(std::string(length, ')')), std::string("(").append(escaped).append(")"));
    plain += 'a';
    escaped += "\\)";
  }
}

TEST(PdfSyntaxTest, DictionariesSeparateOnlyWhereNeeded) {
  DictionaryText text;
  text.name("Type", "Page")
      .integer("Count", 3)
      .reference("Parent", 7)
      .entry("Kids", "[1]")
      .entry("X", "null");
  EXPECT_EQ(text.text(), "<</Type/Page/Count 3/Parent 7 0 R/Kids[1]/X null>>");
}

TEST(PdfSyntaxTest, MatricesKeepSixDigitsOfScale) {
  std::string text;
  appendMatrix(text, {0.12, 0, 0, -0.00123456, 100.5, 20});
  EXPECT_EQ(text, "[.12 0 0 -.00123456 100.5 20]");
}

TEST(PdfSyntaxTest, TextThatIsNotAsciiBecomesUtf16) {
  EXPECT_EQ(pdfText("plain"), "plain");
  EXPECT_EQ(pdfText("\xC3\xA9"), std::string("\xFE\xFF\0\xE9", 4));
  EXPECT_EQ(pdfText("\xF0\x9F\x98\x80"), std::string("\xFE\xFF\xD8\x3D\xDE\0", 6));
}

TEST(PdfSyntaxTest, TextThatIsNoUtf8StaysAsItIs) {
  EXPECT_EQ(pdfText("caf\xE9"), "caf\xE9");
  EXPECT_EQ(pdfText("\xC3"), "\xC3");
}

TEST(FingerprintTest, CutsDoNotMatter) {
  const std::string text = "The quick brown fox jumps over the lazy dog";
  for (std::size_t cut = 0; cut <= text.size(); ++cut) {
    Fingerprinter pieces;
    pieces.add(std::string_view(text).substr(0, cut));
    pieces.add(std::string_view(text).substr(cut));
    EXPECT_EQ(pieces.finish(), fingerprintOf(text));
  }
}

TEST(FingerprintTest, SmallChangesShow) {
  EXPECT_FALSE(fingerprintOf("abc") == fingerprintOf("abd"));
  EXPECT_FALSE(fingerprintOf("abc") == fingerprintOf(std::string_view("abc\0", 4)));
  EXPECT_FALSE(fingerprintOf("") == fingerprintOf(std::string_view("\0", 1)));
}

}  // namespace
}  // namespace quillpress::level3
