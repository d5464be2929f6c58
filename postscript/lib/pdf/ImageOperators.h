#pragma once

#include "postscript/lib/pdf/ImagePlacement.h"
#include "postscript/lib/pdf/Postscript2PdfObject.h"

namespace quillpress {

// What image and colorimage share: gathering sample data from a data source, over any number of runs of
// the source and any number of chunks. The operator object waits on the execution stack under its data
// source, so it holds the state of the one image in progress.
class Imager : protected Postscript2PdfObject {
 public:
  using Postscript2PdfObject::Postscript2PdfObject;

 protected:
  // Whether the next execution is the continuation of an image.
  [[nodiscard]] bool inProgress() const { return inProgress_; }

  void reset();
  void setSize(std::int32_t width, std::int32_t height, std::int32_t bitsPerComponent);
  void setComponents(std::int32_t components) { components_ = components; }
  void setDataSources(std::int32_t count) { dataSourceCount_ = count; }
  void setDataSource(Ref<PostscriptObject> source) { dataSource_ = std::move(source); }
  void setImageMatrix(Ref<ArrayObject> matrix) { imageMatrix_ = std::move(matrix); }

  // Schedules the data source and, under it, the operator itself.
  void beginReading(Interpreter& interpreter, PostscriptObject& operatorObject);

  // Takes what the data source has left on the operand stack; runs it again until there is enough, then
  // writes the image.
  void gather(Interpreter& interpreter, PostscriptObject& operatorObject);

 private:
  [[nodiscard]] std::int32_t neededLength() const;
  void checkProgress(const Parser& input, bool gotData);
  void appendFromOneSource(Interpreter& interpreter);
  void appendFromThreeSources(Interpreter& interpreter);

  bool inProgress_ = false;
  std::int32_t dataSourceCount_ = 1;
  std::int32_t components_ = 0;
  int emptyStrings_ = 0;  // in a row, while the input stood where the next two fields say
  unsigned callOfLastRead_ = 0;
  const char* inputAtLastRead_ = nullptr;
  ImageSamples image_;
  Ref<PostscriptObject> dataSource_;
  // Kept: never written. The image fills the unit square of user space (images/image.ps).
  Ref<ArrayObject> imageMatrix_;
};

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
