#pragma once

#include "postscript/lib/pdf/Postscript2PdfObject.h"

namespace quillpress {

// What arc and arcn share: the operands, and the sweep as a chain of curves.
class Arcer : protected Postscript2PdfObject {
 public:
  using Postscript2PdfObject::Postscript2PdfObject;

 protected:
  enum class Direction { kCounterclockwise, kClockwise };

  void popAndDraw(Interpreter& interpreter, Direction direction);
};

// What arct and arcto share: the arc that rounds the corner between two lines.
class Arcter : protected Postscript2PdfObject {
 public:
  using Postscript2PdfObject::Postscript2PdfObject;

 protected:
  struct TangentPoints {
    Point first;
    Point second;
  };

  TangentPoints popAndDraw(Interpreter& interpreter);
};

// x y r angle1 angle2  arc  -      Angles in degrees; the second is raised by full turns until it is the
// greater one, so equal angles make a full circle.
class ArcOperator final : public NameObject, private Arcer {
 public:
  explicit ArcOperator(Postscript2Pdf& owner) : NameObject("arc"), Arcer(owner) {}
  void execute(Interpreter& interpreter) override;
};

// x y r angle1 angle2  arcn  -      The same with the sweep reversed.
class ArcnOperator final : public NameObject, private Arcer {
 public:
  explicit ArcnOperator(Postscript2Pdf& owner) : NameObject("arcn"), Arcer(owner) {}
  void execute(Interpreter& interpreter) override;
};

// x1 y1 x2 y2 r  arct  -
class ArctOperator final : public NameObject, private Arcter {
 public:
  explicit ArctOperator(Postscript2Pdf& owner) : NameObject("arct"), Arcter(owner) {}
  void execute(Interpreter& interpreter) override;
};

// x1 y1 x2 y2 r  arcto  xt1 yt1 xt2 yt2      Pushes the two tangent points.
class ArctoOperator final : public NameObject, private Arcter {
 public:
  explicit ArctoOperator(Postscript2Pdf& owner) : NameObject("arcto"), Arcter(owner) {}
  void execute(Interpreter& interpreter) override;
};

}  // namespace quillpress
