#include "pdf/GraphicsOperators.h"

#include "operators/OperatorTable.h"
#include "pdf/ArcOperators.h"
#include "pdf/ClippingOperators.h"
#include "pdf/ColourOperators.h"
#include "pdf/DeviceOperators.h"
#include "pdf/FontOperators.h"
#include "pdf/ImageOperators.h"
#include "pdf/LineOperators.h"
#include "pdf/PaintingOperators.h"
#include "pdf/PathOperators.h"
#include "pdf/PatternOperators.h"
#include "pdf/StateOperators.h"
#include "pdf/TransformOperators.h"

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

void registerGraphicsOperators(Postscript2Pdf& converter) {
  DictionarySet& dictionaries = converter.interpreter().dictionaries();
  GraphicsOperators::registerAll([&](Ref<NameObject> op) { dictionaries.registerOperator(std::move(op)); },
                                 converter);
}

}  // namespace quillpress
