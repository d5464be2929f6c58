#include "postscript/level3/graphics/UserPath.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "postscript/level3/graphics/NumberStrings.h"

namespace quillpress::level3 {

namespace {

struct Operation {
  std::string_view name;
  std::size_t operands;
};

// In the order of their codes in encoded user paths.
constexpr std::array<Operation, 12> kOperations{{{"setbbox", 4},
                                                 {"moveto", 2},
                                                 {"rmoveto", 2},
                                                 {"lineto", 2},
                                                 {"rlineto", 2},
                                                 {"curveto", 6},
                                                 {"rcurveto", 6},
                                                 {"arc", 5},
                                                 {"arcn", 5},
                                                 {"arct", 5},
                                                 {"closepath", 0},
                                                 {"ucache", 0}}};
constexpr std::size_t kUCache = 11;
constexpr std::uint8_t kRepeat = 32;

// Runs the path operators themselves, on a state of their own.
class Builder {
 public:
  Builder(Interpreter& interpreter, const Matrix& matrix)
      : interpreter_(interpreter), graphics_(graphicsOf(interpreter)), scope_(graphics_) {
    graphics_.state().ctm = matrix;
    graphics_.state().path.clear();
    graphics_.state().pathBounds.reset();
  }

  Path build(const Object& object) {
    if (!object.isReadable()) raise(ErrorName::kInvalidAccess);
    const bool isEncoded = object.length() == 2 && object.elements()[1].isString();
    if (isEncoded) {
      runEncoded(object.elements()[0], object.elements()[1]);
    } else {
      runPlain(object);
    }
    return std::move(graphics_.state().path);
  }

 private:
  void runPlain(const Object& object) {
    for (const Object& element : elementsOf(object)) {
      if (element.isNumber()) {
        numbers_.push_back(element.asNumber());
      } else {
        run(operationOf(element));
      }
    }
    if (!numbers_.empty()) raise(ErrorName::kTypeCheck);
  }

  // Names count as the operators that they name, whatever the job has defined.
  static std::size_t operationOf(const Object& element) {
    std::string_view name;
    if (element.isName() && element.isExecutable()) {
      name = element.asName()->text();
    } else if (element.is(Type::kOperator)) {
      name = element.asOperator()->name->text();
    } else {
      raise(ErrorName::kTypeCheck);
    }
    const auto found = std::find_if(kOperations.begin(), kOperations.end(),
                                    [name](const Operation& operation) { return operation.name == name; });
    if (found == kOperations.end()) raise(ErrorName::kTypeCheck);
    return static_cast<std::size_t>(found - kOperations.begin());
  }

  void runEncoded(const Object& data, const Object& operators) {
    if (!operators.isReadable()) raise(ErrorName::kInvalidAccess);
    const std::vector<double> numbers = numbersOfArrayOrString(data);
    std::size_t next = 0;
    std::size_t times = 1;
    for (const char byte : textOf(operators)) {
      const auto code = static_cast<std::uint8_t>(byte);
      if (code > kRepeat) {
        times = code - kRepeat;
        continue;
      }
      if (code >= kOperations.size()) raise(ErrorName::kRangeCheck);
      for (; times > 0; --times) {
        const std::size_t count = kOperations[code].operands;
        if (next + count > numbers.size()) raise(ErrorName::kTypeCheck);
        numbers_.assign(numbers.begin() + static_cast<std::ptrdiff_t>(next),
                        numbers.begin() + static_cast<std::ptrdiff_t>(next + count));
        next += count;
        run(code);
      }
      times = 1;
    }
  }

  void run(std::size_t operation) {
    if (numbers_.size() != kOperations[operation].operands) raise(ErrorName::kTypeCheck);
    if (operation == kUCache) {
      if (hasBox_ || !graphics_.state().path.isEmpty()) raise(ErrorName::kTypeCheck);
      return;
    }
    // The box comes first, and once.
    const bool isBox = operation == 0;
    if (isBox == hasBox_) raise(ErrorName::kTypeCheck);
    hasBox_ = true;
    ObjectStack& operands = interpreter_.operands();
    const std::size_t depth = operands.depth();
    operands.require(numbers_.size());
    for (const double number : numbers_) operands.push(Object::real(static_cast<float>(number)));
    numbers_.clear();
    const Object* entry =
        interpreter_.systemDictionary().find(interpreter_.memory().name(kOperations[operation].name));
    try {
      entry->asOperator()->function(interpreter_);
    } catch (...) {
      operands.popTo(depth);
      throw;
    }
  }

  Interpreter& interpreter_;
  Graphics& graphics_;
  GraphicsScope scope_;
  std::vector<double> numbers_;
  bool hasBox_ = false;
};

}  // namespace

Path userPath(Interpreter& interpreter, const Object& object, const Matrix& matrix) {
  if (!object.isArray()) raise(ErrorName::kTypeCheck);
  return Builder(interpreter, matrix).build(object);
}

bool mayBeUserPath(const Object& object) {
  if (!object.isArray() || object.length() == 0) return false;
  if (object.length() != 6) return true;
  return !std::all_of(object.elements(), object.elements() + 6,
                      [](const Object& each) { return each.isNumber(); });
}

}  // namespace quillpress::level3
