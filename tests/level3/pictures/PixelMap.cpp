#include "tests/level3/pictures/PixelMap.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>

namespace quillpress::level3 {

namespace {

constexpr std::size_t kChannels = 3;
constexpr std::size_t kBlurredPixels = 9;
constexpr int kLargestSample = 255;

// Sums of three neighbours along one direction, with the outermost pixel repeated beyond the edge. `count`
// pixels stand `stride` samples apart.
void addNeighbours(const int* from, int* to, std::size_t count, std::size_t stride) {
  for (std::size_t index = 0; index < count; ++index) {
    const std::size_t before = index == 0 ? 0 : index - 1;
    const std::size_t after = std::min(index + 1, count - 1);
    to[index * stride] = from[before * stride] + from[index * stride] + from[after * stride];
  }
}

// Nine times the blurred page.
std::vector<int> blurred(const PixelMap& page) {
  const std::vector<int> sharp(page.samples.begin(), page.samples.end());
  std::vector<int> rows(sharp.size());
  std::vector<int> both(sharp.size());
  const std::size_t row = page.width * kChannels;
  for (std::size_t y = 0; y < page.height; ++y) {
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
      const std::size_t start = y * row + channel;
      addNeighbours(sharp.data() + start, rows.data() + start, page.width, kChannels);
    }
  }
  for (std::size_t x = 0; x < row; ++x) addNeighbours(rows.data() + x, both.data() + x, page.height, row);
  return both;
}

}  // namespace

PixelMap readPixelMap(const std::filesystem::path& file) {
  std::ifstream input(file, std::ios::binary);
  std::string kind;
  PixelMap page;
  int largest = 0;
  input >> kind >> page.width >> page.height >> largest;
  // One white-space byte ends the header.
  input.get();
  if (!input || kind != "P6" || largest != kLargestSample || page.width == 0 || page.height == 0) {
    throw std::runtime_error(file.string() + " is no pixel map");
  }
  page.samples.resize(page.width * page.height * kChannels);
  input.read(reinterpret_cast<char*>(page.samples.data()), static_cast<std::streamsize>(page.samples.size()));
  if (!input) throw std::runtime_error(file.string() + " is cut off");
  return page;
}

double meanDifference(const PixelMap& one, const PixelMap& other) {
  const std::vector<int> left = blurred(one);
  const std::vector<int> right = blurred(other);
  double sum = 0;
  for (std::size_t index = 0; index < left.size(); ++index) sum += std::abs(left[index] - right[index]);
  return sum / (static_cast<double>(left.size()) * static_cast<double>(kBlurredPixels) * kLargestSample);
}

}  // namespace quillpress::level3
