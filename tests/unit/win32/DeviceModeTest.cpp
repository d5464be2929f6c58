#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "umpd/spooler/Printer.h"

namespace quillpress::driver {
namespace {

std::wstring deviceName(const std::wstring& printerName) {
  return fixedDeviceMode(printerName).mode.dmDeviceName;
}

TEST(DeviceModeTest, HasItsFields) {
  const DeviceMode result = fixedDeviceMode(L"Front desk");
  const DEVMODEW& mode = result.mode;
  EXPECT_STREQ(mode.dmDeviceName, L"Front desk");
  EXPECT_EQ(mode.dmSpecVersion, 0x401);
  EXPECT_EQ(mode.dmDriverVersion, 0x400);
  EXPECT_EQ(mode.dmSize, 220);
  EXPECT_EQ(mode.dmDriverExtra, 180);
  EXPECT_EQ(mode.dmFields, 0x14F13U);
  EXPECT_EQ(mode.dmOrientation, 1);
  EXPECT_EQ(mode.dmPaperSize, 1);
  EXPECT_EQ(mode.dmScale, 100);
  EXPECT_EQ(mode.dmCopies, 1);
  EXPECT_EQ(mode.dmDefaultSource, 15);
  EXPECT_EQ(mode.dmPrintQuality, 300);
  EXPECT_EQ(mode.dmColor, 2);
  EXPECT_EQ(mode.dmDuplex, 1);
  EXPECT_EQ(mode.dmTTOption, 3);
  EXPECT_STREQ(mode.dmFormName, L"A4");
}

TEST(DeviceModeTest, EverythingElseIsZero) {
  DeviceMode expected;
  std::memset(&expected, 0, sizeof expected);
  DEVMODEW& mode = expected.mode;
  std::memcpy(mode.dmDeviceName, L"P", sizeof L"P");
  mode.dmSpecVersion = 0x401;
  mode.dmDriverVersion = 0x400;
  mode.dmSize = 220;
  mode.dmDriverExtra = 180;
  mode.dmFields = 0x14F13;
  mode.dmOrientation = 1;
  mode.dmPaperSize = 1;
  mode.dmScale = 100;
  mode.dmCopies = 1;
  mode.dmDefaultSource = 15;
  mode.dmPrintQuality = 300;
  mode.dmColor = 2;
  mode.dmDuplex = 1;
  mode.dmTTOption = 3;
  std::memcpy(mode.dmFormName, L"A4", sizeof L"A4");
  const DeviceMode result = fixedDeviceMode(L"P");
  EXPECT_EQ(sizeof result, 400U);
  EXPECT_EQ(std::memcmp(&result, &expected, sizeof result), 0);
}

TEST(DeviceModeTest, TheDeviceIsTheLastComponentOfTheName) {
  EXPECT_EQ(deviceName(L"\\\\server\\Front desk"), L"Front desk");
  EXPECT_EQ(deviceName(L"a/b,c"), L"a/b,c");
  EXPECT_EQ(deviceName(L"\\\\server\\"), L"");
  EXPECT_EQ(deviceName(L""), L"");
}

TEST(DeviceModeTest, ANameOf32CharactersOrMoreIsCut) {
  const std::wstring name = L"0123456789abcdefghijklmnopqrstuvwxyzABCD";
  EXPECT_EQ(deviceName(name.substr(0, 30)), name.substr(0, 30));
  EXPECT_EQ(deviceName(name.substr(0, 31)), name.substr(0, 31));
  EXPECT_EQ(deviceName(name.substr(0, 32)), name.substr(0, 31));
  EXPECT_EQ(deviceName(name), name.substr(0, 31));
  EXPECT_EQ(deviceName(L"\\\\a server with a long name, longer than 32\\" + name.substr(0, 31)),
            name.substr(0, 31));
}

}  // namespace
}  // namespace quillpress::driver
