#include <gtest/gtest.h>

#include <cstring>

#include "umpd/rules/Account.h"

namespace quillpress::driver {
namespace {

// A record in which every byte has been written by others.
DomainControllerRecord usedRecord() {
  DomainControllerRecord record{};
  std::memset(&record, 0x5A, sizeof record);
  return record;
}

TEST(DomainControllerRecordTest, HasItsLayout) {
  EXPECT_EQ(sizeof(DomainControllerRecord), 522U);
  EXPECT_EQ(offsetof(DomainControllerRecord, state), 0U);
  EXPECT_EQ(offsetof(DomainControllerRecord, reserved), 1U);
  EXPECT_EQ(offsetof(DomainControllerRecord, name), 2U);
  EXPECT_EQ(sizeof(DomainControllerRecord::name), 520U);
  EXPECT_EQ(DomainControllerRecord::kWorking, 'w');
  EXPECT_EQ(DomainControllerRecord::kReady, 'r');
}

TEST(DomainControllerRecordTest, ReadsTheNameThatWasStored) {
  DomainControllerRecord record{};
  storeName(record, L"\\\\PDC-\x00C4\x20AC");
  EXPECT_EQ(readName(record), L"\\\\PDC-\x00C4\x20AC");
  EXPECT_EQ(record.name[0], u'\\');
  EXPECT_EQ(record.name[7], u'\x20AC');
  EXPECT_EQ(record.name[8], u'\0');
}

TEST(DomainControllerRecordTest, AnEmptyNameIsAName) {
  DomainControllerRecord record = usedRecord();
  storeName(record, L"");
  EXPECT_EQ(readName(record), L"");
}

TEST(DomainControllerRecordTest, AShorterNameLeavesNothingOfTheFormer) {
  DomainControllerRecord record = usedRecord();
  storeName(record, L"\\\\LONG-NAME");
  storeName(record, L"\\\\S");
  EXPECT_EQ(readName(record), L"\\\\S");
  for (std::size_t i = 3; i < record.name.size(); ++i) EXPECT_EQ(record.name[i], u'\0') << i;
}

TEST(DomainControllerRecordTest, StateAndReservedByteAreLeftAlone) {
  DomainControllerRecord record = usedRecord();
  storeName(record, std::wstring(300, L'n'));
  EXPECT_EQ(record.state, 0x5A);
  EXPECT_EQ(record.reserved, 0x5A);
}

TEST(DomainControllerRecordTest, LongNamesAreCutAndStayTerminated) {
  for (const std::size_t length : {258U, 259U, 260U, 261U, 1000U}) {
    DomainControllerRecord record = usedRecord();
    storeName(record, std::wstring(length, L'n'));
    EXPECT_EQ(readName(record), std::wstring(std::min<std::size_t>(length, 259), L'n')) << length;
  }
}

TEST(DomainControllerRecordTest, ANameWithoutEndIsNone) {
  DomainControllerRecord record{};
  record.name.fill(u'n');
  EXPECT_EQ(readName(record), std::nullopt);
  record.name.back() = u'\0';
  EXPECT_EQ(readName(record), std::wstring(259, L'n'));
}

}  // namespace
}  // namespace quillpress::driver
