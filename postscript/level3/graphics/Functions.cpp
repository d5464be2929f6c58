#include "postscript/level3/graphics/Functions.h"

#include <algorithm>

#include "postscript/level3/graphics/DictionaryReader.h"
#include "postscript/level3/interpreter/File.h"
#include "postscript/level3/pdf/PdfNumbers.h"

namespace quillpress::level3 {

namespace {

constexpr int kDeepestNesting = 8;
constexpr std::size_t kMostSampleBytes = 64UL * 1024 * 1024;
constexpr int kFunctionPlaces = 6;

class FunctionWriter {
 public:
  FunctionWriter(Interpreter& interpreter, PdfFile& file) : interpreter_(interpreter), file_(file) {}

  ObjectNumber write(const Object& dictionary, int depth) {
    if (depth > kDeepestNesting) raise(ErrorName::kLimitCheck);
    const DictionaryReader entries(interpreter_, dictionary);
    const std::int64_t type = entries.integer("FunctionType");
    DictionaryText text;
    text.integer("FunctionType", type);
    const std::vector<double> domain = entries.numbers("Domain");
    if (domain.empty() || domain.size() % 2 != 0) raise(ErrorName::kRangeCheck);
    text.numbers("Domain", domain, kFunctionPlaces);
    if (entries.find("Range") != nullptr) text.numbers("Range", entries.numbers("Range"), kFunctionPlaces);
    switch (type) {
      case 0:
        return writeSampled(entries, text, domain.size() / 2);
      case 2:
        return writeExponential(entries, text);
      case 3:
        return writeStitched(entries, text, depth);
      default:
        raise(ErrorName::kRangeCheck);
    }
  }

 private:
  ObjectNumber writeSampled(const DictionaryReader& entries, DictionaryText& text, std::size_t inputs) {
    const std::vector<double> range = entries.numbers("Range");
    const std::vector<double> size = entries.numbers("Size");
    const std::int64_t bits = entries.integer("BitsPerSample");
    if (size.size() != inputs || range.empty() || range.size() % 2 != 0 || bits < 1 || bits > 32) {
      raise(ErrorName::kRangeCheck);
    }
    const std::size_t outputs = range.size() / 2;
    double samples = static_cast<double>(outputs);
    for (const double count : size) {
      if (count < 1) raise(ErrorName::kRangeCheck);
      samples *= count;
    }
    const double needed = (samples * static_cast<double>(bits) + 7) / 8;
    if (needed > static_cast<double>(kMostSampleBytes)) raise(ErrorName::kLimitCheck);
    text.numbers("Size", size, kFunctionPlaces);
    text.integer("BitsPerSample", bits);
    for (const std::string_view key : {"Encode", "Decode"}) {
      if (entries.find(key) != nullptr) text.numbers(key, entries.numbers(key), kFunctionPlaces);
    }
    if (entries.integer("Order", 1) == 3) text.integer("Order", 3);
    const std::string data =
        bytesOfSource(interpreter_, entries.require("DataSource"), static_cast<std::size_t>(needed));
    if (data.size() < static_cast<std::size_t>(needed)) raise(ErrorName::kRangeCheck);
    return file_.addSharedStream(text.entries(), data, StreamData::kDeflate);
  }

  ObjectNumber writeExponential(const DictionaryReader& entries, DictionaryText& text) {
    text.numbers("C0", entries.numbers("C0", {0}), kFunctionPlaces);
    text.numbers("C1", entries.numbers("C1", {1}), kFunctionPlaces);
    text.number("N", entries.number("N"), kFunctionPlaces);
    return file_.addShared(text.text());
  }

  ObjectNumber writeStitched(const DictionaryReader& entries, DictionaryText& text, int depth) {
    const Object& functions = entries.require("Functions");
    if (!functions.isArray()) raise(ErrorName::kTypeCheck);
    if (functions.length() == 0) raise(ErrorName::kRangeCheck);
    const std::vector<double> bounds = entries.numbers("Bounds");
    const std::vector<double> encode = entries.numbers("Encode");
    if (bounds.size() + 1 != functions.length() || encode.size() != 2 * functions.length()) {
      raise(ErrorName::kRangeCheck);
    }
    std::string list = "[";
    for (const Object& function : elementsOf(functions)) {
      if (list.size() > 1) list += ' ';
      appendReference(list, write(function, depth + 1));
    }
    text.entry("Functions", list + "]");
    text.numbers("Bounds", bounds, kFunctionPlaces);
    text.numbers("Encode", encode, kFunctionPlaces);
    return file_.addShared(text.text());
  }

  Interpreter& interpreter_;
  PdfFile& file_;
};

}  // namespace

ObjectNumber writeFunctionDictionary(Interpreter& interpreter, const Object& dictionary, PdfFile& file) {
  return FunctionWriter(interpreter, file).write(dictionary, 0);
}

std::string bytesOfSource(Interpreter&, const Object& source, std::size_t most) {
  if (source.isString()) {
    if (!source.isReadable()) raise(ErrorName::kInvalidAccess);
    return std::string(textOf(source).substr(0, most));
  }
  if (!source.isFile()) raise(ErrorName::kTypeCheck);
  File& file = fileOf(source);
  if (!file.isReadable()) raise(ErrorName::kInvalidAccess);
  std::string bytes;
  ByteSource& stream = file.source();
  // A file that can be read again is read from its beginning, as a shading may be painted many times.
  if (stream.canSeek() && stream.position() != 0) stream.seek(0);
  while (bytes.size() < most && stream.refill()) {
    const Bytes block = stream.peek();
    const std::size_t count = std::min(block.size(), most - bytes.size());
    bytes.append(reinterpret_cast<const char*>(block.data()), count);
    stream.consume(count);
  }
  return bytes;
}

}  // namespace quillpress::level3
