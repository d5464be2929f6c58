#include "postscript/level3/graphics/Shading.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <vector>

#include "postscript/level3/colour/ColourSpace.h"
#include "postscript/level3/graphics/DictionaryReader.h"
#include "postscript/level3/graphics/Functions.h"
#include "postscript/level3/graphics/Graphics.h"
#include "postscript/level3/pdf/PdfNumbers.h"

namespace quillpress::level3 {

namespace {

constexpr std::size_t kMostMeshBytes = 256UL * 1024 * 1024;

// Numbers of a mesh given as an array, as the bits that a PDF stream wants: 32 for each coordinate and 16 for
// each component, over the range that they have.
class MeshEncoder {
 public:
  MeshEncoder(std::int64_t type, std::size_t components) : type_(type), components_(components) {}

  // Calls `coordinate`, `component` or `flag` for each number.
  void encode(const std::vector<double>& numbers) {
    gatherRanges(numbers);
    walk(numbers, [this](Kind kind, double value) { put(kind, value); });
  }

  const std::string& data() const { return data_; }
  std::vector<double> decode() const {
    std::vector<double> decode{x_.least, x_.greatest, y_.least, y_.greatest};
    for (const Range& range : colour_) decode.insert(decode.end(), {range.least, range.greatest});
    return decode;
  }

 private:
  struct Range {
    double least = 0;
    double greatest = 1;
    bool isSet = false;
    void include(double value) {
      if (!isSet) least = greatest = value;
      isSet = true;
      least = std::min(least, value);
      greatest = std::max(greatest, value);
    }
    void widen() {
      if (greatest <= least) greatest = least + 1;
    }
  };
  struct Kind {
    enum class Role { kFlag, kX, kY, kComponent } role;
    std::size_t component = 0;
  };

  void gatherRanges(const std::vector<double>& numbers) {
    colour_.resize(components_);
    walk(numbers, [this](Kind kind, double value) {
      if (kind.role == Kind::Role::kX) x_.include(value);
      if (kind.role == Kind::Role::kY) y_.include(value);
      if (kind.role == Kind::Role::kComponent) colour_[kind.component].include(value);
    });
    x_.widen();
    y_.widen();
    for (Range& range : colour_) range.widen();
  }

  template <typename Visit>
  void walk(const std::vector<double>& numbers, Visit visit) {
    std::size_t next = 0;
    const auto take = [&](Kind kind) {
      if (next == numbers.size()) raise(ErrorName::kRangeCheck);
      visit(kind, numbers[next++]);
    };
    while (next < numbers.size()) {
      std::size_t points = 1;
      std::size_t colours = 1;
      if (type_ != 5) {
        const double flag = numbers[next];
        take({Kind::Role::kFlag});
        if (type_ >= 6) {
          points = (flag == 0 ? 12U : 8U) + (type_ == 7 ? 4U : 0U);
          colours = flag == 0 ? 4 : 2;
        }
      }
      for (std::size_t point = 0; point < points; ++point) {
        take({Kind::Role::kX});
        take({Kind::Role::kY});
      }
      for (std::size_t colour = 0; colour < colours; ++colour) {
        for (std::size_t component = 0; component < components_; ++component) {
          take({Kind::Role::kComponent, component});
        }
      }
    }
  }

  void put(Kind kind, double value) {
    switch (kind.role) {
      case Kind::Role::kFlag:
        data_ += static_cast<char>(static_cast<int>(std::clamp(value, 0.0, 3.0)));
        break;
      case Kind::Role::kX:
        putScaled(value, x_, 4);
        break;
      case Kind::Role::kY:
        putScaled(value, y_, 4);
        break;
      case Kind::Role::kComponent:
        putScaled(value, colour_[kind.component], 2);
        break;
    }
  }

  void putScaled(double value, const Range& range, int bytes) {
    const double most = bytes == 4 ? 4294967295.0 : 65535.0;
    const double share = std::clamp((value - range.least) / (range.greatest - range.least), 0.0, 1.0);
    const auto level = static_cast<std::uint64_t>(std::llround(share * most));
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
      data_ += static_cast<char>(level >> shift & 0xFF);
  }

  std::int64_t type_;
  std::size_t components_;
  Range x_;
  Range y_;
  std::vector<Range> colour_;
  std::string data_;
};

class ShadingWriter {
 public:
  ShadingWriter(Interpreter& interpreter, const Object& dictionary, PdfFile& file)
      : interpreter_(interpreter), entries_(interpreter, dictionary), file_(file) {}

  ShadingObject write() {
    type_ = entries_.integer("ShadingType");
    if (type_ < 1 || type_ > 7) raise(ErrorName::kRangeCheck);
    text_.integer("ShadingType", type_);
    space_ = graphicsOf(interpreter_).colourSpace(entries_.require("ColorSpace"));
    if (space_->kind() == ColourSpace::Kind::kPattern) raise(ErrorName::kRangeCheck);
    text_.entry("ColorSpace", space_->pdfText(file_));
    ShadingObject result;
    if (entries_.find("BBox") != nullptr) {
      result.bounds = entries_.box("BBox");
      text_.box("BBox", *result.bounds);
    }
    if (entries_.find("Background") != nullptr) writeBackground();
    const bool hasFunction = writeFunction();
    // Without a function the numbers of a mesh are the colours themselves.
    if (type_ <= 3 && !hasFunction) raise(ErrorName::kUndefined);
    switch (type_) {
      case 1:
        writePlane();
        break;
      case 2:
      case 3:
        writeAxis();
        break;
      default:
        result.number = writeMesh(hasFunction);
        return result;
    }
    result.number = file_.addShared(text_.text());
    return result;
  }

 private:
  void writeBackground() {
    std::vector<double> colour = entries_.numbers("Background");
    if (colour.size() != space_->componentCount()) raise(ErrorName::kRangeCheck);
    for (std::size_t index = 0; index < colour.size(); ++index) {
      colour[index] = space_->pdfComponent(index, colour[index]);
    }
    text_.numbers("Background", colour);
  }

  bool writeFunction() {
    const Object* function = entries_.find("Function");
    if (function == nullptr) return false;
    std::string text;
    if (function->isArray()) {
      text = "[";
      for (const Object& each : elementsOf(*function)) {
        if (text.size() > 1) text += ' ';
        appendReference(text, writeFunctionDictionary(interpreter_, each, file_));
      }
      text += "]";
    } else {
      appendReference(text, writeFunctionDictionary(interpreter_, *function, file_));
    }
    text_.entry("Function", text);
    return true;
  }

  void writePlane() {
    text_.numbers("Domain", entries_.numbers("Domain", {0, 1, 0, 1}));
    if (entries_.find("Matrix") != nullptr) text_.matrix("Matrix", entries_.matrix("Matrix"));
  }

  void writeAxis() {
    const std::vector<double> coordinates = entries_.numbers("Coords");
    if (coordinates.size() != (type_ == 2 ? 4U : 6U)) raise(ErrorName::kRangeCheck);
    if (type_ == 3 && (coordinates[2] < 0 || coordinates[5] < 0)) raise(ErrorName::kRangeCheck);
    text_.numbers("Coords", coordinates);
    if (entries_.find("Domain") != nullptr) text_.numbers("Domain", entries_.numbers("Domain"));
    if (const Object* extend = entries_.find("Extend")) writeExtend(*extend);
  }

  void writeExtend(const Object& extend) {
    if (!extend.isArray()) raise(ErrorName::kTypeCheck);
    if (extend.length() != 2) raise(ErrorName::kRangeCheck);
    for (const Object& each : elementsOf(extend)) {
      if (!each.is(Type::kBoolean)) raise(ErrorName::kTypeCheck);
    }
    const auto word = [&](std::uint32_t index) {
      return extend.elements()[index].asBoolean() ? "true" : "false";
    };
    text_.entry("Extend", std::string("[") + word(0) + " " + word(1) + "]");
  }

  ObjectNumber writeMesh(bool hasFunction) {
    if (type_ == 5) {
      const std::int64_t perRow = entries_.integer("VerticesPerRow");
      if (perRow < 2) raise(ErrorName::kRangeCheck);
      text_.integer("VerticesPerRow", perRow);
    }
    const Object& source = entries_.require("DataSource");
    if (source.isArray()) return writeArrayMesh(source, hasFunction ? 1 : space_->componentCount());
    text_.integer("BitsPerCoordinate", entries_.integer("BitsPerCoordinate"));
    text_.integer("BitsPerComponent", entries_.integer("BitsPerComponent"));
    if (type_ != 5) text_.integer("BitsPerFlag", entries_.integer("BitsPerFlag"));
    text_.numbers("Decode", entries_.numbers("Decode"));
    const std::string data = bytesOfSource(interpreter_, source, kMostMeshBytes);
    return file_.addSharedStream(text_.entries(), data, StreamData::kDeflate);
  }

  ObjectNumber writeArrayMesh(const Object& source, std::size_t components) {
    MeshEncoder encoder(type_, components);
    encoder.encode(numbersOf(source));
    text_.integer("BitsPerCoordinate", 32).integer("BitsPerComponent", 16);
    if (type_ != 5) text_.integer("BitsPerFlag", 8);
    text_.numbers("Decode", encoder.decode());
    return file_.addSharedStream(text_.entries(), encoder.data(), StreamData::kDeflate);
  }

  Interpreter& interpreter_;
  DictionaryReader entries_;
  PdfFile& file_;
  DictionaryText text_;
  ColourSpacePointer space_;
  std::int64_t type_ = 0;
};

}  // namespace

ShadingObject writeShading(Interpreter& interpreter, const Object& dictionary, PdfFile& file) {
  return ShadingWriter(interpreter, dictionary, file).write();
}

}  // namespace quillpress::level3
