#include "cli/pdf/PdfBuilder.h"

#include "cli/pdf/CreationDate.h"

namespace quillpress::cli {

namespace {

QPDFObjectHandle numberObject(double value) {
  const std::string text = pdfNumber(value);
  // Whole numbers look whole.
  if (text.find('.') == std::string::npos) return QPDFObjectHandle::newInteger(std::stoll(text));
  return QPDFObjectHandle::newReal(text);
}

}  // namespace

PdfBuilder::PdfBuilder(const Document& document, const Spool& spool)
    : document_(document),
      streams_(std::make_shared<SpoolStreams>(spool)),
      pageType_(QPDFObjectHandle::newName("/Page")),
      flate_(QPDFObjectHandle::newName("/FlateDecode")) {
  pdf_.emptyPDF();
  pageTree_ = pdf_.getRoot().getKey("/Pages");
}

QPDF& PdfBuilder::build(const ObjectStore& store) {
  addObjects(store);
  auto pages = QPDFObjectHandle::newArray();
  for (const DocumentPage& page : document_.pages) pages.appendItem(makePage(page));
  pageTree_.replaceKey("/Count", QPDFObjectHandle::newInteger(pages.getArrayNItems()));
  pageTree_.replaceKey("/Kids", pages);
  pdf_.getTrailer().replaceKey("/Info", pdf_.makeIndirectObject(makeInformation()));
  return pdf_;
}

// Makes all streams before any resources, as a pattern refers to the streams that it draws.
void PdfBuilder::addObjects(const ObjectStore& store) {
  for (const auto& [number, object] : store.objects()) {
    if (object.isBroken) continue;
    auto stream = QPDFObjectHandle::newStream(&pdf_);
    stream.replaceDict(object.dictionary);
    streams_->provide(stream, document_.pieces[object.data]);
    objects_[number] = {object.isPattern ? "/Pattern" : "/XObject", object.name, stream};
  }
  for (const auto& [number, object] : store.objects()) {
    if (!object.isPattern || object.isBroken) continue;
    objects_[number].stream.getDict().replaceKey(
        "/Resources", resourcesFor({object.objects.begin(), object.objects.end()}));
  }
}

QPDFObjectHandle PdfBuilder::makePage(const DocumentPage& page) {
  auto dictionary = QPDFObjectHandle::newDictionary();
  dictionary.replaceKey("/Type", pageType_);
  dictionary.replaceKey("/Parent", pageTree_);
  dictionary.replaceKey("/MediaBox",
                        mediaBoxFor(document_.media.value_or(page.box.value_or(document_.defaultBox))));
  dictionary.replaceKey("/Resources", resourcesFor(page.objects));
  dictionary.replaceKey("/Contents", makeContents(page.content));
  return pdf_.makeIndirectObject(dictionary);
}

QPDFObjectHandle PdfBuilder::makeContents(const std::vector<std::size_t>& places) {
  auto all = QPDFObjectHandle::newArray();
  for (const std::size_t place : places) {
    auto stream = QPDFObjectHandle::newStream(&pdf_);
    stream.getDict().replaceKey("/Filter", flate_);
    streams_->provide(stream, document_.pieces[place]);
    // An array of one would be allowed, and only take room.
    if (places.size() == 1) return stream;
    all.appendItem(stream);
  }
  return all;
}

QPDFObjectHandle PdfBuilder::resourcesFor(const std::vector<unsigned>& numbers) {
  const auto known = resources_.find(numbers);
  // Pages of one job mostly draw the same things.
  if (known != resources_.end()) return known->second;
  return resources_[numbers] = makeResources(numbers);
}

QPDFObjectHandle PdfBuilder::makeResources(const std::vector<unsigned>& numbers) {
  auto result = QPDFObjectHandle::newDictionary();
  for (const unsigned number : numbers) {
    const auto object = objects_.find(number);
    // Named in the content but not there: readers pass over it.
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
  // Pages of one size share the array; sizes change rarely.
  if (lastMediaBox_.isInitialized() && box == lastBox_) return lastMediaBox_;
  lastBox_ = box;
  lastMediaBox_ = QPDFObjectHandle::newArray(
      {numberObject(box.llx), numberObject(box.lly), numberObject(box.urx), numberObject(box.ury)});
  return lastMediaBox_;
}

QPDFObjectHandle PdfBuilder::makeInformation() {
  auto information = QPDFObjectHandle::newDictionary();
  const auto addText = [&](const std::string& key, const std::string& text) {
    // An empty title would be shown in place of the file's name.
    if (!text.empty()) information.replaceKey(key, QPDFObjectHandle::newUnicodeString(text));
  };
  addText("/Title", document_.title);
  addText("/Creator", document_.creator);
  addText("/Producer", "Quillpress " QUILLPRESS_VERSION);
  addText("/CreationDate", creationDate());
  return information;
}

}  // namespace quillpress::cli
