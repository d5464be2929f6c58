#pragma once

#include "postscript/lib/pdf/Postscript2PdfObject.h"

namespace quillpress {

// Fonts are tracked by name and size; text is never drawn.

// key  findfont  font      Every unknown font is Helvetica.
DECLARE_GRAPHICS_OPERATOR(FindfontOperator, "findfont");

// font scale  scalefont  font
// Kept: scales the matrix of the very font, so every holder sees it and scalings add up (fonts/scalefont.ps).
DECLARE_GRAPHICS_OPERATOR(ScalefontOperator, "scalefont");

// font  setfont  -
DECLARE_GRAPHICS_OPERATOR(SetfontOperator, "setfont");

// -  currentfont  font      The font last set, before that Helvetica.
DECLARE_GRAPHICS_OPERATOR(CurrentfontOperator, "currentfont");

// -  FontDirectory  dict
DECLARE_GRAPHICS_OPERATOR(FontDirectoryOperator, "FontDirectory");

// -  GlobalFontDirectory  dict      The same dictionary.
DECLARE_GRAPHICS_OPERATOR(GlobalFontDirectoryOperator, "GlobalFontDirectory");

// string  show  -
DECLARE_GRAPHICS_OPERATOR(ShowOperator, "show");

// string  stringwidth  10.0 100.0      Kept: the same metrics whatever the string (fonts/stringwidth.ps).
DECLARE_GRAPHICS_OPERATOR(StringwidthOperator, "stringwidth");

}  // namespace quillpress
