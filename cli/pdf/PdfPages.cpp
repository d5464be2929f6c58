#include "cli/pdf/PdfPages.h"

#include <algorithm>

#include "cli/conversion/Converter.h"

namespace quillpress::cli {

void PdfPages::beginPage() {
  content_.emplace(worker_, deflater_);
}

void PdfPages::append(std::string_view text) {
  content_->append(text);
}

void PdfPages::endPage(const std::optional<Box>& box, Converter& converter) {
  content_->finish();
  // Before the page counts as one: its objects may be the reason to drop it.
  keepObjects(converter);
  const ObjectUses& uses = content_->objects();
  document_.pages.push_back({box, content_->pieces(), {uses.begin(), uses.end()}});
  content_.reset();
}

// Asks for the converter's list only when there is something new in it: it is made anew each time.
void PdfPages::keepObjects(Converter& converter) {
  const ObjectUses& uses = content_->objects();
  const auto isNew = [this](unsigned number) { return !store_.has(number); };
  if (std::any_of(uses.begin(), uses.end(), isNew)) store_.keep(uses, converter.objects());
}

void PdfPages::dropPage() {
  content_.reset();
}

}  // namespace quillpress::cli
