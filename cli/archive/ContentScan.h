#pragma once

#include <qpdf/QPDFObjectHandle.hh>
#include <string>

#include "cli/base/ArchivePart.h"

namespace quillpress::cli {

// Which colours are used without saying of what device.
struct DeviceColours {
  bool rgb = false;
  bool cmyk = false;

  void use(const std::string& name);
};

// Reads the text of a page, or of something drawn on one. Numbers that the part of PDF/A has no room for are
// replaced as the text goes by. Streams that are one text are read by one scan, in their order.
class ContentScan final : public QPDFObjectHandle::TokenFilter {
 public:
  ContentScan(ArchivePart part, DeviceColours& colours) : part_(part), colours_(colours) {}

  // Throws ArchiveError for what cannot be replaced.
  void read(QPDFObjectHandle stream);

 private:
  void handleToken(const QPDFTokenizer::Token& token) override;
  void handleWord(const std::string& word);
  void handleReal(const QPDFTokenizer::Token& token);

  ArchivePart part_;
  DeviceColours& colours_;
  int depth_ = 0;
  bool isChanged_ = false;
};

}  // namespace quillpress::cli
