#pragma once

#include <optional>

#include "postscript/lib/pdf/Postscript2PdfObject.h"

namespace quillpress {

// dict matrix  makepattern  dict      Runs the paint procedure of the dictionary and takes what it writes
// out of the page content into a pattern object. Executes twice for a pattern: the object of this class
// waits on the execution stack under the paint procedure.
class MakepatternOperator final : public NameObject, private Postscript2PdfObject {
 public:
  explicit MakepatternOperator(Postscript2Pdf& owner)
      : NameObject("makepattern"), Postscript2PdfObject(owner) {}
  void execute(Interpreter& interpreter) override;

 private:
  void begin(Interpreter& interpreter);
  void finish();

  std::size_t contentStart_ = 0;
  unsigned callNumber_ = 0;  // the call of the converter in which contentStart_ means something
  std::shared_ptr<OwnedPdfObject> pattern_;                 // none while no pattern is in progress
  std::optional<Postscript2Pdf::PageDrawing> pageDrawing_;  // while the paint procedure runs
};

// dict  setpattern  -
// Kept: selects the pattern that was made from this very dictionary object as the fill
// colour; for any other dictionary nothing happens (patterns/setpattern.ps).
DECLARE_GRAPHICS_OPERATOR(SetpatternOperator, "setpattern");

}  // namespace quillpress
