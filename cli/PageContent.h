#ifndef QUILLPRESS_CLI_PAGE_CONTENT_H
#define QUILLPRESS_CLI_PAGE_CONTENT_H

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "cli/ContentScanner.h"
#include "cli/Deflater.h"
#include "cli/Spool.h"

namespace quillpress::cli {

/**
 * The content of one page on its way into the spool: between q and Q of its own, which the page's operators
 * cannot upset, and compressed in pieces as it arrives. Each piece is a content stream; a PDF reader puts
 * white space between them, so they are cut at white space. Where they are cut depends on the content alone,
 * not on how it arrived.
 */
class PageContent {
 public:
  PageContent(Spool& spool, const Deflater& deflater);

  /** REQUIRES: `text` is what the converter returned, one or more whole operators. */
  void append(std::string_view text);

  /** Closes what the page left open. Nothing may be appended after it. */
  void finish();

  [[nodiscard]] const std::vector<Spool::Piece>& pieces() const { return pieces_; }

  /** Numbers of the images and patterns that the content names. */
  [[nodiscard]] const std::set<unsigned>& objects() const { return objects_; }

 private:
  [[nodiscard]] std::size_t nextCut(std::string_view text, std::size_t from) const;
  void take(const ContentMark& mark, std::string_view text);
  void flush();

  Spool& spool_;
  const Deflater& deflater_;
  std::string piece_;
  std::size_t openSaves_ = 1;  // the page's own q counts
  std::set<unsigned> objects_;
  std::vector<Spool::Piece> pieces_;
};

}  // namespace quillpress::cli

#endif
