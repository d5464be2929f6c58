// Data of the filters. The first byte chooses the filter and its parameters.

#include <array>
#include <string>
#include <string_view>

#include "tests/fuzz/support/FullLanguage.h"
#include "tests/fuzz/support/Target.h"

namespace quillpress::fuzz {

namespace {

constexpr std::array<std::string_view, 26> kFilters{
    "/ASCIIHexDecode",
    "/ASCII85Decode",
    "/RunLengthDecode",
    "/LZWDecode",
    "<< /EarlyChange 0 /LowBitFirst true >> /LZWDecode",
    "<< /UnitLength 4 >> /LZWDecode",
    "<< /Predictor 2 /Columns 5 /Colors 3 >> /LZWDecode",
    "/FlateDecode",
    "<< /Predictor 15 /Columns 7 /Colors 4 >> /FlateDecode",
    "<< /Predictor 12 /Columns 9 /BitsPerComponent 1 >> /FlateDecode",
    "<< /Predictor 2 /Columns 5 /BitsPerComponent 16 >> /FlateDecode",
    "/CCITTFaxDecode",
    "<< /K -1 /Columns 40 >> /CCITTFaxDecode",
    "<< /K 4 /Columns 40 /EndOfLine true >> /CCITTFaxDecode",
    "<< /Columns 33 /Rows 9 /EncodedByteAlign true /EndOfBlock false >> /CCITTFaxDecode",
    "<< /K -1 /Columns 24 /BlackIs1 true /DamagedRowsBeforeError 3 >> /CCITTFaxDecode",
    "/DCTDecode",
    "<< /ColorTransform 0 >> /DCTDecode",
    "0 (ab) /SubFileDecode",
    "2 (aba) /SubFileDecode",
    "9 () /SubFileDecode",
    "/ReusableStreamDecode",
    "<< /Filter [/ASCIIHexDecode /FlateDecode] >> /ReusableStreamDecode",
    "/ASCII85Decode filter /FlateDecode",
    "/ASCIIHexDecode filter /DCTDecode",
    "/FlateDecode filter << /K -1 /Columns 40 >> /CCITTFaxDecode",
};

std::string hexOf(Input data) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (const std::uint8_t byte : data) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

}  // namespace

void runFilters(Input input) {
  if (input.empty()) return;
  const std::string_view filter = kFilters[input.front() % kFilters.size()];
  runProgram("<" + hexOf(input.subspan(1)) + "> " + std::string(filter) +
             " filter 1000 {dup 999 string readstring exch pop not {exit} if} repeat");
}

}  // namespace quillpress::fuzz
