#include "cli/base/ByteCount.h"

#include <charconv>
#include <cstdint>

#include "cli/base/TextScan.h"

namespace quillpress::cli {

namespace {

constexpr std::uint64_t kKibi = 1024;
constexpr std::uint64_t kLargest = kKibi * kKibi * kKibi;

// 0 for a suffix that is none.
std::uint64_t factorOf(std::string_view suffix) {
  const std::string small = lowered(suffix);
  if (small.empty()) return 1;
  if (small == "k" || small == "kib") return kKibi;
  if (small == "m" || small == "mib") return kKibi * kKibi;
  return 0;
}

}  // namespace

std::optional<std::size_t> parseByteCount(std::string_view text) {
  std::uint64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  // Checked before it is multiplied, so that the product cannot wrap.
  if (error != std::errc() || number == 0 || number > kLargest) return std::nullopt;
  const std::uint64_t factor = factorOf(text.substr(static_cast<std::size_t>(end - text.data())));
  const std::uint64_t bytes = number * factor;
  if (bytes == 0 || bytes > kLargest) return std::nullopt;
  return static_cast<std::size_t>(bytes);
}

}  // namespace quillpress::cli
