#include <gtest/gtest.h>

#include "umpd/rules/PrinterNaming.h"

namespace quillpress::driver {
namespace {

constexpr wchar_t kDriver[] = L"Tarnwick Quillpress";
constexpr wchar_t kPort[] = L"\\\\Server\\Queue";

TEST(PrinterPortsTest, ThePortMayBeWrittenEitherWay) {
  EXPECT_TRUE(isPrinterOnPort(kDriver, kPort, L"\\\\Server\\Queue"));
  EXPECT_TRUE(isPrinterOnPort(kDriver, kPort, L",,Server,Queue"));
}

TEST(PrinterPortsTest, CaseDoesNotMatter) {
  EXPECT_TRUE(isPrinterOnPort(L"TARNWICK QUILLPRESS", kPort, L"\\\\SERVER\\queue"));
  EXPECT_TRUE(isPrinterOnPort(L"tarnwick quillpress", kPort, L",,server,QUEUE"));
}

TEST(PrinterPortsTest, AMixtureOfBothIsNeither) {
  EXPECT_FALSE(isPrinterOnPort(kDriver, kPort, L",,Server\\Queue"));
  EXPECT_FALSE(isPrinterOnPort(kDriver, kPort, L"\\\\Server,Queue"));
}

// The record's backslashes may read as commas, never the sought name's.
TEST(PrinterPortsTest, CommasOfTheRecordStayCommas) {
  EXPECT_TRUE(isPrinterOnPort(kDriver, L",,Server,Queue", L",,Server,Queue"));
  EXPECT_FALSE(isPrinterOnPort(kDriver, L",,Server,Queue", L"\\\\Server\\Queue"));
}

TEST(PrinterPortsTest, OtherPortsDoNotMatch) {
  EXPECT_FALSE(isPrinterOnPort(kDriver, kPort, L"\\\\Server\\Queue2"));
  EXPECT_FALSE(isPrinterOnPort(kDriver, kPort, L"\\\\Server"));
  EXPECT_FALSE(isPrinterOnPort(kDriver, kPort, L""));
}

TEST(PrinterPortsTest, OtherDriversDoNotMatch) {
  EXPECT_FALSE(isPrinterOnPort(L"Tarnwick Quillpress 2", kPort, kPort));
  EXPECT_FALSE(isPrinterOnPort(L"Quillpress", kPort, kPort));
  EXPECT_FALSE(isPrinterOnPort(L"", kPort, kPort));
}

}  // namespace
}  // namespace quillpress::driver
