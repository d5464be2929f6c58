#ifndef QUILLPRESS_CLI_PDF_PAGES_H
#define QUILLPRESS_CLI_PDF_PAGES_H

#include <optional>

#include "cli/Deflater.h"
#include "cli/Document.h"
#include "cli/ObjectStore.h"
#include "cli/PageContent.h"
#include "cli/PageOutput.h"
#include "cli/Spool.h"

namespace quillpress::cli {

/** Gathers the pages of a PDF file, with the images and patterns that they name. */
class PdfPages final : public PageOutput {
 public:
  explicit PdfPages(Spool& spool) : spool_(spool), store_(spool, deflater_) {}

  void beginPage() override;
  void append(std::string_view text) override;
  void endPage(const std::optional<Box>& box, Converter& converter) override;
  void dropPage() override;

  Document& document() { return document_; }
  [[nodiscard]] const ObjectStore& objects() const { return store_; }

 private:
  void keepObjects(Converter& converter);

  Spool& spool_;
  Deflater deflater_;
  ObjectStore store_;
  Document document_;
  std::optional<PageContent> content_;
  std::uint64_t pageBegin_ = 0;  // in the spool
};

}  // namespace quillpress::cli

#endif
