#include <gtest/gtest.h>
#include <libdeflate.h>

#include <random>

#include "cli/pdf/ImageEncoding.h"
#include "tests/cli_unit/TemporaryFolder.h"

namespace quillpress::cli {
namespace {

class ImageEncodingTest : public FolderTest {
 protected:
  struct Encoded {
    QPDFObjectHandle dictionary;
    std::string data;  // inflated
  };

  Encoded encode(const std::string& dictionary, const std::string& samples) {
    auto handle = QPDFObjectHandle::parse("<<" + dictionary + ">>");
    const ImageEncoding encoding(handle, samples);
    encoding.describe(handle);
    const Spool::Piece piece = encoding.encode(spool_);
    std::string deflated;
    readPiece(spool_, piece, [&](std::string_view bytes) { deflated += bytes; });
    std::string data(samples.size() * 2 + 1000, '\0');
    std::size_t size = 0;
    libdeflate_decompressor* const decompressor = libdeflate_alloc_decompressor();
    EXPECT_EQ(libdeflate_zlib_decompress(decompressor, deflated.data(), deflated.size(), data.data(),
                                         data.size(), &size),
              LIBDEFLATE_SUCCESS);
    libdeflate_free_decompressor(decompressor);
    data.resize(size);
    return {handle, data};
  }

  static std::string noise(std::size_t size) {
    std::mt19937 random(1);
    std::string samples(size, '\0');
    for (char& sample : samples) sample = static_cast<char>(random());
    return samples;
  }

  Spool spool_{folder()};
};

TEST_F(ImageEncodingTest, NoiseIsLeftAsItIs) {
  const std::string samples = noise(30000);
  Encoded encoded = encode("/Width 100 /Height 100 /ColorSpace /DeviceRGB /BitsPerComponent 8", samples);
  EXPECT_EQ(encoded.dictionary.getKey("/Filter").getName(), "/FlateDecode");
  EXPECT_FALSE(encoded.dictionary.hasKey("/DecodeParms"));
  EXPECT_EQ(encoded.data, samples);
}

TEST_F(ImageEncodingTest, AGradientIsPredicted) {
  std::string samples;
  for (unsigned y = 0; y < 200; ++y) {
    for (unsigned x = 0; x < 100; ++x)
      samples += {static_cast<char>(x), static_cast<char>(x + y), static_cast<char>(y)};
  }
  Encoded encoded = encode("/Width 100 /Height 200 /ColorSpace /DeviceRGB /BitsPerComponent 8", samples);
  auto parameters = encoded.dictionary.getKey("/DecodeParms");
  ASSERT_TRUE(parameters.isDictionary());
  EXPECT_EQ(parameters.getKey("/Predictor").getIntValue(), 15);
  EXPECT_EQ(parameters.getKey("/Colors").getIntValue(), 3);
  EXPECT_EQ(parameters.getKey("/Columns").getIntValue(), 100);
  EXPECT_EQ(encoded.data.size(), filteredSize({300, 3}, 200));
}

TEST_F(ImageEncodingTest, BitsAreNotPredicted) {
  const std::string samples(1300, '\x55');
  Encoded encoded = encode("/Width 100 /Height 100 /ColorSpace /DeviceGray /BitsPerComponent 1", samples);
  EXPECT_FALSE(encoded.dictionary.hasKey("/DecodeParms"));
  EXPECT_EQ(encoded.data, samples);
}

TEST_F(ImageEncodingTest, SamplesThatAreNoWholeRowsAreLeftAsTheyAre) {
  const std::string samples(10001, 'a');
  Encoded encoded = encode("/Width 100 /Height 100 /ColorSpace /DeviceGray /BitsPerComponent 8", samples);
  EXPECT_FALSE(encoded.dictionary.hasKey("/DecodeParms"));
  EXPECT_EQ(encoded.data, samples);
}

TEST_F(ImageEncodingTest, SizesThatAreNoneAreNotBelieved) {
  for (const char* const size : {"/Width 0", "/Width -5", "/Width (wide)", ""}) {
    EXPECT_EQ(encode(std::string(size) + " /Height 1 /BitsPerComponent 8", "abc").data, "abc") << size;
  }
}

}  // namespace
}  // namespace quillpress::cli
