#include <gtest/gtest.h>

#include <qpdf/QPDF.hh>

#include "cli/archive/ContentScan.h"
#include "cli/base/Errors.h"

namespace quillpress::cli {

namespace {

class ContentScanTest : public testing::Test {
 protected:
  ContentScanTest() { pdf_.emptyPDF(); }

  // The content as it stands after it was read.
  std::string read(const std::string& content, ArchivePart part) {
    QPDFObjectHandle stream = QPDFObjectHandle::newStream(&pdf_, content);
    ContentScan(part, colours_).read(stream);
    const std::shared_ptr<Buffer> data = stream.getStreamData(qpdf_dl_generalized);
    return {reinterpret_cast<const char*>(data->getBuffer()), data->getSize()};
  }

  std::string refusal(const std::string& content, ArchivePart part) {
    try {
      read(content, part);
    } catch (const ArchiveError& error) {
      return error.what();
    }
    return "none";
  }

  static std::string times(int count, const std::string& text) {
    std::string result;
    for (int i = 0; i < count; ++i) result += text;
    return result;
  }

  QPDF pdf_;
  DeviceColours colours_;
};

TEST_F(ContentScanTest, NumbersWithRoomStay) {
  const std::string content = "q 32766.5 -32766.25 m 70000 0.001 l S Q\n";
  EXPECT_EQ(read(content, ArchivePart::k1b), content);
}

TEST_F(ContentScanTest, PartOneHasNoRoomForLargeFractions) {
  EXPECT_EQ(read("40000.5 -32768.25 m\n", ArchivePart::k1b), "40001 -32768 m\n");
  EXPECT_EQ(read("40000.5 -32768.25 m\n", ArchivePart::k2b), "40000.5 -32768.25 m\n");
}

TEST_F(ContentScanTest, NumbersBeyondIntegersAreRefused) {
  EXPECT_EQ(refusal("3000000000 0 m\n", ArchivePart::k2b), "the number 3000000000");
  EXPECT_EQ(refusal("3000000000.5 0 m\n", ArchivePart::k1b), "the number 3000000000.5");
}

TEST_F(ContentScanTest, NumbersThatNoProgramHoldsAreRefused) {
  EXPECT_EQ(refusal("99999999999999999999 0 m\n", ArchivePart::k2b), "the number 99999999999999999999");
}

TEST_F(ContentScanTest, StatesAreSavedUpTo28Deep) {
  EXPECT_EQ(refusal(times(28, "q ") + times(28, "Q "), ArchivePart::k2b), "none");
  EXPECT_EQ(refusal(times(3, times(28, "q ") + times(28, "Q ")), ArchivePart::k2b), "none");
  EXPECT_EQ(refusal(times(29, "q "), ArchivePart::k2b), "graphics states saved more than 28 deep");
}

TEST_F(ContentScanTest, LongNamesAreRefused) {
  EXPECT_EQ(refusal("/" + std::string(127, 'n') + " gs", ArchivePart::k2b), "none");
  EXPECT_NE(refusal("/" + std::string(128, 'n') + " gs", ArchivePart::k2b), "none");
}

TEST_F(ContentScanTest, LongStringsAreRefusedInLaterParts) {
  const std::string content = "(" + std::string(40000, 's') + ") Tj";
  EXPECT_EQ(refusal(content, ArchivePart::k1b), "none");
  EXPECT_EQ(refusal(content, ArchivePart::k2b), "a string of 40000 bytes");
}

TEST_F(ContentScanTest, ColoursOfDevicesAreSeen) {
  read("0.5 g 1 G", ArchivePart::k1b);
  EXPECT_FALSE(colours_.rgb || colours_.cmyk);
  read("1 0 0 rg", ArchivePart::k1b);
  EXPECT_TRUE(colours_.rgb);
  EXPECT_FALSE(colours_.cmyk);
  read("/DeviceCMYK cs", ArchivePart::k1b);
  EXPECT_TRUE(colours_.cmyk);
}

}  // namespace

}  // namespace quillpress::cli
