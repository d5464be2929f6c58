#include <gtest/gtest.h>

#include "postscript/level3/fonts/Encryption.h"

namespace quillpress::level3 {
namespace {

// As the Type 1 format describes it, byte by byte.
std::string encrypted(std::string_view bytes, std::uint16_t key) {
  std::string result;
  for (const char byte : bytes) {
    const auto cipher = static_cast<std::uint8_t>(static_cast<std::uint8_t>(byte) ^ key >> 8);
    key = static_cast<std::uint16_t>((cipher + key) * 52845U + 22719U);
    result += static_cast<char>(cipher);
  }
  return result;
}

TEST(EncryptionTest, WhatWasEncryptedComesBack) {
  std::string text;
  for (int length = 0; length < 300; ++length) {
    EXPECT_EQ(decrypted(encrypted(text, kEexecKey), kEexecKey), text) << length;
    text += static_cast<char>(length * 7);
  }
}

TEST(EncryptionTest, ACharstringLosesItsRandomBytes) {
  const std::string charstring = encrypted("abcdhsbw", kCharstringKey);
  EXPECT_EQ(plainCharstring(charstring, 4), "hsbw");
  EXPECT_EQ(plainCharstring(charstring, 0), "abcdhsbw");
  EXPECT_EQ(plainCharstring(charstring, 20), "");
  EXPECT_EQ(plainCharstring("hsbw", -1), "hsbw");
}

}  // namespace
}  // namespace quillpress::level3
