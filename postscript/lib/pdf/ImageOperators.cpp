#include "postscript/lib/pdf/ImageOperators.h"

#include <algorithm>
#include <array>

#include "postscript/lib/base/Bounds.h"
#include "postscript/lib/base/Ex.h"

namespace quillpress {

namespace {

// Kept: other numbers of components have no colour space here (images/colorimage.ps).
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

std::int32_t integerEntry(const DictionaryObject& dictionary, std::string_view key, const char* message) {
  const auto* entry = dictionary.lookupAs<IntegerObject>(key);
  if (entry == nullptr) Postscript2Pdf::refuse(message);
  return entry->value;
}

// The single procedure of an array that holds nothing else; otherwise the source itself.
Ref<PostscriptObject> unwrapped(Ref<PostscriptObject> source) {
  const auto* array = as<ArrayObject>(source);
  if (array == nullptr || array->isProcedure() || array->count() != 1) return source;
  auto* inner = as<ArrayObject>(array->element(0));
  return inner != nullptr && inner->isProcedure() ? Ref<PostscriptObject>(inner) : source;
}

// The data sources of colorimage, in the program's order.
Ref<PostscriptObject> popSources(Interpreter& interpreter, std::int32_t count) {
  // With one source even several are one, and it may be a string.
  if (count == 1) return interpreter.operandStack().pop();
  ObjectStack& operands = interpreter.operandStack();
  while (count > 0 && static_cast<std::size_t>(count) > operands.count())
    operands.pop();  // throws in the end
  const Ref<ArrayObject> sources = interpreter.memory().newArray();
  for (std::int32_t i = count - 1; i >= 0; --i) sources->elements().push(operands.peek(i));
  for (std::int32_t i = 0; i < count; ++i) operands.pop();
  return sources;
}

// The string of a mask's data source: itself, or the first element of an array.
const StringObject* maskData(const PostscriptObject* source) {
  if (const auto* array = as<ArrayObject>(source)) source = array->element(0);
  return as<StringObject>(source);
}

}  // namespace

void Imager::reset() {
  inProgress_ = false;
  dataSourceCount_ = 1;
  components_ = 0;
  emptyStrings_ = 0;
  image_ = {};
  dataSource_ = nullptr;
  imageMatrix_ = nullptr;
}

// Before any data is asked for, since nothing could make the image right.
void Imager::setSize(std::int32_t width, std::int32_t height, std::int32_t bitsPerComponent) {
  if (width < 0 || height < 0) THROW_EX("negative image width or height");
  image_.width = width;
  image_.height = height;
  image_.bitsPerComponent = bitsPerComponent;
}

void Imager::beginReading(Interpreter& interpreter, PostscriptObject& operatorObject) {
  // Below the source, so that it runs again when the source has left its data.
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
  // The strings stay on the operand stack, and the next image begins afresh.
  if (image_.colourSpace == ColourSpace::kUnknown) return;
  const std::size_t lengthBefore = image_.data.size();
  if (dataSourceCount_ == 1) {
    appendFromOneSource(interpreter);
  } else if (dataSourceCount_ == 3) {
    appendFromThreeSources(interpreter);
  } else {
    // Kept: "seperation", as the field knows it (images/colorimage.ps).
    THROW_EX("unsupported image color seperation");
  }
  if (image_.data.size() > kMaxContent) THROW_EX("image data too long");
  const std::int32_t needed = neededLength();
  if (needed < 0) THROW_EX("negative image data length");
  if (image_.data.size() < static_cast<std::size_t>(needed)) {
    // Kept: "excpecting", as the field knows it (images/image.ps).
    if (dataSource_->typeCode == TypeCode::kString) THROW_EX("invalid data in image, excpecting proc");
    checkProgress(interpreter.parser(), image_.data.size() > lengthBefore);
    image_.data.reserve(std::min(static_cast<std::size_t>(needed), kMaxImageDataReserved));
    beginReading(interpreter, operatorObject);
    return;
  }
  // The data is moved, not copied: an image may be most of the memory.
  placeImage(converter, std::move(image_));
  reset();
}

// A source may yield an empty string before its data comes. One that goes on so without reading the job would
// be run for ever.
void Imager::checkProgress(const Parser& input, bool gotData) {
  const char* const position = input.remaining().data();
  const bool moved = position != inputAtLastRead_ || converter.callNumber() != callOfLastRead_;
  inputAtLastRead_ = position;
  callOfLastRead_ = converter.callNumber();
  emptyStrings_ = gotData || moved ? 0 : emptyStrings_;
  if (!gotData && ++emptyStrings_ >= kMaxEmptyImageStrings) THROW_EX("image data source has run dry");
}

// Kept: the product wraps at 32 bits, and rows are not padded to whole bytes (images/image.ps).
std::int32_t Imager::neededLength() const {
  const std::int32_t samples = wrappingMultiply(wrappingMultiply(image_.width, image_.height), components_);
  return wrappingMultiply(samples, image_.bitsPerComponent) / 8;
}

void Imager::appendFromOneSource(Interpreter& interpreter) {
  const Ref<StringObject> string = interpreter.popStringObject();
  image_.filterText = imageFilterText(string->data().decodeFilters());
  image_.data.append(string->data().asHeld());
}

// Kept: the bytes of the last source come first in each sample (images/colorimage.ps).
void Imager::appendFromThreeSources(Interpreter& interpreter) {
  // The last source was executed last, so its string is on top.
  std::array<Ref<StringObject>, 3> strings;
  for (Ref<StringObject>& string : strings) string = interpreter.popStringObject();
  const std::size_t length = strings[0]->data().asHeld().size();
  const bool sameLength = std::ranges::all_of(
      strings, [length](const auto& string) { return string->data().asHeld().size() == length; });
  // Kept: "exepecting", as the field knows it (images/colorimage.ps).
  if (!sameLength) THROW_EX("exepecting strings to be same size");
  for (std::size_t i = 0; i < length; ++i) {
    for (const Ref<StringObject>& string : strings) image_.data.push_back(string->data().asHeld()[i]);
  }
}

void ImageOperator::execute(Interpreter& interpreter) {
  if (inProgress()) {
    gather(interpreter, *this);
    return;
  }
  reset();
  Ref<PostscriptObject> top = interpreter.operandStack().pop();
  if (const auto* dictionary = as<DictionaryObject>(top)) {
    takeDictionary(*dictionary);
  } else {
    takeOperands(interpreter, std::move(top));
  }
  beginReading(interpreter, *this);
}

void ImageOperator::takeDictionary(const DictionaryObject& dictionary) {
  PostscriptObject* source = dictionary.lookup("DataSource");
  if (source == nullptr) Postscript2Pdf::refuse("expecting datasource");
  const std::int32_t width = integerEntry(dictionary, "Width", "expecting width");
  const std::int32_t height = integerEntry(dictionary, "Height", "expecting height");
  const std::int32_t bits = integerEntry(dictionary, "BitsPerComponent", "expecting bitsPerComponent");
  const auto* decode = dictionary.lookupAs<ArrayObject>("Decode");
  // Kept: "exepected deocde", as the field knows it (images/dictionary.ps).
  if (decode == nullptr) Postscript2Pdf::refuse("exepected deocde array in image dict");
  // Kept: two numbers of Decode a component; its values, and the image's ColorSpace, are not looked at
  // (images/dictionary.ps).
  const auto components = static_cast<std::int32_t>(decode->count() / 2);
  setComponents(components);
  const auto* multiple = dictionary.lookupAs<BooleanObject>("MultipleDataSources");
  if (multiple != nullptr && multiple->value) setDataSources(components);
  setSize(width, height, bits);
  setDataSource(source);
}

void ImageOperator::takeOperands(Interpreter& interpreter, Ref<PostscriptObject> source) {
  setDataSource(unwrapped(std::move(source)));
  setImageMatrix(interpreter.operandStack().pop<ArrayObject>(text));
  setComponents(componentCount(converter.state().colourSpace));
  const std::int32_t bits = interpreter.popIntegerObject()->value;
  const std::int32_t height = interpreter.popIntegerObject()->value;
  const std::int32_t width = interpreter.popIntegerObject()->value;
  setSize(width, height, bits);
}

void ColorimageOperator::execute(Interpreter& interpreter) {
  if (inProgress()) {
    gather(interpreter, *this);
    return;
  }
  reset();
  const std::int32_t components = interpreter.popIntegerObject()->value;
  const bool isMultiple = interpreter.popBooleanObject()->value;
  const std::int32_t sources = isMultiple ? components : 1;
  setComponents(components);
  setDataSources(sources);
  setDataSource(popSources(interpreter, sources));
  setImageMatrix(interpreter.operandStack().pop<ArrayObject>(text));
  const std::int32_t bits = interpreter.popIntegerObject()->value;
  const std::int32_t height = interpreter.popIntegerObject()->value;
  const std::int32_t width = interpreter.popIntegerObject()->value;
  setSize(width, height, bits);
  beginReading(interpreter, *this);
}

void ImagemaskOperator::execute(Interpreter& interpreter) {
  const Ref<PostscriptObject> operand = interpreter.operandStack().pop();
  Ref<PostscriptObject> source = operand;
  // Jobs of old drivers name the data; the dictionaries of the moment decide what it means.
  if (operand->typeCode == TypeCode::kName) source = interpreter.dictionaries().lookup(*operand);
  // Taken as it is, with no look at its length: the job says how large the mask is, and the reader
  // finds its end.
  const StringObject* samples = maskData(source.get());
  if (samples == nullptr) THROW_EX("Could not find image mask data source string");

  ObjectStack& operands = interpreter.operandStack();
  operands.pop<ArrayObject>(text);
  const bool polarity = operands.pop<BooleanObject>(text)->value;
  const std::int32_t height = operands.pop<IntegerObject>("imagemask height")->value;
  const std::int32_t width = operands.pop<IntegerObject>("imagemask width")->value;
  if (width < 0 || height < 0) THROW_EX("negative imagemask width or height");

  PageContent& content = converter.content();
  content.append("BI\n/W ");
  content.append(std::to_string(width));
  content.append(" /H ");
  content.append(std::to_string(height));
  content.append(" /BPC 1 /ImageMask true /Decode ");
  content.append(polarity ? "[1 0] " : "[0 1] ");
  // Kept: the blanks of this clause stand elsewhere than in the one of the other images
  // (images/imagemask.ps).
  if (!samples->data().decodeFilters().empty()) {
    content.append("/Filter [");
    for (const std::string& filter : samples->data().decodeFilters()) content.append("/" + filter + " ");
    content.append("] ");
  }
  content.append("\nID\n");
  content.append(samples->data().asHeld());
  content.append("\nEI\n");
}

}  // namespace quillpress
