#include "postscript/level3/images/ImageObject.h"

#include <algorithm>

#include "postscript/level3/images/Samples.h"
#include "postscript/level3/pdf/PdfNumbers.h"

namespace quillpress::level3 {

namespace {

constexpr int kDecodeDecimals = 6;

template <typename T, typename Append>
std::string arrayText(const std::vector<T>& values, Append append) {
  std::string text = "[";
  for (const T& value : values) {
    if (text.size() > 1) text += ' ';
    append(text, value);
  }
  return text + "]";
}

std::string flateFilter(const PredictorParameters& predictor) {
  if (predictor.predictor == 1) return "/Filter/FlateDecode";
  DictionaryText parameters;
  parameters.integer("Predictor", predictor.predictor).integer("Columns", predictor.columns);
  if (predictor.colors != 1) parameters.integer("Colors", predictor.colors);
  if (predictor.bitsPerComponent != 8) parameters.integer("BitsPerComponent", predictor.bitsPerComponent);
  return "/Filter/FlateDecode/DecodeParms" + parameters.text();
}

// The key's samples as they are in the file.
std::vector<unsigned> keyForPdf(std::vector<unsigned> key, int bits) {
  if (bits != 12) return key;
  for (unsigned& sample : key) sample = from12To16(sample);
  return key;
}

}  // namespace

std::string ImageDescription::entries(std::string_view filter) const {
  DictionaryText text;
  text.name("Type", "XObject").name("Subtype", "Image");
  text.integer("Width", layout.width).integer("Height", layout.height);
  if (isStencil) {
    text.boolean("ImageMask", true);
  } else {
    text.entry("ColorSpace", colourSpace).integer("BitsPerComponent", layout.forPdf().bits);
  }
  if (!decode.empty()) text.entry("Decode", decodeText());
  if (interpolate) text.boolean("Interpolate", true);
  if (mask != 0) text.reference("Mask", mask);
  if (!colourKey.empty()) {
    text.entry("Mask", arrayText(keyForPdf(colourKey, layout.bits),
                                 [](std::string& to, unsigned value) { to += std::to_string(value); }));
  }
  return text.entries() + std::string(filter);
}

std::string ImageDescription::decodeText() const {
  return arrayText(decode, [](std::string& to, double value) { appendNumber(to, value, kDecodeDecimals); });
}

void ImageObjectSink::take(Bytes bytes) {
  if (stream_) {
    stream_->write(textOf(bytes));
    return;
  }
  held_ += textOf(bytes);
  if (held_.size() <= kHeld) return;
  stream_.emplace(file_.openStream(entries_, StreamData::kPlain));
  number_ = stream_->number();
  stream_->write(held_);
  held_ = {};
}

void ImageObjectSink::release() {
  if (!stream_) number_ = file_.addSharedStream(entries_, held_, StreamData::kPlain);
  finishStream();
}

// Whatever has ended the image early, the file goes on.
ImageObjectSink::~ImageObjectSink() {
  try {
    finishStream();
  } catch (...) {
    // The file cannot be written; the next write to it says so.
    stream_.reset();
  }
}

void ImageObjectSink::finishStream() {
  if (stream_) stream_->finish();
  stream_.reset();
}

WrittenImage writeImage(PdfFile& file, ImageDescription description, const RowReader& nextRow, Byte missing) {
  const ImageLayout layout = description.layout;
  std::shared_ptr<ImageObjectSink> object;
  const auto begin = [&](const PredictorParameters& predictor) -> SinkPointer {
    object = std::make_shared<ImageObjectSink>(file, description.entries(flateFilter(predictor)));
    return object;
  };
  ImageCompressor compressor(layout.forPdf(), begin, file.usesSecondThread());
  std::vector<Byte> converted(layout.forPdf().rowBytes());
  int rows = 0;
  for (; rows < layout.height; ++rows) {
    const Bytes row = nextRow();
    if (row.empty()) break;
    convertRowForPdf(row, layout, converted);
    compressor.add(converted);
  }
  if (rows == 0) return {};
  if (object == nullptr) {
    description.layout.height = rows;
  } else {
    std::fill(converted.begin(), converted.end(), missing);
    for (int row = rows; row < layout.height; ++row) compressor.add(converted);
    rows = layout.height;
  }
  compressor.finish();
  return {object->number(), rows};
}

HeldImage::HeldImage(const ImageLayout& layout)
    : layout_(layout),
      data_(std::make_shared<MemorySink>()),
      compressor_(layout.forPdf(),
                  [this](const PredictorParameters& predictor) -> SinkPointer {
                    predictor_ = predictor;
                    return data_;
                  }),
      converted_(layout.forPdf().rowBytes()) {}

void HeldImage::add(Bytes row) {
  convertRowForPdf(row, layout_, converted_);
  compressor_.add(converted_);
  ++height_;
}

std::size_t HeldImage::finish() {
  if (!isFinished_) compressor_.finish();
  isFinished_ = true;
  return data_->bytes().size();
}

ObjectNumber HeldImage::write(PdfFile& file, ImageDescription description) {
  finish();
  description.layout.height = height_;
  return file.addSharedStream(description.entries(flateFilter(predictor_)), textOf(data_->bytes()),
                              StreamData::kPlain);
}

}  // namespace quillpress::level3
