#include <gtest/gtest.h>

#include "postscript/level3/images/JpegScanner.h"
#include "postscript/level3/images/TeeSource.h"
#include "postscript/level3/streams/CcittFilter.h"
#include "postscript/level3/streams/DctFilter.h"
#include "tests/level3/streams/FilterTesting.h"

namespace quillpress::level3 {
namespace {

std::string photograph(int colors, std::optional<bool> transform = std::nullopt) {
  const DctParameters parameters{.columns = 30, .rows = 20, .colors = colors, .colorTransform = transform};
  std::string samples;
  std::mt19937 random(4);
  for (int i = 0; i < 30 * 20 * colors; ++i) samples += static_cast<char>(random());
  return encodeText(encoderOf<DctEncoder>(parameters), samples);
}

TEST(JpegScannerTest, FindsTheEndHoweverTheDataIsCut) {
  const std::string data = photograph(3);
  for (const std::size_t size : {std::size_t{1}, std::size_t{7}, data.size() + 10}) {
    const std::string more = data + "\xFF\xD9 and more";
    JpegScanner scanner;
    std::size_t used = 0;
    while (!scanner.isDone() && !scanner.isBad() && used < more.size()) {
      used += scanner.scan(bytesOf(std::string_view(more).substr(used, size)));
    }
    EXPECT_TRUE(scanner.isDone());
    EXPECT_EQ(used, data.size()) << "in pieces of " << size;
  }
}

TEST(JpegScannerTest, TellsSizeAndColours) {
  JpegScanner scanner;
  scanner.scan(bytesOf(photograph(3)));
  ASSERT_TRUE(scanner.frame());
  EXPECT_EQ(scanner.frame()->width, 30);
  EXPECT_EQ(scanner.frame()->height, 20);
  EXPECT_EQ(scanner.frame()->components, 3);
  EXPECT_EQ(scanner.frame()->bits, 8);
  EXPECT_EQ(scanner.transform(), 1);
}

TEST(JpegScannerTest, TellsColoursThatAreNotTransformed) {
  JpegScanner scanner;
  scanner.scan(bytesOf(photograph(3, false)));
  EXPECT_EQ(scanner.transform(), 0);
}

TEST(JpegScannerTest, OtherDataIsBad) {
  JpegScanner scanner;
  scanner.scan(bytesOf("no photograph"));
  EXPECT_TRUE(scanner.isBad());
}

TEST(TeeSourceTest, CopiesExactlyWhatADecoderReads) {
  const CcittParameters parameters{.k = -1, .columns = 100};
  const std::string data = encodeText(encoderOf<CcittEncoder>(parameters), std::string(13 * 50, '\x5A'));
  for (const std::size_t size : {1, 10, 10000}) {
    const SourcePointer source = inPieces(data + "rest", size);
    const auto copy = std::make_shared<MemorySink>();
    const auto tee = std::make_shared<TeeSource>(source, copy);
    CcittDecoder decoder(tee, parameters);
    decoder.drain();
    tee->close();
    EXPECT_TRUE(textOf(copy->bytes()) == data) << "in pieces of " << size;
    EXPECT_EQ(readAll(*source), "rest");
  }
}

}  // namespace
}  // namespace quillpress::level3
