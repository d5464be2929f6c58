#include "cli/PdfBuilder.h"

#include <stdexcept>

#include "cli/CreationDate.h"
#include "cli/Messages.h"
#include "cli/ObjectDictionary.h"

namespace quillpress::cli {

namespace {

QPDFObjectHandle numberObject(double value) {
  const std::string text = pdfNumber(value);
  if (text.find('.') == std::string::npos) return QPDFObjectHandle::newInteger(std::stoll(text));
  return QPDFObjectHandle::newReal(text);
}

}  // namespace

PdfBuilder::PdfBuilder(const Spool& spool)
    : streams_(std::make_shared<SpoolStreams>(spool)), pageType_(QPDFObjectHandle::newName("/Page")) {
  pdf_.emptyPDF();
  pageTree_ = pdf_.getRoot().getKey("/Pages");
}

QPDF& PdfBuilder::build(const Document& document, const ObjectStore& store) {
  addObjects(store);
  auto pages = QPDFObjectHandle::newArray();
  for (const DocumentPage& page : document.pages) pages.appendItem(makePage(page, document));
  pageTree_.replaceKey("/Count", QPDFObjectHandle::newInteger(pages.getArrayNItems()));
  pageTree_.replaceKey("/Kids", pages);
  pdf_.getTrailer().replaceKey("/Info", pdf_.makeIndirectObject(makeInformation(document)));
  return pdf_;
}

/** Makes all streams before any dictionary, as a pattern refers to the streams that it draws. */
void PdfBuilder::addObjects(const ObjectStore& store) {
  for (const auto& [number, object] : store.objects()) {
    const std::string category = object.isPattern ? "/Pattern" : "/XObject";
    objects_[number] = {category, object.name, QPDFObjectHandle::newStream(&pdf_)};
  }
  for (const auto& [number, object] : store.objects()) {
    try {
      completeObject(objects_[number].stream, object);
    } catch (const std::runtime_error& error) {
      say(object.name + " is left out: its dictionary is broken (" + error.what() + ")");
      objects_.erase(number);
    }
  }
}

void PdfBuilder::completeObject(QPDFObjectHandle stream, const StoredObject& object) {
  QPDFObjectHandle dictionary =
      object.isPattern ? patternDictionary(object.dictionary) : imageDictionary(object.dictionary);
  if (object.isPattern) {
    dictionary.replaceKey("/Resources", resourcesFor({object.objects.begin(), object.objects.end()}));
  }
  stream.replaceDict(dictionary);
  object.isDeflated ? streams_->provideDeflated(stream, object.data) : streams_->provide(stream, object.data);
}

QPDFObjectHandle PdfBuilder::makePage(const DocumentPage& page, const Document& document) {
  auto dictionary = QPDFObjectHandle::newDictionary();
  dictionary.replaceKey("/Type", pageType_);
  dictionary.replaceKey("/Parent", pageTree_);
  dictionary.replaceKey("/MediaBox",
                        mediaBoxFor(document.media.value_or(page.box.value_or(document.defaultBox))));
  dictionary.replaceKey("/Resources", resourcesFor(page.objects));
  dictionary.replaceKey("/Contents", makeContents(page.content));
  return pdf_.makeIndirectObject(dictionary);
}

QPDFObjectHandle PdfBuilder::makeContents(const std::vector<Spool::Piece>& pieces) {
  auto all = QPDFObjectHandle::newArray();
  for (const Spool::Piece& piece : pieces) {
    auto stream = QPDFObjectHandle::newStream(&pdf_);
    streams_->provideDeflated(stream, piece);
    if (pieces.size() == 1) return stream;
    all.appendItem(stream);
  }
  return all;
}

QPDFObjectHandle PdfBuilder::resourcesFor(const std::vector<unsigned>& numbers) {
  const auto known = resources_.find(numbers);
  if (known != resources_.end()) return known->second;
  return resources_[numbers] = makeResources(numbers);
}

QPDFObjectHandle PdfBuilder::makeResources(const std::vector<unsigned>& numbers) {
  auto result = QPDFObjectHandle::newDictionary();
  for (const unsigned number : numbers) {
    const auto object = objects_.find(number);
    if (object == objects_.end()) continue;
    const Resource& resource = object->second;
    if (!result.hasKey(resource.category)) {
      result.replaceKey(resource.category, QPDFObjectHandle::newDictionary());
    }
    result.getKey(resource.category).replaceKey(resource.name, resource.stream);
  }
  return result;
}

QPDFObjectHandle PdfBuilder::mediaBoxFor(const Box& box) {
  if (lastMediaBox_.isInitialized() && box == lastBox_) return lastMediaBox_;
  lastBox_ = box;
  lastMediaBox_ = QPDFObjectHandle::newArray(
      {numberObject(box.llx), numberObject(box.lly), numberObject(box.urx), numberObject(box.ury)});
  return lastMediaBox_;
}

QPDFObjectHandle PdfBuilder::makeInformation(const Document& document) {
  auto information = QPDFObjectHandle::newDictionary();
  const auto addText = [&](const std::string& key, const std::string& text) {
    if (!text.empty()) information.replaceKey(key, QPDFObjectHandle::newUnicodeString(text));
  };
  addText("/Title", document.title);
  addText("/Creator", document.creator);
  addText("/Producer", "Quillpress " QUILLPRESS_VERSION);
  addText("/CreationDate", creationDate());
  return information;
}

}  // namespace quillpress::cli
