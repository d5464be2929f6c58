#include <gtest/gtest.h>

#include "umpd/rules/PrinterNaming.h"

namespace quillpress::driver {
namespace {

TEST(PrinterNamingTest, TheNameFoundByThePortComesFirst) {
  const PrinterNaming naming{L"\\\\server\\queue", L"Front desk"};
  EXPECT_EQ(naming.effectiveName(), L"Front desk");
  EXPECT_EQ(naming.keyName(), L"Front desk");
}

TEST(PrinterNamingTest, ThenThePrintersOwn) {
  EXPECT_EQ((PrinterNaming{L"Front desk", L""}).effectiveName(), L"Front desk");
}

TEST(PrinterNamingTest, ThenTheProducts) {
  EXPECT_EQ(PrinterNaming().effectiveName(), L"Tarnwick Quillpress");
  EXPECT_EQ(PrinterNaming().keyName(), L"Tarnwick Quillpress");
}

TEST(PrinterNamingTest, KeysHaveCommasForBackslashes) {
  EXPECT_EQ((PrinterNaming{L"\\\\server\\queue", L""}).keyName(), L",,server,queue");
  EXPECT_EQ((PrinterNaming{L"", L"\\\\server\\queue"}).keyName(), L",,server,queue");
  EXPECT_EQ((PrinterNaming{L"a/b,c\\", L""}).keyName(), L"a/b,c,");
  EXPECT_EQ((PrinterNaming{L"\\\\server\\queue", L""}).effectiveName(), L"\\\\server\\queue");
}

TEST(PrinterNamingTest, PortsBeginWithABackslashOrAComma) {
  for (const wchar_t* name : {L"\\\\server\\queue", L",,server,queue", L"\\", L","})
    EXPECT_TRUE(isPortStyle(name)) << name;
  for (const wchar_t* name : {L"", L"Printer", L"/server", L" \\\\server", L"a,b", L"a\\b"})
    EXPECT_FALSE(isPortStyle(name)) << name;
}

}  // namespace
}  // namespace quillpress::driver
