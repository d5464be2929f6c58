#include "cli/archive/Annotations.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "cli/base/Errors.h"

namespace quillpress::cli {

namespace {

// Bits of the annotation's flags.
enum Flag : unsigned {
  kInvisible = 1,
  kHidden = 2,
  kPrint = 4,
  kNoZoom = 8,
  kNoRotate = 16,
  kNoView = 32,
  kToggleNoView = 256,
};

std::string textOf(QPDFObjectHandle value) {
  if (value.isName()) return value.getName().substr(1);
  return value.isString() ? value.getUTF8Value() : std::string();
}

bool hasPlace(std::string_view kind, ArchivePart part) {
  constexpr std::array<std::string_view, 14> kKinds{
      "Text",      "Link",      "FreeText", "Line",  "Square", "Circle", "Highlight",
      "Underline", "StrikeOut", "Squiggly", "Stamp", "Ink",    "Popup",  "Widget"};
  constexpr std::array<std::string_view, 4> kLaterKinds{"Polygon", "PolyLine", "Caret", "Redact"};
  return std::find(kKinds.begin(), kKinds.end(), kind) != kKinds.end() ||
         (part != ArchivePart::k1b &&
          std::find(kLaterKinds.begin(), kLaterKinds.end(), kind) != kLaterKinds.end());
}

bool isEmpty(QPDFObjectHandle rectangle) {
  if (!rectangle.isRectangle()) return true;
  const QPDFObjectHandle::Rectangle box = rectangle.getArrayAsRectangle();
  return box.llx == box.urx && box.lly == box.ury;
}

// A sheet with lines of writing, in a unit square; viewers draw something like it for notes on their own.
QPDFObjectHandle noteLook(QPDF& pdf) {
  QPDFObjectHandle form = QPDFObjectHandle::newStream(&pdf,
                                                      "0.9 g 0.1 0.05 0.8 0.9 re f 0 G 0.04 w 0.1 0.05 0.8 "
                                                      "0.9 re 0.25 0.7 m 0.75 0.7 l 0.25 0.5 m 0.75 0.5 l "
                                                      "0.25 0.3 m 0.6 0.3 l S\n");
  QPDFObjectHandle entries = form.getDict();
  entries.replaceKey("/Type", QPDFObjectHandle::newName("/XObject"));
  entries.replaceKey("/Subtype", QPDFObjectHandle::newName("/Form"));
  entries.replaceKey("/BBox", QPDFObjectHandle::parse("[0 0 1 1]"));
  entries.replaceKey("/Resources", QPDFObjectHandle::newDictionary());
  return form;
}

void completeLook(QPDF& pdf, QPDFObjectHandle annotation, const std::string& kind) {
  QPDFObjectHandle look = annotation.getKey("/AP");
  if (look.isDictionary()) {
    if (look.getKeys() != std::set<std::string>{"/N"})
      throw ArchiveError("an annotation (" + kind + ") that looks otherwise when it is touched");
    return;
  }
  if (kind == "Link" || kind == "Popup" || isEmpty(annotation.getKey("/Rect"))) return;
  if (kind != "Text") throw ArchiveError("an annotation (" + kind + ") without a look of its own");
  QPDFObjectHandle made = QPDFObjectHandle::newDictionary();
  made.replaceKey("/N", noteLook(pdf));
  annotation.replaceKey("/AP", made);
}

}  // namespace

void completeAnnotation(QPDF& pdf, QPDFObjectHandle annotation, ArchivePart part) {
  const std::string kind = textOf(annotation.getKey("/Subtype"));
  if (!hasPlace(kind, part)) throw ArchiveError("an annotation of the kind " + kind);
  QPDFObjectHandle given = annotation.getKey("/F");
  auto flags = given.isInteger() ? static_cast<unsigned>(given.getIntValueAsInt()) : 0U;
  if ((flags & (kInvisible | kHidden | kNoView | kToggleNoView)) != 0)
    throw ArchiveError("an annotation (" + kind + ") that is not always seen");
  flags |= kPrint;
  if (kind == "Text") flags |= kNoZoom | kNoRotate;
  if (kind != "Popup") annotation.replaceKey("/F", QPDFObjectHandle::newInteger(flags));
  completeLook(pdf, annotation, kind);
}

void checkAction(QPDFObjectHandle action) {
  if (!action.isDictionary()) return;
  constexpr std::array<std::string_view, 5> kActions{"GoTo", "GoToR", "URI", "Thread", "SubmitForm"};
  constexpr std::array<std::string_view, 4> kPlaces{"NextPage", "PrevPage", "FirstPage", "LastPage"};
  const std::string kind = textOf(action.getKey("/S"));
  const std::string name = textOf(action.getKey("/N"));
  const bool isNamed = kind == "Named" && std::find(kPlaces.begin(), kPlaces.end(), name) != kPlaces.end();
  if (isNamed || std::find(kActions.begin(), kActions.end(), kind) != kActions.end()) return;
  throw ArchiveError("an action of the kind " + kind + (kind == "Named" ? " (" + name + ")" : ""));
}

}  // namespace quillpress::cli
