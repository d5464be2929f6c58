#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "postscript/lib/pdf/Postscript2Pdf.h"

namespace quillpress {

// A converter with an empty list of PDF objects, which is the process's and would keep those of other tests.
class ConverterFixture : public testing::Test {
 protected:
  explicit ConverterFixture(const Matrix& defaultMatrix = {}) : converter_(defaultMatrix) {
    PdfObjectList::ofProcess().clear();
  }
  ~ConverterFixture() override { PdfObjectList::ofProcess().clear(); }

  // The page content of one chunk. Expects it to succeed.
  std::string content(std::string_view chunk) {
    EXPECT_TRUE(converter_.convert(chunk.data(), static_cast<int>(chunk.size()))) << converter_.errorText();
    return converter_.pageContent();
  }

  // The message of one chunk's failure.
  std::string message(std::string_view chunk) {
    EXPECT_FALSE(converter_.convert(chunk.data(), static_cast<int>(chunk.size())));
    const std::string& text = converter_.errorText();
    const auto place = text.find("] ");
    return place == std::string::npos ? text : text.substr(place + 2, text.size() - place - 3);
  }

  // The objects made since the test began.
  static std::size_t objectCount() { return PdfObjectList::ofProcess().count(); }
  static ::PdfObject& object(std::size_t index) { return *PdfObjectList::ofProcess().snapshot()[index]; }
  static std::string dataOf(const ::PdfObject& object) { return {object.data, object.dataLength}; }

  Postscript2Pdf converter_;
};

}  // namespace quillpress
