#include <gtest/gtest.h>

#include "umpd/rules/SettingText.h"

namespace quillpress::driver {
namespace {

TEST(DecimalTextTest, AnEmptyTextIsZero) {
  EXPECT_EQ(toInteger(L""), 0);
}

TEST(DecimalTextTest, ANumberIsDigitsOnly) {
  for (const wchar_t* text : {L"0", L"300", L"0300", L"1234567890", L"99999999999999999999"})
    EXPECT_TRUE(isDecimalNumber(text)) << text;
  for (const wchar_t* text : {L"", L"-1", L"+1", L"30a", L"a30", L" 3", L"3 ", L"1.5", L"/", L":", L"\x0661"})
    EXPECT_FALSE(isDecimalNumber(text)) << text;
}

}  // namespace
}  // namespace quillpress::driver
