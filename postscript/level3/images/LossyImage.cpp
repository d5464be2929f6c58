#include "postscript/level3/images/LossyImage.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "postscript/level3/streams/DctFilter.h"

namespace quillpress::level3 {

namespace {

// The scale of the usual quantization that programs for JPEG call by this number.
double scaleOf(int quality) {
  constexpr int kMiddle = 50;
  return quality < kMiddle ? static_cast<double>(kMiddle) / quality : (200 - 2.0 * quality) / 100;
}

DctParameters parametersFor(const ImageLayout& layout, int quality) {
  DctParameters parameters;
  parameters.columns = layout.width;
  parameters.rows = layout.height;
  parameters.colors = layout.components;
  parameters.qFactor = scaleOf(quality);
  // Of the colour a quarter is enough, unless the best is asked for.
  constexpr int kFullColour = 90;
  if (layout.components == 3 && quality < kFullColour) {
    parameters.horizontalSamples[0] = 2;
    parameters.verticalSamples[0] = 2;
  }
  return parameters;
}

}  // namespace

bool canBeLossy(const ImageDescription& description) {
  const int components = description.layout.components;
  return description.isContinuous && description.layout.bits == 8 &&
         (components == 1 || components == 3 || components == 4);
}

WrittenImage writeLossyImage(PdfFile& file, const ImageDescription& description, const RowReader& nextRow,
                             int quality, std::size_t limit) {
  const ImageLayout& layout = description.layout;
  HeldImage exact(layout);
  const auto data = std::make_shared<MemorySink>();
  DctEncoder encoder(data, parametersFor(layout, quality));
  while (exact.height() < layout.height) {
    const Bytes row = nextRow();
    if (row.empty()) break;
    exact.add(row);
    encoder.write(row);
  }
  if (exact.height() == 0) return {};
  const std::vector<Byte> blank(layout.rowBytes(), kMissingSample);
  for (int row = exact.height(); row < layout.height; ++row) encoder.write(blank);
  encoder.close();
  const std::size_t exactSize = exact.finish();
  if (std::min(exactSize, data->bytes().size()) >= limit) return {};
  if (exactSize <= data->bytes().size()) return {exact.write(file, description), exact.height()};
  return {file.addSharedStream(description.entries("/Filter/DCTDecode"), textOf(data->bytes()),
                               StreamData::kPlain),
          layout.height};
}

}  // namespace quillpress::level3
