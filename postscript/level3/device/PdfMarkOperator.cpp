#include <algorithm>
#include <array>
#include <string_view>

#include "postscript/level3/device/DeviceOperators.h"
#include "postscript/level3/device/PageDevice.h"
#include "postscript/level3/device/PdfValue.h"
#include "postscript/level3/graphics/DictionaryReader.h"
#include "postscript/level3/pdf/PdfNumbers.h"

// pdfmark: what a job says of its document besides the pages' look.

namespace quillpress::level3 {

namespace {

// A name that a job gives an object of the PDF is written in braces.
std::string_view objectName(const Object& value) {
  const bool isNamed = value.isProcedure() && value.length() == 1 && value.elements()[0].isName();
  if (!isNamed) raise(ErrorName::kTypeCheck);
  return value.elements()[0].asName()->text();
}

// The keys and values between the mark and the kind.
class Pairs {
 public:
  explicit Pairs(std::span<const Object> operands) : operands_(operands) {
    if (operands.size() % 2 != 0) raise(ErrorName::kRangeCheck);
    for (std::size_t index = 0; index < operands.size(); index += 2) {
      if (!operands[index].isName()) raise(ErrorName::kTypeCheck);
    }
  }

  // The last one with the key counts.
  const Object* find(std::string_view key) const {
    for (std::size_t index = operands_.size(); index >= 2; index -= 2) {
      if (operands_[index - 2].asName()->text() == key) return &operands_[index - 1];
    }
    return nullptr;
  }

  template <typename Visit>
  void visit(Visit visit) const {
    for (std::size_t index = 0; index < operands_.size(); index += 2) {
      visit(operands_[index].asName()->text(), operands_[index + 1]);
    }
  }

 private:
  std::span<const Object> operands_;
};

class Marker {
 public:
  Marker(Interpreter& interpreter, const Pairs& pairs)
      : interpreter_(interpreter),
        graphics_(graphicsOf(interpreter)),
        device_(pageDeviceOf(interpreter)),
        document_(graphics_.document()),
        pairs_(pairs) {}

  // False for kinds that are not kept.
  bool mark(std::string_view kind) {
    if (kind == "DOCINFO") return markInformation();
    if (kind == "OUT") return markBookmark();
    if (kind == "LNK") return markAnnotation("Link");
    if (kind == "ANN") return markAnnotation("Text");
    if (kind == "DEST") return markDestination();
    if (kind == "PAGE") return markPage(false);
    if (kind == "PAGES") return markPage(true);
    if (kind == "DOCVIEW") return markView();
    if (kind == "Metadata") return markMetadata();
    if (kind == "BP") return beginForm();
    if (kind == "EP") return device_.forms().end();
    return false;
  }

 private:
  static std::string textOfString(const Object& value) {
    if (value.isName()) return std::string(value.asName()->text());
    if (!value.isString()) raise(ErrorName::kTypeCheck);
    return std::string(textOf(value));
  }

  bool markInformation() {
    pairs_.visit([this](std::string_view key, const Object& value) {
      if (value.isString() || value.isName()) document_.setInformation(key, textOfString(value));
    });
    return true;
  }

  // The page that a number counted from 1 means; words for the next and the one before count from the present
  // one.
  std::size_t pageOf(const Object& value) const {
    const auto present = static_cast<std::int64_t>(device_.pagesShown());
    if (value.isInteger()) {
      constexpr std::int64_t kMostPages = 1'000'000;
      if (value.asInteger() > kMostPages) raise(ErrorName::kRangeCheck);
      return static_cast<std::size_t>(std::max<std::int64_t>(value.asInteger() - 1, 0));
    }
    if (!value.isName()) raise(ErrorName::kTypeCheck);
    const std::int64_t step =
        value.asName()->text() == "Next" ? 1 : (value.asName()->text() == "Prev" ? -1 : 0);
    return static_cast<std::size_t>(std::max<std::int64_t>(present + step, 0));
  }

  // "[page 0 R/XYZ null null null]"
  std::string destinationArray() const {
    const Object* page = pairs_.find("Page");
    const std::size_t number = page != nullptr ? pageOf(*page) : device_.pagesShown();
    std::string text = "[";
    appendReference(text, document_.pageObject(number));
    const Object* view = pairs_.find("View");
    if (view == nullptr || !view->isArray() || view->length() == 0) return text + "/XYZ null null null]";
    for (const Object& element : elementsOf(*view)) text += " " + pdfValueOf(element);
    return text + "]";
  }

  // Where a bookmark or link leads: a place, a place's name, or an action.
  void addTarget(DictionaryText& text) const {
    if (const Object* action = pairs_.find("Action"); action != nullptr && action->isDictionary()) {
      text.entry("A", actionOf(*action));
    } else if (const Object* name = pairs_.find("Dest"); name != nullptr) {
      if (name->isArray()) {
        text.entry("Dest", pdfValueOf(*name));
      } else {
        text.string("Dest", textOfString(*name));
      }
    } else if (const Object* uri = pairs_.find("URI"); uri != nullptr && uri->isString()) {
      text.entry("A", DictionaryText().name("S", "URI").string("URI", textOf(*uri)).text());
    } else if (pairs_.find("Page") != nullptr || pairs_.find("View") != nullptr) {
      text.entry("Dest", destinationArray());
    }
  }

  // In pdfmark an action's kind is its Subtype; in PDF it is S.
  std::string actionOf(const Object& action) const {
    const DictionaryReader entries(interpreter_, action);
    DictionaryText text;
    for (const Dictionary::Entry& entry : action.asDictionary()->entries()) {
      if (!entry.key.isName()) continue;
      const std::string_view key = entry.key.asName()->text();
      const bool isKind = key == "Subtype" && entries.find("S") == nullptr;
      text.entry(isKind ? "S" : key, pdfValueOf(entry.value));
    }
    return text.text();
  }

  bool markBookmark() {
    const Object* title = pairs_.find("Title");
    if (title == nullptr) raise(ErrorName::kUndefined);
    Outline::Item item;
    item.title = pdfText(textOfString(*title));
    if (const Object* count = pairs_.find("Count"); count != nullptr && count->isInteger()) {
      item.count = static_cast<int>(std::clamp<std::int64_t>(count->asInteger(), -100'000, 100'000));
    }
    DictionaryText text;
    addTarget(text);
    if (const Object* colour = pairs_.find("Color"); colour != nullptr && colour->isArray()) {
      text.entry("C", pdfValueOf(*colour));
    }
    if (const Object* style = pairs_.find("F"); style != nullptr && style->isInteger()) {
      text.integer("F", style->asInteger());
    }
    item.entries = text.entries();
    document_.outline().add(std::move(item));
    return true;
  }

  // User space at the moment, to the page's own.
  Box pageRectangle(const Object& value) const {
    const std::vector<double> corners = numbersOf(value);
    if (corners.size() != 4) raise(ErrorName::kRangeCheck);
    const Matrix toPage = graphics_.state().ctm * device_.content().initialSpace();
    return transformed(Box::ofCorners({corners[0], corners[1]}, {corners[2], corners[3]}), toPage);
  }

  bool markAnnotation(std::string_view defaultSubtype) {
    const Object* rectangle = pairs_.find("Rect");
    if (rectangle == nullptr) raise(ErrorName::kUndefined);
    DictionaryText text;
    const Object* subtype = pairs_.find("Subtype");
    text.name("Type", "Annot").name("Subtype", subtype != nullptr ? textOfString(*subtype) : defaultSubtype);
    text.box("Rect", pageRectangle(*rectangle));
    addTarget(text);
    constexpr std::array<std::string_view, 11> kUsedAbove{
        "Rect", "Subtype", "Page", "View", "Dest", "Action", "URI", "SrcPg", "Color", "Title", "Type"};
    pairs_.visit([&](std::string_view key, const Object& value) {
      const bool isUsed = std::find(kUsedAbove.begin(), kUsedAbove.end(), key) != kUsedAbove.end();
      if (key == "Color" && value.isArray()) text.entry("C", pdfValueOf(value));
      if (key == "Title" && value.isString()) text.string("T", pdfText(textOf(value)));
      if (!isUsed) text.entry(key, pdfValueOf(value));
    });
    device_.addAnnotation(document_.file().add(text.text()));
    return true;
  }

  bool markDestination() {
    const Object* name = pairs_.find("Dest");
    if (name == nullptr) raise(ErrorName::kUndefined);
    document_.addDestination(textOfString(*name), destinationArray());
    return true;
  }

  bool markPage(bool isForAllPages) {
    pairs_.visit([&](std::string_view key, const Object& value) {
      if (key == "CropBox") {
        const std::vector<double> corners = numbersOf(value);
        if (corners.size() != 4) raise(ErrorName::kRangeCheck);
        device_.setCropBox(Box::ofCorners({corners[0], corners[1]}, {corners[2], corners[3]}), isForAllPages);
      } else if (key != "MediaBox" && key != "Contents" && key != "Resources" && key != "Parent") {
        device_.setPageEntry(key, pdfValueOf(value), isForAllPages);
      }
    });
    return true;
  }

  bool markView() {
    pairs_.visit([this](std::string_view key, const Object& value) {
      if (key == "PageMode" || key == "PageLayout") document_.setCatalogueEntry(key, pdfValueOf(value));
    });
    if (pairs_.find("Page") != nullptr || pairs_.find("View") != nullptr) {
      document_.setCatalogueEntry("OpenAction", destinationArray());
    }
    return true;
  }

  // An XMP packet given as a string.
  bool markMetadata() {
    const Object* packet = pairs_.find("XML");
    if (packet == nullptr || !packet->isString()) return false;
    document_.setMetadata(
        document_.file().addStream("/Type/Metadata/Subtype/XML", textOf(*packet), StreamData::kPlain));
    return true;
  }

  bool beginForm() {
    const Object* box = pairs_.find("BBox");
    if (box == nullptr) raise(ErrorName::kUndefined);
    const std::vector<double> corners = numbersOf(*box);
    if (corners.size() != 4) raise(ErrorName::kRangeCheck);
    const Object* name = pairs_.find("_objdef");
    device_.forms().begin(name != nullptr ? objectName(*name) : "",
                          Box::ofCorners({corners[0], corners[1]}, {corners[2], corners[3]}));
    return true;
  }

  Interpreter& interpreter_;
  Graphics& graphics_;
  PageDevice& device_;
  PdfDocument& document_;
  const Pairs& pairs_;
};

// False for kinds that are not kept.
bool mark(Interpreter& interpreter, std::string_view kind, std::span<const Object> operands) {
  if (kind == "SP") {
    if (operands.size() != 1) raise(ErrorName::kRangeCheck);
    return pageDeviceOf(interpreter).forms().show(objectName(operands.front()));
  }
  const Pairs pairs(operands);
  return Marker(interpreter, pairs).mark(kind);
}

// mark key1 value1 ... keyn valuen kind ->   or  mark {name} /SP ->
void pdfMark(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  std::size_t count = 0;
  while (count < operands.depth() && !operands.top(count).isMark()) ++count;
  if (count == operands.depth()) raise(ErrorName::kUnmatchedMark);
  if (count == 0) raise(ErrorName::kRangeCheck);
  const Object& kind = operands.top();
  if (!kind.isName()) raise(ErrorName::kTypeCheck);
  const std::span<const Object> list = operands.last(count);
  if (!mark(interpreter, kind.asName()->text(), list.first(count - 1))) {
    graphicsOf(interpreter).unkept().add(Unkept::kPdfMark);
  }
  operands.pop(count + 1);
}

constexpr OperatorRow kPdfMarkOperator[] = {{"pdfmark", "", pdfMark}};

}  // namespace

void addPdfMarkOperator(Interpreter& interpreter) {
  interpreter.addOperators(kPdfMarkOperator);
}

}  // namespace quillpress::level3
