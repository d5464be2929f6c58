#include "postscript/lib/pdf/PatternOperators.h"

#include <utility>

#include "postscript/lib/pdf/PatternDictionary.h"

namespace quillpress {

namespace {

constexpr std::size_t kMatrixElements = 6;

}  // namespace

void MakepatternOperator::execute(Interpreter& interpreter) {
  if (pattern_) {
    finish();
  } else {
    begin(interpreter);
  }
}

void MakepatternOperator::begin(Interpreter& interpreter) {
  const Ref<ArrayObject> matrixOperand = interpreter.popArrayObject();
  const Ref<DictionaryObject> dictionary = interpreter.popDictionaryObject();
  if (matrixOperand->count() != kMatrixElements) Postscript2Pdf::refuse("expecting array of 6 doubles");

  contentStart_ = converter.content().size();
  callNumber_ = converter.callNumber();
  // Both are read before the first byte is written, so that an error leaves the page as it was.
  // Kept: the captured content begins with a scaling by the steps
  // (PatternTest.DataIsWhatThePaintProcedureDraws).
  const double xStep = patternNumber(*dictionary, "XStep");
  const double yStep = patternNumber(*dictionary, "YStep");
  converter.content().append("q ");
  converter.writeMatrix({xStep, 0, 0, yStep, 0, 0});
  const Matrix matrix = Matrix::of(*matrixOperand);

  // From here on the next execution is the continuation, whatever fails before the paint procedure
  // starts.
  pattern_ = converter.objects().create(PdfObjectKind::kPattern, "/PA");
  converter.setInPattern(true);
  pattern_->setDictionary(patternDictionaryText(*dictionary, matrix));

  interpreter.executionStack().push(this);
  PostscriptObject* paintProcedure = dictionary->lookup("PaintProc");
  if (paintProcedure == nullptr) Postscript2Pdf::refuse("expecting paintProc");
  converter.objects().identifyPattern(*pattern_, dictionary);
  // One for the paint procedure, one that stays as the result.
  interpreter.operandStack().push(dictionary);
  interpreter.operandStack().push(dictionary);
  interpreter.start(paintProcedure);
  pageDrawing_ = converter.suspendPageDrawing();
}

void MakepatternOperator::finish() {
  // Kept: "dont supported", as the field knows it (PatternTest.APatternThatHasDataAlreadyIsNested).
  if (pattern_->hasData()) Postscript2Pdf::refuse("dont supported nested patterns yet");
  converter.content().append("Q\n");
  converter.setInPattern(false);
  if (pageDrawing_) converter.resumePageDrawing(*std::exchange(pageDrawing_, std::nullopt));
  // A paint procedure that went on in a later call has left only that call's content to take.
  const bool sameCall = callNumber_ == converter.callNumber();
  pattern_->setData(converter.content().cutFrom(sameCall ? contentStart_ : 0));
  contentStart_ = 0;
  pattern_ = nullptr;
}

// A dictionary that no pattern was made from is most likely a colour of a kind that is not known here:
// the job goes on with the one before.
void SetpatternOperator::execute(Interpreter& interpreter) {
  const Ref<DictionaryObject> dictionary = interpreter.popDictionaryObject();
  const OwnedPdfObject* pattern = converter.objects().findPattern(*dictionary);
  if (pattern == nullptr) return;
  converter.content().append("/Pattern cs\n");
  converter.content().append(pattern->name());
  converter.content().append(" scn\n");
}

}  // namespace quillpress
