#include "postscript/lib/operators/ComparisonOperators.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "postscript/lib/base/Bounds.h"
#include "postscript/lib/base/Ex.h"
#include "postscript/lib/objects/NumberUtils.h"

namespace quillpress {

namespace {

bool isNumber(const PostscriptObject& object) {
  return object.typeCode == TypeCode::kInteger || object.typeCode == TypeCode::kReal;
}

bool isNull(const PostscriptObject& object) {
  return object.typeCode == TypeCode::kNull;
}

std::int32_t compareNumbers(double a, double b) {
  if (a < b) return -1;
  return a > b ? 1 : 0;
}

// Stops at the first zero byte, as the comparison always did; the bytes are unsigned.
std::int32_t compareTexts(const std::string& a, const std::string& b) {
  return std::clamp(std::strcmp(a.c_str(), b.c_str()), -1, 1);
}

// One test for equality. It counts what it looks at, since the operands may be nested without end.
class EqualityTest {
 public:
  bool equals(const PostscriptObject& a, const PostscriptObject& b) {
    if (depth_ > kMaxNesting || ++comparisons_ > kMaxComparisons)
      THROW_EX("Structures nested too deeply to compare");
    if (isNull(a) || isNull(b)) return isNull(a) && isNull(b);
    const auto* arrayA = as<ArrayObject>(&a);
    const auto* arrayB = as<ArrayObject>(&b);
    if (arrayA != nullptr && arrayB != nullptr) return equalArrays(*arrayA, *arrayB);
    const auto* dictionaryA = as<DictionaryObject>(&a);
    const auto* dictionaryB = as<DictionaryObject>(&b);
    if (dictionaryA != nullptr && dictionaryB != nullptr)
      return equalDictionaries(*dictionaryA, *dictionaryB);
    return Comparer::compare(a, b) == 0;
  }

 private:
  bool equalArrays(const ArrayObject& a, const ArrayObject& b) {
    if (a.count() != b.count()) return false;
    ++depth_;
    const auto count = static_cast<std::ptrdiff_t>(a.count());
    for (std::ptrdiff_t i = 0; i < count; ++i) {
      if (!equals(*a.element(i), *b.element(i))) return false;
    }
    --depth_;
    return true;
  }

  // Kept: a dictionary is walked even when it is compared with itself, so one that holds itself, as
  // systemdict does, equals nothing: the walk has no end (comparison/eq.ps).
  bool equalDictionaries(const DictionaryObject& a, const DictionaryObject& b) {
    if (a.count() != b.count()) return false;
    ++depth_;
    for (std::size_t i = 0; i < a.count(); ++i) {
      const DictionaryData::Entry& entry = a.entryInOrder(i);
      const PostscriptObject* other = b.lookup(DictionaryKey(entry.key, entry.hash));
      if (other == nullptr || !equals(*entry.value, *other)) return false;
    }
    --depth_;
    return true;
  }

  std::size_t depth_ = 0;
  std::size_t comparisons_ = 0;
};

// The operands are held until the test is made, so that they are let go also when it throws.
template <typename Test>
void pushTestOfTwo(Interpreter& interpreter, Test test) {
  const Ref<PostscriptObject> b = interpreter.operandStack().pop();
  const Ref<PostscriptObject> a = interpreter.operandStack().pop();
  interpreter.pushBoolean(test(*a, *b));
}

template <typename Test>
void pushComparison(Interpreter& interpreter, Test test) {
  pushTestOfTwo(interpreter, [test](const auto& a, const auto& b) { return test(Comparer::compare(a, b)); });
}

}  // namespace

std::int32_t Comparer::compare(const PostscriptObject& a, const PostscriptObject& b) {
  const auto* integerA = as<IntegerObject>(&a);
  const auto* integerB = as<IntegerObject>(&b);
  // Not by less and greater: the difference wraps, and what a job compares far apart comes out the
  // other way.
  if (integerA != nullptr && integerB != nullptr) return wrappingSubtract(integerA->value, integerB->value);
  if (isNumber(a) && isNumber(b)) return compareNumbers(toDouble(a), toDouble(b));

  const auto* stringA = as<StringObject>(&a);
  const auto* stringB = as<StringObject>(&b);
  if (stringA != nullptr && stringB != nullptr) return compareTexts(stringA->bytes(), stringB->bytes());

  const auto* nameA = as<NameObject>(&a);
  const auto* nameB = as<NameObject>(&b);
  if (nameA != nullptr && nameB != nullptr) return compareTexts(nameA->text, nameB->text);

  const auto* booleanA = as<BooleanObject>(&a);
  const auto* booleanB = as<BooleanObject>(&b);
  if (booleanA != nullptr && booleanB != nullptr)
    return (booleanA->value ? 1 : 0) - (booleanB->value ? 1 : 0);
  if (integerA != nullptr && booleanB != nullptr)
    return wrappingSubtract(integerA->value, booleanB->value ? 1 : 0);
  // Kept: here the operands are taken in reverse order, so `true 2 lt` is false (comparison/lt.ps).
  if (booleanA != nullptr && integerB != nullptr)
    return wrappingSubtract(integerB->value, booleanA->value ? 1 : 0);
  THROW_EX("Unsupported type comparison");
}

bool Comparer::equals(const PostscriptObject& a, const PostscriptObject& b) {
  return EqualityTest().equals(a, b);
}

void EqOperator::execute(Interpreter& interpreter) {
  pushTestOfTwo(interpreter, Comparer::equals);
}

void NeOperator::execute(Interpreter& interpreter) {
  pushTestOfTwo(interpreter, [](const auto& a, const auto& b) { return !Comparer::equals(a, b); });
}

void GeOperator::execute(Interpreter& interpreter) {
  pushComparison(interpreter, [](std::int32_t result) { return result >= 0; });
}

void GtOperator::execute(Interpreter& interpreter) {
  pushComparison(interpreter, [](std::int32_t result) { return result > 0; });
}

void LeOperator::execute(Interpreter& interpreter) {
  pushComparison(interpreter, [](std::int32_t result) { return result <= 0; });
}

void LtOperator::execute(Interpreter& interpreter) {
  pushComparison(interpreter, [](std::int32_t result) { return result < 0; });
}

}  // namespace quillpress
