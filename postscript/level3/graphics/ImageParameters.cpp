#include "postscript/level3/graphics/ImageParameters.h"

#include <algorithm>

#include "postscript/level3/graphics/MatrixOperands.h"

namespace quillpress::level3 {

namespace {

constexpr std::int64_t kMostRowsOrColumns = 1 << 24;

bool isDepth(std::int64_t bits) {
  return bits == 1 || bits == 2 || bits == 4 || bits == 8 || bits == 12;
}

std::vector<unsigned> readColourKey(const DictionaryReader& entries, const ImageLayout& layout) {
  const std::vector<double> given = entries.numbers("MaskColor");
  const auto components = static_cast<std::size_t>(layout.components);
  const bool isRange = given.size() == 2 * components;
  if (!isRange && given.size() != components) raise(ErrorName::kRangeCheck);
  const double highest = (1 << layout.bits) - 1;
  std::vector<unsigned> key;
  for (const double value : given) {
    const auto sample = static_cast<unsigned>(std::clamp(value, 0.0, highest));
    key.insert(key.end(), isRange ? 1 : 2, sample);
  }
  return key;
}

void requireSource(const Object& source) {
  if (!source.isFile() && !source.isString() && !source.isProcedure()) raise(ErrorName::kTypeCheck);
  if (source.isProcedure()) return;
  if (!source.isReadable()) raise(ErrorName::kInvalidAccess);
  if (source.isFile() && !fileOf(source).isReadable()) raise(ErrorName::kInvalidAccess);
}

void readSources(const DictionaryReader& entries, ImageParameters& parameters) {
  const Object& source = entries.require("DataSource");
  if (!entries.boolean("MultipleDataSources", false)) {
    parameters.sources = {source};
  } else {
    if (!source.isArray()) raise(ErrorName::kTypeCheck);
    if (source.length() != static_cast<std::uint32_t>(parameters.layout.components))
      raise(ErrorName::kRangeCheck);
    const std::span<const Object> elements = elementsOf(source);
    parameters.sources.assign(elements.begin(), elements.end());
  }
  requireImageSources(parameters.sources);
}

}  // namespace

ImageLayout imageLayout(std::int64_t width, std::int64_t height, int components, std::int64_t bits) {
  if (width < 0 || height < 0 || !isDepth(bits)) raise(ErrorName::kRangeCheck);
  if (width > kMostRowsOrColumns || height > kMostRowsOrColumns) raise(ErrorName::kLimitCheck);
  return {static_cast<int>(width), static_cast<int>(height), components, static_cast<int>(bits)};
}

void requireImageSources(std::span<const Object> sources) {
  std::for_each(sources.begin(), sources.end(), requireSource);
  const bool areAlike = std::all_of(sources.begin(), sources.end(), [&](const Object& source) {
    return source.isFile() == sources.front().isFile() && source.isString() == sources.front().isString();
  });
  if (!areAlike) raise(ErrorName::kTypeCheck);
}

ImageParameters readSourcelessDictionary(Interpreter& interpreter, const Object& dictionary, int components) {
  const DictionaryReader entries(interpreter, dictionary);
  const std::int64_t type = entries.integer("ImageType");
  if (type != 1 && type != 4) raise(ErrorName::kRangeCheck);
  ImageParameters parameters;
  parameters.layout = imageLayout(entries.integer("Width"), entries.integer("Height"), components,
                                  entries.integer("BitsPerComponent"));
  parameters.toImage = entries.matrix("ImageMatrix");
  inverseOf(parameters.toImage);
  parameters.decode = entries.numbers("Decode");
  if (parameters.decode.size() < 2 * static_cast<std::size_t>(components)) raise(ErrorName::kRangeCheck);
  parameters.decode.resize(2 * static_cast<std::size_t>(components));
  parameters.interpolate = entries.boolean("Interpolate", false);
  if (type == 4) parameters.colourKey = readColourKey(entries, parameters.layout);
  return parameters;
}

ImageParameters readImageDictionary(Interpreter& interpreter, const Object& dictionary, int components) {
  ImageParameters parameters = readSourcelessDictionary(interpreter, dictionary, components);
  readSources(DictionaryReader(interpreter, dictionary), parameters);
  return parameters;
}

}  // namespace quillpress::level3
