#pragma once

#include <cstdint>
#include <cstdio>
#include <qpdf/QPDF.hh>
#include <vector>

#include "cli/archive/IntentProfile.h"
#include "cli/base/Options.h"

namespace quillpress::cli {

// A PDF that is complete, with what the options ask to be done to it. Errors of reading and writing are
// OutputErrors.
class PdfFinisher {
 public:
  // `source` holds the PDF; it stays open, and the options and the intent stay alive, as long as the finisher
  // is used. Throws UsageError when none of the pages that are wanted is there, ArchiveError when an archive
  // is wanted that the PDF cannot become.
  PdfFinisher(std::FILE* source, const Options& options, const IntentProfile& intent);

  // Whether a page is wanted that is not there.
  [[nodiscard]] bool lacksPages() const { return lacksPages_; }
  // Whether the job's own metadata packet gave way to the archive's.
  [[nodiscard]] bool replacesMetadata() const { return replacesMetadata_; }
  [[nodiscard]] std::uint64_t pageCount() const { return pageCount_; }

  void write(std::FILE* file);
  // One page, from 0, as a file of its own.
  void writePage(std::uint64_t page, std::FILE* file);

 private:
  void selectPages();
  void rotatePages();
  void setInformation();
  void archive(QPDF& pdf);

  const Options& options_;
  const IntentProfile& intent_;
  QPDF pdf_;
  std::uint64_t pageCount_ = 0;
  bool lacksPages_ = false;
  bool replacesMetadata_ = false;
};

}  // namespace quillpress::cli
