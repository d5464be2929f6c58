#include "cli/archive/Archive.h"

#include <optional>
#include <qpdf/Pl_Buffer.hh>
#include <qpdf/Pl_Flate.hh>

#include "cli/archive/Annotations.h"
#include "cli/archive/ArchiveFonts.h"
#include "cli/archive/Limits.h"
#include "cli/archive/ObjectRules.h"
#include "cli/archive/XmpPacket.h"
#include "cli/base/Errors.h"
#include "postscript/level3/document/JobDate.h"

namespace quillpress::cli {

namespace {

QPDFObjectHandle name(const char* text) {
  return QPDFObjectHandle::newName(text);
}

QPDFObjectHandle deflatedStream(QPDF& pdf, const std::string& bytes) {
  Pl_Buffer buffer("stream");
  Pl_Flate deflater("deflated stream", &buffer, Pl_Flate::a_deflate);
  deflater.writeString(bytes);
  deflater.finish();
  QPDFObjectHandle stream = QPDFObjectHandle::newStream(&pdf);
  stream.replaceStreamData(buffer.getBufferSharedPointer(), name("/FlateDecode"),
                           QPDFObjectHandle::newNull());
  return stream;
}

QPDFObjectHandle profileSpace(QPDF& pdf, const std::string& profile, int components) {
  QPDFObjectHandle stream = deflatedStream(pdf, profile);
  stream.getDict().replaceKey("/N", QPDFObjectHandle::newInteger(components));
  return pdf.makeIndirectObject(QPDFObjectHandle::newArray({name("/ICCBased"), stream}));
}

bool isPage(QPDFObjectHandle value) {
  return value.isDictionaryOfType("/Page");
}

// Takes a text of the information dictionary; what XML cannot say goes from both.
std::optional<std::string> takeText(QPDFObjectHandle information, const char* key) {
  QPDFObjectHandle value = information.getKey(key);
  if (!value.isString()) return std::nullopt;
  std::string text = xmlSayable(value.getUTF8Value());
  if (text != value.getUTF8Value()) information.replaceKey(key, QPDFObjectHandle::newUnicodeString(text));
  return text;
}

std::optional<std::string> takeDate(QPDFObjectHandle information, const char* key) {
  QPDFObjectHandle value = information.getKey(key);
  if (!value.isString()) return std::nullopt;
  const std::string text = value.getUTF8Value();
  std::optional<DocumentDate> date = documentDateOf(text);
  // Some programs give pdfmark the date as they say it to people.
  if (!date) date = documentDateOf(level3::pdfDateOf(text).value_or(std::string()));
  if (!date) throw ArchiveError(std::string("the ") + (key + 1) + " \"" + text + "\", which is no date");
  information.replaceKey(key, QPDFObjectHandle::newString(date->pdf));
  return date->xmp;
}

XmpFacts takeFacts(QPDFObjectHandle information) {
  XmpFacts facts;
  if (!information.isDictionary()) return facts;
  facts.title = takeText(information, "/Title");
  facts.author = takeText(information, "/Author");
  facts.subject = takeText(information, "/Subject");
  facts.keywords = takeText(information, "/Keywords");
  facts.creator = takeText(information, "/Creator");
  facts.producer = takeText(information, "/Producer");
  facts.creationDate = takeDate(information, "/CreationDate");
  facts.modificationDate = takeDate(information, "/ModDate");
  return facts;
}

}  // namespace

void Archive::make() {
  try {
    visitPages();
    visitTree(pdf_.getRoot());
    if (QPDFObjectHandle information = pdf_.getTrailer().getKey("/Info"); information.isDictionary())
      visitTree(information);
    setDefaultSpaces();
    inks_.complete(pdf_, part_);
    setIntent();
    setMetadata();
  } catch (const ArchiveError& error) {
    throw ArchiveError(std::string("cannot be kept in ") + nameOf(part_) + ": " + error.what());
  }
}

void Archive::visitPages() {
  std::size_t number = 0;
  for (const QPDFObjectHandle& page : pdf_.getAllPages()) {
    ++number;
    try {
      checkSize(page);
      readContents(page);
      visitTree(page);
    } catch (const ArchiveError& error) {
      throw ArchiveError("page " + std::to_string(number) + ": " + error.what());
    }
  }
}

// A unit of its own would let pages be larger, and is no part of PDF/A-1.
void Archive::checkSize(QPDFObjectHandle page) const {
  constexpr double kLeast = 3;
  constexpr double kMost = 14400;
  for (const char* const key : {"/MediaBox", "/CropBox"}) {
    QPDFObjectHandle box = page.getKey(key);
    if (!box.isRectangle()) continue;
    const QPDFObjectHandle::Rectangle area = box.getArrayAsRectangle();
    const double width = area.urx - area.llx;
    const double height = area.ury - area.lly;
    const bool isTooSmall = part_ != ArchivePart::k1b && (width < kLeast || height < kLeast);
    if (isTooSmall || width > kMost || height > kMost)
      throw ArchiveError(std::string("a page that is too ") + (isTooSmall ? "small" : "large"));
  }
}

void Archive::readContents(QPDFObjectHandle page) {
  ContentScan scan(part_, colours_);
  for (const QPDFObjectHandle& stream : page.getPageContents()) scan.read(stream);
}

void Archive::visitTree(const QPDFObjectHandle& top) {
  waiting_.assign(1, top);
  while (!waiting_.empty()) {
    const QPDFObjectHandle next = waiting_.back();
    waiting_.pop_back();
    if (next.isIndirect() && !visited_.insert(next.getObjGen()).second) continue;
    visit(next);
  }
}

void Archive::visit(QPDFObjectHandle value) {
  checkLimits(value, part_);
  if (value.isName()) colours_.use(value.getName());
  if (value.isArray()) {
    checkColourSpace(value, part_);
    inks_.add(value);
    for (const QPDFObjectHandle& item : value.aitems()) {
      // Other pages have their turn, so that what is wrong with them is told with their number.
      if (!isPage(item)) waiting_.push_back(item);
    }
  }
  if (value.isDictionary()) visitDictionary(value);
  if (!value.isStream()) return;
  if (value.getDict().hasKey("/F")) throw ArchiveError("data in another file");
  visitDictionary(value.getDict());
  QPDFObjectHandle entries = value.getDict();
  const bool isDrawn =
      entries.getKey("/Subtype").isNameAndEquals("/Form") || entries.getKey("/PatternType").isInteger();
  if (isDrawn) ContentScan(part_, colours_).read(value);
}

void Archive::visitDictionary(QPDFObjectHandle dictionary) {
  tidyDictionary(dictionary, part_);
  if (dictionary.isDictionaryOfType("/Font")) completeFont(pdf_, dictionary, part_);
  if (dictionary.getKey("/CharProcs").isDictionary()) {
    for (auto& [glyph, procedure] : dictionary.getKey("/CharProcs").ditems()) {
      checkName(glyph);
      if (procedure.isStream()) ContentScan(part_, colours_).read(procedure);
    }
  }
  visitAnnotations(dictionary.getKey("/Annots"));
  if (dictionary.getKey("/Resources").isDictionary()) resources_.push_back(dictionary.getKey("/Resources"));
  for (const auto& [key, value] : dictionary.ditems()) {
    checkName(key);
    if (key != "/Parent" && !isPage(value)) waiting_.push_back(value);
  }
}

void Archive::visitAnnotations(QPDFObjectHandle annotations) {
  if (!annotations.isArray()) return;
  for (const QPDFObjectHandle& annotation : annotations.aitems()) completeAnnotation(pdf_, annotation, part_);
}

// A colour of a device that is not the intent's gets a profile that says what it looks like.
void Archive::setDefaultSpaces() {
  if (colours_.cmyk && intent_.components != 4)
    setDefaultSpace("CMYK", profileSpace(pdf_, pressProfile(), 4));
  if (colours_.rgb && intent_.components != 3)
    setDefaultSpace("RGB", profileSpace(pdf_, standardIntent().bytes, 3));
}

void Archive::setDefaultSpace(const std::string& device, const QPDFObjectHandle& space) {
  for (QPDFObjectHandle& resources : resources_) {
    if (!resources.getKey("/ColorSpace").isDictionary())
      resources.replaceKey("/ColorSpace", QPDFObjectHandle::newDictionary());
    resources.getKey("/ColorSpace").replaceKey("/Default" + device, space);
  }
  inks_.replaceDevice("/Device" + device, space);
}

void Archive::setIntent() {
  QPDFObjectHandle profile = deflatedStream(pdf_, intent_.bytes);
  profile.getDict().replaceKey("/N", QPDFObjectHandle::newInteger(intent_.components));
  QPDFObjectHandle intent = QPDFObjectHandle::newDictionary();
  intent.replaceKey("/Type", name("/OutputIntent"));
  intent.replaceKey("/S", name("/GTS_PDFA1"));
  intent.replaceKey("/OutputConditionIdentifier", QPDFObjectHandle::newString(intent_.description));
  intent.replaceKey("/Info", QPDFObjectHandle::newString(intent_.description));
  intent.replaceKey("/DestOutputProfile", profile);
  pdf_.getRoot().replaceKey("/OutputIntents", QPDFObjectHandle::newArray({pdf_.makeIndirectObject(intent)}));
}

void Archive::setMetadata() {
  QPDFObjectHandle root = pdf_.getRoot();
  replacesMetadata_ = root.hasKey("/Metadata");
  const XmpFacts facts = takeFacts(pdf_.getTrailer().getKey("/Info"));
  QPDFObjectHandle stream = QPDFObjectHandle::newStream(&pdf_, xmpPacket(facts, part_));
  stream.getDict().replaceKey("/Type", name("/Metadata"));
  stream.getDict().replaceKey("/Subtype", name("/XML"));
  root.replaceKey("/Metadata", stream);
}

}  // namespace quillpress::cli
