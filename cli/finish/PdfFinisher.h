#pragma once

#include <cstdint>
#include <cstdio>
#include <qpdf/QPDF.hh>
#include <vector>

#include "cli/base/Options.h"

namespace quillpress::cli {

// A PDF that is complete, with what the options ask to be done to it. Errors of reading and writing are
// OutputErrors.
class PdfFinisher {
 public:
  // `source` holds the PDF; it stays open, and the options stay alive, as long as the finisher is used.
  // Throws UsageError when none of the pages that are wanted is there.
  PdfFinisher(std::FILE* source, const Options& options);

  // Whether a page is wanted that is not there.
  [[nodiscard]] bool lacksPages() const { return lacksPages_; }
  [[nodiscard]] std::uint64_t pageCount() const { return pageCount_; }

  void write(std::FILE* file);
  // One page, from 0, as a file of its own.
  void writePage(std::uint64_t page, std::FILE* file);

 private:
  void selectPages();
  void rotatePages();
  void setInformation();

  const Options& options_;
  QPDF pdf_;
  std::uint64_t pageCount_ = 0;
  bool lacksPages_ = false;
};

}  // namespace quillpress::cli
