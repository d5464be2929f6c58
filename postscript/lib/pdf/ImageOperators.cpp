#include "postscript/lib/pdf/ImageOperators.h"

#include "postscript/lib/base/Ex.h"

namespace quillpress {

namespace {

const PostscriptObject* entryOf(const DictionaryObject& dictionary, std::string_view key) {
  return dictionary.lookup(key);
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
  if (source == nullptr) THROW_CONVERTER_EX("expecting datasource");
  const auto* width = as<IntegerObject>(entryOf(dictionary, "Width"));
  if (width == nullptr) THROW_CONVERTER_EX("expecting width");
  const auto* height = as<IntegerObject>(entryOf(dictionary, "Height"));
  if (height == nullptr) THROW_CONVERTER_EX("expecting height");
  const auto* bits = as<IntegerObject>(entryOf(dictionary, "BitsPerComponent"));
  if (bits == nullptr) THROW_CONVERTER_EX("expecting bitsPerComponent");
  const auto* decode = as<ArrayObject>(entryOf(dictionary, "Decode"));
  if (decode == nullptr) THROW_CONVERTER_EX("exepected deocde array in image dict");
  const auto components = static_cast<std::int32_t>(decode->count() / 2);
  setComponents(components);
  const auto* multiple = as<BooleanObject>(entryOf(dictionary, "MultipleDataSources"));
  if (multiple != nullptr && multiple->value) setDataSources(components);
  setSize(width->value, height->value, bits->value);
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
  if (operand->typeCode == TypeCode::kName) source = interpreter.dictionaries().lookup(*operand);
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
  // Kept: the blanks of this clause stand elsewhere than in the one of the other images.
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
