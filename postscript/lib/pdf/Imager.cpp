#include "postscript/lib/pdf/Imager.h"

#include <algorithm>
#include <array>

#include "postscript/lib/base/Ex.h"

namespace quillpress {

namespace {

// Room is made at once for images up to this size. A job may announce anything, so beyond it the data
// grows as it comes.
constexpr std::size_t kMaxReserved = std::size_t{64} << 20U;

// Kept: other numbers of components have no colour space here.
ColourSpace colourSpaceOf(std::int32_t components) {
  switch (components) {
    case 1:
      return ColourSpace::kGray;
    case 3:
      return ColourSpace::kRgb;
    case 4:
      return ColourSpace::kCmyk;
    default:
      return ColourSpace::kUnknown;
  }
}

}  // namespace

void Imager::reset() {
  inProgress_ = false;
  dataSourceCount_ = 1;
  components_ = 0;
  image_ = {};
  dataSource_ = nullptr;
  imageMatrix_ = nullptr;
}

void Imager::setSize(std::int32_t width, std::int32_t height, std::int32_t bitsPerComponent) {
  if (width < 0 || height < 0) THROW_EX("negative image width or height");
  image_.width = width;
  image_.height = height;
  image_.bitsPerComponent = bitsPerComponent;
}

void Imager::beginReading(Interpreter& interpreter, PostscriptObject& operatorObject) {
  interpreter.executionStack().push(&operatorObject);
  interpreter.executionStack().push(dataSource_);
  inProgress_ = true;
  dataSource_->executable = true;
  auto* array = as<ArrayObject>(dataSource_);
  if (array == nullptr) return;
  array->start();
  const auto count = static_cast<std::ptrdiff_t>(array->count());
  for (std::ptrdiff_t i = 0; i < count; ++i) {
    if (auto* element = as<ArrayObject>(array->element(i))) element->startIfProcedure();
  }
}

void Imager::gather(Interpreter& interpreter, PostscriptObject& operatorObject) {
  inProgress_ = false;
  image_.colourSpace = colourSpaceOf(components_);
  if (image_.colourSpace == ColourSpace::kUnknown) return;
  const std::size_t lengthBefore = image_.data.size();
  if (dataSourceCount_ == 1) {
    appendFromOneSource(interpreter);
  } else if (dataSourceCount_ == 3) {
    appendFromThreeSources(interpreter);
  } else {
    THROW_EX("unsupported image color seperation");
  }
  const std::int32_t needed = neededLength();
  if (needed < 0) THROW_EX("negative image data length");
  if (image_.data.size() < static_cast<std::size_t>(needed)) {
    if (dataSource_->typeCode == TypeCode::kString) THROW_EX("invalid data in image, excpecting proc");
    // An empty string is the end of the data; asking again would never end.
    if (image_.data.size() == lengthBefore) THROW_EX("image data source has run dry");
    image_.data.reserve(std::min(static_cast<std::size_t>(needed), kMaxReserved));
    beginReading(interpreter, operatorObject);
    return;
  }
  placeImage(converter, std::move(image_));
  reset();
}

// Kept: the product wraps at 32 bits, and rows are not padded to whole bytes.
std::int32_t Imager::neededLength() const {
  const std::int32_t samples = wrappingMultiply(wrappingMultiply(image_.width, image_.height), components_);
  return wrappingMultiply(samples, image_.bitsPerComponent) / 8;
}

void Imager::appendFromOneSource(Interpreter& interpreter) {
  const Ref<StringObject> string = interpreter.popStringObject();
  image_.filterText = imageFilterText(string->data().decodeFilters());
  image_.data.append(string->data().asHeld());
}

// Kept: the bytes of the last source come first in each sample.
void Imager::appendFromThreeSources(Interpreter& interpreter) {
  std::array<Ref<StringObject>, 3> strings;
  for (Ref<StringObject>& string : strings) string = interpreter.popStringObject();
  const std::size_t length = strings[0]->data().asHeld().size();
  const bool sameLength = std::ranges::all_of(
      strings, [length](const auto& string) { return string->data().asHeld().size() == length; });
  if (!sameLength) THROW_EX("exepecting strings to be same size");
  for (std::size_t i = 0; i < length; ++i) {
    for (const Ref<StringObject>& string : strings) image_.data.push_back(string->data().asHeld()[i]);
  }
}

}  // namespace quillpress
