#include "postscript/level3/text/StandardFonts.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "postscript/level3/fonts/Encodings.h"
#include "postscript/level3/fonts/Type1File.h"
#include "postscript/level3/graphics/MatrixOperands.h"
#include "postscript/level3/text/FontInstances.h"
#include "postscript/level3/text/Fonts.h"

namespace quillpress::level3 {

namespace {

// Makes the dictionary of a font file.
class DictionaryBuilder {
 public:
  explicit DictionaryBuilder(Interpreter& interpreter)
      : memory_(interpreter.memory()), interpreter_(interpreter) {}

  Object build(const Type1File& file, std::string_view fontName, const std::vector<double>& bounds) {
    const Object font = memory_.newDictionary(14);
    put(font, "FontName", Object::literalName(memory_.internName(fontName)));
    put(font, "FontType", Object::integer(1));
    put(font, "PaintType", Object::integer(0));
    const Object matrix = memory_.newArray(6);
    storeMatrix(interpreter_, matrix, file.data.matrix);
    put(font, "FontMatrix", matrix);
    put(font, "FontBBox", numbers(bounds));
    put(font, "FontInfo", memory_.newDictionary(4));
    put(font, "Encoding", encoding(file));
    put(font, "Private", privateDictionary(file.data.privateData));
    const Object charStrings = memory_.newDictionary(file.charstrings.size());
    for (const auto& [name, charstring] : file.charstrings)
      put(charStrings, name, memory_.newString(charstring));
    put(font, "CharStrings", charStrings);
    return font;
  }

 private:
  void put(const Object& dictionary, std::string_view key, const Object& value) {
    memory_.put(*dictionary.asDictionary(), memory_.name(key), value);
  }

  Object numbers(const std::vector<double>& values) {
    std::vector<Object> elements;
    elements.reserve(values.size());
    for (const double value : values) elements.push_back(Object::real(static_cast<float>(value)));
    return memory_.newArray(elements);
  }

  // The language's own array where the font has that encoding.
  Object encoding(const Type1File& file) {
    const EncodingTable& standard = standardEncoding();
    const auto isSame = [](std::string_view one, std::string_view other) {
      return one == other || (one.empty() && other == ".notdef");
    };
    if (std::equal(file.encoding.begin(), file.encoding.end(), standard.begin(), isSame)) {
      return *interpreter_.systemDictionary().find(memory_.name("StandardEncoding"));
    }
    std::vector<Object> names;
    for (const std::string& name : file.encoding) {
      names.push_back(Object::literalName(memory_.internName(name.empty() ? ".notdef" : name)));
    }
    return memory_.newArray(names);
  }

  Object privateDictionary(const CharstringPrivate& hints) {
    const Object dictionary = memory_.newDictionary(16);
    put(dictionary, "BlueValues", numbers(hints.blueValues));
    put(dictionary, "OtherBlues", numbers(hints.otherBlues));
    put(dictionary, "StdHW", numbers(hints.stdHW));
    put(dictionary, "StdVW", numbers(hints.stdVW));
    put(dictionary, "StemSnapH", numbers(hints.stemSnapH));
    put(dictionary, "StemSnapV", numbers(hints.stemSnapV));
    put(dictionary, "BlueScale", Object::real(static_cast<float>(hints.blueScale)));
    put(dictionary, "BlueShift", Object::real(static_cast<float>(hints.blueShift)));
    put(dictionary, "BlueFuzz", Object::real(static_cast<float>(hints.blueFuzz)));
    put(dictionary, "ForceBold", Object::boolean(hints.forceBold));
    put(dictionary, "lenIV", Object::integer(hints.lenIV));
    std::vector<Object> subroutines;
    for (const std::string& subroutine : hints.subrs) subroutines.push_back(memory_.newString(subroutine));
    put(dictionary, "Subrs", memory_.newArray(subroutines));
    return dictionary;
  }

  VirtualMemory& memory_;
  Interpreter& interpreter_;
};

std::string contentsOf(const std::filesystem::path& path) {
  std::error_code error;
  const auto size = static_cast<std::size_t>(std::filesystem::file_size(path, error));
  if (error) return {};
  std::string bytes(size, '\0');
  std::ifstream stream(path, std::ios::binary);
  stream.read(bytes.data(), static_cast<std::streamsize>(size));
  bytes.resize(static_cast<std::size_t>(stream.gcount()));
  return bytes;
}

// "/FontBBox {-168 -281 1000 924} readonly def", in the clear part of the file.
std::vector<double> boundsIn(std::string_view file) {
  std::vector<double> bounds(4, 0);
  const std::size_t key = file.find("/FontBBox");
  const std::size_t start = key == std::string_view::npos ? key : file.find_first_of("{[", key);
  if (start == std::string_view::npos) return bounds;
  std::istringstream numbers(std::string(file.substr(start + 1, 100)));
  for (double& bound : bounds) numbers >> bound;
  return bounds;
}

std::optional<Type1File> readFont(std::string_view bytes) {
  try {
    return readType1File(bytes);
  } catch (const FontError&) {
    return std::nullopt;
  }
}

// Built-in fonts outlive every save.
class GlobalScope {
 public:
  explicit GlobalScope(VirtualMemory& memory) : memory_(memory), wasGlobal_(memory.isGlobal()) {
    memory.setGlobal(true);
  }
  ~GlobalScope() { memory_.setGlobal(wasGlobal_); }
  GlobalScope(const GlobalScope&) = delete;
  GlobalScope& operator=(const GlobalScope&) = delete;

 private:
  VirtualMemory& memory_;
  bool wasGlobal_;
};

}  // namespace

std::optional<Object> standardFont(Interpreter& interpreter, std::string_view name) {
  Fonts& fonts = fontsOf(interpreter);
  const std::optional<SystemFont> system = fonts.systemFonts().find(name);
  if (!system) return std::nullopt;
  const std::string bytes = contentsOf(system->file);
  const std::optional<Type1File> file = readFont(bytes);
  if (!file) return std::nullopt;
  const GlobalScope scope(interpreter.memory());
  const Object font =
      DictionaryBuilder(interpreter)
          .build(*file, system->isExact ? name : std::string_view(system->name), boundsIn(bytes));
  defineFont(interpreter, "Font", Object::literalName(interpreter.memory().internName(name)), font);
  fonts.noteSubstitution(font, name, system->name);
  return font;
}

}  // namespace quillpress::level3
