#pragma once

#include "postscript/lib/pdf/Imager.h"

namespace quillpress {

// width height bits matrix source  image  -      In the colour space of the graphics state.
// dict  image  -                                 In the colour space that the Decode array's length tells.
class ImageOperator final : public NameObject, private Imager {
 public:
  explicit ImageOperator(Postscript2Pdf& owner) : NameObject("image"), Imager(owner) {}
  void execute(Interpreter& interpreter) override;

 private:
  void takeDictionary(const DictionaryObject& dictionary);
  void takeOperands(Interpreter& interpreter, Ref<PostscriptObject> source);
};

// width height bits matrix source false ncomp                  colorimage  -
// width height bits matrix source1 ... sourcen true ncomp      colorimage  -
class ColorimageOperator final : public NameObject, private Imager {
 public:
  explicit ColorimageOperator(Postscript2Pdf& owner) : NameObject("colorimage"), Imager(owner) {}
  void execute(Interpreter& interpreter) override;
};

// width height polarity matrix source  imagemask  -      Always inline, in one call. The source is a string,
// an array whose first element is one, or the name of either.
DECLARE_GRAPHICS_OPERATOR(ImagemaskOperator, "imagemask");

}  // namespace quillpress
