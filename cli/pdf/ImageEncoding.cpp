#include "cli/pdf/ImageEncoding.h"

#include <algorithm>
#include <memory>

namespace quillpress::cli {

namespace {

// Enough rows from all over an image to tell what suits it, few enough to cost nearly nothing.
constexpr std::size_t kStrips = 8;
constexpr std::size_t kStripSize = 48UL * 1024;
// Samples that shrink this much repeat themselves so often that a thorough search is quick, and worth it.
constexpr std::size_t kRepetitive = 16;
// Any PNG filter, each row says which.
constexpr int kPngPredictor = 15;

int componentsOf(const std::string& space) {
  if (space == "/DeviceRGB") return 3;
  return space == "/DeviceCMYK" ? 4 : 1;
}

std::size_t positive(QPDFObjectHandle number) {
  return number.isInteger() && number.getIntValue() > 0 ? static_cast<std::size_t>(number.getIntValue()) : 0;
}

std::size_t componentsIn(QPDFObjectHandle dictionary) {
  auto space = dictionary.getKey("/ColorSpace");
  return static_cast<std::size_t>(componentsOf(space.isName() ? space.getName() : ""));
}

bool hasWholeBytes(QPDFObjectHandle dictionary) {
  return positive(dictionary.getKey("/BitsPerComponent")) == 8;
}

}  // namespace

ImageEncoding::ImageEncoding(QPDFObjectHandle dictionary, std::string_view samples) : samples_(samples) {
  layout_.pixel = componentsIn(dictionary);
  layout_.row = layout_.pixel * positive(dictionary.getKey("/Width"));
  // Filters work on bytes; bits would have to be shifted first, and compress well as they are.
  const bool hasRows = hasWholeBytes(dictionary) && layout_.row > 0 && samples.size() % layout_.row == 0;
  if (hasRows) rows_ = samples.size() / layout_.row;
  if (rows_ > 0) choose();
}

void ImageEncoding::choose() {
  const std::size_t raw = sampled(PngFilter::kNone).size();
  const Deflater deflater;
  std::size_t least = raw;
  // Samples that nothing makes smaller, as noise or a photograph's grain, are only packed.
  effort_ = Deflater::Effort::kNone;
  for (const PngFilter filter :
       {PngFilter::kNone, PngFilter::kSub, PngFilter::kUp, PngFilter::kAverage, PngFilter::kPaeth}) {
    const std::size_t size = deflater.deflatedSize(sampled(filter));
    // Of two that are equal the simpler one, which comes first, is quicker to read.
    if (size >= least) continue;
    least = size;
    filter_ = filter;
    effort_ = size < raw / kRepetitive ? Deflater::Effort::kThorough : Deflater::Effort::kUsual;
  }
}

// Strips of the image from its first row to its last, with `filter`.
std::string ImageEncoding::sampled(PngFilter filter) const {
  const std::size_t stripRows = std::min(kStripSize / layout_.row + 1, rows_);
  const std::size_t strips = std::min(kStrips, rows_ / stripRows);
  std::string sample;
  for (std::size_t i = 0; i < strips; ++i) {
    // From the first row to the last, since sky and ground differ.
    const std::size_t first = strips == 1 ? 0 : (rows_ - stripRows) * i / (strips - 1);
    appendRows(sample, filter, first, stripRows);
  }
  return sample;
}

void ImageEncoding::appendRows(std::string& target, PngFilter filter, std::size_t first,
                               std::size_t rows) const {
  if (filter == PngFilter::kNone) {
    target.append(samples_.substr(first * layout_.row, rows * layout_.row));
    return;
  }
  const std::size_t begin = target.size();
  target.resize(begin + filteredSize(layout_, rows));
  filterRows(samples_, layout_, filter, first, rows, target.data() + begin);
}

void ImageEncoding::describe(QPDFObjectHandle dictionary) const {
  dictionary.replaceKey("/Filter", QPDFObjectHandle::newName("/FlateDecode"));
  // A predictor that predicts nothing would only cost a byte a row.
  if (filter_ == PngFilter::kNone) return;
  auto parameters = QPDFObjectHandle::newDictionary();
  parameters.replaceKey("/Predictor", QPDFObjectHandle::newInteger(kPngPredictor));
  parameters.replaceKey("/Colors", QPDFObjectHandle::newInteger(static_cast<long long>(layout_.pixel)));
  parameters.replaceKey("/Columns", dictionary.getKey("/Width"));
  dictionary.replaceKey("/DecodeParms", parameters);
}

Spool::Piece ImageEncoding::encode(Spool& spool) const {
  const Deflater deflater(effort_);
  Spool::Piece piece;
  const auto keep = [&](std::string_view bytes) { piece = spool.append(bytes); };
  if (filter_ == PngFilter::kNone) {
    deflater.deflate(samples_, keep);
  } else {
    const std::size_t size = filteredSize(layout_, rows_);
    const auto filtered = std::make_unique_for_overwrite<char[]>(size);
    filterRows(samples_, layout_, filter_, 0, rows_, filtered.get());
    deflater.deflate({filtered.get(), size}, keep);
  }
  return piece;
}

}  // namespace quillpress::cli
