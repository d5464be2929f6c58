#pragma once

#include <quillpress/converter.h>

#include <string>
#include <string_view>

#include "tests/umpd/harness/Library.h"

namespace quillpress::harness {

// The converter of the same library, on pages whose default matrix is the identity.
class PageConverter {
 public:
  explicit PageConverter(const Library& library);
  ~PageConverter();
  PageConverter(const PageConverter&) = delete;
  PageConverter& operator=(const PageConverter&) = delete;

  void startPage();

  // The content that a part of a job makes, fed in blocks of this size. Fails the test when one cannot be
  // converted.
  std::string convert(std::string_view job, std::size_t blockSize = 100);

 private:
  decltype(PSConvertToPdf)* convert_;
  decltype(PSStartPage)* startPage_;
  decltype(PSGetErrorStr)* error_;
  decltype(PSClose)* close_;
  void* handle_;
};

}  // namespace quillpress::harness
