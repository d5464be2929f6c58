#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cli/content/ContentScanner.h"
#include "cli/content/ObjectUses.h"
#include "cli/spool/Deflater.h"
#include "cli/spool/SpoolWorker.h"

namespace quillpress::cli {

// The content of one page on its way into the spool: between q and Q of its own, which the page's operators
// cannot upset, and compressed in pieces as it arrives. Each piece is a content stream; a PDF reader puts
// white space between them, so they are cut at white space. Where they are cut depends on the content alone,
// not on how it arrived.
class PageContent {
 public:
  PageContent(SpoolWorker& worker, const Deflater& deflater);

  // REQUIRES: `text` is what the converter returned, one or more whole operators. Throws PageError when
  // it holds numbers that no PDF reader takes.
  void append(std::string_view text);

  // Closes what the page left open. Nothing may be appended after it.
  void finish();

  [[nodiscard]] const std::vector<SpoolWorker::Ticket>& pieces() const { return pieces_; }

  [[nodiscard]] const ObjectUses& objects() const { return objects_; }

 private:
  [[nodiscard]] std::size_t nextCut(std::string_view text, std::size_t from) const;
  void appendChecked(std::string_view text);
  void take(const ContentMark& mark, std::string_view text);
  void flush();

  SpoolWorker& worker_;
  const Deflater& deflater_;  // used by the worker alone
  std::string piece_;
  std::size_t openSaves_ = 1;  // the page's own q counts
  ObjectUses objects_;
  std::vector<SpoolWorker::Ticket> pieces_;
};

}  // namespace quillpress::cli
