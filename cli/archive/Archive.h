#pragma once

#include <qpdf/QPDF.hh>
#include <set>
#include <string>
#include <vector>

#include "cli/archive/ContentScan.h"
#include "cli/archive/Inks.h"
#include "cli/archive/IntentProfile.h"
#include "cli/base/ArchivePart.h"

namespace quillpress::cli {

// Turns a PDF of ours into PDF/A before it is written. Done twice it is the same as done once.
class Archive {
 public:
  // REQUIRES: the intent outlives the archive.
  Archive(QPDF& pdf, ArchivePart part, const IntentProfile& intent)
      : pdf_(pdf), part_(part), intent_(intent) {}

  // Throws ArchiveError with the name of what cannot be kept.
  void make();

  // Whether the job had written a metadata packet, whose place the archive's own has taken.
  [[nodiscard]] bool replacesMetadata() const { return replacesMetadata_; }

 private:
  void visitPages();
  void visitTree(const QPDFObjectHandle& top);
  void visit(QPDFObjectHandle value);
  void visitDictionary(QPDFObjectHandle dictionary);
  void visitAnnotations(QPDFObjectHandle annotations);
  void checkSize(QPDFObjectHandle page) const;
  void readContents(QPDFObjectHandle page);
  void setDefaultSpaces();
  void setDefaultSpace(const std::string& device, const QPDFObjectHandle& space);
  void setIntent();
  void setMetadata();

  QPDF& pdf_;
  ArchivePart part_;
  const IntentProfile& intent_;
  DeviceColours colours_;
  std::set<QPDFObjGen> visited_;
  // What is still to be visited below the present top.
  std::vector<QPDFObjectHandle> waiting_;
  std::vector<QPDFObjectHandle> resources_;
  Inks inks_;
  bool replacesMetadata_ = false;
};

}  // namespace quillpress::cli
