#include "cli/pdf/CreationDate.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <string_view>

#include "cli/system/Environment.h"

namespace quillpress::cli {

namespace {

std::int64_t present() {
  const char* const fixed = std::getenv("SOURCE_DATE_EPOCH");
  // The variable that builders of reproducible files agree on.
  if (fixed == nullptr) return std::time(nullptr);
  const std::string_view text(fixed);
  std::int64_t seconds = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
  return error == std::errc() ? seconds : std::time(nullptr);
}

}  // namespace

std::string creationDate() {
  const std::tm parts = universalTime(present());
  std::array<char, 40> text{};
  const std::size_t size = std::strftime(text.data(), text.size(), "D:%Y%m%d%H%M%SZ", &parts);
  return {text.data(), size};
}

}  // namespace quillpress::cli
