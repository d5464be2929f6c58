#include "cli/PdfPages.h"

#include <algorithm>

#include "cli/Converter.h"

namespace quillpress::cli {

void PdfPages::beginPage() {
  pageBegin_ = spool_.size();
  content_.emplace(spool_, deflater_);
}

void PdfPages::append(std::string_view text) {
  content_->append(text);
}

void PdfPages::endPage(const std::optional<Box>& box, Converter& converter) {
  content_->finish();
  keepObjects(converter);
  document_.pages.push_back(
      {box, content_->pieces(), {content_->objects().begin(), content_->objects().end()}});
  content_.reset();
}

/** Asks for the converter's list only when there is something new in it: it is made anew each time. */
void PdfPages::keepObjects(Converter& converter) {
  const auto isNew = [this](unsigned number) { return !store_.has(number); };
  if (std::none_of(content_->objects().begin(), content_->objects().end(), isNew)) return;
  const auto list = converter.objects();
  for (const unsigned number : content_->objects()) store_.keep(number, list);
}

void PdfPages::dropPage() {
  content_.reset();
  spool_.cutTo(pageBegin_);
}

}  // namespace quillpress::cli
