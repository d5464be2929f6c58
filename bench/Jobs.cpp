#include "bench/Jobs.h"

#include <random>

namespace quillpress::bench {

namespace {

constexpr std::size_t kImageWidth = 1000;
constexpr std::size_t kRowBytes = 3 * kImageWidth;

constexpr char kPrologue[] = R"(%!PS-Adobe-3.0
/b { bind def } bind def
/m { moveto } b /l { lineto } b /c { curveto } b /h { closepath } b
/n { newpath } b /f { fill } b /s { stroke } b /k { setrgbcolor } b
)";

class Numbers {
 public:
  std::string coordinate() { return std::to_string(generator_() % 5000) + (generator_() % 4 ? " " : ".25 "); }
  std::string point() { return coordinate() + coordinate(); }
  std::string shade() { return "0." + std::to_string(generator_() % 1000) + " "; }
  char sample() { return static_cast<char>(generator_() % 256); }
  bool oneIn(unsigned n) { return generator_() % n == 0; }

 private:
  std::minstd_rand generator_{1};
};

std::string imageCall(std::size_t rows, const char* reader) {
  const std::string width = std::to_string(kImageWidth);
  const std::string height = std::to_string(rows);
  return "/row " + std::to_string(kRowBytes) + " string def\n612 792 scale\n" + width + " " + height +
         " 8 [" + width + " 0 0 -" + height + " 0 " + height + "] { currentfile row " + reader +
         " pop } false 3 colorimage\n";
}

}  // namespace

std::string vectorJob(std::size_t bytes) {
  Numbers numbers;
  std::string job = kPrologue;
  while (job.size() < bytes) {
    job += numbers.shade() + numbers.shade() + numbers.shade() + "k n " + numbers.point() + "m\n";
    for (int i = 0; i < 6; ++i) job += numbers.point() + "l\n";
    for (int i = 0; i < 3; ++i) job += numbers.point() + numbers.point() + numbers.point() + "c\n";
    job += numbers.oneIn(2) ? "h f\n" : "s\n";
  }
  return job;
}

std::string tokenJob(std::size_t bytes) {
  Numbers numbers;
  std::string job = "/drop { pop } bind def /width 10 def\n";
  while (job.size() < bytes) {
    job += numbers.point() + "add drop width drop /name drop (a string\\nof text) drop ";
    job +=
        "true { " + numbers.coordinate() + "} { width } ifelse drop [" + numbers.point() + "] drop % note\n";
  }
  return job;
}

std::string hexImageJob(std::size_t bytes) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  Numbers numbers;
  const std::size_t rows = bytes / kRowBytes;
  std::string job = imageCall(rows, "readhexstring");
  for (std::size_t i = 0; i < rows * kRowBytes; ++i) {
    const auto sample = static_cast<unsigned char>(numbers.sample());
    job += kDigits[sample >> 4];
    job += kDigits[sample & 15];
    if (i % 39 == 38) job += '\n';
  }
  return job;
}

std::string binaryImageJob(std::size_t bytes) {
  Numbers numbers;
  const std::size_t rows = bytes / kRowBytes;
  std::string job = imageCall(rows, "readstring");
  for (std::size_t i = 0; i < rows * kRowBytes; ++i) job += numbers.sample();
  return job;
}

}  // namespace quillpress::bench
