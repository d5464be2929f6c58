// Feeds a job to the library in chunks and throws the page text away.
//   quillpress_feed JOB [CHUNK]       converts; prints the bytes of text, the objects and the peak memory
//   quillpress_feed --open-close N    opens and closes N converters; prints the milliseconds of each

#include <quillpress/converter.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr float kIdentity[6] = {1, 0, 0, 1, 0, 0};
constexpr std::size_t kDefaultChunk = 65536;

// The peak of this program alone. A parent sees more: the system counts what stood before the exec.
long peakKibibytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.rfind("VmHWM:", 0) == 0) return std::strtol(line.c_str() + 6, nullptr, 10);
  return 0;
}

int openAndClose(int times) {
  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  for (int i = 0; i < times; ++i) PSClose(PSOpen(kIdentity));
  const std::chrono::duration<double, std::milli> taken = Clock::now() - start;
  std::printf("%.4f\n", taken.count() / times);
  return EXIT_SUCCESS;
}

int feed(const char* path, std::size_t chunkSize) {
  std::FILE* job = std::fopen(path, "rb");
  if (!job) {
    std::perror(path);
    return EXIT_FAILURE;
  }
  void* handle = PSOpen(kIdentity);
  std::vector<char> chunk(chunkSize);
  unsigned long long textBytes = 0;
  for (std::size_t got; (got = std::fread(chunk.data(), 1, chunk.size(), job)) > 0;) {
    int length = static_cast<int>(got);
    if (!PSConvertToPdf(handle, chunk.data(), &length)) {
      std::fputs(PSGetErrorStr(handle), stderr);
      return EXIT_FAILURE;
    }
    textBytes += static_cast<unsigned>(length);
  }
  unsigned objects = 0;
  PSGetPdfObjects(handle, &objects);
  PSClose(handle);
  std::fclose(job);
  std::printf("%llu %u %ld\n", textBytes, objects, peakKibibytes());
  return EXIT_SUCCESS;
}

}  // namespace

int main(int count, char** arguments) {
  if (count == 3 && std::string_view(arguments[1]) == "--open-close")
    return openAndClose(std::atoi(arguments[2]));
  if (count == 2) return feed(arguments[1], kDefaultChunk);
  if (count == 3) return feed(arguments[1], std::strtoul(arguments[2], nullptr, 10));
  std::fputs("usage: quillpress_feed JOB [CHUNK]\n       quillpress_feed --open-close N\n", stderr);
  return 2;
}
