#include <gtest/gtest.h>

#include <vector>

#include "umpd/rules/SettingText.h"

namespace quillpress::driver {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(RegistryDataTest, ATextEndsAtItsFirstZero) {
  EXPECT_EQ(textOfRegistryBytes(Bytes{'a', 0, 0x3C, 0x26, 0, 0, 'b', 0}), L"a\x263C");
  EXPECT_EQ(textOfRegistryBytes(Bytes{0, 0}), L"");
}

TEST(RegistryDataTest, ATextNeedsNoFinalZero) {
  EXPECT_EQ(textOfRegistryBytes(Bytes{'a', 0, 'b', 0}), L"ab");
  EXPECT_EQ(textOfRegistryBytes(Bytes{}), L"");
}

TEST(RegistryDataTest, HalfACharacterIsLeftOut) {
  EXPECT_EQ(textOfRegistryBytes(Bytes{'a', 0, 'b'}), L"a");
  EXPECT_EQ(textOfRegistryBytes(Bytes{'a'}), L"");
}

TEST(RegistryDataTest, ANumberHasFourBytes) {
  EXPECT_EQ(numberOfRegistryBytes(Bytes{0x01, 0x02, 0, 0}), 0x0201);
  EXPECT_EQ(numberOfRegistryBytes(Bytes{0xFF, 0xFF, 0xFF, 0xFF}), -1);
  EXPECT_EQ(numberOfRegistryBytes(Bytes{1, 0, 0}), std::nullopt);
  EXPECT_EQ(numberOfRegistryBytes(Bytes{1, 0, 0, 0, 0}), std::nullopt);
}

TEST(RegistryDataTest, SettingsAreTextsAndNumbers) {
  EXPECT_EQ(settingOfRegistryValue(kRegistryText, Bytes{'7', 0, 0, 0}), L"7");
  EXPECT_EQ(settingOfRegistryValue(kRegistryNumber, Bytes{7, 0, 0, 0}), L"7");
  EXPECT_EQ(settingOfRegistryValue(kRegistryNumber, Bytes{7, 0}), std::nullopt);
  EXPECT_EQ(settingOfRegistryValue(3, Bytes{7, 0, 0, 0}), std::nullopt);
}

}  // namespace
}  // namespace quillpress::driver
