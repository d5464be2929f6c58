#include "cli/conversion/Converter.h"

#include <quillpress/converter.h>

#include <array>
#include <new>

#include "cli/base/TextScan.h"

namespace quillpress::cli {

namespace {

// Pages are in points, as jobs are.
constexpr std::array<float, 6> kIdentity{1, 0, 0, 1, 0, 0};

}  // namespace

Converter::Converter() : handle_(PSOpen(kIdentity.data())) {
  // The only reason that the function knows.
  if (handle_ == nullptr) throw std::bad_alloc();
}

Converter::~Converter() {
  PSClose(handle_);
}

std::optional<std::string_view> Converter::convert(std::string_view piece) {
  int length = static_cast<int>(piece.size());
  const char* text = PSConvertToPdf(handle_, piece.data(), &length);
  // A length that an int cannot hold.
  isContentTooLong_ = text != nullptr && length < 0;
  if (text == nullptr || isContentTooLong_) return std::nullopt;
  return std::string_view(text, static_cast<std::size_t>(length));
}

void Converter::startPage() {
  PSStartPage(handle_, kIdentity.data());
}

std::string Converter::errorText() const {
  if (isContentTooLong_) return "the content of one chunk is longer than 2 GiB";
  // Only a converter without memory fails without a word.
  const std::string text(trimmed(PSGetErrorStr(handle_)));
  return text.empty() ? "out of memory" : text;
}

std::span<const PdfObject* const> Converter::objects() const {
  unsigned count = 0;
  const PdfObject* const* objects = PSGetPdfObjects(handle_, &count);
  return {objects, count};
}

}  // namespace quillpress::cli
