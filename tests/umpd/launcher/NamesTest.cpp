// The names under which library and launcher meet.

#include "tests/umpd/harness/WindowsRelease.h"
#include "tests/umpd/launcher/support/HandOverTest.h"
#include "tests/umpd/launcher/support/ObjectCalls.h"

namespace quillpress::harness {
namespace {

using Names = std::vector<std::wstring>;

class NamesTest : public HandOverTest {
 protected:
  // Has a job tell its begin and its end to a launcher of these names.
  void printWithPeer(const Channel& expected) {
    Peer::Options options;
    options.memory = false;  // so that the library makes it
    const Peer peer(expected, options);
    print(L"Document");
    EXPECT_EQ(peer.records().size(), 2U);
  }

  // Of a function that is called once for each of the two messages.
  static Names bothTimes(const std::wstring& name) { return {name, name}; }

  ObjectCalls calls{library};
};

class NamesByReleaseTest : public NamesTest, public ::testing::WithParamInterface<WindowsRelease> {};

TEST_P(NamesByReleaseTest, BeginWithTheSessionWhereThereAreSessions) {
  pretend(library, GetParam());
  const std::wstring base = (GetParam().major >= 5 ? L"Local\\twssend_" : L"twssend_") + user;
  printWithPeer(Channel{base});
  // Each time to see whether the launcher is there, and once more when the message is handed over.
  EXPECT_EQ(calls.namesFor("OpenMutexW"), Names(4, base + L"_mutex"));
  EXPECT_EQ(calls.namesFor("OpenFileMappingW"), bothTimes(base + L"_sm"));
  EXPECT_EQ(calls.namesFor("CreateFileMappingW"), bothTimes(base + L"_sm"));
  EXPECT_EQ(calls.namesFor("CreateEventW"), bothTimes(base + L"_event_end"));
  EXPECT_EQ(calls.namesFor("OpenEventW"), bothTimes(base + L"_event"));
}

INSTANTIATE_TEST_SUITE_P(All, NamesByReleaseTest, ::testing::ValuesIn(kEveryWindows),
                         ::testing::PrintToStringParamName());

TEST_F(NamesTest, EndWithAnUnderscoreWhenTheUserIsUnknown) {
  pretendUser(library, std::nullopt);
  printWithPeer(Channel{L"Local\\twssend_"});
  EXPECT_EQ(calls.namesFor("OpenMutexW")[0], L"Local\\twssend__mutex");
  EXPECT_EQ(calls.namesFor("CreateEventW"), bothTimes(L"Local\\twssend__event_end"));
}

TEST_F(NamesTest, TellUsersApart) {
  pretendUser(library, user + L"b");
  const Peer stranger(channel);
  printWithPeer(channelOf(user + L"b"));
  EXPECT_TRUE(stranger.records().empty());
}

TEST_F(NamesTest, HoldTheUserNameInFullWidth) {
  const std::wstring name = L"\u00D6zg\u00FCr \u6F22 " + user;
  pretendUser(library, name);
  printWithPeer(channelOf(name));
  EXPECT_EQ(calls.namesFor("OpenEventW"), bothTimes(L"Local\\twssend_" + name + L"_event"));
}

TEST_F(NamesTest, HoldALongUserName) {
  const std::wstring name = std::wstring(200, L'u') + user;
  pretendUser(library, name);
  printWithPeer(channelOf(name));
  EXPECT_EQ(calls.namesFor("OpenEventW"), bothTimes(L"Local\\twssend_" + name + L"_event"));
}

TEST_F(NamesTest, AskForTheUserNameWithRoomFor260Characters) {
  DWORD room = 0;
  library.replace("GetUserNameW", [&](LPWSTR buffer, LPDWORD size) -> BOOL {
    room = *size;
    user.copy(buffer, user.size());
    buffer[user.size()] = L'\0';
    *size = static_cast<DWORD>(user.size()) + 1;
    return TRUE;
  });
  printWithPeer(channel);
  EXPECT_EQ(room, 260U);
}

}  // namespace
}  // namespace quillpress::harness
