#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "postscript/lib/pdf/HsbColour.h"

namespace quillpress {
namespace {

void expectRgb(const Rgb& colour, double red, double green, double blue) {
  EXPECT_NEAR(colour.red, red, 1e-12);
  EXPECT_NEAR(colour.green, green, 1e-12);
  EXPECT_NEAR(colour.blue, blue, 1e-12);
}

TEST(HsbColourTest, EverySectorHasItsColours) {
  expectRgb(rgbOfHsb(0, 1, 1), 1, 0, 0);
  expectRgb(rgbOfHsb(0.5 / 6, 1, 1), 1, 0.5, 0);
  expectRgb(rgbOfHsb(1.5 / 6, 1, 1), 0.5, 1, 0);
  expectRgb(rgbOfHsb(2.5 / 6, 1, 1), 0, 1, 0.5);
  expectRgb(rgbOfHsb(3.5 / 6, 1, 1), 0, 0.5, 1);
  expectRgb(rgbOfHsb(4.5 / 6, 1, 1), 0.5, 0, 1);
  expectRgb(rgbOfHsb(5.5 / 6, 1, 1), 1, 0, 0.5);
}

TEST(HsbColourTest, SectorsMeet) {
  expectRgb(rgbOfHsb(1.0 / 6, 1, 1), 1, 1, 0);
  expectRgb(rgbOfHsb(2.0 / 6, 1, 1), 0, 1, 0);
  expectRgb(rgbOfHsb(3.0 / 6, 1, 1), 0, 1, 1);
  expectRgb(rgbOfHsb(4.0 / 6, 1, 1), 0, 0, 1);
  expectRgb(rgbOfHsb(5.0 / 6, 1, 1), 1, 0, 1);
}

TEST(HsbColourTest, SaturationAndBrightnessScale) {
  expectRgb(rgbOfHsb(0, 0.5, 1), 1, 0.5, 0.5);
  expectRgb(rgbOfHsb(0, 1, 0.5), 0.5, 0, 0);
  expectRgb(rgbOfHsb(0.25, 0.5, 0.8), 0.6, 0.8, 0.4);
  expectRgb(rgbOfHsb(0.5, 1, 0), 0, 0, 0);
}

TEST(HsbColourTest, WithoutSaturationAllIsBrightness) {
  expectRgb(rgbOfHsb(0.3, 0, 0.7), 0.7, 0.7, 0.7);
  expectRgb(rgbOfHsb(std::numeric_limits<double>::quiet_NaN(), 0, 0.7), 0.7, 0.7, 0.7);
}

TEST(HsbColourTest, WholeTurnsOfTheHueGo) {
  for (const double turns : {-3.0, -1.0, 1.0, 2.0, 1000.0}) {
    expectRgb(rgbOfHsb(0.25 + turns, 0.5, 0.8), 0.6, 0.8, 0.4);
    expectRgb(rgbOfHsb(turns, 1, 1), 1, 0, 0);
  }
}

TEST(HsbColourTest, AHueJustBelowZeroIsRed) {
  expectRgb(rgbOfHsb(-1e-20, 1, 1), 1, 0, 0);
}

TEST(HsbColourTest, AHueThatIsNoNumberIsHarmless) {
  EXPECT_EQ(rgbOfHsb(std::numeric_limits<double>::infinity(), 1, 1).red, 1);
  EXPECT_EQ(rgbOfHsb(std::numeric_limits<double>::quiet_NaN(), 1, 1).red, 1);
}

}  // namespace
}  // namespace quillpress
