#include "cli/conversion/ChunkFeeder.h"

namespace quillpress::cli {

void ChunkFeeder::add(std::string_view text, std::uint64_t offset) {
  while (!text.empty()) {
    if (gathered_.empty()) gatheredOffset_ = offset;
    const std::size_t taken = std::min(chunkSize_ - gathered_.size(), text.size());
    // A whole chunk passes without being copied.
    if (taken == chunkSize_) {
      feed_(text.substr(0, taken), offset);
    } else {
      gathered_.append(text, 0, taken);
      if (gathered_.size() == chunkSize_) flush();
    }
    text.remove_prefix(taken);
    offset += taken;
  }
}

void ChunkFeeder::flush() {
  if (gathered_.empty()) return;
  // The one who is fed may clear what has been gathered.
  const std::string chunk = std::move(gathered_);
  gathered_.clear();
  feed_(chunk, gatheredOffset_);
}

}  // namespace quillpress::cli
