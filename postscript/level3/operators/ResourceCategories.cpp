#include "postscript/level3/operators/ResourceCategories.h"

#include "postscript/level3/operators/Resources.h"

namespace quillpress::level3 {

namespace {

// Categories whose instances are defined by jobs, with the type that an instance must have.
struct RegularCategory {
  std::string_view name;
  std::string_view instanceType;  // empty when any will do
};

constexpr RegularCategory kRegular[] = {
    {"Category", "dicttype"},       {"Generic", ""},
    {"Font", "dicttype"},           {"CIDFont", "dicttype"},
    {"CMap", "dicttype"},           {"FontSet", "dicttype"},
    {"Encoding", "arraytype"},      {"Form", "dicttype"},
    {"Pattern", "dicttype"},        {"ProcSet", "dicttype"},
    {"ColorSpace", "arraytype"},    {"Halftone", "dicttype"},
    {"ColorRendering", "dicttype"}, {"IdiomSet", "dicttype"},
    {"InkParams", "dicttype"},      {"TrapParams", "dicttype"},
    {"OutputDevice", "dicttype"},   {"ControlLanguage", "dicttype"},
    {"Localization", "dicttype"},   {"PDL", "dicttype"},
    {"HWOptions", "dicttype"},
};

// Categories that only say what the interpreter can do. Their instances are their own keys.
struct ImplicitCategory {
  std::string_view name;
  std::vector<std::string_view> names;
  std::vector<int> numbers;
};

std::vector<ImplicitCategory> implicitCategories() {
  return {
      {"Filter",
       {"ASCIIHexEncode", "ASCIIHexDecode", "ASCII85Encode", "ASCII85Decode", "LZWEncode", "LZWDecode",
        "FlateEncode", "FlateDecode", "RunLengthEncode", "RunLengthDecode", "CCITTFaxEncode",
        "CCITTFaxDecode", "DCTEncode", "DCTDecode", "SubFileDecode", "NullEncode", "ReusableStreamDecode"},
       {}},
      {"ColorSpaceFamily",
       {"DeviceGray", "DeviceRGB", "DeviceCMYK", "CIEBasedA", "CIEBasedABC", "CIEBasedDEF", "CIEBasedDEFG",
        "Indexed", "Separation", "DeviceN", "Pattern"},
       {}},
      {"Emulator", {}, {}},
      {"IODevice", {"%stdin%", "%stdout%", "%stderr%", "%os%"}, {}},
      {"ColorRenderingType", {}, {1}},
      {"FMapType", {}, {2, 3, 4, 5, 6, 7, 8, 9}},
      {"FontType", {}, {0, 1, 2, 3, 9, 10, 11, 32, 42}},
      {"FormType", {}, {1}},
      {"HalftoneType", {}, {1, 2, 3, 4, 5, 6, 10, 16, 100}},
      {"ImageType", {}, {1, 3, 4}},
      {"PatternType", {}, {1, 2}},
      {"FunctionType", {}, {0, 2, 3}},
      {"ShadingType", {}, {1, 2, 3, 4, 5, 6, 7}},
      {"TrappingType", {}, {}},
  };
}

Object makeCategory(Interpreter& interpreter, std::string_view name, const CategoryProcedures& procedures) {
  VirtualMemory& memory = interpreter.memory();
  const Object category = memory.newDictionary(12);
  const auto set = [&](std::string_view key, const Object& value) {
    memory.put(*category.asDictionary(), memory.name(key), value);
  };
  set("Category", Object::literalName(memory.name(name)));
  set("DefineResource", procedures.define);
  set("FindResource", procedures.find);
  set("UndefineResource", procedures.undefine);
  set("ResourceStatus", procedures.status);
  set("ResourceForAll", procedures.forAll);
  return category;
}

void defineCategory(Interpreter& interpreter, std::string_view name, const Object& category) {
  VirtualMemory& memory = interpreter.memory();
  memory.setAccess(*category.asDictionary(), Access::kReadOnly);
  Resources(interpreter).define(memory.name("Category"), Object::literalName(memory.name(name)), category);
}

void addRegular(Interpreter& interpreter, const RegularCategory& regular,
                const CategoryProcedures& procedures) {
  VirtualMemory& memory = interpreter.memory();
  const Object category = makeCategory(interpreter, regular.name, procedures);
  if (!regular.instanceType.empty()) {
    memory.put(*category.asDictionary(), memory.name("InstanceType"),
               Object::literalName(memory.name(regular.instanceType)));
  }
  defineCategory(interpreter, regular.name, category);
}

void addImplicit(Interpreter& interpreter, const ImplicitCategory& implicit,
                 const CategoryProcedures& procedures) {
  VirtualMemory& memory = interpreter.memory();
  const Object category = makeCategory(interpreter, implicit.name, procedures);
  memory.put(*category.asDictionary(), memory.name(".Implicit"), Object::boolean(true));
  defineCategory(interpreter, implicit.name, category);
  Resources resources(interpreter);
  Name* const categoryName = memory.name(implicit.name);
  for (const std::string_view name : implicit.names) {
    const Object key = Object::literalName(memory.name(name));
    resources.define(categoryName, key, key);
  }
  for (const int number : implicit.numbers) {
    resources.define(categoryName, Object::integer(number), Object::integer(number));
  }
}

}  // namespace

void addResourceCategories(Interpreter& interpreter, const CategoryProcedures& procedures) {
  VirtualMemory& memory = interpreter.memory();
  interpreter.define(".localresources", memory.newDictionary(40));
  memory.setGlobal(true);
  interpreter.define(".globalresources", memory.newDictionary(40));
  for (const RegularCategory& regular : kRegular) addRegular(interpreter, regular, procedures);
  for (const ImplicitCategory& implicit : implicitCategories())
    addImplicit(interpreter, implicit, procedures);
  memory.setGlobal(false);
}

}  // namespace quillpress::level3
