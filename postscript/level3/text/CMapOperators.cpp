#include <filesystem>

#include "postscript/level3/operators/Operands.h"
#include "postscript/level3/operators/Resources.h"
#include "postscript/level3/streams/FileStreams.h"
#include "postscript/level3/text/CMapReader.h"
#include "postscript/level3/text/FontData.h"
#include "postscript/level3/text/FontEntries.h"
#include "postscript/level3/text/Fonts.h"
#include "postscript/level3/text/TextOperators.h"

// The procedure set CIDInit, with which CMaps are written. Between a begin and its end, the entries lie on
// the operand stack above a mark.

namespace quillpress::level3 {

namespace {

constexpr std::string_view kMapKey = ".CodeMap";

// Where Debian's packages of character collections put their CMaps, by collection.
constexpr std::string_view kCMapFolders[] = {"/usr/share/poppler/cMap", "/usr/share/fonts/cmap"};

Object currentDictionary(Interpreter& interpreter) {
  return Object::dictionary(interpreter.dictionaries().top());
}

CMap* mapOf(Interpreter& interpreter, const Object& dictionary) {
  if (!dictionary.isDictionary()) return nullptr;
  const Object* const number = dictionary.asDictionary()->find(interpreter.memory().name(kMapKey));
  return number != nullptr && number->isInteger() ? fontsOf(interpreter).cmap(number->asInteger()) : nullptr;
}

// The map that is being written. Throws undefined when none is.
CMap& currentMap(Interpreter& interpreter) {
  CMap* const map = mapOf(interpreter, currentDictionary(interpreter));
  if (map == nullptr) raise(ErrorName::kUndefined);
  return *map;
}

void begincmap(Interpreter& interpreter) {
  VirtualMemory& memory = interpreter.memory();
  const std::int64_t number = fontsOf(interpreter).newCMap();
  memory.put(*interpreter.dictionaries().top(), memory.name(kMapKey), Object::integer(number));
}

void endcmap(Interpreter& interpreter) {
  currentMap(interpreter).finish();
}

// name ->
void usecmap(Interpreter& interpreter) {
  CMap& map = currentMap(interpreter);
  const Object used = findCMap(interpreter, interpreter.operands().top());
  map.use(cmapOf(interpreter, used));
  interpreter.operands().pop();
}

// fontNumber ->
void usefont(Interpreter& interpreter) {
  currentMap(interpreter).currentFont =
      static_cast<std::uint32_t>(countOf(interpreter.operands().top(), 255));
  interpreter.operands().pop();
}

// count ->
void beginEntries(Interpreter& interpreter) {
  countOf(interpreter.operands().top());
  interpreter.operands().top() = Object::mark();
}

std::string codeOf(const Object& object) {
  if (!object.isString()) raise(ErrorName::kTypeCheck);
  if (object.length() == 0 || object.length() > 4) raise(ErrorName::kRangeCheck);
  return std::string(textOf(object));
}

// mark entries ->      `fields` objects an entry, read by `add` from the first of them.
template <std::size_t kFields, typename Add>
void endEntries(Interpreter& interpreter, Add add) {
  ObjectStack& operands = interpreter.operands();
  const std::size_t count = countToMark(interpreter);
  if (count % kFields != 0) raise(ErrorName::kRangeCheck);
  CMap& map = currentMap(interpreter);
  for (std::size_t entry = count; entry > 0; entry -= kFields) {
    const auto field = [&](std::size_t index) -> const Object& { return operands.top(entry - 1 - index); };
    add(map, field);
  }
  operands.pop(count + 1);
}

void endCodespaces(Interpreter& interpreter) {
  endEntries<2>(interpreter, [](CMap& map, auto field) {
    map.addCodespace({codeOf(field(0)), codeOf(field(1))});
  });
}

CMap::Mapping mappingOf(const CMap& map, const Object& first, const Object& last) {
  CMap::Mapping mapping;
  mapping.range = {codeOf(first), codeOf(last)};
  if (mapping.range.first.size() != mapping.range.last.size()) raise(ErrorName::kRangeCheck);
  mapping.font = map.currentFont;
  return mapping;
}

// What a bf entry stands for: a name, or a code as a string or number.
void setBaseTarget(CMap::Mapping& mapping, const Object& target) {
  if (target.isName()) {
    mapping.target = CMap::Target::kName;
    mapping.name = target.asName();
    return;
  }
  mapping.target = CMap::Target::kCode;
  if (target.isInteger()) {
    mapping.first = static_cast<std::uint32_t>(target.asInteger());
    return;
  }
  for (const char byte : codeOf(target))
    mapping.first = mapping.first << 8 | static_cast<unsigned char>(byte);
}

template <CMap::Target kTarget>
void endRanges(Interpreter& interpreter) {
  endEntries<3>(interpreter, [](CMap& map, auto field) {
    CMap::Mapping mapping = mappingOf(map, field(0), field(1));
    mapping.target = kTarget;
    if (!field(2).isInteger()) raise(ErrorName::kTypeCheck);
    mapping.first = static_cast<std::uint32_t>(countOf(field(2), 0xffff));
    map.add(std::move(mapping));
  });
}

template <CMap::Target kTarget>
void endCharacters(Interpreter& interpreter) {
  endEntries<2>(interpreter, [](CMap& map, auto field) {
    CMap::Mapping mapping = mappingOf(map, field(0), field(0));
    mapping.target = kTarget;
    if (!field(1).isInteger()) raise(ErrorName::kTypeCheck);
    mapping.first = static_cast<std::uint32_t>(countOf(field(1), 0xffff));
    map.add(std::move(mapping));
  });
}

void endBaseCharacters(Interpreter& interpreter) {
  endEntries<2>(interpreter, [](CMap& map, auto field) {
    CMap::Mapping mapping = mappingOf(map, field(0), field(0));
    setBaseTarget(mapping, field(1));
    map.add(std::move(mapping));
  });
}

// The target is the first code's, or an array with one for each code.
void endBaseRanges(Interpreter& interpreter) {
  endEntries<3>(interpreter, [](CMap& map, auto field) {
    CMap::Mapping mapping = mappingOf(map, field(0), field(1));
    if (!field(2).isArray()) {
      setBaseTarget(mapping, field(2));
      map.add(std::move(mapping));
      return;
    }
    std::string code = mapping.range.first;
    for (const Object& target : elementsOf(field(2))) {
      CMap::Mapping one = mapping;
      one.range = {code, code};
      setBaseTarget(one, target);
      map.add(std::move(one));
      code.back() = static_cast<char>(code.back() + 1);
    }
  });
}

// Fonts composed by another matrix or rearranged are taken as they are.
// fontName array ->   fontNumber|name ->
void beginRearrangedFont(Interpreter& interpreter) {
  interpreter.operands().pop(2);
}
void beginUseMatrix(Interpreter& interpreter) {
  interpreter.operands().pop();
}
// matrix ->
void endUseMatrix(Interpreter& interpreter) {
  interpreter.operands().pop();
}
void nothing(Interpreter& /*interpreter*/) {}

struct SetRow {
  std::string_view name;
  std::string_view operands;
  OperatorFunction function;
};

constexpr SetRow kCMapOperators[] = {
    {"begincmap", "", begincmap},
    {"endcmap", "", endcmap},
    {"usecmap", "name", usecmap},
    {"usefont", "int", usefont},
    {"begincodespacerange", "int", beginEntries},
    {"endcodespacerange", "", endCodespaces},
    {"begincidrange", "int", beginEntries},
    {"endcidrange", "", endRanges<CMap::Target::kCid>},
    {"begincidchar", "int", beginEntries},
    {"endcidchar", "", endCharacters<CMap::Target::kCid>},
    {"beginnotdefrange", "int", beginEntries},
    {"endnotdefrange", "", endRanges<CMap::Target::kNotdef>},
    {"beginnotdefchar", "int", beginEntries},
    {"endnotdefchar", "", endCharacters<CMap::Target::kNotdef>},
    {"beginbfrange", "int", beginEntries},
    {"endbfrange", "", endBaseRanges},
    {"beginbfchar", "int", beginEntries},
    {"endbfchar", "", endBaseCharacters},
    {"beginrearrangedfont", "any array", beginRearrangedFont},
    {"endrearrangedfont", "", nothing},
    {"beginusematrix", "any", beginUseMatrix},
    {"endusematrix", "array", endUseMatrix},
    {"StartData", "string int", startCidFontData},
};

// begincidrange and its like are one function under several names; internal operators are found by function,
// so the first name stands for all of them in errors.
Object setOperator(Interpreter& interpreter, const SetRow& row) {
  return interpreter.addInternal(row.name, row.function, row.operands);
}

Object identity(Interpreter& interpreter, std::string_view name) {
  VirtualMemory& memory = interpreter.memory();
  const Object dictionary = memory.newDictionary(8);
  const std::int64_t number = fontsOf(interpreter).newCMap();
  CMap& map = *fontsOf(interpreter).cmap(number);
  map.isIdentity = true;
  const auto put = [&](std::string_view key, const Object& value) {
    memory.put(*dictionary.asDictionary(), memory.name(key), value);
  };
  put(kMapKey, Object::integer(number));
  put("CMapName", Object::literalName(memory.name(name)));
  put("CMapType", Object::integer(1));
  put("WMode", Object::integer(name == "Identity-V" ? 1 : 0));
  return dictionary;
}

std::optional<std::filesystem::path> cmapFile(std::string_view name) {
  namespace fs = std::filesystem;
  if (name.empty() || name.find('/') != std::string_view::npos || name.front() == '.') return std::nullopt;
  for (const std::string_view folder : kCMapFolders) {
    std::error_code error;
    for (const auto& collection : fs::directory_iterator(folder, error)) {
      const fs::path file = collection.path() / name;
      if (fs::is_regular_file(file, error)) return file;
    }
  }
  return std::nullopt;
}

}  // namespace

const CMap& cmapOf(Interpreter& interpreter, const Object& dictionary) {
  const CMap* const map = mapOf(interpreter, dictionary);
  if (map == nullptr) raise(ErrorName::kInvalidFont);
  return *map;
}

Object findCMap(Interpreter& interpreter, const Object& key) {
  const Object name = interpreter.memory().keyOf(key);
  const Object* const known = Resources(interpreter).find(interpreter.memory().name("CMap"), name);
  if (known != nullptr) return *known;
  if (!name.isName()) raise(ErrorName::kUndefinedResource);
  return predefinedCMap(interpreter, name.asName()->text());
}

Object predefinedCMap(Interpreter& interpreter, std::string_view name) {
  VirtualMemory& memory = interpreter.memory();
  const bool wasGlobal = memory.isGlobal();
  if (name == "Identity-H" || name == "Identity-V") {
    memory.setGlobal(true);
    const Object map = identity(interpreter, name);
    Resources(interpreter).define(memory.name("CMap"), Object::literalName(memory.name(name)), map);
    memory.setGlobal(wasGlobal);
    return map;
  }
  const std::optional<std::filesystem::path> path = cmapFile(name);
  FileHandle file = path ? openFile(*path, "rb") : nullptr;
  if (!file) raise(ErrorName::kUndefinedResource);
  interpreter.runAndWait(interpreter.newFile(std::make_shared<FileSource>(std::move(file))).asExecutable());
  const Object* const found =
      Resources(interpreter).find(memory.name("CMap"), Object::literalName(memory.name(name)));
  if (found == nullptr) raise(ErrorName::kUndefinedResource);
  return *found;
}

void addCMapOperators(Interpreter& interpreter) {
  VirtualMemory& memory = interpreter.memory();
  memory.setGlobal(true);
  const Object set = memory.newDictionary(std::size(kCMapOperators));
  for (const SetRow& row : kCMapOperators) {
    memory.put(*set.asDictionary(), memory.name(row.name), setOperator(interpreter, row));
  }
  Resources(interpreter).define(memory.name("ProcSet"), Object::literalName(memory.name("CIDInit")), set);
  memory.setGlobal(false);
}

}  // namespace quillpress::level3
