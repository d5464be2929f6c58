#include "postscript/level3/images/InterleavedMask.h"

#include "postscript/level3/images/Samples.h"

namespace quillpress::level3 {

InterleavedMask::InterleavedMask(const ImageLayout& both)
    : both_(both), image_(imageLayout().rowBytes()), mask_(maskLayout().rowBytes()) {}

void InterleavedMask::split(Bytes row) {
  SampleReader reader(row, both_.bits);
  SampleWriter imageWriter(image_, both_.bits);
  SampleWriter maskWriter(mask_, 1);
  for (int x = 0; x < both_.width; ++x) {
    maskWriter.put(reader.next() == 0 ? 0 : 1);
    for (int component = 1; component < both_.components; ++component) imageWriter.put(reader.next());
  }
}

bool RowInterleave::find(int maskHeight, int imageHeight, RowInterleave& found) {
  if (maskHeight % imageHeight == 0) {
    found = {maskHeight / imageHeight, 1};
    return true;
  }
  if (imageHeight % maskHeight == 0) {
    found = {1, imageHeight / maskHeight};
    return true;
  }
  return false;
}

}  // namespace quillpress::level3
