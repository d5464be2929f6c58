#pragma once

#include <optional>

#include "cli/content/PageContent.h"
#include "cli/conversion/PageOutput.h"
#include "cli/pdf/Document.h"
#include "cli/pdf/ObjectStore.h"
#include "cli/spool/Deflater.h"
#include "cli/spool/Spool.h"
#include "cli/spool/SpoolWorker.h"

namespace quillpress::cli {

// Gathers the pages of a PDF file, with the images and patterns that they name.
class PdfPages final : public PageOutput {
 public:
  explicit PdfPages(Spool& spool) : worker_(spool), store_(worker_, deflater_) {}

  void beginPage() override;
  void append(std::string_view text) override;
  void endPage(const std::optional<Box>& box, Converter& converter) override;
  void dropPage() override;

  // No more pages come; the spool is the caller's again.
  void finish() { document_.pieces = worker_.finish(); }

  Document& document() { return document_; }
  [[nodiscard]] const ObjectStore& objects() const { return store_; }

 private:
  void keepObjects(Converter& converter);

  // Page text gets hardly smaller with more effort, and compressing it is most of the work. Less would make
  // the file of a job with decimals in its coordinates larger than other converters' files. Outlives the
  // worker, which uses it.
  Deflater deflater_{Deflater::Effort::kQuick};
  SpoolWorker worker_;
  ObjectStore store_;
  Document document_;
  std::optional<PageContent> content_;
};

}  // namespace quillpress::cli
