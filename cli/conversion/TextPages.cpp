#include "cli/conversion/TextPages.h"

#include "cli/base/Errors.h"
#include "cli/base/Messages.h"

namespace quillpress::cli {

void TextPages::endPage(const std::optional<Box>& /*box*/, Converter& /*converter*/) {
  // Only now is it known that the page is complete, and that there will be an output.
  std::FILE* const file = output_.file();
  readPiece(spool_, {0, spool_.size()}, [file](std::string_view bytes) {
    const bool isWritten = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    if (!isWritten) throw OutputError("cannot be written: " + systemReason());
  });
  spool_.cutTo(0);
  ++pageCount_;
}

}  // namespace quillpress::cli
