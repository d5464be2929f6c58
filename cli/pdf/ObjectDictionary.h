#pragma once

#include <qpdf/QPDFObjectHandle.hh>
#include <stdexcept>
#include <string>
#include <string_view>

#include "cli/content/Matrix.h"

namespace quillpress::cli {

// The text of an object's record is no dictionary.
class BrokenDictionary : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Throws PageError when the text of an object's record holds numbers that no PDF reader takes, infinities
// among them.
void checkRecord(std::string_view text);

// The stream dictionary of an image from the text of its record. Throws BrokenDictionary.
QPDFObjectHandle imageDictionary(const std::string& text);

// The stream dictionary of a pattern from the text of its record, with what PDF requires and a job may have
// left out. The record's matrix leads to the user space in which the pattern is selected; PDF wants the space
// in which the page begins, to which `place` leads from there. Throws BrokenDictionary, and PageError when
// the matrix is out of range.
QPDFObjectHandle patternDictionary(std::string text, const Matrix& place);

}  // namespace quillpress::cli
