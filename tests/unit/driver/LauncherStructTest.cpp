#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "umpd/rules/LauncherStruct.h"

namespace quillpress::driver {
namespace {

constexpr char kUntouched = '\x5A';
constexpr std::size_t kFieldSize = 260;

// The record as its receivers see it: bytes. Whatever nobody has written shows.
class LauncherStructTest : public ::testing::Test {
 protected:
  LauncherStructTest() { std::memset(&record, kUntouched, sizeof record); }

  [[nodiscard]] std::string bytes(std::size_t offset, std::size_t size) const {
    return std::string(reinterpret_cast<const char*>(&record) + offset, size);
  }

  // A field of the record; it must hold the text and zeros over its whole width.
  void expectCleared(std::size_t offset, const std::string& text) const {
    EXPECT_EQ(bytes(offset, kFieldSize), text + std::string(kFieldSize - text.size(), '\0')) << offset;
  }

  void expectUntouched(std::size_t offset, std::size_t size) const {
    EXPECT_EQ(bytes(offset, size), std::string(size, kUntouched)) << offset;
  }

  // The command with its final zero; nothing is promised of what follows.
  void expectCommand(const std::string& text) const { EXPECT_EQ(bytes(3, text.size() + 1), text + '\0'); }

  LauncherStruct record;
};

TEST_F(LauncherStructTest, HasItsLayout) {
  EXPECT_EQ(sizeof record, 1303U);
  EXPECT_EQ(offsetof(LauncherStruct, header), 0U);
  EXPECT_EQ(offsetof(LauncherStruct, command), 3U);
  EXPECT_EQ(offsetof(LauncherStruct, printerName), 263U);
  EXPECT_EQ(offsetof(LauncherStruct, outputPath), 523U);
  EXPECT_EQ(offsetof(LauncherStruct, documentName), 783U);
  EXPECT_EQ(offsetof(LauncherStruct, reserved), 1043U);
  EXPECT_EQ(sizeof record.header, 3U);
  EXPECT_EQ(sizeof record.command, kFieldSize);
  EXPECT_EQ(sizeof record.reserved, kFieldSize);
}

TEST_F(LauncherStructTest, TheChannelAndTheCommandsHaveTheirNames) {
  EXPECT_STREQ(kLauncherChannel, L"twssend");
  EXPECT_STREQ(kStartPrint, "startprint");
  EXPECT_STREQ(kStopPrint, "stopprint");
}

TEST_F(LauncherStructTest, StartPrintTellsThePrinterOnly) {
  writeStartPrint(record, "Front desk");
  expectUntouched(0, 3);
  expectCommand("startprint");
  expectCleared(263, "Front desk");
  expectUntouched(523, 1303 - 523);
}

TEST_F(LauncherStructTest, StopPrintTellsEverything) {
  writeStopPrint(record, "Front desk", "Report", "C:\\Out\\Report.pdf");
  expectUntouched(0, 3);
  expectCommand("stopprint");
  expectCleared(263, "Front desk");
  expectCleared(523, "C:\\Out\\Report.pdf");
  expectCleared(783, "Report");
  expectUntouched(1043, kFieldSize);
}

TEST_F(LauncherStructTest, StartPrintKeepsPathAndDocumentOfTheFormerMessage) {
  writeStopPrint(record, "First", "Report", "C:\\Out\\Report.pdf");
  writeStartPrint(record, "Second");
  expectCommand("startprint");
  expectCleared(263, "Second");
  expectCleared(523, "C:\\Out\\Report.pdf");
  expectCleared(783, "Report");
}

TEST_F(LauncherStructTest, AShorterTextLeavesNothingOfTheFormer) {
  writeStopPrint(record, "A long name of a printer", "A long name of a document", "C:\\A long name");
  writeStopPrint(record, "P", "D", "C:\\O");
  expectCleared(263, "P");
  expectCleared(523, "C:\\O");
  expectCleared(783, "D");
}

TEST_F(LauncherStructTest, EmptyTextsAreZeros) {
  writeStopPrint(record, "", "", "");
  expectCleared(263, "");
  expectCleared(523, "");
  expectCleared(783, "");
}

TEST_F(LauncherStructTest, TextsAreCutAt259Bytes) {
  for (const std::size_t length : {258U, 259U, 260U, 261U, 5000U}) {
    const std::size_t kept = std::min<std::size_t>(length, 259);
    std::memset(&record, kUntouched, sizeof record);
    writeStopPrint(record, std::string(length, 'p'), std::string(length, 'd'), std::string(length, 'o'));
    expectUntouched(0, 3);
    expectCommand("stopprint");
    expectCleared(263, std::string(kept, 'p'));
    expectCleared(523, std::string(kept, 'o'));
    expectCleared(783, std::string(kept, 'd'));
    expectUntouched(1043, kFieldSize);
  }
  writeStartPrint(record, std::string(300, 'q'));
  expectCleared(263, std::string(259, 'q'));
}

}  // namespace
}  // namespace quillpress::driver
