#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "postscript/level3/geometry/Clip.h"
#include "postscript/level3/geometry/Stroking.h"
#include "postscript/level3/pdf/BlendMode.h"
#include "postscript/level3/pdf/ContentResources.h"
#include "postscript/level3/pdf/Paint.h"
#include "postscript/level3/pdf/PathText.h"
#include "postscript/level3/pdf/PdfFile.h"
#include "postscript/level3/pdf/TextWriter.h"

namespace quillpress::level3 {

// Parameters that are seldom anything but off; they travel in an ExtGState.
struct RareParameters {
  bool overprint = false;
  bool strokeAdjust = false;
  BlendMode blendMode = BlendMode::kNormal;

  friend bool operator==(const RareParameters&, const RareParameters&) = default;
};

// Writes the content of one page, form or pattern cell from what is painted in device space.
//
// It knows what state the content has reached, and writes a change only when something is painted that needs
// it. A clip is written when something would reach beyond it, and stays for what follows with the same one.
// Paths of equal style that follow each other become one.
class ContentWriter {
 public:
  struct Settings {
    // Device space to the space that the content begins in: points for a page, form space for a form.
    Matrix fromDevice;
    // What can be seen at all, in device space.
    Box area;
    // Whether the content begins with PDF's initial state, as pages do and forms do not.
    bool beginsWithDefaults = true;
    // What the viewer clips to by itself: a form's or a pattern's box.
    ClipPointer impliedClip = nullptr;
    // The colour is the viewer's business, as in glyphs and patterns without colours of their own: black here
    // means that one.
    bool inheritsColour = false;
    // Small images stand in it, since equal content is shared as a whole.
    bool inlinesImages = false;
    // What holds where the content is used, as far as that is known.
    std::optional<RareParameters> rare = std::nullopt;
  };
  // Gets parts of the content that are complete, when there is much of it.
  using Spill = std::function<void(std::string_view)>;

  ContentWriter(PdfFile& file, const Settings& settings, Spill spill = {});

  // For a glyph that turns out to have no colours of its own. REQUIRES: isEmpty()
  void inheritColour();
  // Lets coordinates be written in the units of a user space, while nothing has been written yet.
  void preferUnitsOf(const Matrix& userToDevice);

  void fill(const Path& path, FillRule rule, const Paint& paint, const ClipPointer& clip,
            const RareParameters& rare);
  // `userToDevice` is the matrix that the pen is round in before it is mapped.
  void stroke(const Path& path, const LineStyle& style, const Matrix& userToDevice, const Paint& paint,
              const ClipPointer& clip, const RareParameters& rare);
  // All that the clip leaves of the area.
  void fillArea(const Paint& paint, const ClipPointer& clip, const RareParameters& rare);

  // An image, whose unit square lies at `toDevice`, or a form.
  void draw(ObjectNumber object, const Matrix& toDevice, const Box& bounds, const ClipPointer& clip,
            const RareParameters& rare);
  // An image mask: the paint comes through where it has ones.
  void drawMask(ObjectNumber object, const Matrix& toDevice, const Paint& paint, const ClipPointer& clip,
                const RareParameters& rare);
  // An inline image, or with a paint an inline mask.
  void drawInline(std::string_view image, const Matrix& toDevice, const Paint* paint, const ClipPointer& clip,
                  const RareParameters& rare);
  // Whether painting within a box can be seen.
  bool isVisible(const Box& bounds, const ClipPointer& clip) const;
  // A glyph as text, even when it cannot be seen. `bounds` may be larger than what it paints, and
  // `lineWidth`, in device space, is for outlined ones.
  void showGlyph(const TextGlyph& glyph, const Box& bounds, const Paint& paint, const ClipPointer& clip,
                 const RareParameters& rare, double lineWidth = 0);
  // False when more has to be said for it than its code and place; it is for showGlyph() then. REQUIRES: the
  // last glyph that this writer has shown was filled with the same paint and rare parameters, and had the
  // same matrix but for its place.
  bool showNext(const NextGlyph& glyph, const ClipPointer& clip);
  void shade(ObjectNumber shading, const Matrix& toDevice, const Box& bounds, const ClipPointer& clip,
             const RareParameters& rare);

  // Something that may still grow: `paint` is called before anything else is painted, or by finish().
  void paintLater(std::function<void()> paint);
  // Whether that is still to come.
  bool isPaintingLater() const { return static_cast<bool>(later_); }

  // For other painting: everything before is written, the clip is in force for what reaches `bounds`; false
  // when nothing of it can be seen. After setting what is needed, operators may be appended to text().
  bool beginPainting(const Box& bounds, const ClipPointer& clip);
  void useFill(const Paint& paint);
  void useStroke(const Paint& paint);
  void useLineStyle(const LineStyle& style, double scale);
  void useRare(const RareParameters& rare);
  std::string& text() { return text_; }
  ContentResources& resources() { return resources_; }
  const ContentSpace& space() const { return space_; }
  // Device space to the space that the content begins in; pattern matrices start from there.
  const Matrix& initialSpace() const { return settings_.fromDevice; }
  const Box& area() const { return settings_.area; }
  bool inlinesImages() const { return settings_.inlinesImages; }

  bool isEmpty() const { return !hasSpilled_ && text_.empty() && pending_.text.empty() && !later_; }

  // Ends the content; what has not been spilled is left in text().
  void finish();
  // Begins again with nothing, for the next page.
  void reset(const Settings& settings);

 private:
  // What the content has set; nothing where that is not known.
  struct State {
    std::optional<Paint> fill;
    std::optional<Paint> stroke;
    std::optional<double> width;
    std::optional<double> miterLimit;
    std::optional<LineCap> cap;
    std::optional<LineJoin> join;
    std::optional<DashPattern> dash;
    std::optional<RareParameters> rare;
    TextState text;
  };
  // What lies between a q and its Q.
  struct Level {
    State state;
    ClipPointer clip;
    std::optional<Matrix> pen;
  };
  enum class Operation { kNone, kFill, kEvenOddFill, kStroke, kFillStroke, kEvenOddFillStroke };
  // A path that waits for others of equal style.
  struct Pending {
    Operation operation = Operation::kNone;
    std::string text;
    Box box;
    std::size_t subpaths = 0;
    // Nothing may be joined with it.
    bool isAlone = false;
    // The only path in it, for a stroke that may follow its fill.
    std::optional<Path> only;
  };

  State initialState() const;
  State& state() { return levels_.back().state; }
  bool needsClip(const Box& bounds, const ClipPointer& clip) const;
  std::size_t levelFor(const Clip* clip, bool isNeeded, const std::optional<Matrix>& pen) const;
  bool enterLevel(const Box& bounds, const ClipPointer& clip, const std::optional<Matrix>& pen);
  void leaveLevels(std::size_t count);
  void writeClips(const Clip* clip, const Clip* until);
  void writeUnit();
  bool beginDrawing(const Matrix& toDevice, const Box& bounds, const Paint* paint, const ClipPointer& clip,
                    const RareParameters& rare);
  void endDrawing();
  void drawObject(ObjectNumber object, const Matrix& toDevice, const Box& bounds, const Paint* paint,
                  const ClipPointer& clip, const RareParameters& rare);
  void flushPending();
  void spillIfLong();
  void addToPending(Operation operation, const Path& path, const Box& bounds, const ContentSpace& space);
  bool joinsPending(Operation operation, const Box& bounds, std::size_t subpaths) const;
  bool strokesPendingFill(const Path& path) const;
  bool continuesText(const TextGlyph& glyph, const Box& bounds, const Paint& paint, const ClipPointer& clip,
                     const RareParameters& rare) const;
  void writePaint(const Paint& paint, bool isStroke);
  void writeNumbers(const Paint& paint);
  void operand(double value, int decimals);

  PdfFile& file_;
  Settings settings_;
  Spill spill_;
  ContentResources resources_;
  std::string text_;
  ContentSpace space_;
  std::optional<Matrix> unit_;
  std::vector<Level> levels_;
  Pending pending_;
  std::function<void()> later_;
  TextWriter textWriter_;
  // The last glyph's clip, and what of the area it leaves.
  ClipPointer textClip_;
  Box textArea_;
  bool hasUnit_ = false;
  bool hasSpilled_ = false;
};

inline bool ContentWriter::showNext(const NextGlyph& glyph, const ClipPointer& clip) {
  const Point origin = glyph.origin;
  const double reach = glyph.reach;
  const bool canFollow =
      textWriter_.hasLast() && clip == textClip_ && state().text.font == glyph.font &&
      textArea_.contains(Box{origin.x - reach, origin.y - reach, origin.x + reach, origin.y + reach});
  if (canFollow) textWriter_.showNext(text_, space_, glyph);
  return canFollow;
}

}  // namespace quillpress::level3
