#pragma once

#include <map>
#include <qpdf/QPDF.hh>
#include <string>
#include <vector>

#include "cli/base/ArchivePart.h"

namespace quillpress::cli {

// The colour spaces of inks in a document: /Separation for one, /DeviceN for several.
class Inks {
 public:
  // Other spaces are left alone.
  void add(QPDFObjectHandle space);

  // Shows inks through `space` where they were shown through the device of this name, "/DeviceCMYK": some
  // programs look at what stands in for an ink without the page's resources.
  void replaceDevice(const std::string& device, const QPDFObjectHandle& space);

  // In later parts of PDF/A than the first each ink among several says what it looks like alone, and one ink
  // looks the same everywhere. Throws ArchiveError when it does not.
  void complete(QPDF& pdf, ArchivePart part);

 private:
  void completeSeveral(QPDF& pdf, QPDFObjectHandle space);

  std::vector<QPDFObjectHandle> single_;
  std::vector<QPDFObjectHandle> several_;
  // What each ink looks like alone.
  std::map<std::string, QPDFObjectHandle> looks_;
};

}  // namespace quillpress::cli
