#include "postscript/level3/streams/CcittFilter.h"
#include "tests/level3/streams/FilterTesting.h"

namespace quillpress::level3 {
namespace {

std::string fromHex(std::string_view digits) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(std::string(digits.substr(i, 2)), nullptr, 16));
  }
  return bytes;
}

// Six rows of twenty pixels, white where the bits are 1.
const std::string kRows = fromHex("fe3fe0fe3fe07fffe0000000ffffff0f0f00");

std::string masked(std::string rows, std::size_t rowBytes, int columns, bool blackIs1) {
  // The bits behind the last pixel come back as white.
  const int spare = static_cast<int>(rowBytes) * 8 - columns;
  for (std::size_t i = rowBytes - 1; i < rows.size(); i += rowBytes) {
    const int mask = (1 << spare) - 1;
    rows[i] = static_cast<char>(blackIs1 ? rows[i] & ~mask : rows[i] | mask);
  }
  return rows;
}

struct Example {
  CcittParameters parameters;
  std::string_view data;
};

// Written by Ghostscript for the rows above.
const Example kExamples[] = {
    {{.k = -1, .columns = 20}, "3F2F93543C64406E4D59B66D80080080"},
    {{.k = 0, .columns = 20}, "FA8BEA23549D1A868106AEDDB001001001001001001000"},
    {{.k = 4, .columns = 20}, "FA8BC9AA1E3104D59B66D800C006003001800C00600000"},
    {{.k = 4, .endOfLine = true, .columns = 20},
     "001FD44002F00113543800A30018800113566D9B6003001800C0060030018000"},
    {{.k = 0, .endOfLine = true, .encodedByteAlign = true, .columns = 20},
     "0001FA880001FA8800013549D00001350D00011000013576ED8000100100100100100100"},
    {{.k = -1, .encodedByteAlign = true, .columns = 20, .rows = 6, .endOfBlock = false},
     "3F28F026A8708C22037026ACDB36C0"},
    {{.k = 0, .columns = 20, .rows = 6, .endOfBlock = false, .blackIs1 = true},
     "351C0839A8E041C70207106A1A2DDBB0"},
    {{.k = 2, .endOfLine = true, .encodedByteAlign = true, .columns = 20},
     "0001FD4400017800019AA4E8000146000188000113566D9B60001800C006003001800C00"},
};

TEST(CcittDecoderTest, DecodesWhatAnotherProgramWrote) {
  for (const Example& example : kExamples) {
    EXPECT_EQ(decodeText(decoderOf<CcittDecoder>(example.parameters), fromHex(example.data)).text,
              masked(kRows, 3, 20, example.parameters.blackIs1))
        << example.data;
  }
}

TEST(CcittEncoderTest, EncodesToRowsThatComeBack) {
  for (const Example& example : kExamples) {
    const std::string data = encodeText(encoderOf<CcittEncoder>(example.parameters), kRows);
    EXPECT_EQ(decodeText(decoderOf<CcittDecoder>(example.parameters), data + "rest"),
              ended(masked(kRows, 3, 20, example.parameters.blackIs1), "rest"))
        << example.data;
  }
}

TEST(CcittFilterTest, ReturnsWhatWasEncoded) {
  std::mt19937 random(17);
  for (int round = 0; round < 60; ++round) {
    CcittParameters parameters;
    parameters.k = static_cast<int>(random() % 4) - 1;
    parameters.endOfLine = random() % 2 == 0;
    parameters.encodedByteAlign = random() % 2 == 0;
    parameters.columns = static_cast<int>(1 + random() % (round % 10 == 0 ? 6000 : 200));
    parameters.blackIs1 = random() % 2 == 0;
    parameters.endOfBlock = random() % 2 == 0;
    parameters.rows = static_cast<int>(1 + random() % 20);
    std::string rows;
    const std::size_t density = 1 + random() % 200;
    bool black = false;
    for (std::size_t i = 0; i < parameters.rowBytes() * static_cast<std::size_t>(parameters.rows); ++i) {
      int byte = 0;
      for (int bit = 0; bit < 8; ++bit) {
        if (random() % density == 0) black = !black;
        byte = 2 * byte + (black ? 1 : 0);
      }
      rows += static_cast<char>(byte);
    }
    const std::string data = encodeText(encoderOf<CcittEncoder>(parameters), rows);
    const Decoded decoded = decodeText(decoderOf<CcittDecoder>(parameters), data + "rest");
    EXPECT_TRUE(decoded ==
                ended(masked(rows, parameters.rowBytes(), parameters.columns, parameters.blackIs1), "rest"))
        << "round " << round << ", k " << parameters.k << ", columns " << parameters.columns
        << ", end of line " << parameters.endOfLine << ", aligned " << parameters.encodedByteAlign
        << ", block " << parameters.endOfBlock << ": " << decoded.text.size() << " of " << rows.size()
        << " bytes, unread " << decoded.unread;
  }
}

TEST(CcittDecoderTest, DataThatIsCutEndsAfterItsLastRow) {
  const CcittParameters parameters{.k = -1, .columns = 20};
  EXPECT_EQ(decodeText(decoderOf<CcittDecoder>(parameters), fromHex("3F2F93")).text,
            masked(kRows, 3, 20, false).substr(0, 6));
}

TEST(CcittDecoderTest, ACodeThatDoesNotExistIsAnError) {
  const CcittParameters parameters{.k = 0, .columns = 20, .endOfBlock = false};
  EXPECT_EQ(decodeText(decoderOf<CcittDecoder>(parameters), fromHex("4808")).state, StreamState::kError);
}

TEST(CcittDecoderTest, ADamagedRowIsACopyOfTheOneAbove) {
  const CcittParameters parameters{
      .k = 0, .endOfLine = true, .encodedByteAlign = true, .columns = 20, .damagedRowsBeforeError = 1};
  std::string data = fromHex(kExamples[4].data);
  data[6] = '\x00';  // in the second row
  const std::string rows = masked(kRows, 3, 20, false);
  const Decoded decoded = decodeText(decoderOf<CcittDecoder>(parameters), data);
  EXPECT_EQ(decoded.text.substr(6), rows.substr(6));
  EXPECT_EQ(decoded.state, StreamState::kEnd);
}

TEST(CcittDecoderTest, ReadsUncompressedRows) {
  // Extension code, then 1, 01, 000001 (five white), 0000001 and 0 (end, white next), and V0 to the end.
  const CcittParameters parameters{.k = -1, .columns = 20, .rows = 1, .endOfBlock = false, .blackIs1 = true};
  // 0000001111 1 01 000001 00000010 1
  EXPECT_EQ(decodeText(decoderOf<CcittDecoder>(parameters), fromHex("03E82050")).text.substr(0, 3),
            fromHex("A00000"));
}

TEST(CcittFilterTest, SurvivesDamage) {
  for (const Example& example : kExamples) {
    expectSurvivesDamage(decoderOf<CcittDecoder>(example.parameters), fromHex(example.data));
  }
}

}  // namespace
}  // namespace quillpress::level3
