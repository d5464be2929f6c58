#include "cli/pdf/ObjectDictionary.h"

#include <qpdf/QPDFExc.hh>

#include "cli/base/Errors.h"
#include "cli/base/TextScan.h"
#include "cli/content/NumberRange.h"

namespace quillpress::cli {

namespace {

// How the C library writes numbers that are none.
bool isNoNumber(std::string_view word) {
  if (word.starts_with('[')) word.remove_prefix(1);
  if (word.starts_with('-')) word.remove_prefix(1);
  return word.starts_with("inf") || word.starts_with("nan");
}

}  // namespace

void checkRecord(std::string_view text) {
  checkNumbers(text);
  for (std::string_view word = takeWord(text); !word.empty(); word = takeWord(text)) {
    if (isNoNumber(word)) throw PageError("an image or a pattern has no finite size");
  }
}

QPDFObjectHandle streamDictionary(const std::string& text) {
  try {
    QPDFObjectHandle dictionary = QPDFObjectHandle::parse("<<" + text + ">>", "object dictionary");
    // Brackets inside the record may have closed ours.
    if (dictionary.isDictionary()) return dictionary;
  } catch (const QPDFExc& error) {
    throw BrokenDictionary(error.getMessageDetail());
  }
  throw BrokenDictionary("it is something else");
}

}  // namespace quillpress::cli
