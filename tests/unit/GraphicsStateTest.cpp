#include <gtest/gtest.h>

#include "postscript/lib/pdf/GraphicsState.h"
#include "tests/unit/RunInterpreter.h"

namespace quillpress {
namespace {

TEST(GraphicsStateTest, FreshStateHasTheDefaults) {
  const GraphicsState state;
  EXPECT_EQ(state.path.point().x, 0);
  EXPECT_EQ(state.path.point().y, 0);
  EXPECT_EQ(state.lineWidth, 0);
  EXPECT_EQ(state.ctm.a, 1);
  EXPECT_EQ(state.ctm.b, 0);
  EXPECT_EQ(state.ctm.c, 0);
  EXPECT_EQ(state.ctm.d, 1);
  EXPECT_EQ(state.ctm.tx, 0);
  EXPECT_EQ(state.ctm.ty, 0);
  EXPECT_EQ(state.fontName, "Helvetica");
  EXPECT_EQ(state.fontSize, 12.0);
  EXPECT_FALSE(state.path.isOpen());
  EXPECT_EQ(state.colourSpace, ColourSpace::kGray);
  EXPECT_EQ(state.colour, (std::array<double, 4>{0, 0, 0, 0}));
}

TEST(GraphicsStateTest, ColourSpaceCodesAreTheContract) {
  EXPECT_EQ(static_cast<int>(ColourSpace::kUnknown), -1);
  EXPECT_EQ(static_cast<int>(ColourSpace::kRgb), 0);
  EXPECT_EQ(static_cast<int>(ColourSpace::kHsb), 1);
  EXPECT_EQ(static_cast<int>(ColourSpace::kCmyk), 2);
  EXPECT_EQ(static_cast<int>(ColourSpace::kGray), 3);
}

TEST(GraphicsStateTest, CopyHasItsOwnFontName) {
  GraphicsState first;
  first.fontName = "Times-Roman";
  GraphicsState second(first);
  second.fontName = "Courier";
  EXPECT_EQ(first.fontName, "Times-Roman");
}

TEST(GraphicsStateTest, ComponentCountFollowsTheColourSpace) {
  EXPECT_EQ(componentCount(ColourSpace::kRgb), 3);
  EXPECT_EQ(componentCount(ColourSpace::kHsb), 3);
  EXPECT_EQ(componentCount(ColourSpace::kCmyk), 4);
  EXPECT_EQ(componentCount(ColourSpace::kGray), 1);
}

TEST(GraphicsStateTest, OtherCodesHaveNoComponentCount) {
  EXPECT_EQ(messageOf([] { (void)componentCount(static_cast<ColourSpace>(4)); }), "unsupported colorspace");
  EXPECT_EQ(messageOf([] { (void)componentCount(static_cast<ColourSpace>(-2)); }), "unsupported colorspace");
}

TEST(GraphicsStateTest, ImagesNameTheDeviceSpaces) {
  EXPECT_EQ(imageColourSpaceNames(ColourSpace::kRgb).full, "DeviceRGB");
  EXPECT_EQ(imageColourSpaceNames(ColourSpace::kRgb).abbreviation, "RGB");
  EXPECT_EQ(imageColourSpaceNames(ColourSpace::kCmyk).full, "DeviceCMYK");
  EXPECT_EQ(imageColourSpaceNames(ColourSpace::kCmyk).abbreviation, "CMYK");
  EXPECT_EQ(imageColourSpaceNames(ColourSpace::kGray).full, "DeviceGray");
  EXPECT_EQ(imageColourSpaceNames(ColourSpace::kGray).abbreviation, "G");
}

TEST(GraphicsStateTest, ImagesRefuseOtherSpaces) {
  for (const ColourSpace space : {ColourSpace::kHsb, ColourSpace::kUnknown, static_cast<ColourSpace>(4),
                                  static_cast<ColourSpace>(-2)}) {
    EXPECT_EQ(messageOf([space] { (void)imageColourSpaceNames(space); }),
              "unsupported colorspace for images");
  }
}

TEST(GraphicsStateTest, ErrorsNameTheirSource) {
  try {
    (void)imageColourSpaceNames(ColourSpace::kHsb);
    FAIL();
  } catch (const Ex& error) {
    EXPECT_EQ(error.formatted().find("[GraphicsState.cpp:"), 0U);
  }
}

}  // namespace
}  // namespace quillpress
