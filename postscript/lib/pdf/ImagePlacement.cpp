#include "postscript/lib/pdf/ImagePlacement.h"

#include "postscript/lib/pdf/Postscript2Pdf.h"

namespace quillpress {

namespace {

std::string objectDictionary(const ImageSamples& image, std::string_view colourSpaceName) {
  std::string text("/Type /XObject /Subtype /Image /BitsPerComponent ");
  text.append(std::to_string(image.bitsPerComponent));
  text.append(" /Width ").append(std::to_string(image.width));
  text.append(" /Height ").append(std::to_string(image.height));
  text.append(" /ColorSpace /").append(colourSpaceName);
  text.append(" ").append(image.filterText);
  return text;
}

// The name of the object that holds the image.
std::string objectNameFor(PdfObjectList& objects, ImageSamples image, std::string_view colourSpaceName) {
  // By the data alone, whatever else differs: the same bitmap drawn again is the usual case.
  if (const OwnedPdfObject* earlier = objects.findImage(image.data)) return earlier->name();
  const std::string dictionary = objectDictionary(image, colourSpaceName);
  const auto object = objects.createImage("/PSI", std::move(image.data));
  object->setDictionary(dictionary);
  object->setCompress(image.filterText.empty());
  return object->name();
}

// Saved and restored around it, for readers that end an inline image with a changed state.
void writeInline(PageContent& content, const ImageSamples& image, std::string_view colourSpaceName) {
  content.append("q BI\n/W ");
  content.append(std::to_string(image.width));
  content.append(" /H ");
  content.append(std::to_string(image.height));
  content.append(" /BPC ");
  content.append(std::to_string(image.bitsPerComponent));
  content.append(" /CS /");
  content.append(colourSpaceName);
  content.append(" ");
  content.append(image.filterText);
  content.append("\nID\n");
  content.append(image.data);
  content.append("\nEI\nQ\n");
}

}  // namespace

void placeImage(Postscript2Pdf& converter, ImageSamples image) {
  const bool known = image.colourSpace != ColourSpace::kUnknown;
  const ImageColourSpaceNames names =
      imageColourSpaceNames(known ? image.colourSpace : converter.state().colourSpace);
  PageContent& content = converter.content();
  // A pattern has no resources of its own, so nothing that it draws can be an object.
  if (image.data.size() > kInlineImageLimit && !converter.isInPattern()) {
    content.append(objectNameFor(converter.objects(), std::move(image), names.full));
    content.append(" Do\n");
  } else {
    writeInline(content, image, names.abbreviation);
  }
}

// The first blank of each name and the last one belong to the text that callers know.
std::string imageFilterText(const std::vector<std::string>& filters) {
  if (filters.empty()) return {};
  std::string text("/Filter [");
  for (const std::string& filter : filters) text.append(" /").append(filter);
  return text + "] ";
}

}  // namespace quillpress
