#include "cli/content/PageContent.h"

#include <algorithm>
#include <utility>

#include "cli/base/TextScan.h"
#include "cli/content/NumberRange.h"
#include "cli/spool/DeflateTask.h"

namespace quillpress::cli {

namespace {

// Large enough that cutting costs no compression, small enough to keep memory low.
constexpr std::size_t kPieceSize = 512UL * 1024;

}  // namespace

PageContent::PageContent(SpoolWorker& worker, const Deflater& deflater)
    : worker_(worker), deflater_(deflater), piece_("q\n") {}

void PageContent::append(std::string_view text) {
  ContentScanner scanner(text);
  std::size_t taken = 0;
  while (taken < text.size()) {
    const std::size_t cut = nextCut(text, taken);
    ContentMark mark{};
    // Up to the cut only, so that pieces end in the same places however the content has come.
    if (scanner.next(cut, mark)) {
      appendChecked(text.substr(taken, mark.begin - taken));
      take(mark, text.substr(mark.begin, mark.end - mark.begin));
      taken = mark.end;
    } else {
      appendChecked(text.substr(taken, cut - taken));
      taken = cut;
      if (piece_.size() > kPieceSize && isWhite(piece_.back())) flush();
    }
  }
}

void PageContent::appendChecked(std::string_view text) {
  checkNumbers(text);
  piece_.append(text);
}

// The end of the white space at which the piece will be full, or of the text.
std::size_t PageContent::nextCut(std::string_view text, std::size_t from) const {
  const std::size_t room = kPieceSize - std::min(kPieceSize, piece_.size());
  // Most texts fit, and are not searched.
  if (room >= text.size() - from) return text.size();
  const auto full = text.begin() + static_cast<std::ptrdiff_t>(from + room);
  const auto white = std::find_if(full, text.end(), isWhite);
  return static_cast<std::size_t>(white - text.begin()) + (white == text.end() ? 0U : 1U);
}

void PageContent::take(const ContentMark& mark, std::string_view text) {
  if (mark.kind == ContentMark::Kind::kObject) objects_.insert(mark.number);
  if (mark.kind == ContentMark::Kind::kSave) ++openSaves_;
  if (mark.kind == ContentMark::Kind::kRestore) {
    // A restore too many gives the job a fresh graphics state, which is the one that the page began with.
    if (openSaves_ == 1) text = "Q q";
    if (openSaves_ > 1) --openSaves_;
  }
  piece_.append(text);
}

void PageContent::finish() {
  if (!piece_.empty() && !isWhite(piece_.back())) piece_ += '\n';
  // A reader complains about a page that ends inside a save.
  for (; openSaves_ > 0; --openSaves_) piece_ += "Q\n";
  flush();
}

void PageContent::flush() {
  pieces_.push_back(worker_.submit(deflateTask(deflater_, std::exchange(piece_, {}))));
}

}  // namespace quillpress::cli
