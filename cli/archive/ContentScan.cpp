#include "cli/archive/ContentScan.h"

#include <cmath>
#include <qpdf/Pl_Buffer.hh>
#include <qpdf/Pl_Flate.hh>
#include <string>

#include "cli/archive/Limits.h"
#include "cli/base/Errors.h"

namespace quillpress::cli {

void DeviceColours::use(const std::string& name) {
  if (name == "/DeviceRGB") rgb = true;
  if (name == "/DeviceCMYK") cmyk = true;
}

void ContentScan::read(QPDFObjectHandle stream) {
  isChanged_ = false;
  Pl_Buffer buffer("content");
  Pl_Flate deflater("deflated content", &buffer, Pl_Flate::a_deflate);
  stream.filterAsContents(this, &deflater);
  if (!isChanged_) return;
  stream.replaceStreamData(buffer.getBufferSharedPointer(), QPDFObjectHandle::newName("/FlateDecode"),
                           QPDFObjectHandle::newNull());
}

void ContentScan::handleToken(const QPDFTokenizer::Token& token) {
  switch (token.getType()) {
    case QPDFTokenizer::tt_word:
      handleWord(token.getValue());
      break;
    case QPDFTokenizer::tt_real:
      return handleReal(token);
    case QPDFTokenizer::tt_integer:
      checkInteger(token.getValue());
      break;
    case QPDFTokenizer::tt_string:
      checkString(token.getValue(), part_);
      break;
    case QPDFTokenizer::tt_name:
      checkName(token.getValue());
      colours_.use(token.getValue());
      break;
    default:
      break;
  }
  writeToken(token);
}

void ContentScan::handleWord(const std::string& word) {
  // Of both parts' limits.
  constexpr int kDeepest = 28;
  if (word == "q" && ++depth_ > kDeepest) throw ArchiveError("graphics states saved more than 28 deep");
  if (word == "Q") --depth_;
  if (word == "rg" || word == "RG") colours_.rgb = true;
  if (word == "k" || word == "K") colours_.cmyk = true;
}

// So far out a number need not be exact; and whole ones have more room.
void ContentScan::handleReal(const QPDFTokenizer::Token& token) {
  const double value = std::stod(token.getValue());
  if (!isTooLarge(value, part_)) return writeToken(token);
  const double whole = std::round(value);
  if (!isInteger(whole)) throw ArchiveError("the number " + token.getValue());
  isChanged_ = true;
  writeToken(QPDFTokenizer::Token(QPDFTokenizer::tt_integer, std::to_string(static_cast<long long>(whole))));
}

}  // namespace quillpress::cli
