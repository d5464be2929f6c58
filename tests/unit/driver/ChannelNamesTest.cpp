#include <gtest/gtest.h>

#include "umpd/rules/LauncherStruct.h"

namespace quillpress::driver {
namespace {

TEST(ChannelNamesTest, AreBuiltFromPrefixChannelAndUser) {
  const ChannelNames names = channelNames(L"Local\\", L"twssend", L"anna");
  EXPECT_EQ(names.requestEvent, L"Local\\twssend_anna_event");
  EXPECT_EQ(names.acknowledgeEvent, L"Local\\twssend_anna_event_end");
  EXPECT_EQ(names.mutex, L"Local\\twssend_anna_mutex");
  EXPECT_EQ(names.section, L"Local\\twssend_anna_sm");
}

TEST(ChannelNamesTest, OldWindowsHasNoPrefix) {
  const ChannelNames names = channelNames(L"", L"twssend", L"anna");
  EXPECT_EQ(names.requestEvent, L"twssend_anna_event");
  EXPECT_EQ(names.acknowledgeEvent, L"twssend_anna_event_end");
  EXPECT_EQ(names.mutex, L"twssend_anna_mutex");
  EXPECT_EQ(names.section, L"twssend_anna_sm");
}

TEST(ChannelNamesTest, AnUnknownUserLeavesTheUnderscore) {
  EXPECT_EQ(channelNames(L"Local\\", L"twssend", L"").mutex, L"Local\\twssend__mutex");
}

TEST(ChannelNamesTest, TwoUsersHaveTwoChannels) {
  EXPECT_NE(channelNames(L"", L"twssend", L"anna").section, channelNames(L"", L"twssend", L"bert").section);
}

TEST(ChannelNamesTest, LongAndForeignNamesAreTakenWhole) {
  const std::wstring user = std::wstring(258, L'\x00E4') + L"z";
  EXPECT_EQ(channelNames(L"", L"c", user).section, L"c_" + user + L"_sm");
}

}  // namespace
}  // namespace quillpress::driver
