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
  DocumentPage page{box, content_->pieces(), {}};
  for (const auto& [number, place] : content_->objects()) page.objects.push_back(number);
  document_.pages.push_back(std::move(page));
  content_.reset();
}

// Asks for the converter's list only when there is something new in it: it is made anew each time.
void PdfPages::keepObjects(Converter& converter) {
  const ObjectUses& uses = content_->objects();
  const auto isNew = [this](const auto& use) { return !store_.has(use.first); };
  if (std::any_of(uses.begin(), uses.end(), isNew)) store_.keep(uses, converter.objects());
}

void PdfPages::dropPage() {
  content_.reset();
}

}  // namespace quillpress::cli
