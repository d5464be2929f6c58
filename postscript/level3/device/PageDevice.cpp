#include "postscript/level3/device/PageDevice.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "postscript/level3/graphics/DictionaryReader.h"
#include "postscript/level3/graphics/MatrixOperands.h"

namespace quillpress::level3 {

namespace {

constexpr double kPointsPerInch = 72;
// PDF's own limits for a page, in points.
constexpr double kLargestPage = 14400;

void put(Interpreter& interpreter, const Object& dictionary, std::string_view key, const Object& value) {
  interpreter.memory().put(*dictionary.asDictionary(), interpreter.memory().name(key), value);
}

Object numberArray(Interpreter& interpreter, std::initializer_list<double> numbers) {
  std::vector<Object> elements;
  for (const double number : numbers) elements.push_back(realOf(number));
  return interpreter.memory().newArray(elements);
}

}  // namespace

PageDevice::PageDevice(Interpreter& interpreter, Graphics& graphics, PdfDocument& document)
    : interpreter_(interpreter),
      graphics_(graphics),
      document_(document),
      content_(document.file(), {},
               [this](std::string_view part) {
                 contents_.push_back(document_.file().addSharedStream("", part, StreamData::kDeflate));
               }),
      canvas_(std::make_shared<Canvas>(&content_)),
      forms_(graphics) {}

Object PageDevice::makeParameters(double width, double height) {
  const bool wasGlobal = interpreter_.memory().isGlobal();
  interpreter_.memory().setGlobal(true);
  const Object parameters = interpreter_.memory().newDictionary(32);
  const auto set = [&](std::string_view key, const Object& value) {
    put(interpreter_, parameters, key, value);
  };
  set("PageSize", numberArray(interpreter_, {width, height}));
  set("HWResolution", numberArray(interpreter_, {kResolution, kResolution}));
  set("ImagingBBox", Object::null());
  set("Margins", numberArray(interpreter_, {0, 0}));
  set("PageOffset", numberArray(interpreter_, {0, 0}));
  set("Orientation", Object::integer(0));
  set("NumCopies", Object::null());
  set("Duplex", Object::boolean(false));
  set("Tumble", Object::boolean(false));
  set("Collate", Object::boolean(false));
  set("ManualFeed", Object::boolean(false));
  set("NegativePrint", Object::boolean(false));
  set("MirrorPrint", Object::boolean(false));
  set("OutputDevice", Object::literalName(interpreter_.memory().name("pdf")));
  set("ProcessColorModel", Object::literalName(interpreter_.memory().name("DeviceRGB")));
  set("Separations", Object::boolean(false));
  set("Policies", interpreter_.memory().newDictionary(4));
  set("InputAttributes", interpreter_.memory().newDictionary(4));
  set("OutputAttributes", interpreter_.memory().newDictionary(4));
  set("PageCount", Object::integer(0));
  interpreter_.memory().setGlobal(wasGlobal);
  return parameters;
}

void PageDevice::start(double width, double height) {
  initialParameters_ = makeParameters(width, height);
  install(initialParameters_, false);
}

void PageDevice::startCropped(const Box& box) {
  crop_ = box;
  // What lies outside the paper but inside the box is to be seen, too.
  install(graphics_.state().pageDevice, false);
}

Object PageDevice::parameter(std::string_view key) const {
  const Object& parameters = graphics_.state().pageDevice;
  if (!parameters.isDictionary()) return {};
  const Object* value = parameters.asDictionary()->find(interpreter_.memory().name(key));
  return value == nullptr ? Object() : *value;
}

Box PageDevice::pageBox() const {
  if (crop_) return *crop_;
  const std::vector<double> size = numbersOf(parameter("PageSize"));
  return {0, 0, size[0], size[1]};
}

double PageDevice::resolution(const Object& parameters) const {
  const Object* value = parameters.asDictionary()->find(interpreter_.memory().name("HWResolution"));
  if (value == nullptr || value->isNull()) return kResolution;
  const std::vector<double> both = numbersOf(*value);
  if (both.size() != 2 || !(both[0] > 0) || !(both[1] > 0)) raise(ErrorName::kRangeCheck);
  return both[0];
}

ContentWriter::Settings PageDevice::contentSettings() const {
  const Device& device = *graphics_.state().device;
  const double scale = kPointsPerInch / (resolution(graphics_.state().pageDevice));
  return {Matrix::scaling(scale, scale), device.area, true};
}

// Makes the device for a set of parameters, with an empty page.
void PageDevice::install(const Object& parameters, bool runsProcedures) {
  const double scale = resolution(parameters) / kPointsPerInch;
  graphics_.state().pageDevice = parameters;
  auto device = std::make_shared<Device>();
  device->defaultMatrix = Matrix::scaling(scale, scale);
  device->area = transformed(pageBox(), device->defaultMatrix);
  device->canvas = canvas_;
  graphics_.setDevice(device);
  beginPage();
  if (!runsProcedures) return;
  if (const Object procedure = parameter("Install"); procedure.isProcedure()) {
    interpreter_.runAndWait(procedure);
    // The matrix as that procedure leaves it is the device's own.
    auto changed = std::make_shared<Device>(*graphics_.state().device);
    changed->defaultMatrix = graphics_.state().ctm;
    graphics_.state().device = std::move(changed);
    graphics_.initGraphics();
  }
  callBeginPage();
}

// Drops what has been painted.
void PageDevice::beginPage() {
  content_.reset(contentSettings());
  contents_.clear();
  canvas_->textDirections().clear();
}

void PageDevice::setPageDevice(const Object& request) {
  const Dictionary& wanted = *request.asDictionary();
  if (!wanted.isReadable()) raise(ErrorName::kInvalidAccess);
  if (const Object* size = wanted.find(interpreter_.memory().name("PageSize"));
      size != nullptr && !size->isNull()) {
    const std::vector<double> numbers = numbersOf(*size);
    if (numbers.size() != 2) raise(ErrorName::kRangeCheck);
    if (!(numbers[0] > 0) || !(numbers[1] > 0) || numbers[0] > kLargestPage || numbers[1] > kLargestPage) {
      raise(ErrorName::kConfigurationError);
    }
  }
  if (const Object* value = wanted.find(interpreter_.memory().name("HWResolution"));
      value != nullptr && !value->isNull()) {
    resolution(request);
  }
  const Object& before = graphics_.state().pageDevice;
  const bool wasGlobal = interpreter_.memory().isGlobal();
  interpreter_.memory().setGlobal(false);
  const Object merged = interpreter_.memory().newDictionary(32);
  interpreter_.memory().setGlobal(wasGlobal);
  for (const Object* source : {&before, &request}) {
    for (const Dictionary::Entry& entry : source->asDictionary()->entries()) {
      if (entry.key.isNull()) continue;
      // Null asks for what there is.
      if (source == &request && entry.value.isNull()) continue;
      interpreter_.memory().put(*merged.asDictionary(), entry.key, entry.value);
    }
  }
  install(merged, true);
}

// A read-only copy. Its values may be local, so it is, too.
Object PageDevice::currentPageDevice() {
  const bool wasGlobal = interpreter_.memory().isGlobal();
  interpreter_.memory().setGlobal(false);
  const bool isNull = graphics_.state().device->isNull;
  const Dictionary& source = *graphics_.state().pageDevice.asDictionary();
  const Object copy = interpreter_.memory().newDictionary(isNull ? 1 : source.length() + 1);
  interpreter_.memory().setGlobal(wasGlobal);
  if (isNull) return copy;
  for (const Dictionary::Entry& entry : source.entries()) {
    if (!entry.key.isNull()) interpreter_.memory().put(*copy.asDictionary(), entry.key, entry.value);
  }
  put(interpreter_, copy, "PageCount", Object::integer(static_cast<std::int64_t>(pagesShown_)));
  interpreter_.memory().setAccess(*copy.asDictionary(), Access::kReadOnly);
  return copy;
}

// Whether the page is to be shown: 0 for showpage, 1 for copypage.
bool PageDevice::callEndPage(int reason) {
  const Object procedure = parameter("EndPage");
  if (!procedure.isProcedure()) return true;
  ObjectStack& operands = interpreter_.operands();
  operands.require(2);
  operands.push(Object::integer(static_cast<std::int64_t>(pagesShown_)));
  operands.push(Object::integer(reason));
  interpreter_.runAndWait(procedure);
  if (operands.depth() == 0) raise(ErrorName::kStackUnderflow);
  if (!operands.top().is(Type::kBoolean)) raise(ErrorName::kTypeCheck);
  const bool shows = operands.top().asBoolean();
  operands.pop();
  return shows;
}

void PageDevice::callBeginPage() {
  const Object procedure = parameter("BeginPage");
  if (!procedure.isProcedure()) return;
  interpreter_.operands().push(Object::integer(static_cast<std::int64_t>(pagesShown_)));
  interpreter_.runAndWait(procedure);
}

void PageDevice::setPageEntry(std::string_view key, std::string_view value, bool isForAllPages) {
  auto& entries = isForAllPages ? allPagesEntries_ : pageEntries_;
  std::erase_if(entries, [key](const PageEntry& entry) { return entry.key == key; });
  entries.push_back({std::string(key), std::string(value)});
}

void PageDevice::setCropBox(const Box& box, bool isForAllPages) {
  (isForAllPages ? allPagesCropBox_ : pageCropBox_) = box;
}

// In degrees, with the clock. What the job says with pdfmark is left alone.
int PageDevice::turnOfPage(const Box& page) const {
  const auto isTurn = [](const PageEntry& entry) { return entry.key == "Rotate"; };
  const bool isSaid =
      std::ranges::any_of(pageEntries_, isTurn) || std::ranges::any_of(allPagesEntries_, isTurn);
  if (!turnsPages_ || isSaid) return 0;
  const bool isWide = page.right - page.left > page.top - page.bottom;
  return orientation_.angle(canvas_->textDirections().most(), isWide).value_or(0);
}

// The page as it stands goes into the document; what has been painted stays.
void PageDevice::emitPage() {
  content_.finish();
  if (!content_.text().empty()) {
    contents_.push_back(document_.file().addSharedStream("", content_.text(), StreamData::kDeflate));
    content_.text().clear();
  }
  PageParts parts;
  parts.mediaBox = pageBox();
  parts.cropBox = pageCropBox_ ? pageCropBox_ : allPagesCropBox_;
  parts.contents = contents_;
  parts.resources = content_.resources().text();
  parts.annotations = std::exchange(annotations_, {});
  DictionaryText entries;
  for (const PageEntry& entry : allPagesEntries_) {
    const bool isOverruled = std::any_of(pageEntries_.begin(), pageEntries_.end(),
                                         [&](const PageEntry& own) { return own.key == entry.key; });
    if (!isOverruled) entries.entry(entry.key, entry.value);
  }
  for (const PageEntry& entry : pageEntries_) entries.entry(entry.key, entry.value);
  if (const int turn = turnOfPage(parts.mediaBox); turn != 0) entries.entry("Rotate", std::to_string(turn));
  parts.entries = entries.entries();
  pageEntries_.clear();
  pageCropBox_.reset();
  if (heldPage_) document_.addPage(*heldPage_);
  heldPage_.reset();
  if (holdsLastPage_) {
    heldPage_ = std::move(parts);
  } else {
    document_.addPage(parts);
  }
  ++pagesShown_;
  if (onPage_) onPage_(pagesShown_);
}

void PageDevice::showPage() {
  forms_.abandon();
  if (graphics_.state().device->isNull) {
    graphics_.initGraphics();
    return;
  }
  if (callEndPage(0)) emitPage();
  graphics_.initGraphics();
  beginPage();
  callBeginPage();
}

// As showpage, but for the graphics state, which stays.
void PageDevice::copyPage() {
  if (graphics_.state().device->isNull) return;
  if (callEndPage(1)) emitPage();
  beginPage();
  callBeginPage();
}

void PageDevice::erasePage() {
  if (graphics_.state().device->canvas == canvas_) beginPage();
}

void PageDevice::installNullDevice() {
  auto device = std::make_shared<Device>();
  device->canvas = std::make_shared<Canvas>(static_cast<ContentWriter*>(nullptr));
  device->area = {0, 0, 0, 0};
  device->isNull = true;
  graphics_.state().device = std::move(device);
  graphics_.initMatrix();
  graphics_.initClip();
}

void PageDevice::finish(bool showsRest) {
  if (showsRest && !(content_.isEmpty() && contents_.empty())) emitPage();
  if (!heldPage_) return;
  if (crop_) heldPage_->mediaBox = *crop_;
  document_.addPage(*heldPage_);
  heldPage_.reset();
}

}  // namespace quillpress::level3
