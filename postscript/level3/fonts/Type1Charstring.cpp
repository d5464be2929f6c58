#include <algorithm>
#include <optional>

#include "postscript/level3/fonts/ByteReader.h"
#include "postscript/level3/fonts/Charstrings.h"
#include "postscript/level3/fonts/GlyphRecorder.h"
#include "postscript/level3/fonts/OperandStack.h"

// Type 1 charstrings. What their OtherSubrs do (flex, hint replacement, blending) is known by number, as all
// interpreters do it: the PostScript procedures of the font are never run.

namespace quillpress::level3 {

namespace {

// The format allows 10.
constexpr std::size_t kBuildCharArraySize = 256;

struct Accent {
  double sideBearing = 0;
  Point offset;
  std::uint8_t base = 0;
  std::uint8_t accent = 0;
};

class Type1Machine {
 public:
  explicit Type1Machine(const CharstringContext& context) : context_(context) {}

  // The glyph's own charstring, then the parts it names.
  GlyphProgram run(std::string_view charstring) {
    runPart(charstring, {0, 0});
    if (!accent_) return recorder_.finish();
    const Accent accent = *accent_;
    const double left = sideBearing_.x;
    isPart_ = true;
    runPart(standardGlyph(accent.base), {0, 0});
    runPart(standardGlyph(accent.accent), {left - accent.sideBearing + accent.offset.x, accent.offset.y});
    return recorder_.finish();
  }

  std::string parts(std::string_view charstring) {
    runPart(charstring, {0, 0});
    if (!accent_) return {};
    return {static_cast<char>(accent_->base), static_cast<char>(accent_->accent)};
  }

 private:
  std::string standardGlyph(std::uint8_t code) const {
    if (!context_.standardGlyph) throw FontError("an accented character's parts are missing");
    return context_.standardGlyph(code);
  }

  void runPart(std::string_view charstring, Point origin) {
    recorder_.beginPart(origin);
    operands_.clear();
    results_.clear();
    flexPoints_.reset();
    isDone_ = false;
    runBytes(charstring, 0);
  }

  void runBytes(std::string_view bytes, int depth);
  void runOperator(std::uint8_t code, ByteReader& reader, int depth);
  void runEscape(std::uint8_t code);
  void pushNumber(std::uint8_t first, ByteReader& reader);

  void callSubroutine(int depth);
  void callOther();
  bool callArithmetic(int number, const std::vector<double>& arguments);
  void blend(std::size_t count, const std::vector<double>& arguments);
  void endFlex(const std::vector<double>& arguments);

  void setSideBearing(Point bearing, Point advance);
  void move(Point distance);
  void addThreeStems(bool isVertical);
  void startAccent();
  void returnResults(std::vector<double> results);

  const CharstringContext& context_;
  GlyphRecorder recorder_;
  OperandStack operands_;
  // What OtherSubrs have left for `pop`, the next one last.
  std::vector<double> results_;
  std::vector<double> buildCharArray_;
  std::optional<std::vector<Point>> flexPoints_;
  Point flexStart_;
  std::optional<Accent> accent_;
  Point sideBearing_;
  StepBudget budget_;
  bool hasJustFlexed_ = false;
  bool isPart_ = false;
  bool isDone_ = false;
};

void Type1Machine::runBytes(std::string_view bytes, int depth) {
  if (depth > kDeepestCall) throw FontError("a charstring's subroutines call each other too deeply");
  ByteReader reader(bytes);
  while (!isDone_ && !reader.atEnd()) {
    budget_.spend();
    const std::uint8_t code = reader.u8();
    if (code >= 32) {
      pushNumber(code, reader);
    } else if (code == 11) {  // return
      return;
    } else {
      runOperator(code, reader, depth);
    }
  }
}

void Type1Machine::pushNumber(std::uint8_t first, ByteReader& reader) {
  if (first <= 246) {
    operands_.push(first - 139);
  } else if (first <= 250) {
    operands_.push((first - 247) * 256 + reader.u8() + 108);
  } else if (first <= 254) {
    operands_.push(-(first - 251) * 256 - reader.u8() - 108);
  } else {
    operands_.push(reader.i32());
  }
}

void Type1Machine::runOperator(std::uint8_t code, ByteReader& reader, int depth) {
  const OperandStack& operand = operands_;
  switch (code) {
    case 1:  // hstem
    case 3:  // vstem
      operands_.need(2);
      recorder_.addStem((code == 3 ? sideBearing_.x : sideBearing_.y) + operand[0], operand[1], code == 3);
      break;
    case 4:  // vmoveto
      operands_.need(1);
      move({0, operand[0]});
      break;
    case 5:  // rlineto
      operands_.need(2);
      recorder_.line({operand[0], operand[1]});
      break;
    case 6:  // hlineto
      operands_.need(1);
      recorder_.line({operand[0], 0});
      break;
    case 7:  // vlineto
      operands_.need(1);
      recorder_.line({0, operand[0]});
      break;
    case 8:  // rrcurveto
      operands_.need(6);
      recorder_.curve({operand[0], operand[1]}, {operand[2], operand[3]}, {operand[4], operand[5]});
      break;
    case 9:  // closepath
      recorder_.close();
      break;
    case 10:  // callsubr
      callSubroutine(depth);
      return;
    case 12:
      runEscape(reader.u8());
      return;
    case 13:  // hsbw
      operands_.need(2);
      setSideBearing({operand[0], 0}, {operand[1], 0});
      break;
    case 14:  // endchar
      isDone_ = true;
      break;
    case 21:  // rmoveto
      operands_.need(2);
      move({operand[0], operand[1]});
      break;
    case 22:  // hmoveto
      operands_.need(1);
      move({operand[0], 0});
      break;
    case 30:  // vhcurveto
      operands_.need(4);
      recorder_.curve({0, operand[0]}, {operand[1], operand[2]}, {operand[3], 0});
      break;
    case 31:  // hvcurveto
      operands_.need(4);
      recorder_.curve({operand[0], 0}, {operand[1], operand[2]}, {0, operand[3]});
      break;
    default:
      // Unknown ones do nothing, as in all interpreters.
      break;
  }
  operands_.clear();
}

void Type1Machine::runEscape(std::uint8_t code) {
  switch (code) {
    case 1:  // vstem3
    case 2:  // hstem3
      addThreeStems(code == 1);
      break;
    case 6:  // seac
      startAccent();
      break;
    case 7:  // sbw
      operands_.need(4);
      setSideBearing({operands_[0], operands_[1]}, {operands_[2], operands_[3]});
      break;
    case 12: {  // div
      const double divisor = operands_.pop();
      operands_.push(operands_.pop() / divisor);
      return;
    }
    case 16:  // callothersubr
      callOther();
      return;
    case 17:  // pop
      if (results_.empty()) throw FontError("a charstring pops what no procedure has left");
      operands_.push(results_.back());
      results_.pop_back();
      return;
    case 33:  // setcurrentpoint
      operands_.need(2);
      // After a flex the point is where the curves ended; what fonts say of it is rounded at times.
      if (!hasJustFlexed_) recorder_.setCurrent(recorder_.origin() + Point{operands_[0], operands_[1]});
      hasJustFlexed_ = false;
      break;
    default:
      break;
  }
  operands_.clear();
}

void Type1Machine::setSideBearing(Point bearing, Point advance) {
  sideBearing_ = bearing;
  recorder_.setCurrent(recorder_.origin() + bearing);
  if (!isPart_) recorder_.setAdvance(advance);
}

void Type1Machine::move(Point distance) {
  if (flexPoints_) {
    recorder_.step(distance);
  } else {
    recorder_.move(distance);
  }
}

void Type1Machine::addThreeStems(bool isVertical) {
  operands_.need(6);
  const double bearing = isVertical ? sideBearing_.x : sideBearing_.y;
  const double start = bearing + (isVertical ? recorder_.origin().x : recorder_.origin().y);
  std::vector<Stem> stems;
  for (std::size_t i = 0; i < 6; i += 2) {
    recorder_.addStem(bearing + operands_[i], operands_[i + 1], isVertical);
    stems.push_back(normalised({start + operands_[i], operands_[i + 1], isVertical}));
  }
  recorder_.addCounters(std::move(stems));
}

void Type1Machine::startAccent() {
  operands_.need(5);
  if (isPart_) throw FontError("the part of an accented character is accented itself");
  const auto code = [](double value) -> std::uint8_t {
    if (value < 0 || value > 255) throw FontError("an accented character's parts are no characters");
    return static_cast<std::uint8_t>(value);
  };
  accent_ = Accent{operands_[0], {operands_[1], operands_[2]}, code(operands_[3]), code(operands_[4])};
  isDone_ = true;
}

void Type1Machine::callSubroutine(int depth) {
  const int number = operands_.popInteger();
  const auto index = static_cast<std::size_t>(number);
  if (number >= 0 && index < context_.local.count) {
    const std::string_view subroutine = context_.local.at(index);
    if (!subroutine.empty()) {
      runBytes(subroutine, depth + 1);
      return;
    }
  }
  // The first four are the same in all fonts, and some programs leave them out.
  constexpr std::string_view kUsual[] = {
      "\x8E\x8B\x0C\x10\x0C\x11\x0C\x11\x0C\x21\x0B",  // 3 0 callothersubr pop pop setcurrentpoint
      "\x8B\x8C\x0C\x10\x0B",                          // 0 1 callothersubr
      "\x8B\x8D\x0C\x10\x0B",                          // 0 2 callothersubr
      "\x0B"};
  if (number < 0 || index >= std::size(kUsual)) throw FontError("a charstring calls a missing subroutine");
  runBytes(kUsual[index], depth + 1);
}

// The first result is the first to be popped.
void Type1Machine::returnResults(std::vector<double> results) {
  std::ranges::reverse(results);
  results_ = std::move(results);
}

void Type1Machine::callOther() {
  const int number = operands_.popInteger();
  const int count = operands_.popInteger();
  if (count < 0) throw FontError("a charstring calls a procedure with a negative number of operands");
  const std::vector<double> arguments = operands_.popLast(static_cast<std::size_t>(count));
  switch (number) {
    case 0:
      endFlex(arguments);
      return;
    case 1:
      flexPoints_.emplace();
      flexStart_ = recorder_.current();
      return;
    case 2:
      if (!flexPoints_ || flexPoints_->size() >= 7) throw FontError("a charstring's flex has wrong points");
      flexPoints_->push_back(recorder_.current());
      return;
    case 3:
      recorder_.dropStems();
      returnResults(arguments);
      return;
    case 12:  // counter control, begun and
    case 13:  // ended; how gaps are kept alike is left to the stems
      results_.clear();
      return;
    default:
      if (!callArithmetic(number, arguments)) returnResults(arguments);
      return;
  }
}

void Type1Machine::endFlex(const std::vector<double>& arguments) {
  // The first point is the reference point between the curves' ends, and only there for the arithmetic.
  if (arguments.size() != 3 || !flexPoints_ || flexPoints_->size() != 7) {
    throw FontError("a charstring's flex has wrong points");
  }
  std::array<Point, 6> points;
  std::copy(flexPoints_->begin() + 1, flexPoints_->end(), points.begin());
  flexPoints_.reset();
  // The moves inside the flex have left where its curves begin.
  recorder_.setCurrent(flexStart_);
  recorder_.flex(points, arguments[0]);
  hasJustFlexed_ = true;
  returnResults({arguments[1], arguments[2]});
}

// The procedures of multiple-master fonts.
bool Type1Machine::callArithmetic(int number, const std::vector<double>& arguments) {
  const auto need = [&](std::size_t count) {
    if (arguments.size() < count) throw FontError("a charstring's procedure lacks operands");
  };
  const auto place = [&](double value) {
    if (value < 0 || value >= static_cast<double>(kBuildCharArraySize)) {
      throw FontError("a charstring stores outside its array");
    }
    buildCharArray_.resize(kBuildCharArraySize);
    return static_cast<std::size_t>(value);
  };
  switch (number) {
    case 14:
    case 15:
    case 16:
    case 17:
      blend(static_cast<std::size_t>(number - 13), arguments);
      return true;
    case 18:
      blend(6, arguments);
      return true;
    case 19: {
      need(1);
      const std::size_t start = place(arguments[0]);
      for (std::size_t i = 0; i < context_.weightVector.size() && start + i < kBuildCharArraySize; ++i) {
        buildCharArray_[start + i] = context_.weightVector[i];
      }
      results_.clear();
      return true;
    }
    case 20:
      need(2);
      returnResults({arguments[0] + arguments[1]});
      return true;
    case 21:
      need(2);
      returnResults({arguments[0] - arguments[1]});
      return true;
    case 22:
      need(2);
      returnResults({arguments[0] * arguments[1]});
      return true;
    case 23:
      need(2);
      returnResults({arguments[0] / arguments[1]});
      return true;
    case 24:
      need(2);
      buildCharArray_[place(arguments[1])] = arguments[0];
      results_.clear();
      return true;
    case 25:
      need(1);
      returnResults({buildCharArray_[place(arguments[0])]});
      return true;
    case 27:
      need(4);
      returnResults({arguments[2] <= arguments[3] ? arguments[0] : arguments[1]});
      return true;
    case 28:
      // A random number would make the same job look different each time.
      returnResults({0.5});
      return true;
    default:
      return false;
  }
}

// Each result is the first master's value and the weighted differences of the others.
void Type1Machine::blend(std::size_t count, const std::vector<double>& arguments) {
  const std::size_t masters = context_.weightVector.size();
  if (masters == 0 || arguments.size() != count * masters) {
    throw FontError("a charstring blends other masters than the font has");
  }
  std::vector<double> results(arguments.begin(), arguments.begin() + static_cast<std::ptrdiff_t>(count));
  std::size_t next = count;
  for (double& result : results) {
    for (std::size_t master = 1; master < masters; ++master) {
      result += arguments[next++] * context_.weightVector[master];
    }
  }
  returnResults(std::move(results));
}

}  // namespace

GlyphProgram runType1Charstring(std::string_view charstring, const CharstringContext& context) {
  return Type1Machine(context).run(charstring);
}

std::string accentPartsOfType1(std::string_view charstring, const CharstringContext& context) {
  return Type1Machine(context).parts(charstring);
}

}  // namespace quillpress::level3
