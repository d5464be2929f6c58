#include "postscript/level3/pdf/ContentWriter.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "postscript/level3/pdf/PdfNumbers.h"

namespace quillpress::level3 {

namespace {

// Renderers gather a whole path before they paint it, and some take long over very many subpaths.
constexpr std::size_t kMostJoinedSubpaths = 200;
// Device pixels between paths that one operator may paint.
constexpr double kGap = 10;
constexpr std::size_t kSpillAt = 1024UL * 1024;
constexpr std::size_t kLongestRememberedPath = 256;
constexpr int kDeviceColourPlaces = 3;
constexpr int kOtherColourPlaces = 5;

// Numbers of a unit that are neither very long nor very coarse: from a tenth of a pixel to an inch.
constexpr double kSmallestUnit = 0.1;
constexpr double kGreatestUnit = 720;
constexpr double kFarthestOrigin = 1e6;

// Products with an inverse leave a little where there should be nothing.
Matrix withoutNoise(const Matrix& matrix) {
  const double noise = 1e-9 * matrix.meanScale();
  const auto clean = [noise](double value) { return std::abs(value) < noise ? 0.0 : value; };
  const auto round = [](double value) {
    return std::abs(value - std::round(value)) < 1e-9 ? std::round(value) : value;
  };
  return {round(clean(matrix.a)), round(clean(matrix.b)), round(clean(matrix.c)),
          round(clean(matrix.d)), round(matrix.tx),       round(matrix.ty)};
}

// How far a line's paint reaches from its middle, in units of half its width.
double reachOf(const LineStyle& style, const Path& path) {
  const bool hasSharpCorners = path.segmentCount() > 2 && !asRectangle(path, false);
  return style.join == LineJoin::kMiter && hasSharpCorners ? std::max(style.miterLimit, 1.5) : 1.5;
}

// The part of a matrix that makes a round pen oval; nothing when it stays round.
std::optional<Matrix> ovalPen(const Matrix& userToContent) {
  Matrix linear = userToContent;
  linear.tx = 0;
  linear.ty = 0;
  if (linear.isSimilarity()) return std::nullopt;
  const double scale = linear.meanScale();
  if (!(scale > 0) || !std::isfinite(scale)) return std::nullopt;
  const double share = 1 / scale;
  const Matrix pen{linear.a * share, linear.b * share, linear.c * share, linear.d * share, 0, 0};
  return pen.inverse() ? std::optional(pen) : std::nullopt;
}

double largestScale(const Matrix& matrix) {
  return std::max(std::hypot(matrix.a, matrix.b), std::hypot(matrix.c, matrix.d));
}

// Renderers fit the edges of a path of this kind to whole pixels, but only when it is painted alone.
bool isQuadrangle(const Path& path) {
  constexpr std::size_t kCorners = 4;
  const std::vector<Point>& points = path.points();
  const bool returns = points.size() == kCorners + 1 && points.front() == points.back();
  return !path.hasCurves() && (points.size() <= kCorners || returns);
}

bool isSameClip(const Clip* one, const Clip* other) {
  if (one == other) return true;
  return one != nullptr && other != nullptr && one->isSameAs(*other);
}

}  // namespace

ContentWriter::ContentWriter(PdfFile& file, const Settings& settings, Spill spill)
    : file_(file), settings_(settings), spill_(std::move(spill)) {
  reset(settings);
}

void ContentWriter::reset(const Settings& settings) {
  settings_ = settings;
  space_ = ContentSpace::forMatrix(settings.fromDevice);
  unit_.reset();
  hasUnit_ = false;
  hasSpilled_ = false;
  text_.clear();
  resources_.clear();
  pending_ = {};
  later_ = nullptr;
  textWriter_ = {};
  textClip_.reset();
  levels_.clear();
  levels_.push_back({initialState(), settings.impliedClip, std::nullopt});
}

ContentWriter::State ContentWriter::initialState() const {
  State state;
  state.rare = settings_.rare;
  if (settings_.beginsWithDefaults || settings_.inheritsColour) {
    state.fill = Paint::gray(0);
    state.stroke = Paint::gray(0);
  }
  if (!settings_.beginsWithDefaults) return state;
  const LineStyle line;
  state.width = line.width;
  state.miterLimit = line.miterLimit;
  state.cap = line.cap;
  state.join = line.join;
  state.dash = line.dash;
  state.rare = RareParameters();
  return state;
}

void ContentWriter::inheritColour() {
  settings_.inheritsColour = true;
  levels_.front().state = initialState();
}

void ContentWriter::preferUnitsOf(const Matrix& userToDevice) {
  if (hasUnit_) return;
  hasUnit_ = true;
  const double scale = userToDevice.meanScale();
  const Matrix toInitial = withoutNoise(userToDevice * settings_.fromDevice);
  const bool isFit = toInitial.keepsAxes() && toInitial.isSimilarity() && scale >= kSmallestUnit &&
                     scale <= kGreatestUnit && std::abs(toInitial.tx) < kFarthestOrigin &&
                     std::abs(toInitial.ty) < kFarthestOrigin;
  if (!isFit || toInitial == Matrix()) return;
  unit_ = toInitial;
  space_ = ContentSpace::forMatrix(settings_.fromDevice * *toInitial.inverse());
}

// The unit's matrix stands before the first thing that is written, and only then.
void ContentWriter::writeUnit() {
  hasUnit_ = true;
  if (!unit_) return;
  appendMatrixNumbers(text_, *unit_);
  text_ += " cm\n";
  unit_.reset();
}

bool ContentWriter::isVisible(const Box& bounds, const ClipPointer& clip) const {
  if (bounds.isEmpty() || !bounds.touches(settings_.area)) return false;
  return !clip ||
         (!clip->isEmpty() && bounds.touches(clip->bounds()) && clip->bounds().touches(settings_.area));
}

bool ContentWriter::needsClip(const Box& bounds, const ClipPointer& clip) const {
  if (!clip || isSameClip(clip.get(), settings_.impliedClip.get())) return false;
  return !clip->rectangle() || !clip->rectangle()->contains(intersection(bounds, settings_.area));
}

// The innermost level that is right for a clip, or for one of its parents if the clip is still to be written.
std::size_t ContentWriter::levelFor(const Clip* clip, bool isNeeded, const std::optional<Matrix>& pen) const {
  for (std::size_t level = levels_.size(); level-- > 1;) {
    if (levels_[level].pen && levels_[level].pen != pen) continue;
    const Clip* candidate = clip;
    while (candidate != nullptr && !isSameClip(candidate, levels_[level].clip.get())) {
      candidate = candidate->parent().get();
    }
    const bool fits = candidate != nullptr || !levels_[level].clip;
    // A clip cannot be added within a pen.
    if (fits && (!levels_[level].pen || !isNeeded || candidate == clip)) return level;
  }
  return 0;
}

void ContentWriter::leaveLevels(std::size_t count) {
  while (levels_.size() > count) {
    levels_.pop_back();
    text_ += "Q\n";
  }
}

// From the outermost that is missing to the innermost.
void ContentWriter::writeClips(const Clip* clip, const Clip* until) {
  std::vector<const Clip*> missing;
  for (const Clip* each = clip; each != nullptr && !isSameClip(each, until); each = each->parent().get()) {
    missing.push_back(each);
  }
  for (auto each = missing.rbegin(); each != missing.rend(); ++each) {
    const std::size_t before = text_.size();
    appendPath(text_, (*each)->path(), space_, true);
    // A clip that shrinks to nothing once rounded still lets nothing through.
    if (text_.size() == before) text_ += "0 0 0 0 re\n";
    text_ += (*each)->rule() == FillRule::kNonzero ? "W n\n" : "W* n\n";
  }
}

// True when the level has changed, so that nothing waits any more.
bool ContentWriter::enterLevel(const Box& bounds, const ClipPointer& clip, const std::optional<Matrix>& pen) {
  const bool isNeeded = needsClip(bounds, clip);
  const std::size_t level = levelFor(clip.get(), isNeeded, pen);
  const Clip* found = levels_[level].clip.get();
  const bool addsClip = isNeeded && !isSameClip(found, clip.get());
  const bool addsPen = pen && levels_[level].pen != pen;
  if (level + 1 == levels_.size() && !addsClip && !addsPen) return false;

  flushPending();
  writeUnit();
  leaveLevels(level + 1);
  if (addsClip) {
    levels_.push_back({levels_.back().state, clip, std::nullopt});
    text_ += "q\n";
    writeClips(clip.get(), found);
  }
  if (addsPen) {
    levels_.push_back({levels_.back().state, levels_.back().clip, pen});
    // Widths and dashes are measured with the pen.
    levels_.back().state.width.reset();
    std::optional<DashPattern>& dash = levels_.back().state.dash;
    if (dash && !dash->lengths.empty()) dash.reset();
    text_ += "q\n";
    appendMatrixNumbers(text_, *pen);
    text_ += " cm\n";
  }
  return true;
}

void ContentWriter::paintLater(std::function<void()> paint) {
  flushPending();
  later_ = std::move(paint);
}

void ContentWriter::flushPending() {
  if (later_) std::exchange(later_, nullptr)();
  if (textWriter_.isOpen()) {
    textWriter_.close(text_);
    spillIfLong();
  }
  if (pending_.operation == Operation::kNone) return;
  writeUnit();
  text_ += pending_.text;
  switch (pending_.operation) {
    case Operation::kNone:
      break;
    case Operation::kFill:
      text_ += "f\n";
      break;
    case Operation::kEvenOddFill:
      text_ += "f*\n";
      break;
    case Operation::kStroke:
      text_ += "S\n";
      break;
    case Operation::kFillStroke:
      text_ += "B\n";
      break;
    case Operation::kEvenOddFillStroke:
      text_ += "B*\n";
      break;
  }
  pending_.operation = Operation::kNone;
  pending_.text.clear();
  pending_.only.reset();
  spillIfLong();
}

void ContentWriter::spillIfLong() {
  if (!spill_ || text_.size() < kSpillAt) return;
  spill_(text_);
  text_.clear();
  hasSpilled_ = true;
}

bool ContentWriter::joinsPending(Operation operation, const Box& bounds, std::size_t subpaths) const {
  if (pending_.operation != operation || pending_.isAlone) return false;
  if (pending_.subpaths + subpaths > kMostJoinedSubpaths) return false;
  // Where two fills overlap, one path made of both could leave a hole; and where anything touches, renderers
  // that smooth edges show one path darker than two. So apart is apart.
  return !bounds.touches(pending_.box.grownBy(kGap));
}

void ContentWriter::addToPending(Operation operation, const Path& path, const Box& bounds,
                                 const ContentSpace& space) {
  const bool isFilled = operation != Operation::kStroke;
  std::string text;
  const std::size_t subpaths = appendPath(text, path, space, isFilled);
  if (subpaths == 0) return;
  const bool isAlone = isFilled && isQuadrangle(path);
  if (!isAlone && joinsPending(operation, bounds, subpaths)) {
    pending_.text += text;
    pending_.box.include(bounds);
    pending_.subpaths += subpaths;
    pending_.only.reset();
    return;
  }
  flushPending();
  pending_.operation = operation;
  pending_.text = std::move(text);
  pending_.box = bounds;
  pending_.subpaths = subpaths;
  pending_.isAlone = isAlone;
  if (isFilled && path.segmentCount() <= kLongestRememberedPath) pending_.only = path;
}

void ContentWriter::fill(const Path& path, FillRule rule, const Paint& paint, const ClipPointer& clip,
                         const RareParameters& rare) {
  const Box bounds = path.boundingBox();
  if (!isVisible(bounds, clip)) return;
  enterLevel(bounds, clip, std::nullopt);
  useRare(rare);
  useFill(paint);
  addToPending(rule == FillRule::kNonzero ? Operation::kFill : Operation::kEvenOddFill, path, bounds, space_);
}

bool ContentWriter::strokesPendingFill(const Path& path) const {
  return (pending_.operation == Operation::kFill || pending_.operation == Operation::kEvenOddFill) &&
         pending_.only && *pending_.only == path;
}

void ContentWriter::stroke(const Path& path, const LineStyle& style, const Matrix& userToDevice,
                           const Paint& paint, const ClipPointer& clip, const RareParameters& rare) {
  if (path.isEmpty()) return;
  const double reach = style.width / 2 * largestScale(userToDevice) * reachOf(style, path);
  const Box bounds = path.boundingBox().grownBy(std::isfinite(reach) ? reach + 1 : 1);
  if (!isVisible(bounds, clip)) return;
  const Matrix userToContent = userToDevice * space_.fromDevice;
  const std::optional<Matrix> pen =
      style.width > 0 || !style.dash.isSolid() ? ovalPen(userToContent) : std::nullopt;
  const double scale = userToContent.meanScale();

  enterLevel(bounds, clip, pen);
  // A fill of the same path may wait: what is set for the stroke does not touch it.
  const bool joinsFill = !pen && strokesPendingFill(path) && state().rare == rare;
  if (joinsFill) {
    Pending filled = std::exchange(pending_, {});
    useStroke(paint);
    useLineStyle(style, scale);
    filled.operation =
        filled.operation == Operation::kFill ? Operation::kFillStroke : Operation::kEvenOddFillStroke;
    filled.text.clear();
    appendPath(filled.text, path, space_, false);
    filled.only.reset();
    pending_ = std::move(filled);
    return;
  }
  useRare(rare);
  useStroke(paint);
  useLineStyle(style, scale);
  if (!pen) {
    addToPending(Operation::kStroke, path, bounds, space_);
    return;
  }
  const ContentSpace ownSpace{space_.fromDevice * *pen->inverse(), space_.decimals + 1};
  addToPending(Operation::kStroke, path, bounds, ownSpace);
}

void ContentWriter::fillArea(const Paint& paint, const ClipPointer& clip, const RareParameters& rare) {
  Path path;
  path.appendRectangle(clip ? intersection(clip->bounds(), settings_.area) : settings_.area);
  fill(path, FillRule::kNonzero, paint, clip, rare);
}

bool ContentWriter::beginPainting(const Box& bounds, const ClipPointer& clip) {
  if (!isVisible(bounds, clip)) return false;
  enterLevel(bounds, clip, std::nullopt);
  flushPending();
  writeUnit();
  return true;
}

bool ContentWriter::beginDrawing(const Matrix& toDevice, const Box& bounds, const Paint* paint,
                                 const ClipPointer& clip, const RareParameters& rare) {
  if (!beginPainting(bounds, clip)) return false;
  if (paint != nullptr) useFill(*paint);
  useRare(rare);
  text_ += "q\n";
  appendMatrixNumbers(text_, toDevice * space_.fromDevice);
  text_ += " cm\n";
  return true;
}

void ContentWriter::endDrawing() {
  text_ += "Q\n";
  spillIfLong();
}

void ContentWriter::drawObject(ObjectNumber object, const Matrix& toDevice, const Box& bounds,
                               const Paint* paint, const ClipPointer& clip, const RareParameters& rare) {
  if (!beginDrawing(toDevice, bounds, paint, clip, rare)) return;
  resources_.use(ResourceKind::kXObject, object, text_);
  text_ += " Do\n";
  endDrawing();
}

void ContentWriter::draw(ObjectNumber object, const Matrix& toDevice, const Box& bounds,
                         const ClipPointer& clip, const RareParameters& rare) {
  drawObject(object, toDevice, bounds, nullptr, clip, rare);
}

void ContentWriter::drawMask(ObjectNumber object, const Matrix& toDevice, const Paint& paint,
                             const ClipPointer& clip, const RareParameters& rare) {
  drawObject(object, toDevice, transformed(Box{0, 0, 1, 1}, toDevice), &paint, clip, rare);
}

void ContentWriter::drawInline(std::string_view image, const Matrix& toDevice, const Paint* paint,
                               const ClipPointer& clip, const RareParameters& rare) {
  if (!beginDrawing(toDevice, transformed(Box{0, 0, 1, 1}, toDevice), paint, clip, rare)) return;
  text_ += image;
  endDrawing();
}

// Most glyphs are wholly visible, and filled as the one before: nothing has to be set for them.
bool ContentWriter::continuesText(const TextGlyph& glyph, const Box& bounds, const Paint& paint,
                                  const ClipPointer& clip, const RareParameters& rare) const {
  const State& now = levels_.back().state;
  return textWriter_.isOpen() && clip == textClip_ && textArea_.contains(bounds) &&
         glyph.mode != TextMode::kStroke && now.fill == paint && now.rare == rare;
}

void ContentWriter::showGlyph(const TextGlyph& glyph, const Box& bounds, const Paint& paint,
                              const ClipPointer& clip, const RareParameters& rare, double lineWidth) {
  if (continuesText(glyph, bounds, paint, clip, rare)) {
    textWriter_.show(text_, resources_, state().text, space_, glyph);
    return;
  }
  enterLevel(bounds, clip, std::nullopt);
  useRare(rare);
  if (glyph.mode == TextMode::kStroke) {
    useStroke(paint);
    LineStyle line;
    line.width = lineWidth;
    useLineStyle(line, space_.fromDevice.meanScale());
  } else {
    useFill(paint);
  }
  if (!textWriter_.isOpen()) {
    flushPending();
    writeUnit();
  }
  textClip_ = clip;
  textArea_ = clip ? intersection(clip->bounds(), settings_.area) : settings_.area;
  textWriter_.show(text_, resources_, state().text, space_, glyph);
}

void ContentWriter::shade(ObjectNumber shading, const Matrix& toDevice, const Box& bounds,
                          const ClipPointer& clip, const RareParameters& rare) {
  if (!beginDrawing(toDevice, bounds, nullptr, clip, rare)) return;
  resources_.use(ResourceKind::kShading, shading, text_);
  text_ += " sh\n";
  endDrawing();
}

void ContentWriter::operand(double value, int decimals) {
  appendNumber(text_, value, decimals);
  text_ += ' ';
}

void ContentWriter::writeNumbers(const Paint& paint) {
  const int places = paint.kind <= Paint::Space::kCmyk ? kDeviceColourPlaces : kOtherColourPlaces;
  for (std::size_t index = 0; index < paint.count; ++index) {
    operand(static_cast<double>(paint.components[index]), places);
  }
}

void ContentWriter::writePaint(const Paint& paint, bool isStroke) {
  const std::optional<Paint>& before = isStroke ? state().stroke : state().fill;
  switch (paint.kind) {
    case Paint::Space::kGray:
      writeNumbers(paint);
      text_ += isStroke ? "G\n" : "g\n";
      return;
    case Paint::Space::kRgb:
      writeNumbers(paint);
      text_ += isStroke ? "RG\n" : "rg\n";
      return;
    case Paint::Space::kCmyk:
      writeNumbers(paint);
      text_ += isStroke ? "K\n" : "k\n";
      return;
    case Paint::Space::kNamed:
    case Paint::Space::kPattern:
      break;
  }
  if (!before || before->kind != paint.kind || before->space != paint.space) {
    if (paint.space == 0) {
      appendName(text_, "Pattern");
    } else {
      resources_.use(ResourceKind::kColourSpace, paint.space, text_);
    }
    text_ += isStroke ? " CS\n" : " cs\n";
  }
  writeNumbers(paint);
  if (paint.kind == Paint::Space::kPattern) {
    resources_.use(ResourceKind::kPattern, paint.pattern, text_);
    text_ += ' ';
  }
  text_ += isStroke ? "SCN\n" : "scn\n";
}

void ContentWriter::useFill(const Paint& paint) {
  if (state().fill == paint) return;
  flushPending();
  writeUnit();
  writePaint(paint, false);
  state().fill = paint;
}

void ContentWriter::useStroke(const Paint& paint) {
  if (state().stroke == paint) return;
  flushPending();
  writeUnit();
  writePaint(paint, true);
  state().stroke = paint;
}

void ContentWriter::useRare(const RareParameters& rare) {
  if (state().rare == rare) return;
  flushPending();
  writeUnit();
  DictionaryText parameters;
  if (!state().rare || state().rare->overprint != rare.overprint) {
    parameters.boolean("OP", rare.overprint).boolean("op", rare.overprint);
  }
  if (!state().rare || state().rare->strokeAdjust != rare.strokeAdjust) {
    parameters.boolean("SA", rare.strokeAdjust);
  }
  // Where it is not known, it is that of whatever uses this content.
  const BlendMode before = state().rare ? state().rare->blendMode : BlendMode::kNormal;
  if (before != rare.blendMode) parameters.name("BM", nameOf(rare.blendMode));
  resources_.use(ResourceKind::kExtGState, file_.addShared(parameters.text()), text_);
  text_ += " gs\n";
  state().rare = rare;
}

void ContentWriter::useLineStyle(const LineStyle& style, double scale) {
  State& now = state();
  const int places = std::min(space_.decimals + 2, 9);
  const double width = style.width * scale;
  DashPattern dash = style.dash.isSolid() ? DashPattern() : style.dash;
  for (double& length : dash.lengths) length *= scale;
  dash.offset *= scale;
  const bool changes = now.width != width || now.cap != style.cap || now.join != style.join ||
                       now.dash != dash ||
                       (style.join == LineJoin::kMiter && now.miterLimit != style.miterLimit);
  if (!changes) return;
  flushPending();
  writeUnit();
  if (now.width != width) {
    operand(width, places);
    text_ += "w\n";
    now.width = width;
  }
  if (now.cap != style.cap) {
    operand(static_cast<double>(style.cap), 0);
    text_ += "J\n";
    now.cap = style.cap;
  }
  if (now.join != style.join) {
    operand(static_cast<double>(style.join), 0);
    text_ += "j\n";
    now.join = style.join;
  }
  if (style.join == LineJoin::kMiter && now.miterLimit != style.miterLimit) {
    operand(style.miterLimit, 4);
    text_ += "M\n";
    now.miterLimit = style.miterLimit;
  }
  if (now.dash != dash) {
    text_ += '[';
    for (const double length : dash.lengths) operand(length, places);
    if (!dash.lengths.empty()) text_.pop_back();
    text_ += ']';
    operand(dash.offset, places);
    text_ += "d\n";
    now.dash = std::move(dash);
  }
}

void ContentWriter::finish() {
  flushPending();
  leaveLevels(1);
}

}  // namespace quillpress::level3
