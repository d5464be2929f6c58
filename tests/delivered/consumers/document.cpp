// Converts a job of two pages in memory, prints how the PDF begins and how many pages it has.
#include <quillpress/document.h>

#include <iostream>
#include <memory>
#include <string>
#include <string_view>

namespace {

int append(void* context, const void* data, size_t size) {
  static_cast<std::string*>(context)->append(static_cast<const char*>(data), size);
  return 0;
}

}  // namespace

int main() {
  constexpr std::string_view kJob = "%!\nshowpage 0 0 9 9 rectfill showpage\n";
  const std::unique_ptr<QuillpressDocument, decltype(&QuillpressDocumentFree)> document{
      QuillpressDocumentNew(), QuillpressDocumentFree};
  std::string pdf;
  const int status = QuillpressDocumentConvertMemory(document.get(), kJob.data(), kJob.size(), append, &pdf);
  std::cout << pdf.substr(0, 5) << ' ' << QuillpressDocumentPageCount(document.get()) << '\n';
  return status;
}
