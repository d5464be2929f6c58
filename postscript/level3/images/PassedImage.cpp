#include "postscript/level3/images/PassedImage.h"

#include "postscript/level3/images/ImageRows.h"
#include "postscript/level3/images/InlineImage.h"
#include "postscript/level3/images/JpegScanner.h"
#include "postscript/level3/images/TeeSource.h"

namespace quillpress::level3 {

namespace {

// The header of JPEG data is somewhere in here, or it is not worth passing on.
constexpr std::size_t kLongestHeader = 1U << 20;
// Behind inline data, for readers that take a word of it at a time, and look for the end of the image behind
// that.
constexpr std::string_view kSlack("\0\0\0\0", 4);

// Moves what the scanner takes from the source to `take`, until it has seen enough.
template <typename Take, typename Until>
void scan(JpegScanner& scanner, ByteSource& source, Take take, Until until) {
  while (!scanner.isDone() && !scanner.isBad() && !until() && source.refill()) {
    const Bytes block = source.peek();
    const std::size_t used = scanner.scan(block);
    take(block.first(used));
    source.consume(used);
  }
  if (source.peek().empty() && !source.isOpen() && !scanner.isDone()) source.endedWithin("an image");
}

// In PDF as in the language, three components are luminance and chrominance unless somebody says otherwise,
// and four are not.
std::string jpegFilter(const JpegScanner& scanner, const DctDecoder& decoder) {
  std::string filter = "/Filter/DCTDecode";
  if (scanner.transform() || !decoder.colorTransform()) return filter;
  return filter + "/DecodeParms<</ColorTransform " + (*decoder.colorTransform() ? "1>>" : "0>>");
}

bool fits(const JpegScanner& scanner, const ImageLayout& layout) {
  const auto& frame = scanner.frame();
  return frame && !scanner.isBad() && frame->bits == 8 && frame->width == layout.width &&
         frame->height == layout.height && frame->components == layout.components;
}

// The rest of the data goes the usual way, behind what has been taken.
WrittenImage decodeAfterAll(PdfFile& file, const ImageDescription& description, std::vector<Byte> data,
                            JpegScanner& scanner, DctDecoder& decoder) {
  scan(
      scanner, *decoder.below(), [&](Bytes more) { data.insert(data.end(), more.begin(), more.end()); },
      [] { return false; });
  const auto whole = std::make_shared<MemorySource>(std::move(data));
  const auto again = std::make_shared<DctDecoder>(whole, decoder.colorTransform());
  ImageRows rows({again}, description.layout);
  return writeImage(
      file, description, [&] { return rows.next(); }, 0);
}

std::string faxParameters(const CcittParameters& parameters, int rows) {
  DictionaryText text;
  if (parameters.k != 0) text.integer("K", parameters.k < 0 ? -1 : 1);
  if (parameters.endOfLine) text.boolean("EndOfLine", true);
  if (parameters.encodedByteAlign) text.boolean("EncodedByteAlign", true);
  text.integer("Columns", parameters.columns).integer("Rows", rows);
  if (!parameters.endOfBlock) text.boolean("EndOfBlock", false);
  if (parameters.blackIs1) text.boolean("BlackIs1", true);
  return text.text();
}

// Whether two-dimensional data ends with its mark, 000000000001 twice, and fewer than eight bits behind it.
bool endsWithMark(std::string_view data) {
  constexpr std::uint32_t kMark = 0x001001;
  constexpr std::uint32_t kMarkBits = 0xffffff;
  if (data.size() < 4) return false;
  std::uint32_t last = 0;
  for (const char byte : data.substr(data.size() - 4)) last = last << 8 | static_cast<unsigned char>(byte);
  for (int behind = 0; behind < 8; ++behind) {
    const bool isFilled = (last & ((1U << behind) - 1)) == 0;
    if (isFilled && (last >> behind & kMarkBits) == kMark) return true;
  }
  return false;
}

// Some readers go on behind an inline image where its filter has come to its end, so that has to be certain.
bool endsCertainly(const CcittParameters& parameters, std::string_view data) {
  return parameters.k < 0 && (!parameters.endOfBlock || endsWithMark(data));
}

}  // namespace

bool canPassJpeg(const ImageDescription& description) {
  return !description.isStencil && description.layout.bits == 8;
}

std::vector<Byte> takeJpeg(DctDecoder& decoder) {
  JpegScanner scanner;
  std::vector<Byte> data;
  scan(
      scanner, *decoder.below(), [&](Bytes bytes) { data.insert(data.end(), bytes.begin(), bytes.end()); },
      [] { return false; });
  decoder.close();
  return data;
}

WrittenImage passJpeg(PdfFile& file, const ImageDescription& description, DctDecoder& decoder) {
  const SourcePointer source = decoder.below();
  JpegScanner scanner;
  std::vector<Byte> header;
  scan(
      scanner, *source, [&](Bytes bytes) { header.insert(header.end(), bytes.begin(), bytes.end()); },
      [&] { return scanner.frame().has_value() || header.size() > kLongestHeader; });
  if (!fits(scanner, description.layout)) {
    WrittenImage written = decodeAfterAll(file, description, std::move(header), scanner, decoder);
    decoder.close();
    return written;
  }
  ImageObjectSink object(file, description.entries(jpegFilter(scanner, decoder)));
  object.write(header);
  scan(
      scanner, *source, [&](Bytes bytes) { object.write(bytes); }, [] { return false; });
  object.close();
  decoder.close();
  return {object.number(), description.layout.height};
}

bool canPassFax(const ImageDescription& description, const CcittParameters& parameters) {
  const ImageLayout& layout = description.layout;
  // PDF knows no other way to say where the rows of damaged data are.
  return layout.bits == 1 && layout.components == 1 && parameters.columns == layout.width &&
         parameters.damagedRowsBeforeError == 0;
}

WrittenImage passFax(PdfFile& file, const ImageDescription& description, CcittDecoder& decoder,
                     std::size_t mostInlineBytes) {
  const CcittParameters& parameters = decoder.parameters();
  const auto data = std::make_shared<MemorySink>();
  const auto tee = std::make_shared<TeeSource>(decoder.below(), data);
  CcittDecoder reader(tee, parameters);
  std::vector<Byte> row(description.layout.rowBytes());
  int rows = 0;
  while (rows < description.layout.height && reader.read(row) == row.size()) ++rows;
  // The mark behind the last row belongs to the data.
  if (rows == description.layout.height && parameters.endOfBlock) reader.refill();
  tee->settle();
  decoder.close();
  if (rows == 0) return {};
  ImageDescription shortened = description;
  shortened.layout.height = rows;
  const std::string_view coded = textOf(data->bytes());
  const std::string filterParameters = faxParameters(parameters, rows);
  if (coded.size() <= mostInlineBytes && canBeInline(shortened) && endsCertainly(parameters, coded)) {
    const std::string filter = "/F/CCF/DP" + filterParameters;
    if (std::optional<std::string> image =
            inlineImage(shortened, std::string(coded).append(kSlack), filter)) {
      return {0, rows, std::move(*image)};
    }
  }
  const std::string entries = shortened.entries("/Filter/CCITTFaxDecode/DecodeParms" + filterParameters);
  return {file.addSharedStream(entries, coded, StreamData::kPlain), rows};
}

}  // namespace quillpress::level3
