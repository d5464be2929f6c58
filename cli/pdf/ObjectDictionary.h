#pragma once

#include <qpdf/QPDFObjectHandle.hh>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quillpress::cli {

// The text of an object's record is no dictionary.
class BrokenDictionary : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Throws PageError when the text of an object's record holds numbers that no PDF reader takes, infinities
// among them.
void checkRecord(std::string_view text);

// The stream dictionary of an image or a pattern from the text of its record. Throws BrokenDictionary.
QPDFObjectHandle streamDictionary(const std::string& text);

}  // namespace quillpress::cli
