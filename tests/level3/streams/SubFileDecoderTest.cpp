#include "postscript/level3/streams/SubFileDecoder.h"
#include "tests/level3/streams/FilterTesting.h"

namespace quillpress::level3 {
namespace {

Decoded subFile(const std::string& data, std::uint64_t count, const std::string& text) {
  return decodeText(
      [&](SourcePointer source) { return std::make_shared<SubFileDecoder>(std::move(source), count, text); },
      data);
}

TEST(SubFileDecoderTest, ACountOfNoneEndsInFrontOfTheText) {
  EXPECT_EQ(subFile("aXXbXXcXXd", 0, "XX"), ended("a", "bXXcXXd"));
}

TEST(SubFileDecoderTest, ACountDeliversSoManyOccurrences) {
  EXPECT_EQ(subFile("aXXbXXcXXd", 1, "XX"), ended("aXX", "bXXcXXd"));
  EXPECT_EQ(subFile("aXXbXXcXXd", 2, "XX"), ended("aXXbXX", "cXXd"));
}

TEST(SubFileDecoderTest, EndsWithItsSource) {
  EXPECT_EQ(subFile("aXXbXXcXXd", 9, "XX"), ended("aXXbXXcXXd"));
  EXPECT_EQ(subFile("abcX", 0, "XX"), ended("abcX"));
}

TEST(SubFileDecoderTest, WithoutATextTheCountIsOfBytes) {
  EXPECT_EQ(subFile("aXXbXXcXXd", 4, ""), ended("aXXb", "XXcXXd"));
  EXPECT_EQ(subFile("aXXb", 40, ""), ended("aXXb"));
}

TEST(SubFileDecoderTest, WithoutTextAndCountAllIsDelivered) {
  EXPECT_EQ(subFile("aXXb", 0, ""), ended("aXXb"));
}

TEST(SubFileDecoderTest, OccurrencesDoNotOverlap) {
  EXPECT_EQ(subFile("aXXXbXXc", 2, "XX"), ended("aXXXbXX", "c"));
}

TEST(SubFileDecoderTest, FindsATextThatBeginsWithinAFailedMatch) {
  EXPECT_EQ(subFile("aababab", 0, "abab"), ended("a", "ab"));
  EXPECT_EQ(subFile("aabaab.", 0, "aab."), ended("aab", ""));
  EXPECT_EQ(subFile("aaaaab", 0, "aab"), ended("aaa", ""));
  EXPECT_EQ(subFile("eodeodod", 1, "eodod"), ended("eodeodod"));
}

TEST(SubFileDecoderTest, AgreesWithAPlainSearch) {
  std::mt19937 random(11);
  for (int round = 0; round < 300; ++round) {
    std::string data;
    std::string text;
    for (std::size_t i = random() % 60; i > 0; --i) data += static_cast<char>('a' + random() % 2);
    for (std::size_t i = 1 + random() % 5; i > 0; --i) text += static_cast<char>('a' + random() % 2);
    const std::size_t place = data.find(text);
    EXPECT_EQ(subFile(data, 0, text), place == std::string::npos
                                          ? ended(data)
                                          : ended(data.substr(0, place), data.substr(place + text.size())))
        << data << " up to " << text;
  }
}

TEST(SubFileDecoderTest, ATextLongerThanABlockIsFound) {
  const std::string text(20000, 'x');
  EXPECT_TRUE(subFile("a" + text + "y", 0, text) == ended("a", "y"));
  EXPECT_TRUE(subFile("a" + text.substr(1) + "y", 0, text) == ended("a" + text.substr(1) + "y"));
}

}  // namespace
}  // namespace quillpress::level3
