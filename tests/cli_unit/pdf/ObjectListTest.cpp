#include <gtest/gtest.h>

#include "cli/pdf/ObjectList.h"
#include "tests/cli_unit/pdf/RecordFixture.h"

namespace quillpress::cli {
namespace {

std::string listed(const Records& records, const PageCounts* pages) {
  testing::internal::CaptureStderr();
  listObjects(records.list(), pages, stderr);
  return testing::internal::GetCapturedStderr();
}

TEST(ObjectListTest, AnImageHasALine) {
  Records records;
  records.addImage(kGrayImage, "abcd");
  EXPECT_EQ(listed(records, nullptr), "/PSI1 image: 2 x 2, 8 bits, /DeviceGray, 4 bytes\n");
}

TEST(ObjectListTest, APatternHasALine) {
  Records records;
  records.addPattern(kCell, "1 w");
  EXPECT_EQ(listed(records, nullptr), "/PA1 pattern: cell [ 0 0 8 8 ], steps 8 and 8, 3 bytes\n");
}

TEST(ObjectListTest, WhatAPatternLacksIsUnknown) {
  Records records;
  records.addPattern("/BBox [0 0 8 8] /XStep 8", "1 w");
  EXPECT_EQ(listed(records, nullptr), "/PA1 pattern: cell [ 0 0 8 8 ], steps 8 and ?, 3 bytes\n");
}

TEST(ObjectListTest, PagesAreCounted) {
  Records records;
  records.addImage(kGrayImage, "a");
  records.addImage(kGrayImage, "b");
  const PageCounts pages{{1, 3}};
  const std::string text = listed(records, &pages);
  EXPECT_NE(text.find("1 byte, on 3 pages\n"), std::string::npos);
  EXPECT_NE(text.find("1 byte, on 0 pages\n"), std::string::npos);
}

TEST(ObjectListTest, ABrokenOneIsCalledSo) {
  Records records;
  records.addImage("/Width (open", "abcd");
  EXPECT_EQ(listed(records, nullptr), "/PSI1 image: broken dictionary, 4 bytes\n");
}

TEST(ObjectListTest, ADictionaryCannotWriteToTheTerminal) {
  Records records;
  records.addImage("/Width 2 /Height 2 /BitsPerComponent 8 /ColorSpace (\x1B[2J)", "abcd");
  EXPECT_EQ(listed(records, nullptr).find('\x1B'), std::string::npos);
}

}  // namespace
}  // namespace quillpress::cli
