#include <array>

#include "postscript/level3/streams/EexecDecoder.h"
#include "tests/level3/streams/FilterTesting.h"

namespace quillpress::level3 {
namespace {

std::string encrypted(const std::string& plain) {
  Type1Cipher cipher(Type1Cipher::kEexecKey);
  std::string text;
  for (const char byte : "\1\2\3\4" + plain)
    text += static_cast<char>(cipher.encrypt(static_cast<Byte>(byte)));
  return text;
}

std::string inHex(const std::string& bytes) {
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    static constexpr std::string_view kDigits = "0123456789abcdef";
    const auto byte = static_cast<Byte>(bytes[i]);
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
    if (i % 10 == 9) text += "\r\n";
  }
  return text;
}

TEST(EexecDecoderTest, DecryptsBinaryData) {
  EXPECT_EQ(decodeText(decoderOf<EexecDecoder>(), encrypted("dup /Private")), ended("dup /Private"));
}

TEST(EexecDecoderTest, DecryptsHexadecimalData) {
  EXPECT_EQ(decodeText(decoderOf<EexecDecoder>(), inHex(encrypted("dup /Private 8 dict dup begin"))),
            ended("dup /Private 8 dict dup begin"));
}

TEST(EexecDecoderTest, SkipsWhiteSpaceInFront) {
  EXPECT_EQ(decodeText(decoderOf<EexecDecoder>(), " \r\n" + encrypted("dup")), ended("dup"));
}

TEST(EexecDecoderTest, ACharacterThatIsNoDigitEndsHexadecimalData) {
  EXPECT_EQ(decodeText(decoderOf<EexecDecoder>(), inHex(encrypted("dup")) + "%EOF"), ended("dup", "%EOF"));
}

TEST(EexecDecoderTest, DataShorterThanItsHeadIsEmpty) {
  EXPECT_EQ(decodeText(decoderOf<EexecDecoder>(), "abc"), ended(""));
}

// Closes the decoder after each number of bytes in turn: the source must stand exactly behind them.
void expectSourceStandsBehindWhatWasRead(const std::string& plain, const std::string& data,
                                         const std::function<std::size_t(std::size_t)>& consumedFor) {
  for (std::size_t used = 1; used <= plain.size(); ++used) {
    for (const std::size_t size : {1, 7, 1000}) {
      const SourcePointer source = inPieces(data, size);
      EexecDecoder decoder(source);
      std::vector<Byte> target(used);
      EXPECT_EQ(decoder.read(target), used);
      decoder.close();
      EXPECT_EQ(source->position(), consumedFor(used)) << used << " bytes, in pieces of " << size;
    }
  }
}

TEST(EexecDecoderTest, ClosingLeavesTheSourceBehindTheBinaryBytesRead) {
  const std::string plain = "currentfile closefile and more";
  expectSourceStandsBehindWhatWasRead(plain, encrypted(plain), [](std::size_t used) { return 4 + used; });
}

TEST(EexecDecoderTest, ClosingLeavesTheSourceBehindTheDigitsRead) {
  const std::string plain = "currentfile closefile and more";
  expectSourceStandsBehindWhatWasRead(plain, inHex(encrypted(plain)), [](std::size_t used) {
    const std::size_t bytes = 4 + used;
    return 2 * bytes + (bytes - 1) / 10 * 2;
  });
}

TEST(Type1CipherTest, CharstringsComeBack) {
  for (const int randomBytes : {-1, 0, 1, 4}) {
    const std::array<Byte, 5> plain = {1, 2, 3, 200, 255};
    const std::vector<Byte> cipher = encryptCharstring(plain, randomBytes);
    EXPECT_EQ(cipher.size(), plain.size() + static_cast<std::size_t>(std::max(randomBytes, 0)));
    EXPECT_EQ(decryptCharstring(cipher, randomBytes), std::vector<Byte>(plain.begin(), plain.end()));
  }
}

TEST(Type1CipherTest, DecryptsACharstringOfAFont) {
  // "0 0 hsbw endchar" behind four zeros.
  const std::array<Byte, 8> cipher = {0x10, 0xBF, 0x31, 0x70, 0x79, 0xBB, 0x21, 0xE4};
  EXPECT_EQ(decryptCharstring(cipher, 4), (std::vector<Byte>{139, 139, 13, 14}));
}

TEST(Type1CipherTest, ACharstringShorterThanItsRandomBytesIsNone) {
  EXPECT_FALSE(decryptCharstring(std::array<Byte, 3>{1, 2, 3}, 4));
}

}  // namespace
}  // namespace quillpress::level3
