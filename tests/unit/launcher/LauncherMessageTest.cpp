#include <gtest/gtest.h>

#include <cstring>
#include <string_view>

#include "tools/launcher/Message.h"

namespace quillpress::launcher {
namespace {

// What an untouched record holds: no zero anywhere.
driver::LauncherStruct patternRecord() {
  driver::LauncherStruct record;
  std::memset(&record, 0xA5, sizeof record);
  return record;
}

void set(driver::LauncherText& field, std::string_view text) {
  ASSERT_LT(text.size(), field.size());
  std::memcpy(field.data(), text.data(), text.size());
  field[text.size()] = '\0';
}

driver::LauncherStruct stopPrint() {
  driver::LauncherStruct record = patternRecord();
  set(record.command, "stopprint");
  set(record.printerName, "printer");
  set(record.outputPath, "C:\\a.pdf");
  set(record.documentName, "document");
  return record;
}

TEST(LauncherMessageTest, AJobBegins) {
  driver::LauncherStruct record = patternRecord();
  set(record.command, "startprint");
  set(record.printerName, "printer");
  const Message message = readMessage(record);
  EXPECT_EQ(message.kind, Message::Kind::kStartPrint);
  EXPECT_EQ(message.command, "startprint");
  EXPECT_EQ(message.printerName, "printer");
  EXPECT_EQ(message.outputPath, "");
  EXPECT_EQ(message.documentName, "");
}

TEST(LauncherMessageTest, ABeginningJobHasNoPathWhateverTheLastOneLeft) {
  driver::LauncherStruct record = stopPrint();
  set(record.command, "startprint");
  EXPECT_EQ(readMessage(record).outputPath, "");
  EXPECT_EQ(readMessage(record).documentName, "");
}

TEST(LauncherMessageTest, AFileIsFinished) {
  const Message message = readMessage(stopPrint());
  EXPECT_EQ(message.kind, Message::Kind::kStopPrint);
  EXPECT_EQ(message.printerName, "printer");
  EXPECT_EQ(message.outputPath, "C:\\a.pdf");
  EXPECT_EQ(message.documentName, "document");
}

TEST(LauncherMessageTest, ATextMayFillItsFieldButForTheZero) {
  driver::LauncherStruct record = stopPrint();
  set(record.documentName, std::string(259, 'd'));
  EXPECT_EQ(readMessage(record).documentName, std::string(259, 'd'));
}

TEST(LauncherMessageTest, OtherCommandsAreUnknown) {
  for (const char* command : {"", "start", "startprint2", "STARTPRINT", " stopprint"}) {
    driver::LauncherStruct record = stopPrint();
    set(record.command, command);
    const Message message = readMessage(record);
    EXPECT_EQ(message.kind, Message::Kind::kUnknownCommand) << command;
    EXPECT_EQ(message.command, command);
    EXPECT_EQ(message.outputPath, "");
  }
}

TEST(LauncherMessageTest, ATextWithoutAnEndIsNotReadBeyondItsField) {
  const auto endlessField = [](driver::LauncherText driver::LauncherStruct::*field) {
    driver::LauncherStruct record = stopPrint();
    (record.*field).fill('x');
    const Message message = readMessage(record);
    EXPECT_EQ(message.kind, Message::Kind::kEndlessText);
    EXPECT_EQ(message.outputPath, "");
    return message.command;
  };
  EXPECT_EQ(endlessField(&driver::LauncherStruct::command), "command");
  EXPECT_EQ(endlessField(&driver::LauncherStruct::printerName), "printer name");
  EXPECT_EQ(endlessField(&driver::LauncherStruct::outputPath), "output path");
  EXPECT_EQ(endlessField(&driver::LauncherStruct::documentName), "document name");
}

TEST(LauncherMessageTest, ARecordFullOfPatternIsHarmless) {
  EXPECT_EQ(readMessage(patternRecord()).kind, Message::Kind::kEndlessText);
}

}  // namespace
}  // namespace quillpress::launcher
