#include "postscript/level3/colour/SpecialSpaces.h"

#include <algorithm>
#include <cmath>

#include "postscript/level3/colour/Procedures.h"
#include "postscript/level3/pdf/PdfNumbers.h"

namespace quillpress::level3 {

namespace {

// Samples of a function that PDF's calculator cannot run: many for one input, few for each of many.
std::size_t samplesFor(std::size_t inputs) {
  constexpr std::array<std::size_t, 5> kSamplesAlong{256, 33, 13, 7, 5};
  return inputs <= kSamplesAlong.size() ? kSamplesAlong[inputs - 1] : (inputs <= 8 ? 3 : 2);
}

// More would take longer than anyone waits.
constexpr std::size_t kMostInputsToSample = 12;

std::string rangesOf(const ColourSpace& space) {
  std::string text = "[";
  for (std::size_t index = 0; index < space.componentCount(); ++index) {
    const auto [least, greatest] = space.range(index);
    if (index > 0) text += ' ';
    appendNumber(text, space.pdfComponent(index, least), 4);
    text += ' ';
    appendNumber(text, space.pdfComponent(index, greatest), 4);
  }
  return text + "]";
}

std::string unitRanges(std::size_t count) {
  std::string text = "[";
  for (std::size_t index = 0; index < count; ++index) text += index == 0 ? "0 1" : " 0 1";
  return text + "]";
}

// Whether the space's numbers are the same in PDF, so that a calculator function can be passed on.
bool countsAlike(const ColourSpace& space) {
  for (std::size_t index = 0; index < space.componentCount(); ++index) {
    const auto [least, greatest] = space.range(index);
    if (space.pdfComponent(index, least) != least || space.pdfComponent(index, greatest) != greatest)
      return false;
  }
  return true;
}

void appendSample(std::string& data, double value, double least, double greatest) {
  const double share = greatest > least ? std::clamp((value - least) / (greatest - least), 0.0, 1.0) : 0.0;
  const auto level = static_cast<unsigned>(std::lround(share * 65535));
  data += static_cast<char>(level >> 8 & 0xFF);
  data += static_cast<char>(level & 0xFF);
}

std::string sampledFunction(Interpreter& interpreter, const Object& procedure, std::size_t inputs,
                            const ColourSpace& alternative) {
  if (inputs > kMostInputsToSample) raise(ErrorName::kLimitCheck);
  const std::size_t samples = samplesFor(inputs);
  const std::size_t outputs = alternative.componentCount();
  std::size_t total = 1;
  for (std::size_t index = 0; index < inputs; ++index) total *= samples;

  std::string data;
  std::vector<double> point(inputs);
  std::vector<double> result(outputs);
  for (std::size_t number = 0; number < total; ++number) {
    // The first input varies fastest.
    std::size_t rest = number;
    for (double& input : point) {
      input = static_cast<double>(rest % samples) / static_cast<double>(samples - 1);
      rest /= samples;
    }
    evaluate(interpreter, procedure, point, result);
    for (std::size_t index = 0; index < outputs; ++index) {
      const auto [least, greatest] = alternative.range(index);
      appendSample(data, result[index], least, greatest);
    }
  }

  DictionaryText entries;
  entries.integer("FunctionType", 0)
      .entry("Domain", unitRanges(inputs))
      .entry("Range", rangesOf(alternative));
  std::string size = "[";
  for (std::size_t index = 0; index < inputs; ++index) {
    if (index > 0) size += ' ';
    appendInteger(size, static_cast<std::int64_t>(samples));
  }
  entries.entry("Size", size + "]").integer("BitsPerSample", 16);
  return entries.entries() + "\n" + data;
}

}  // namespace

void IndexedSpace::clamp(std::span<float> components) const {
  NamedColourSpace::clamp(components);
  components[0] = std::floor(components[0]);
}

void IndexedSpace::trace(Tracer& tracer) const {
  ColourSpace::trace(tracer);
  base_->trace(tracer);
}

std::string IndexedSpace::definition(PdfFile& file) const {
  std::string text = "[/Indexed";
  const std::string base = base_->pdfText(file);
  if (base.front() != '/') text += ' ';
  text += base + ' ';
  appendInteger(text, highest_);
  appendString(text, table_);
  return text + "]";
}

ColourSpace::Components InkSpace::initialColour() const {
  Components colour{};
  std::fill_n(colour.begin(), componentCount(), 1.0F);
  return colour;
}

void InkSpace::trace(Tracer& tracer) const {
  ColourSpace::trace(tracer);
  alternative_->trace(tracer);
}

std::string InkSpace::definition(PdfFile& file) const {
  std::string text = kind() == Kind::kSeparation ? "[/Separation" : "[/DeviceN[";
  for (const std::string& name : names_) appendName(text, name);
  if (kind() == Kind::kDeviceN) text += ']';
  const std::string alternative = alternative_->pdfText(file);
  if (alternative.front() != '/') text += ' ';
  text += alternative + ' ';
  appendReference(text, writeFunction(tintTransform_, file));
  return text + "]";
}

std::string tintFunction(Interpreter& interpreter, const Object& procedure, std::size_t inputs,
                         const ColourSpace& alternative) {
  const std::string calculator =
      countsAlike(alternative) ? calculatorText(interpreter, procedure) : std::string();
  if (calculator.empty()) return sampledFunction(interpreter, procedure, inputs, alternative);
  DictionaryText entries;
  entries.integer("FunctionType", 4)
      .entry("Domain", unitRanges(inputs))
      .entry("Range", rangesOf(alternative));
  return entries.entries() + "\n" + calculator;
}

ObjectNumber writeFunction(const std::string& function, PdfFile& file) {
  const std::size_t cut = function.find('\n');
  const std::string_view text(function);
  return file.addSharedStream(text.substr(0, cut), text.substr(cut + 1), StreamData::kDeflate);
}

std::string PatternSpace::pdfText(PdfFile& file) const {
  if (!base_) return "/Pattern";
  std::string text;
  appendReference(text, object(file));
  return text;
}

void PatternSpace::clamp(std::span<float> components) const {
  if (base_) base_->clamp(components);
}

void PatternSpace::trace(Tracer& tracer) const {
  ColourSpace::trace(tracer);
  if (base_) base_->trace(tracer);
}

ObjectNumber PatternSpace::object(PdfFile& file) const {
  const std::string base = base_->pdfText(file);
  return file.addShared("[/Pattern" + std::string(base.front() == '/' ? "" : " ") + base + "]");
}

}  // namespace quillpress::level3
