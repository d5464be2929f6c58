#include <cstdio>
#include <exception>

#include "tests/level3/pictures/PixelMap.h"

// compare_pictures ONE.ppm OTHER.ppm: prints how far two pages are apart, from 0 to 1, or what keeps them
// from being compared.
int main(int argc, char** argv) {
  using quillpress::level3::PixelMap;
  if (argc != 3) {
    std::fputs("usage: compare_pictures ONE.ppm OTHER.ppm\n", stderr);
    return 2;
  }
  try {
    const PixelMap one = quillpress::level3::readPixelMap(argv[1]);
    const PixelMap other = quillpress::level3::readPixelMap(argv[2]);
    if (!one.isSameSizeAs(other)) {
      std::fprintf(stderr, "page of %zu x %zu pixels, not %zu x %zu\n", one.width, one.height, other.width,
                   other.height);
      return 1;
    }
    std::printf("%.6f\n", quillpress::level3::meanDifference(one, other));
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
