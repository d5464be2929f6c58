#pragma once

#include "postscript/lib/pdf/Postscript2PdfObject.h"

namespace quillpress {

// How a device renders is no business of a PDF file: these operators write nothing. The setters take their
// operands, the others push a neutral value of the language's kind.

// frequency angle proc  setscreen  -
DECLARE_GRAPHICS_OPERATOR(SetscreenOperator, "setscreen");

// frequency angle proc, for each of four colours  setcolorscreen  -
DECLARE_GRAPHICS_OPERATOR(SetcolorscreenOperator, "setcolorscreen");

// halftone  sethalftone  -
DECLARE_GRAPHICS_OPERATOR(SethalftoneOperator, "sethalftone");

// -  currenthalftone  halftone
DECLARE_GRAPHICS_OPERATOR(CurrenthalftoneOperator, "currenthalftone");

// proc  settransfer  -
DECLARE_GRAPHICS_OPERATOR(SettransferOperator, "settransfer");

// -  currenttransfer  proc
DECLARE_GRAPHICS_OPERATOR(CurrenttransferOperator, "currenttransfer");

// proc1 proc2 proc3 proc4  setcolortransfer  -
DECLARE_GRAPHICS_OPERATOR(SetcolortransferOperator, "setcolortransfer");

// -  currentcolortransfer  proc1 proc2 proc3 proc4
DECLARE_GRAPHICS_OPERATOR(CurrentcolortransferOperator, "currentcolortransfer");

// num  setflat  -
DECLARE_GRAPHICS_OPERATOR(SetflatOperator, "setflat");

// -  currentflat  num
DECLARE_GRAPHICS_OPERATOR(CurrentflatOperator, "currentflat");

// bool  setstrokeadjust  -
DECLARE_GRAPHICS_OPERATOR(SetstrokeadjustOperator, "setstrokeadjust");

// -  currentstrokeadjust  bool
DECLARE_GRAPHICS_OPERATOR(CurrentstrokeadjustOperator, "currentstrokeadjust");

// bool  setoverprint  -
DECLARE_GRAPHICS_OPERATOR(SetoverprintOperator, "setoverprint");

// -  currentoverprint  bool
DECLARE_GRAPHICS_OPERATOR(CurrentoverprintOperator, "currentoverprint");

}  // namespace quillpress
