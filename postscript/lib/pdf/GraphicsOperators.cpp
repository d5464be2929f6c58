#include "postscript/lib/pdf/GraphicsOperators.h"

#include "postscript/lib/operators/OperatorTable.h"
#include "postscript/lib/pdf/ArcOperators.h"
#include "postscript/lib/pdf/ColourOperators.h"
#include "postscript/lib/pdf/DeviceOperators.h"
#include "postscript/lib/pdf/FontOperators.h"
#include "postscript/lib/pdf/ImageOperators.h"
#include "postscript/lib/pdf/LineOperators.h"
#include "postscript/lib/pdf/PaintingOperators.h"
#include "postscript/lib/pdf/PathOperators.h"
#include "postscript/lib/pdf/PatternOperators.h"
#include "postscript/lib/pdf/StateOperators.h"
#include "postscript/lib/pdf/TransformOperators.h"

namespace quillpress {

namespace {

// The order is behaviour: it is the order of the registry's list of replaced names.
// clang-format off
using GraphicsOperators = OperatorTable<
    SetscreenOperator,
    SetcolorscreenOperator,
    SethalftoneOperator,
    CurrenthalftoneOperator,
    GsaveOperator,
    InitclipOperator,
    EoclipOperator,
    ClipOperator,
    ClippathOperator,
    RectclipOperator,
    SetrgbcolorOperator,
    SethsbcolorOperator,
    SetcmykcolorOperator,
    SetgrayOperator,
    CurrentrgbcolorOperator,
    CurrenthsbcolorOperator,
    CurrentcmykcolorOperator,
    CurrentgrayOperator,
    StrokeOperator,
    NewpathOperator,
    FillOperator,
    EofillOperator,
    MovetoOperator,
    RmovetoOperator,
    LinetoOperator,
    RlinetoOperator,
    CurvetoOperator,
    RcurvetoOperator,
    ArcOperator,
    ArcnOperator,
    ArctOperator,
    ArctoOperator,
    CurrentpointOperator,
    ClosepathOperator,
    TranslateOperator,
    TransformOperator,
    ItransformOperator,
    IdtransformOperator,
    DtransformOperator,
    RotateOperator,
    ConcatOperator,
    CurrentmatrixOperator,
    ScaleOperator,
    GrestoreOperator,
    FindfontOperator,
    ScalefontOperator,
    SetfontOperator,
    FontDirectoryOperator,
    GlobalFontDirectoryOperator,
    ShowOperator,
    StringwidthOperator,
    SetlinewidthOperator,
    SetlinecapOperator,
    SetlinejoinOperator,
    SetmiterlimitOperator,
    SetdashOperator,
    CurrentlinewidthOperator,
    SetstrokeadjustOperator,
    CurrentstrokeadjustOperator,
    SetmatrixOperator,
    DefaultmatrixOperator,
    ShowpageOperator,
    ImagemaskOperator,
    SettransferOperator,
    CurrenttransferOperator,
    SetcolortransferOperator,
    CurrentcolortransferOperator,
    SetflatOperator,
    CurrentflatOperator,
    ColorimageOperator,
    ImageOperator,
    SetoverprintOperator,
    CurrentoverprintOperator,
    SaveOperator,
    RestoreOperator,
    MakepatternOperator,
    SetpatternOperator,
    CurrentfontOperator,
    PrintOperator,
    SetcolorspaceOperator>;
// clang-format on

static_assert(GraphicsOperators::kSize == 80);

}  // namespace

// After the language's operators: each of these replaces a generated one that does nothing.
void registerGraphicsOperators(Postscript2Pdf& converter) {
  DictionarySet& dictionaries = converter.interpreter().dictionaries();
  GraphicsOperators::registerAll([&](Ref<NameObject> op) { dictionaries.registerOperator(std::move(op)); },
                                 converter);
}

}  // namespace quillpress
