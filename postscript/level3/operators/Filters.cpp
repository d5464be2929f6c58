#include "postscript/level3/operators/Filters.h"

#include <algorithm>

#include "postscript/level3/streams/Ascii85Filter.h"
#include "postscript/level3/streams/AsciiHexFilter.h"
#include "postscript/level3/streams/FlateFilter.h"
#include "postscript/level3/streams/MemoryStreams.h"
#include "postscript/level3/streams/NullEncoder.h"
#include "postscript/level3/streams/RunLengthFilter.h"
#include "postscript/level3/streams/SubFileDecoder.h"

namespace quillpress::level3 {

namespace {

using Operands = std::span<const Object>;

constexpr std::string_view kCloseSource = "CloseSource";
constexpr std::string_view kCloseTarget = "CloseTarget";

template <typename Filter>
SourcePointer decodePlainly(SourcePointer source, const FilterParameters& parameters, Operands /*operands*/) {
  return std::make_shared<Filter>(std::move(source), parameters.closing(kCloseSource));
}

template <typename Filter>
SinkPointer encodePlainly(SinkPointer target, const FilterParameters& parameters, Operands /*operands*/) {
  return std::make_shared<Filter>(std::move(target), parameters.closing(kCloseTarget));
}

SourcePointer decodeLzw(SourcePointer source, const FilterParameters& parameters, Operands /*operands*/) {
  const PredictorParameters predictor = parameters.predictor();
  return withPredictor(
      std::make_shared<LzwDecoder>(std::move(source), parameters.lzw(), parameters.closing(kCloseSource)),
      predictor);
}

SinkPointer encodeLzw(SinkPointer target, const FilterParameters& parameters, Operands /*operands*/) {
  const PredictorParameters predictor = parameters.predictor();
  return withPredictor(
      std::make_shared<LzwEncoder>(std::move(target), parameters.lzw(), parameters.closing(kCloseTarget)),
      predictor);
}

SourcePointer decodeFlate(SourcePointer source, const FilterParameters& parameters, Operands /*operands*/) {
  const PredictorParameters predictor = parameters.predictor();
  return withPredictor(std::make_shared<FlateDecoder>(std::move(source), parameters.closing(kCloseSource)),
                       predictor);
}

SinkPointer encodeFlate(SinkPointer target, const FilterParameters& parameters, Operands /*operands*/) {
  const PredictorParameters predictor = parameters.predictor();
  const int effort =
      parameters.integer("Effort", FlateEncoder::kDefaultEffort, FlateEncoder::kDefaultEffort, 9);
  return withPredictor(
      std::make_shared<FlateEncoder>(std::move(target), effort, parameters.closing(kCloseTarget)), predictor);
}

SourcePointer decodeCcitt(SourcePointer source, const FilterParameters& parameters, Operands /*operands*/) {
  return std::make_shared<CcittDecoder>(std::move(source), parameters.ccitt(),
                                        parameters.closing(kCloseSource));
}

SinkPointer encodeCcitt(SinkPointer target, const FilterParameters& parameters, Operands /*operands*/) {
  return std::make_shared<CcittEncoder>(std::move(target), parameters.ccitt(),
                                        parameters.closing(kCloseTarget));
}

SourcePointer decodeDct(SourcePointer source, const FilterParameters& parameters, Operands /*operands*/) {
  return std::make_shared<DctDecoder>(std::move(source), parameters.colorTransform(),
                                      parameters.closing(kCloseSource));
}

SinkPointer encodeDct(SinkPointer target, const FilterParameters& parameters, Operands /*operands*/) {
  return std::make_shared<DctEncoder>(std::move(target), parameters.dct(), parameters.closing(kCloseTarget));
}

SinkPointer encodeRunLength(SinkPointer target, const FilterParameters& parameters, Operands operands) {
  const std::int64_t recordSize = operands[0].asInteger();
  if (recordSize < 0) raise(ErrorName::kRangeCheck);
  return std::make_shared<RunLengthEncoder>(std::move(target), static_cast<std::size_t>(recordSize),
                                            parameters.closing(kCloseTarget));
}

// Count and text are two operands or stand in the dictionary.
SourcePointer decodeSubFile(SourcePointer source, const FilterParameters& parameters, Operands operands) {
  int count = 0;
  const Object* text = nullptr;
  if (operands.empty()) {
    count = parameters.integer("EODCount", std::nullopt, 0);
    text = parameters.find("EODString");
    if (text == nullptr) raise(ErrorName::kRangeCheck);
    if (!text->isString()) raise(ErrorName::kTypeCheck);
  } else {
    const std::int64_t operand = operands[0].asInteger();
    if (operand < 0 || operand > FilterParameters::kHighest) raise(ErrorName::kRangeCheck);
    count = static_cast<int>(operand);
    text = &operands[1];
  }
  if (!text->isReadable()) raise(ErrorName::kInvalidAccess);
  return std::make_shared<SubFileDecoder>(std::move(source), static_cast<std::uint64_t>(count), textOf(*text),
                                          parameters.closing(kCloseSource));
}

// One filter of those that a reusable stream decodes its data with.
SourcePointer decodeBy(SourcePointer source, const Object& name, const Object& dictionary,
                       Interpreter& interpreter) {
  if (!name.isName()) raise(ErrorName::kTypeCheck);
  if (!dictionary.isNull() && !dictionary.isDictionary()) raise(ErrorName::kTypeCheck);
  const FilterRow* const row = findFilter(name.asName()->text());
  if (row == nullptr || row->decode == nullptr) raise(ErrorName::kUndefined);
  const FilterParameters parameters(interpreter, dictionary.isNull() ? nullptr : dictionary.asDictionary(),
                                    false);
  return row->decode(std::move(source), parameters, {});
}

SourcePointer decodeBeforeReuse(SourcePointer source, const FilterParameters& parameters) {
  const Object* const filter = parameters.find("Filter");
  const Object* const dictionaries = parameters.find("DecodeParms");
  if (filter == nullptr || filter->isNull()) return source;
  if (!filter->isArray()) {
    return decodeBy(std::move(source), *filter, dictionaries == nullptr ? Object::null() : *dictionaries,
                    parameters.interpreter());
  }
  if (filter->length() > kDeepestChain) raise(ErrorName::kLimitCheck);
  for (std::uint32_t i = 0; i < filter->length(); ++i) {
    Object dictionary;
    if (dictionaries != nullptr && !dictionaries->isNull()) {
      if (!dictionaries->isArray()) raise(ErrorName::kTypeCheck);
      if (dictionaries->length() <= i) raise(ErrorName::kRangeCheck);
      dictionary = dictionaries->elements()[i];
    }
    source = decodeBy(std::move(source), filter->elements()[i], dictionary, parameters.interpreter());
  }
  return source;
}

SourcePointer decodeReusably(SourcePointer source, const FilterParameters& parameters,
                             Operands /*operands*/) {
  const FilterClosing closing = parameters.closing(kCloseSource);
  const SourcePointer plain = std::move(source);
  const SourcePointer decoded = decodeBeforeReuse(plain, parameters);
  SourcePointer result = reusable(*decoded);
  if (result == nullptr) raise(ErrorName::kIoError);
  if (closing == FilterClosing::kSourceOrTargetToo) plain->close();
  return result;
}

const FilterRow kFilters[] = {
    {"ASCIIHexDecode", {}, decodePlainly<AsciiHexDecoder>, nullptr},
    {"ASCIIHexEncode", {}, nullptr, encodePlainly<AsciiHexEncoder>},
    {"ASCII85Decode", {}, decodePlainly<Ascii85Decoder>, nullptr},
    {"ASCII85Encode", {}, nullptr, encodePlainly<Ascii85Encoder>},
    {"RunLengthDecode", {}, decodePlainly<RunLengthDecoder>, nullptr},
    {"RunLengthEncode", {Type::kInteger}, nullptr, encodeRunLength},
    {"LZWDecode", {}, decodeLzw, nullptr},
    {"LZWEncode", {}, nullptr, encodeLzw},
    {"FlateDecode", {}, decodeFlate, nullptr},
    {"FlateEncode", {}, nullptr, encodeFlate},
    {"CCITTFaxDecode", {}, decodeCcitt, nullptr},
    {"CCITTFaxEncode", {}, nullptr, encodeCcitt},
    {"DCTDecode", {}, decodeDct, nullptr},
    {"DCTEncode", {}, nullptr, encodeDct},
    {"SubFileDecode", {Type::kInteger, Type::kString}, decodeSubFile, nullptr},
    {"ReusableStreamDecode", {}, decodeReusably, nullptr},
    {"NullEncode", {}, nullptr, encodePlainly<NullEncoder>},
};

}  // namespace

std::span<const FilterRow> filters() {
  return kFilters;
}

const FilterRow* findFilter(std::string_view name) {
  const FilterRow* const row = std::find_if(std::begin(kFilters), std::end(kFilters),
                                            [&](const FilterRow& r) { return r.name == name; });
  return row == std::end(kFilters) ? nullptr : row;
}

}  // namespace quillpress::level3
