// Who may use the objects that the library makes for the channel: everybody, processes of low integrity too.

#include "tests/umpd/harness/WindowsRelease.h"
#include "tests/umpd/launcher/support/HandOverTest.h"
#include "tests/umpd/launcher/support/ObjectCalls.h"
#include "tests/umpd/launcher/support/ObjectSecurity.h"

namespace quillpress::harness {
namespace {

class SecurityTest : public HandOverTest {
 protected:
  struct Securities {
    ObjectSecurity acknowledgeEvent;
    ObjectSecurity memory;
  };

  // Looks at the objects while the library has them open.
  Securities look(const Channel& from) {
    Securities seen;
    Peer::Options options;
    options.memory = false;
    options.onMessage = [&](const Record&) {
      const Handle event(OpenEventW(READ_CONTROL, FALSE, from.acknowledgeEvent().c_str()));
      seen.acknowledgeEvent = securityOf(event.get());
      const Handle memory(OpenFileMappingW(READ_CONTROL, FALSE, from.memory().c_str()));
      seen.memory = securityOf(memory.get());
    };
    const Peer peer(from, options);
    print(L"Document");
    EXPECT_EQ(peer.records().size(), 2U);
    return seen;
  }
};

class SecurityByReleaseTest : public SecurityTest, public ::testing::WithParamInterface<WindowsRelease> {
 protected:
  Securities look() {
    pretend(library, GetParam());
    return SecurityTest::look(channelOf(user, GetParam().major >= 5));
  }
};

TEST_P(SecurityByReleaseTest, EverybodyHasAccess) {
  const Securities seen = look();
  EXPECT_TRUE(seen.acknowledgeEvent.isListNull);
  EXPECT_TRUE(seen.memory.isListNull);
}

TEST_P(SecurityByReleaseTest, TheLabelIsLowWhereThereAreLabels) {
  const Securities seen = look();
  for (const ObjectSecurity& security : {seen.acknowledgeEvent, seen.memory}) {
    if (GetParam().major > 5) {
      EXPECT_EQ(security.label, kLowIntegrity);
      EXPECT_EQ(security.labelPolicy, kNoWriteUp);
    } else {
      EXPECT_EQ(security.label, std::nullopt);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(NtFamily, SecurityByReleaseTest,
                         ::testing::Values(kWindowsNt4, kWindows2000, kWindowsXp, kWindowsVista, kWindows7,
                                           kWindows10),
                         ::testing::PrintToStringParamName());

TEST_F(SecurityTest, Windows9xHasNoSecurity) {
  pretend(library, kWindows98);
  ObjectCalls calls(library);
  Peer::Options options;
  options.memory = false;
  const Peer peer(channelOf(user, false), options);
  Job job(library, printer, L"Document", 1);
  EXPECT_EQ(job.write("a"), 1);
  int created = 0;
  for (const ObjectCalls::Call& call : calls.all()) {
    if (!call.function.starts_with("Create")) continue;
    EXPECT_FALSE(call.hasSecurity) << call.function;
    ++created;
  }
  EXPECT_EQ(created, 2);
}

TEST_F(SecurityTest, TheAttributesAreNotInherited) {
  std::vector<BOOL> inherited;
  const Peer peer(channel);
  Job job(library, printer, L"Document", 1);
  library.replace("CreateEventW",
                  [&](LPSECURITY_ATTRIBUTES security, BOOL manual, BOOL signalled, LPCWSTR name) -> HANDLE {
                    inherited.push_back(security->bInheritHandle);
                    EXPECT_EQ(security->nLength, sizeof(SECURITY_ATTRIBUTES));
                    return ::CreateEventW(security, manual, signalled, name);
                  });
  EXPECT_EQ(job.write("a"), 1);
  EXPECT_EQ(inherited, std::vector<BOOL>{FALSE});
}

TEST_F(SecurityTest, TheMemoryHasTheSizeOfTheRecord) {
  std::vector<DWORD> sizes;
  library.replace("CreateFileMappingW",
                  [&](HANDLE file, LPSECURITY_ATTRIBUTES security, DWORD protection, DWORD high, DWORD low,
                      LPCWSTR name) -> HANDLE {
                    EXPECT_EQ(file, INVALID_HANDLE_VALUE);
                    EXPECT_EQ(protection, static_cast<DWORD>(PAGE_READWRITE));
                    EXPECT_EQ(high, 0U);
                    sizes.push_back(low);
                    return ::CreateFileMappingW(file, security, protection, high, low, name);
                  });
  look(channel);
  EXPECT_EQ(sizes, (std::vector<DWORD>{1303, 1303}));
}

// A descriptor that cannot be made: the objects are made as Windows makes them by default.
class FailedDescriptorTest : public SecurityTest {
 protected:
  // Of the first message, with the box that it shows.
  ObjectSecurity lookAtEventBehindBox(const wchar_t* caption) {
    ObjectSecurity seen;
    Peer::Options options;
    options.onMessage = [&](const Record&) {
      const Handle event(OpenEventW(READ_CONTROL, FALSE, channel.acknowledgeEvent().c_str()));
      seen = securityOf(event.get());
    };
    const Peer peer(channel, options);
    EXPECT_EQ(job_.write("a"), 1);
    EXPECT_EQ(peer.records().size(), 1U);
    const Box box = boxes.takeOne();
    EXPECT_EQ(box.caption, caption);
    EXPECT_TRUE(box.wide);
    job_.end();
    EXPECT_EQ(boxes.takeOne().caption, caption);
    return seen;
  }

 private:
  Job job_{library, printer, L"Document", 1};
};

TEST_F(FailedDescriptorTest, ADescriptorThatCannotBeBegun) {
  library.replace("InitializeSecurityDescriptor", [](PSECURITY_DESCRIPTOR, DWORD) -> BOOL { return FALSE; });
  EXPECT_FALSE(lookAtEventBehindBox(L"InitializeSecurityDescriptor failed").isListNull);
}

TEST_F(FailedDescriptorTest, AListThatCannotBeSet) {
  library.replace("SetSecurityDescriptorDacl",
                  [](PSECURITY_DESCRIPTOR, BOOL, PACL, BOOL) -> BOOL { return FALSE; });
  EXPECT_FALSE(lookAtEventBehindBox(L"SetSecurityDescriptorDacl failed").isListNull);
}

}  // namespace
}  // namespace quillpress::harness
