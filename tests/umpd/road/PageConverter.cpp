#include "tests/umpd/road/PageConverter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace quillpress::harness {
namespace {

constexpr std::array<float, 6> kIdentity{1, 0, 0, 1, 0, 0};

}  // namespace

PageConverter::PageConverter(const Library& library)
    : convert_(library.find<decltype(PSConvertToPdf)>("PSConvertToPdf")),
      startPage_(library.find<decltype(PSStartPage)>("PSStartPage")),
      error_(library.find<decltype(PSGetErrorStr)>("PSGetErrorStr")),
      close_(library.find<decltype(PSClose)>("PSClose")),
      handle_(library.find<decltype(PSOpen)>("PSOpen")(kIdentity.data())) {}

PageConverter::~PageConverter() {
  close_(handle_);
}

void PageConverter::startPage() {
  startPage_(handle_, kIdentity.data());
}

std::string PageConverter::convert(std::string_view job, std::size_t blockSize) {
  std::string content;
  for (std::size_t start = 0; start < job.size(); start += blockSize) {
    const std::string_view block = job.substr(start, blockSize);
    int length = static_cast<int>(block.size());
    const char* text = convert_(handle_, block.data(), &length);
    if (text == nullptr) {
      ADD_FAILURE() << error_(handle_) << "in\n" << block;
      return content;
    }
    content.append(text, static_cast<std::size_t>(length));
  }
  return content;
}

}  // namespace quillpress::harness
