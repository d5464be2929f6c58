#ifndef QUILLPRESS_CLI_OBJECT_DICTIONARY_H
#define QUILLPRESS_CLI_OBJECT_DICTIONARY_H

#include <qpdf/QPDFObjectHandle.hh>
#include <string>

namespace quillpress::cli {

/**
 * The stream dictionary of an image from the text of its record. Throws std::runtime_error when the text is
 * no dictionary.
 */
QPDFObjectHandle imageDictionary(const std::string& text);

/**
 * The stream dictionary of a pattern from the text of its record, with what PDF requires and a job may have
 * left out. Throws std::runtime_error when the text is no dictionary.
 */
QPDFObjectHandle patternDictionary(std::string text);

}  // namespace quillpress::cli

#endif
