#pragma once

#include "cli/conversion/PageOutput.h"
#include "cli/spool/Output.h"
#include "cli/spool/Spool.h"

namespace quillpress::cli {

// Writes the content text of complete pages, one after the other, as the converter returns it.
class TextPages final : public PageOutput {
 public:
  TextPages(Spool& spool, Output& output) : spool_(spool), output_(output) {}

  void beginPage() override { spool_.cutTo(0); }
  void append(std::string_view text) override { spool_.append(text); }
  void endPage(const std::optional<Box>& box, Converter& converter) override;
  void dropPage() override { spool_.cutTo(0); }

  [[nodiscard]] std::size_t pageCount() const { return pageCount_; }

 private:
  Spool& spool_;
  Output& output_;
  std::size_t pageCount_ = 0;
};

}  // namespace quillpress::cli
