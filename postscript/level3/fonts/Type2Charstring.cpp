#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "postscript/level3/fonts/ByteReader.h"
#include "postscript/level3/fonts/Charstrings.h"
#include "postscript/level3/fonts/GlyphRecorder.h"
#include "postscript/level3/fonts/OperandStack.h"

// Type 2 charstrings, as CFF has them.

namespace quillpress::level3 {

namespace {

// What is added to a subroutine's number, so that most numbers are short.
constexpr int biasOf(std::size_t count) {
  if (count < 1240) return 107;
  return count < 33900 ? 1131 : 32768;
}

class Type2Machine {
 public:
  explicit Type2Machine(const CharstringContext& context) : context_(context) {}

  GlyphProgram run(std::string_view charstring) {
    runPart(charstring, {0, 0});
    if (!accent_) return recorder_.finish();
    const Accent accent = *accent_;
    isPart_ = true;
    runPart(standardGlyph(accent.base), {0, 0});
    runPart(standardGlyph(accent.accent), accent.offset);
    return recorder_.finish();
  }

 private:
  // Four more operands of endchar do what seac does in Type 1.
  struct Accent {
    Point offset;
    std::uint8_t base = 0;
    std::uint8_t accent = 0;
  };

  std::string standardGlyph(std::uint8_t code) const {
    if (!context_.standardGlyph) throw FontError("an accented character's parts are missing");
    return context_.standardGlyph(code);
  }

  void runPart(std::string_view charstring, Point origin) {
    recorder_.beginPart(origin);
    operands_.clear();
    stems_.clear();
    hasWidth_ = false;
    isDone_ = false;
    runBytes(charstring, 0);
    if (!hasWidth_) takeWidth(false);
  }

  void runBytes(std::string_view bytes, int depth);
  void runOperator(std::uint8_t code, ByteReader& reader, int depth);
  void runEscape(std::uint8_t code);
  bool runArithmetic(std::uint8_t code);
  void pushNumber(std::uint8_t first, ByteReader& reader);
  void call(const SubroutineTable& table, int depth);

  void takeWidth(bool isGiven);
  void addStems(bool isVertical);
  void readMask(ByteReader& reader, bool isCounter);
  void endGlyph();

  void move(std::uint8_t code);
  void lines(std::size_t end);
  void alternatingLines(bool isVertical);
  void curves(std::size_t first, std::size_t end);
  void straightCurves(bool isVertical);
  void alternatingCurves(bool startsVertical);
  void flex(const std::array<Point, 6>& distances, double depth);
  void flexOne();
  void roll();

  double at(std::size_t index) const { return operands_[index]; }
  Point pair(std::size_t index) const { return {operands_[index], operands_[index + 1]}; }

  const CharstringContext& context_;
  GlyphRecorder recorder_;
  OperandStack operands_;
  std::vector<Stem> stems_;
  std::array<double, 32> transient_{};
  std::optional<Accent> accent_;
  StepBudget budget_;
  bool hasWidth_ = false;
  bool isPart_ = false;
  bool isDone_ = false;
};

void Type2Machine::runBytes(std::string_view bytes, int depth) {
  if (depth > kDeepestCall) throw FontError("a charstring's subroutines call each other too deeply");
  ByteReader reader(bytes);
  while (!isDone_ && !reader.atEnd()) {
    budget_.spend();
    const std::uint8_t code = reader.u8();
    if (code >= 32 || code == 28) {
      pushNumber(code, reader);
    } else if (code == 11) {  // return
      return;
    } else {
      runOperator(code, reader, depth);
    }
  }
}

void Type2Machine::pushNumber(std::uint8_t first, ByteReader& reader) {
  if (first == 28) {
    operands_.push(reader.i16());
  } else if (first <= 246) {
    operands_.push(first - 139);
  } else if (first <= 250) {
    operands_.push((first - 247) * 256 + reader.u8() + 108);
  } else if (first <= 254) {
    operands_.push(-(first - 251) * 256 - reader.u8() - 108);
  } else {
    operands_.push(reader.i32() / 65536.0);
  }
}

void Type2Machine::runOperator(std::uint8_t code, ByteReader& reader, int depth) {
  switch (code) {
    case 1:   // hstem
    case 18:  // hstemhm
      addStems(false);
      break;
    case 3:   // vstem
    case 23:  // vstemhm
      addStems(true);
      break;
    case 4:   // vmoveto
    case 21:  // rmoveto
    case 22:  // hmoveto
      move(code);
      break;
    case 5:  // rlineto
      lines(operands_.size());
      break;
    case 6:  // hlineto
      alternatingLines(false);
      break;
    case 7:  // vlineto
      alternatingLines(true);
      break;
    case 8:  // rrcurveto
      curves(0, operands_.size());
      break;
    case 10:  // callsubr
      call(context_.local, depth);
      return;
    case 12:
      runEscape(reader.u8());
      return;
    case 14:  // endchar
      endGlyph();
      break;
    case 19:  // hintmask
    case 20:  // cntrmask
      readMask(reader, code == 20);
      break;
    case 24:  // rcurveline
      operands_.need(8);
      curves(0, operands_.size() - 2);
      recorder_.line(pair(operands_.size() - 2));
      break;
    case 25:  // rlinecurve
      operands_.need(8);
      lines(operands_.size() - 6);
      curves(operands_.size() - 6, operands_.size());
      break;
    case 26:  // vvcurveto
      straightCurves(true);
      break;
    case 27:  // hhcurveto
      straightCurves(false);
      break;
    case 29:  // callgsubr
      call(context_.global, depth);
      return;
    case 30:  // vhcurveto
      alternatingCurves(true);
      break;
    case 31:  // hvcurveto
      alternatingCurves(false);
      break;
    default:
      break;
  }
  operands_.clear();
}

void Type2Machine::call(const SubroutineTable& table, int depth) {
  const int number = operands_.popInteger() + biasOf(table.count);
  if (number < 0 || static_cast<std::size_t>(number) >= table.count) {
    throw FontError("a charstring calls a missing subroutine");
  }
  runBytes(table.at(static_cast<std::size_t>(number)), depth + 1);
}

// The first operator that clears the stack has the width in front of its operands, unless it is the default.
void Type2Machine::takeWidth(bool isGiven) {
  if (hasWidth_) return;
  hasWidth_ = true;
  const double width = isGiven ? context_.nominalWidthX + at(0) : context_.defaultWidthX;
  if (isGiven) operands_.removeFirst();
  if (!isPart_) recorder_.setAdvance({width, 0});
}

void Type2Machine::addStems(bool isVertical) {
  takeWidth(operands_.size() % 2 == 1);
  double edge = 0;
  for (std::size_t i = 0; i + 1 < operands_.size(); i += 2) {
    const double position = edge + at(i);
    edge = position + at(i + 1);
    const double start = isVertical ? recorder_.origin().x : recorder_.origin().y;
    if (stems_.size() >= kMostStems) throw FontError("a charstring has too many stems");
    stems_.push_back(normalised({start + position, at(i + 1), isVertical}));
    recorder_.addStem(position, at(i + 1), isVertical);
  }
}

void Type2Machine::readMask(ByteReader& reader, bool isCounter) {
  // Operands here are vertical stems whose operator is left out.
  addStems(true);
  std::vector<Stem> chosen;
  const std::string_view mask = reader.take((stems_.size() + 7) / 8);
  for (std::size_t i = 0; i < stems_.size(); ++i) {
    if ((static_cast<std::uint8_t>(mask[i / 8]) & 0x80U >> i % 8) != 0) chosen.push_back(stems_[i]);
  }
  if (isCounter) {
    recorder_.addCounters(std::move(chosen));
  } else {
    recorder_.setStems(std::move(chosen));
  }
}

void Type2Machine::endGlyph() {
  const std::size_t count = operands_.size();
  takeWidth(count == 1 || count == 5);
  isDone_ = true;
  if (operands_.size() < 4) return;
  if (isPart_) throw FontError("the part of an accented character is accented itself");
  const auto code = [](double value) -> std::uint8_t {
    if (value < 0 || value > 255) throw FontError("an accented character's parts are no characters");
    return static_cast<std::uint8_t>(value);
  };
  accent_ = Accent{pair(0), code(at(2)), code(at(3))};
}

void Type2Machine::move(std::uint8_t code) {
  const std::size_t count = code == 21 ? 2 : 1;
  operands_.need(count);
  takeWidth(operands_.size() > count);
  operands_.need(count);
  if (code == 21) {
    recorder_.move(pair(0));
  } else {
    recorder_.move(code == 22 ? Point{at(0), 0} : Point{0, at(0)});
  }
}

void Type2Machine::lines(std::size_t end) {
  for (std::size_t i = 0; i + 2 <= end; i += 2) recorder_.line(pair(i));
}

void Type2Machine::alternatingLines(bool isVertical) {
  for (std::size_t i = 0; i < operands_.size(); ++i, isVertical = !isVertical) {
    recorder_.line(isVertical ? Point{0, at(i)} : Point{at(i), 0});
  }
}

void Type2Machine::curves(std::size_t first, std::size_t end) {
  for (std::size_t i = first; i + 6 <= end; i += 6) recorder_.curve(pair(i), pair(i + 2), pair(i + 4));
}

// Curves that begin and end in the same direction; the first may turn aside at its beginning.
void Type2Machine::straightCurves(bool isVertical) {
  std::size_t i = 0;
  double aside = 0;
  if (operands_.size() % 4 == 1) aside = at(i++);
  for (; i + 4 <= operands_.size(); i += 4, aside = 0) {
    if (isVertical) {
      recorder_.curve({aside, at(i)}, pair(i + 1), {0, at(i + 3)});
    } else {
      recorder_.curve({at(i), aside}, pair(i + 1), {at(i + 3), 0});
    }
  }
}

// Curves that begin in one direction and end in the other; the last may end in any.
void Type2Machine::alternatingCurves(bool startsVertical) {
  const std::size_t count = operands_.size();
  for (std::size_t i = 0; i + 4 <= count; i += 4, startsVertical = !startsVertical) {
    const double aside = count - i == 5 ? at(i + 4) : 0;
    if (startsVertical) {
      recorder_.curve({0, at(i)}, pair(i + 1), {at(i + 3), aside});
    } else {
      recorder_.curve({at(i), 0}, pair(i + 1), {aside, at(i + 3)});
    }
  }
}

void Type2Machine::flex(const std::array<Point, 6>& distances, double depth) {
  std::array<Point, 6> points;
  Point point = recorder_.current();
  for (std::size_t i = 0; i < points.size(); ++i) {
    point = point + distances[i];
    points[i] = point;
  }
  recorder_.flex(points, depth);
}

// The last point lies on the line along which the curves go furthest.
void Type2Machine::flexOne() {
  operands_.need(11);
  Point sum;
  for (std::size_t i = 0; i < 10; i += 2) sum = sum + pair(i);
  const bool isHorizontal = std::abs(sum.x) > std::abs(sum.y);
  const Point last = isHorizontal ? Point{at(10), -sum.y} : Point{-sum.x, at(10)};
  flex({pair(0), pair(2), pair(4), pair(6), pair(8), last}, 50);
}

void Type2Machine::runEscape(std::uint8_t code) {
  if (runArithmetic(code)) return;
  switch (code) {
    case 34:  // hflex
      operands_.need(7);
      flex(
          {Point{at(0), 0}, pair(1), Point{at(3), 0}, Point{at(4), 0}, Point{at(5), -at(2)}, Point{at(6), 0}},
          50);
      break;
    case 35:  // flex
      operands_.need(13);
      flex({pair(0), pair(2), pair(4), pair(6), pair(8), pair(10)}, at(12));
      break;
    case 36:  // hflex1
      operands_.need(9);
      flex({pair(0), pair(2), Point{at(4), 0}, Point{at(5), 0}, pair(6),
            Point{at(8), -(at(1) + at(3) + at(7))}},
           50);
      break;
    case 37:  // flex1
      flexOne();
      break;
    default:
      break;
  }
  operands_.clear();
}

void Type2Machine::roll() {
  const int turns = operands_.popInteger();
  const int count = operands_.popInteger();
  if (count < 0) throw FontError("a charstring rolls a negative number of operands");
  const std::span<double> last = operands_.last(static_cast<std::size_t>(count));
  if (count == 0) return;
  const int places = (turns % count + count) % count;
  std::rotate(last.begin(), last.end() - places, last.end());
}

// False for operators that draw.
bool Type2Machine::runArithmetic(std::uint8_t code) {
  OperandStack& stack = operands_;
  const auto transient = [this]() -> double& {
    const int index = operands_.popInteger();
    if (index < 0 || index >= static_cast<int>(transient_.size())) {
      throw FontError("a charstring stores outside its array");
    }
    return transient_[static_cast<std::size_t>(index)];
  };
  const auto binary = [&stack](auto operation) {
    const double right = stack.pop();
    stack.push(operation(stack.pop(), right));
  };
  switch (code) {
    case 3:
      binary([](double left, double right) { return left != 0 && right != 0 ? 1 : 0; });
      return true;
    case 4:
      binary([](double left, double right) { return left != 0 || right != 0 ? 1 : 0; });
      return true;
    case 5:
      stack.push(stack.pop() == 0 ? 1 : 0);
      return true;
    case 9:
      stack.push(std::abs(stack.pop()));
      return true;
    case 10:
      binary([](double left, double right) { return left + right; });
      return true;
    case 11:
      binary([](double left, double right) { return left - right; });
      return true;
    case 12:
      binary([](double left, double right) { return left / right; });
      return true;
    case 14:
      stack.push(-stack.pop());
      return true;
    case 15:
      binary([](double left, double right) { return left == right ? 1 : 0; });
      return true;
    case 18:
      stack.pop();
      return true;
    case 20: {
      double& place = transient();
      place = stack.pop();
      return true;
    }
    case 21:
      stack.push(transient());
      return true;
    case 22: {
      const std::vector<double> values = stack.popLast(4);
      stack.push(values[2] <= values[3] ? values[0] : values[1]);
      return true;
    }
    case 23:
      // A random number would make the same job look different each time.
      stack.push(0.5);
      return true;
    case 24:
      binary([](double left, double right) { return left * right; });
      return true;
    case 26:
      stack.push(std::sqrt(stack.pop()));
      return true;
    case 27: {
      const double value = stack.pop();
      stack.push(value);
      stack.push(value);
      return true;
    }
    case 28: {
      const std::vector<double> values = stack.popLast(2);
      stack.push(values[1]);
      stack.push(values[0]);
      return true;
    }
    case 29: {
      const int index = std::max(stack.popInteger(), 0);
      stack.push(stack.last(static_cast<std::size_t>(index) + 1).front());
      return true;
    }
    case 30:
      roll();
      return true;
    default:
      return false;
  }
}

}  // namespace

GlyphProgram runType2Charstring(std::string_view charstring, const CharstringContext& context) {
  return Type2Machine(context).run(charstring);
}

}  // namespace quillpress::level3
