#include "postscript/level3/graphics/ImagePainting.h"

#include "postscript/level3/colour/SpecialSpaces.h"
#include "postscript/level3/graphics/ImageData.h"
#include "postscript/level3/graphics/MatrixOperands.h"
#include "postscript/level3/graphics/ReducedImage.h"
#include "postscript/level3/images/ImageObject.h"
#include "postscript/level3/images/IndexedRows.h"
#include "postscript/level3/images/InlineImage.h"
#include "postscript/level3/images/InterleavedMask.h"
#include "postscript/level3/images/PassedImage.h"

namespace quillpress::level3 {

namespace {

// The unit square that PDF draws an image in, to device space: its first row is on top.
Matrix placeOf(const ImageParameters& parameters, int height, const Matrix& ctm) {
  const Matrix unitToImage{static_cast<double>(parameters.layout.width),
                           0,
                           0,
                           -static_cast<double>(height),
                           0,
                           static_cast<double>(height)};
  return unitToImage * inverseOf(parameters.toImage) * ctm;
}

// What the least and greatest sample stand for in PDF's terms; empty when that is what they stand for anyway.
std::vector<double> decodeFor(const ImageParameters& parameters, const ColourSpace& space) {
  std::vector<double> decode;
  bool isUsual = true;
  const double highest = (1 << parameters.layout.bits) - 1;
  for (std::size_t i = 0; i < space.componentCount(); ++i) {
    const std::pair<double, double> usual =
        space.kind() == ColourSpace::Kind::kIndexed ? std::pair(0.0, highest) : space.range(i);
    const std::pair<double, double> given =
        parameters.decode.empty() ? usual : std::pair(parameters.decode[2 * i], parameters.decode[2 * i + 1]);
    isUsual = isUsual && given == usual;
    decode.push_back(space.pdfComponent(i, given.first));
    decode.push_back(space.pdfComponent(i, given.second));
  }
  return isUsual ? std::vector<double>() : decode;
}

ImageDescription describe(const ImageParameters& parameters, const ColourSpace& space, PdfFile& file) {
  ImageDescription description;
  description.layout = parameters.layout;
  description.colourSpace = space.pdfText(file);
  description.decode = decodeFor(parameters, space);
  description.interpolate = parameters.interpolate;
  description.colourKey = parameters.colourKey;
  description.isContinuous = space.kind() != ColourSpace::Kind::kIndexed && parameters.layout.bits > 1 &&
                             parameters.colourKey.empty();
  return description;
}

ImageDescription describeStencil(const ImageParameters& parameters) {
  ImageDescription description;
  description.layout = parameters.layout;
  description.isStencil = true;
  if (parameters.decode.size() == 2 && parameters.decode.front() > parameters.decode.back()) {
    description.decode = {1, 0};
  }
  description.interpolate = parameters.interpolate;
  return description;
}

// PDF has indexed samples of up to 8 bits and 256 colours.
const IndexedSpace* tooLargeTable(const ImageParameters& parameters, const ColourSpacePointer& space) {
  if (space->kind() != ColourSpace::Kind::kIndexed) return nullptr;
  const auto* const indexed = static_cast<const IndexedSpace*>(space.get());
  return parameters.layout.bits > 8 || indexed->highest() > 255 ? indexed : nullptr;
}

// A decoder that nobody has read from yet.
template <typename D>
D* freshDecoder(const std::vector<SourcePointer>& sources) {
  if (sources.size() != 1) return nullptr;
  auto* const decoder = dynamic_cast<D*>(sources.front().get());
  const bool isFresh =
      decoder != nullptr && decoder->isOpen() && decoder->position() == 0 && decoder->peek().empty();
  return isFresh ? decoder : nullptr;
}

// Some sources never end, so each row is a chance to end the job.
Bytes nextRow(Graphics& graphics, ImageRows& rows) {
  graphics.interpreter().endIfInterrupted();
  return rows.next();
}

// Of the bitmap of a glyph.
constexpr std::size_t kMostInlineBytes = 4096;

bool inlinesImages(Graphics& graphics) {
  return graphics.state().device->canvas->content()->inlinesImages();
}

// Stencils stay as they are, wherever their place is. Of coded data so many bytes may stay inline.
WrittenImage writeData(Graphics& graphics, const ImageDescription& description,
                       const std::vector<SourcePointer>& sources, const Matrix& place,
                       std::size_t mostInlineBytes = 0) {
  PdfFile& file = graphics.document().file();
  auto* const jpeg = freshDecoder<DctDecoder>(sources);
  if (const auto reduced = writeReduced(graphics, description, sources, jpeg, place)) return *reduced;
  if (jpeg != nullptr && canPassJpeg(description)) return passJpeg(file, description, *jpeg);
  auto* const fax = freshDecoder<CcittDecoder>(sources);
  if (fax != nullptr && canPassFax(description, fax->parameters())) {
    return passFax(file, description, *fax, mostInlineBytes);
  }
  ImageRows rows(sources, description.layout);
  WrittenImage written = writeImage(
      file, description, [&] { return nextRow(graphics, rows); }, kMissingSample);
  if (rows.hasFailed()) raise(ErrorName::kIoError);
  return written;
}

WrittenImage writeInline(Graphics& graphics, ImageDescription description,
                         const std::vector<SourcePointer>& sources) {
  const ImageLayout layout = description.layout;
  ImageRows rows(sources, layout);
  std::string data;
  int height = 0;
  for (; height < layout.height; ++height) {
    const Bytes row = nextRow(graphics, rows);
    if (row.empty()) break;
    data += textOf(row);
  }
  if (rows.hasFailed()) raise(ErrorName::kIoError);
  if (height == 0) return {};
  description.layout.height = height;
  if (std::optional<std::string> image = inlineImage(description, data)) {
    return {0, height, std::move(*image)};
  }
  Bytes rest = bytesOf(data);
  const auto takeRow = [&] {
    const Bytes row = rest.first(layout.rowBytes());
    rest = rest.subspan(row.size());
    return row;
  };
  return writeImage(graphics.document().file(), description, takeRow, kMissingSample);
}

bool isCoded(const std::vector<SourcePointer>& sources) {
  return freshDecoder<DctDecoder>(sources) != nullptr || freshDecoder<CcittDecoder>(sources) != nullptr;
}

WrittenImage writeInlineOrAside(Graphics& graphics, const ImageDescription& description,
                                const std::vector<SourcePointer>& sources, const Matrix& place) {
  const std::size_t most = inlinesImages(graphics) ? kMostInlineBytes : 0;
  const bool isInline = !isCoded(sources) && canBeInline(description) && isWithin(description.layout, most);
  return isInline ? writeInline(graphics, description, sources)
                  : writeData(graphics, description, sources, place, most);
}

// A row of a picture, or a line.
bool isStrip(Graphics& graphics, const ImageDescription& description,
             const std::vector<SourcePointer>& sources) {
  const bool isReduced = graphics.images().quality != 0 || graphics.images().resolution != 0;
  return description.layout.height == 1 && !isReduced && !isCoded(sources) && !inlinesImages(graphics);
}

void paintStrip(Graphics& graphics, const ImageDescription& description,
                const std::vector<SourcePointer>& sources, const ImageParameters& parameters) {
  ImageRows rows(sources, description.layout);
  const Bytes row = nextRow(graphics, rows);
  if (rows.hasFailed()) raise(ErrorName::kIoError);
  if (row.empty()) return;
  ImageStrip strip;
  if (description.isStencil) {
    strip.paint = graphics.patterns().visiblePaint(*graphics.state().colour);
    if (!strip.paint) return;
  }
  ContentWriter* const content = graphics.content();
  if (content == nullptr) return;
  const GraphicsState& state = graphics.state();
  strip.description = description;
  strip.place = placeOf(parameters, 1, state.ctm);
  strip.clip = state.clip;
  strip.rare = state.rare;
  graphics.strips().add(*content, strip, row);
}

// Looked up here, because PDF cannot.
WrittenImage writeExpanded(Graphics& graphics, const ImageParameters& parameters, const IndexedSpace& space,
                           const std::vector<SourcePointer>& sources) {
  const double highest = (1 << parameters.layout.bits) - 1;
  const bool isUsual = parameters.decode.empty();
  IndexedRows expanded(parameters.layout, space.table(), static_cast<int>(space.base()->componentCount()),
                       isUsual ? 0 : parameters.decode[0], isUsual ? highest : parameters.decode[1]);
  ImageRows rows(sources, parameters.layout);
  ImageDescription description;
  description.layout = expanded.layout();
  PdfFile& file = graphics.document().file();
  description.colourSpace = space.base()->pdfText(file);
  description.interpolate = parameters.interpolate;
  return writeImage(
      file, description,
      [&] {
        const Bytes row = nextRow(graphics, rows);
        return row.empty() ? row : expanded.expand(row);
      },
      kMissingSample);
}

bool isEmpty(const ImageLayout& layout) {
  return layout.width == 0 || layout.height == 0;
}

void draw(Graphics& graphics, const WrittenImage& image, const ImageParameters& parameters) {
  ContentWriter* const content = graphics.content();
  if (image.height == 0 || content == nullptr) return;
  const GraphicsState& state = graphics.state();
  const Matrix place = placeOf(parameters, image.height, state.ctm);
  if (!image.inlined.empty()) {
    content->drawInline(image.inlined, place, nullptr, state.clip, state.rare);
    return;
  }
  content->draw(image.number, place, transformed(Box{0, 0, 1, 1}, place), state.clip, state.rare);
}

// What nobody will see is read all the same: the program goes on behind it.
void skipData(Graphics& graphics, const ImageParameters& parameters) {
  ImageRows rows(imageSources(graphics.interpreter(), parameters.sources), parameters.layout);
  for (int y = 0; y < parameters.layout.height; ++y) {
    if (nextRow(graphics, rows).empty()) return;
  }
}

bool isShown(Graphics& graphics, const ImageParameters& parameters) {
  return graphics.state().device->canvas->content() != nullptr && parameters.toImage.inverse() &&
         graphics.state().ctm.inverse();
}

// One row of the mask and its part of the image, or the other way round, until one of them ends.
void readByRows(Graphics& graphics, ImageRows& maskRows, ImageRows& imageRows, HeldImage& mask,
                HeldImage& image, const RowInterleave& interleave) {
  const auto take = [&graphics](ImageRows& rows, HeldImage& held, int count) {
    for (int i = 0; i < count && held.height() < rows.layout().height; ++i) {
      const Bytes row = nextRow(graphics, rows);
      if (row.empty()) return false;
      held.add(row);
    }
    return held.height() < rows.layout().height;
  };
  bool goesOn = true;
  while (goesOn) {
    const bool moreMask = take(maskRows, mask, interleave.maskRows);
    const bool moreImage = take(imageRows, image, interleave.imageRows);
    goesOn = moreMask && moreImage;
  }
}

// Both are in memory, compressed, before the first is written: the image's entries name the mask.
void paintInterleaved(Graphics& graphics, const ImageParameters& image, const ImageParameters& mask,
                      int interleave, const ColourSpace& space) {
  PdfFile& file = graphics.document().file();
  const std::vector<SourcePointer> sources = imageSources(graphics.interpreter(), image.sources);
  ImageDescription maskDescription = describeStencil(mask);
  maskDescription.layout.bits = 1;
  HeldImage heldMask(maskDescription.layout);
  HeldImage heldImage(image.layout);
  if (interleave == 1) {
    ImageLayout both = image.layout;
    ++both.components;
    ImageRows rows(sources, both);
    InterleavedMask splitter(both);
    for (int y = 0; y < both.height; ++y) {
      const Bytes row = nextRow(graphics, rows);
      if (row.empty()) break;
      splitter.split(row);
      heldMask.add(splitter.mask());
      heldImage.add(splitter.image());
    }
  } else {
    RowInterleave rows;
    RowInterleave::find(mask.layout.height, image.layout.height, rows);
    ImageRows maskRows(sources, mask.layout);
    ImageRows imageRows(sources, image.layout);
    readByRows(graphics, maskRows, imageRows, heldMask, heldImage, rows);
  }
  if (heldMask.height() == 0 || heldImage.height() == 0 || !isShown(graphics, image)) return;
  ImageDescription description = describe(image, space, file);
  description.mask = heldMask.write(file, maskDescription);
  draw(graphics, {heldImage.write(file, description), heldImage.height()}, image);
}

}  // namespace

void paintImage(Graphics& graphics, const ImageParameters& parameters, const ColourSpacePointer& space) {
  if (isEmpty(parameters.layout)) return;
  if (!isShown(graphics, parameters)) return skipData(graphics, parameters);
  PdfFile& file = graphics.document().file();
  const std::vector<SourcePointer> sources = imageSources(graphics.interpreter(), parameters.sources);
  if (const IndexedSpace* const indexed = tooLargeTable(parameters, space)) {
    draw(graphics, writeExpanded(graphics, parameters, *indexed, sources), parameters);
    return;
  }
  const ImageDescription description = describe(parameters, *space, file);
  if (isStrip(graphics, description, sources)) return paintStrip(graphics, description, sources, parameters);
  draw(graphics,
       writeInlineOrAside(graphics, description, sources,
                          placeOf(parameters, parameters.layout.height, graphics.state().ctm)),
       parameters);
}

void paintStencil(Graphics& graphics, const ImageParameters& parameters) {
  if (isEmpty(parameters.layout)) return;
  if (!isShown(graphics, parameters)) return skipData(graphics, parameters);
  const ImageDescription description = describeStencil(parameters);
  const std::vector<SourcePointer> sources = imageSources(graphics.interpreter(), parameters.sources);
  if (isStrip(graphics, description, sources)) return paintStrip(graphics, description, sources, parameters);
  const WrittenImage image = writeInlineOrAside(graphics, description, sources, Matrix());
  if (image.height == 0) return;
  const std::optional<Paint> paint = graphics.patterns().visiblePaint(*graphics.state().colour);
  ContentWriter* const content = graphics.content();
  if (!paint || content == nullptr) return;
  const GraphicsState& state = graphics.state();
  const Matrix place = placeOf(parameters, image.height, state.ctm);
  if (image.inlined.empty()) {
    content->drawMask(image.number, place, *paint, state.clip, state.rare);
  } else {
    content->drawInline(image.inlined, place, &*paint, state.clip, state.rare);
  }
}

void paintMaskedImage(Graphics& graphics, const ImageParameters& image, const ImageParameters& mask,
                      int interleave, const ColourSpacePointer& space) {
  if (isEmpty(image.layout) || isEmpty(mask.layout)) return;
  if (interleave != 3) return paintInterleaved(graphics, image, mask, interleave, *space);
  if (!isShown(graphics, image)) {
    skipData(graphics, mask);
    return skipData(graphics, image);
  }
  PdfFile& file = graphics.document().file();
  const WrittenImage writtenMask = writeData(graphics, describeStencil(mask),
                                             imageSources(graphics.interpreter(), mask.sources), Matrix());
  ImageDescription description = describe(image, *space, file);
  description.mask = writtenMask.number;
  draw(graphics,
       writeData(graphics, description, imageSources(graphics.interpreter(), image.sources),
                 placeOf(image, image.layout.height, graphics.state().ctm)),
       image);
}

}  // namespace quillpress::level3
