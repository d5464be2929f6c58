#include "cli/archive/ObjectRules.h"

#include <array>

#include "cli/archive/Annotations.h"
#include "cli/base/Errors.h"

namespace quillpress::cli {

namespace {

bool isOpaque(QPDFObjectHandle alpha) {
  return !alpha.isNumber() || alpha.getNumericValue() == 1;
}

// PDF 1.4 has transparency; its part of PDF/A has none.
void checkTransparency(QPDFObjectHandle dictionary) {
  QPDFObjectHandle mask = dictionary.getKey("/SMask");
  const bool hasMask = (mask.isStream() || mask.isDictionary());
  QPDFObjectHandle blending = dictionary.getKey("/BM");
  const bool blends =
      blending.isName() && blending.getName() != "/Normal" && blending.getName() != "/Compatible";
  QPDFObjectHandle group = dictionary.getKey("/Group");
  const bool isGroup = group.isDictionary() && group.getKey("/S").isNameAndEquals("/Transparency");
  if (hasMask || blends || isGroup || !isOpaque(dictionary.getKey("/CA")) ||
      !isOpaque(dictionary.getKey("/ca")))
    throw ArchiveError("transparency");
}

struct Forbidden {
  const char* key;
  const char* meaning;
};

constexpr std::array<Forbidden, 10> kForbidden{{{"/AA", "actions that start by themselves (/AA)"},
                                                {"/EF", "an embedded file"},
                                                {"/OPI", "a picture in another file (/OPI)"},
                                                {"/Ref", "a page of another file (/Ref)"},
                                                {"/HTP", "a halftone's phase"},
                                                {"/XFA", "a form in XML"},
                                                {"/OCProperties", "optional content"},
                                                {"/PresSteps", "steps of a presentation"},
                                                {"/AlternatePresentations", "a slide show"},
                                                {"/JavaScript", "JavaScript"}}};

bool namesFilter(QPDFObjectHandle filters, const char* filter) {
  if (!filters.isArray()) return filters.isNameAndEquals(filter);
  for (QPDFObjectHandle& item : filters.aitems()) {
    if (item.isNameAndEquals(filter)) return true;
  }
  return false;
}

}  // namespace

void tidyDictionary(QPDFObjectHandle dictionary, ArchivePart part) {
  for (const Forbidden& forbidden : kForbidden) {
    if (dictionary.hasKey(forbidden.key)) throw ArchiveError(forbidden.meaning);
  }
  for (const char* const key : {"/A", "/OpenAction", "/Next"}) checkAction(dictionary.getKey(key));
  if (part == ArchivePart::k1b) checkTransparency(dictionary);
  if (dictionary.getKey("/Subtype").isNameAndEquals("/PS") ||
      dictionary.getKey("/Subtype2").isNameAndEquals("/PS"))
    throw ArchiveError("PostScript within the PDF");
  if (namesFilter(dictionary.getKey("/Filter"), "/LZWDecode")) throw ArchiveError("data packed by LZW");
  if (namesFilter(dictionary.getKey("/Filter"), "/Crypt")) throw ArchiveError("encrypted data");
  // Asks viewers to smooth the picture, each in its way.
  if (dictionary.hasKey("/Interpolate")) dictionary.removeKey("/Interpolate");
  if (dictionary.getKey("/Type").isNameAndEquals("/XObject")) dictionary.removeKey("/Alternates");
}

void checkColourSpace(QPDFObjectHandle array, ArchivePart part) {
  if (array.getArrayNItems() < 2) return;
  if (array.getArrayItem(0).isNameAndEquals("/ICCBased") && array.getArrayItem(1).isStream()) {
    // For readers that know no profiles. It would count as a device's colours.
    array.getArrayItem(1).getDict().removeKey("/Alternate");
  }
  if (array.getArrayItem(0).isNameAndEquals("/DeviceN") && array.getArrayItem(1).isArray()) {
    const int most = part == ArchivePart::k1b ? 8 : 32;
    const int inks = array.getArrayItem(1).getArrayNItems();
    if (inks > most) throw ArchiveError("a colour of " + std::to_string(inks) + " inks");
  }
}

}  // namespace quillpress::cli
