#include <gtest/gtest.h>

#include <string>

#include "postscript/level3/images/Repetitions.h"

namespace quillpress::level3 {
namespace {

// Steps of a linear congruential generator, each of so many values.
std::string steps(std::size_t size, unsigned values) {
  std::string result;
  unsigned state = 1;
  while (result.size() < size) {
    state = state * 1'664'525U + 1'013'904'223U;
    result += static_cast<char>((state >> 16) % values);
  }
  return result;
}

TEST(RepetitionsTest, NoiseHoldsNone) {
  EXPECT_FALSE(holdsRepetitions(bytesOf(steps(30'000, 256))));
}

TEST(RepetitionsTest, SmallStepsHoldFew) {
  EXPECT_FALSE(holdsRepetitions(bytesOf(steps(30'000, 8))));
}

TEST(RepetitionsTest, RunsDoNotCount) {
  EXPECT_FALSE(holdsRepetitions(bytesOf(steps(8000, 256) + std::string(20'000, '\0'))));
}

TEST(RepetitionsTest, APatternHoldsMany) {
  std::string bytes;
  while (bytes.size() < 30'000) bytes += "a pattern that comes again ";
  EXPECT_TRUE(holdsRepetitions(bytesOf(bytes)));
}

TEST(RepetitionsTest, AWordInSevenIsEnough) {
  std::string bytes;
  const std::string noise = steps(30'000, 256);
  for (std::size_t at = 0; at + 40 < noise.size(); at += 40)
    bytes += "0123456789abcdef" + noise.substr(at, 40);
  EXPECT_TRUE(holdsRepetitions(bytesOf(bytes)));
}

TEST(RepetitionsTest, NothingAndOneColourAreSearched) {
  EXPECT_TRUE(holdsRepetitions({}));
  EXPECT_TRUE(holdsRepetitions(bytesOf(std::string(5, 'a'))));
  EXPECT_TRUE(holdsRepetitions(bytesOf(std::string(30'000, 'a'))));
}

}  // namespace
}  // namespace quillpress::level3
