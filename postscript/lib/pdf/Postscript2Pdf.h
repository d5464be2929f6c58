#pragma once

#include <memory>
#include <string>
#include <vector>

#include "postscript/lib/interpreter/Interpreter.h"
#include "postscript/lib/pdf/GraphicsState.h"
#include "postscript/lib/pdf/PageContent.h"
#include "postscript/lib/pdf/PdfObjectList.h"

namespace quillpress {

// The converter: an interpreter whose graphics operators write PDF content text, and the graphics states
// that these keep. There is always a current graphics state.
class Postscript2Pdf {
 public:
  // `defaultMatrix` leads from PostScript's default user space to page space.
  explicit Postscript2Pdf(const Matrix& defaultMatrix);

  // Converts a chunk; a negative length means up to the first zero byte. Returns false when an Ex came
  // out, which is then the error text; other exceptions pass.
  bool convert(const char* data, int length);

  // Begins a page with one fresh graphics state. The interpreter's state and the objects stay.
  void startPage(const Matrix& defaultMatrix);

  // Throws an Ex that names the converter's own source, under which the field knows the errors of image and
  // pattern dictionaries and of the page content as a whole.
  [[noreturn]] static void refuse(std::string message);

  [[nodiscard]] const std::string& errorText() const { return errorText_; }
  [[nodiscard]] const Matrix& defaultMatrix() const { return defaultMatrix_; }
  [[nodiscard]] Interpreter& interpreter() { return interpreter_; }
  [[nodiscard]] PageContent& content() { return content_; }
  [[nodiscard]] const std::string& pageContent() const { return content_.text(); }
  [[nodiscard]] PdfObjectList& objects() { return objects_; }

  // The number of the current call of convert. Positions in the page content are good for one call.
  [[nodiscard]] unsigned callNumber() const { return callNumber_; }

  // The current graphics state, borrowed until the next push or pop.
  [[nodiscard]] GraphicsState& state() { return states_.back(); }
  void pushStateCopy();

  // The last state that is popped is replaced by a fresh one.
  void popState();

  // What a pattern's paint procedure must not change: the graphics states, with the path of the page, and the
  // saves.
  struct PageDrawing {
    std::vector<GraphicsState> states;
    std::vector<std::size_t> savedDepths;
    std::int32_t saveLevel = 0;
    unsigned pageNumber = 0;
  };

  // Goes on without a path, and without a save to restore to.
  [[nodiscard]] PageDrawing suspendPageDrawing();

  // Brings back what was suspended, unless a new page has begun since.
  void resumePageDrawing(PageDrawing drawing);

  // save remembers how many states there are; restore pops down to that.
  void rememberSave();
  void restoreToSave();

  // The path of the current graphics state, borrowed like that.
  [[nodiscard]] CurrentPath& path() { return state().path; }

  // Writes "cm".
  void writeMatrix(const Matrix& matrix);

  // While a pattern's paint procedure runs, images are written inline.
  [[nodiscard]] bool isInPattern() const { return inPattern_; }
  void setInPattern(bool inPattern) { inPattern_ = inPattern; }

  // The font last set, or none.
  [[nodiscard]] const Ref<DictionaryObject>& currentFont() const { return currentFont_; }
  void setCurrentFont(Ref<DictionaryObject> font) { currentFont_ = std::move(font); }

 private:
  void pushFreshState();

  std::vector<GraphicsState> states_;
  std::vector<std::size_t> savedDepths_;
  Matrix defaultMatrix_;
  std::string errorText_;
  PageContent content_;
  PdfObjectList& objects_ = PdfObjectList::ofProcess();
  unsigned callNumber_ = 0;
  unsigned pageNumber_ = 0;
  bool inPattern_ = false;
  Interpreter interpreter_;  // after all that its operators use
  Ref<DictionaryObject> currentFont_;
};

}  // namespace quillpress
