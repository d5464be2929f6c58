#pragma once

#include "postscript/lib/pdf/Postscript2PdfObject.h"

namespace quillpress {

// Every colour is written for stroking and for filling at once. Colours are not clamped.

// red green blue  setrgbcolor  -
DECLARE_PLAIN_GRAPHICS_OPERATOR(SetrgbcolorOperator, "setrgbcolor");

// hue saturation brightness  sethsbcolor  -      Written as RGB, kept as set.
DECLARE_PLAIN_GRAPHICS_OPERATOR(SethsbcolorOperator, "sethsbcolor");

// cyan magenta yellow black  setcmykcolor  -
DECLARE_PLAIN_GRAPHICS_OPERATOR(SetcmykcolorOperator, "setcmykcolor");

// gray  setgray  -
DECLARE_PLAIN_GRAPHICS_OPERATOR(SetgrayOperator, "setgray");

// -  currentrgbcolor  red green blue      Only while the colour was set in this model; so the next two.
DECLARE_PLAIN_GRAPHICS_OPERATOR(CurrentrgbcolorOperator, "currentrgbcolor");

// -  currenthsbcolor  hue saturation brightness
DECLARE_PLAIN_GRAPHICS_OPERATOR(CurrenthsbcolorOperator, "currenthsbcolor");

// -  currentcmykcolor  cyan magenta yellow black
DECLARE_PLAIN_GRAPHICS_OPERATOR(CurrentcmykcolorOperator, "currentcmykcolor");

// -  currentgray  gray      Converted from any model.
DECLARE_PLAIN_GRAPHICS_OPERATOR(CurrentgrayOperator, "currentgray");

// name|array  setcolorspace  -      The device spaces with their initial colour, and Pattern; any other
// space is taken and ignored.
DECLARE_GRAPHICS_OPERATOR(SetcolorspaceOperator, "setcolorspace");

}  // namespace quillpress
