// Opens a converter, converts and closes it, again and again, as a print spooler does for weeks. Neither
// memory nor descriptors may grow.
//
//   soak ROUNDS

#include <malloc.h>
#include <quillpress/converter.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>

#ifdef QUILLPRESS_ADDRESS_SANITIZER
// Of AddressSanitizer; GCC comes without the header.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace {

// Jobs of several kinds: drawn, with an image object that all rounds share, failing in the middle of things,
// cut off while they wait.
constexpr std::string_view kJobs[] = {
    "0.5 setgray 10 20 moveto 30 40 lineto stroke gsave 2 2 scale 0 0 9 9 rectfill grestore\n",
    "90 50 8 matrix {450 string} image 0 1 99 {/n exch def (abc) 9 string cvs pop} for\n",
    "5 dict begin gsave {[1 2 {3 (a\n",
    "3 { 1 (a) add } repeat\n",
    "8 8 8 matrix {currentfile 64 string readhexstring pop} image 00112233445566\n",
    "/p { 1 } bind def 200 { p p add pop } repeat [1 [2 [3]]] == (done) print\n",
};

// A list of objects may reach its final capacity late.
constexpr std::size_t kToleratedBytes = 4096;
constexpr std::size_t kToleratedPages = 256;

struct Footprint {
  std::size_t bytes = 0;  // in use, of the heap
  std::size_t pages = 0;  // in memory, of the process
  std::size_t descriptors = 0;
};

Footprint footprint() {
  Footprint now;
#ifdef QUILLPRESS_ADDRESS_SANITIZER
  now.bytes = __sanitizer_get_current_allocated_bytes();
#else
  now.bytes = mallinfo2().uordblks;
  // Under a sanitizer freed blocks stay for a while, and so do their pages.
  std::size_t size = 0;
  std::ifstream("/proc/self/statm") >> size >> now.pages;
#endif
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    ++now.descriptors;
  }
  return now;
}

void convertOnce(std::size_t round) {
  const float matrix[6] = {0.12F, 0, 0, 0.12F, 0, 0};
  void* converter = PSOpen(matrix);
  if (converter == nullptr) std::abort();
  for (std::size_t i = 0; i < std::size(kJobs); ++i) {
    const std::string_view job = kJobs[(round + i) % std::size(kJobs)];
    int length = static_cast<int>(job.size());
    if (PSConvertToPdf(converter, job.data(), &length) == nullptr) PSGetErrorStr(converter);
    PSStartPage(converter, matrix);
  }
  unsigned count = 0;
  PSGetPdfObjects(converter, &count);
  if (count != 1) std::abort();
  PSClose(converter);
}

bool isFlat(const char* what, std::size_t before, std::size_t after, std::size_t tolerated) {
  std::printf("%-12s %10zu %10zu\n", what, before, after);
  return after <= before + tolerated;
}

}  // namespace

int main(int argc, char** argv) {
  const unsigned long rounds = argc == 2 ? std::strtoul(argv[1], nullptr, 10) : 0;
  if (rounds < 100) {
    std::fprintf(stderr, "usage: soak ROUNDS, at least 100\n");
    return 2;
  }
  for (std::size_t i = 0; i < rounds / 10; ++i) convertOnce(i);
  const Footprint before = footprint();
  for (std::size_t i = rounds / 10; i < rounds; ++i) convertOnce(i);
  const Footprint after = footprint();

  std::printf("%12s %10s %10s\n", "", "a tenth", "the end");
  const bool bytes = isFlat("heap bytes", before.bytes, after.bytes, kToleratedBytes);
  const bool pages = isFlat("pages", before.pages, after.pages, kToleratedPages);
  const bool descriptors = isFlat("descriptors", before.descriptors, after.descriptors, 0);
  return bytes && pages && descriptors ? 0 : 1;
}
