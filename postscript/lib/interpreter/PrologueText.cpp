#include "postscript/lib/interpreter/PrologueText.h"

namespace quillpress {

// The second line already uses the abbreviation that the first one makes.
const std::string_view kAbbreviationsText = R"ps(/| /def load def
/, /load load |
/~ /exch load def
/? /ifelse load def
/! /pop load def
/` /begin load def
/^ /index load def
/@ /dup load def
/+ /translate load def
/$ /roll load def
/U /userdict load def
/- /rlineto load def
/& /currentdict load def
/: /gsave load def
/; /grestore load def
/F /false load def
/T /true load def
/N /newpath load def
/E /end load def
/Ac /arc load def
/An /arcn load def
/A /ashow load def
/D /awidthshow load def
/C /closepath load def
/O /eofill load def
/I /lineto load def
/-C /rcurveto load def
/-M /rmoveto load def
/+S /scale load def
/Ji /setfont load def
/Lc /setlinecap load def
/Lj /setlinejoin load def
/Lw /setlinewidth load def
/S /show load def
/LH /showpage load def
/K /stroke load def
/W /widthshow load def
/b {bind def} bind def
)ps";

// The names of glyphs in the standard encoding of the language, eight codes a line; jobs re-encode fonts from
// it.
const std::string_view kStandardEncodingText = R"ps(/StandardEncoding
/.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef
/.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef
/.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef
/.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef
/space /exclam /quotedbl /numbersign /dollar /percent /ampersand /quoteright
/parenleft /parenright /asterisk /plus /comma /hyphen /period /slash
/zero /one /two /three /four /five /six /seven
/eight /nine /colon /semicolon /less /equal /greater /question
/at /A /B /C /D /E /F /G
/H /I /J /K /L /M /N /O
/P /Q /R /S /T /U /V /W
/X /Y /Z /bracketleft /backslash /bracketright /asciicircum /underscore
/quoteleft /a /b /c /d /e /f /g
/h /i /j /k /l /m /n /o
/p /q /r /s /t /u /v /w
/x /y /z /braceleft /bar /braceright /asciitilde /.notdef
/.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef
/.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef
/.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef
/.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef
/.notdef /exclamdown /cent /sterling /fraction /yen /florin /section
/currency /quotesingle /quotedblleft /guillemotleft /guilsinglleft /guilsinglright /fi /fl
/.notdef /endash /dagger /daggerdbl /periodcentered /.notdef /paragraph /bullet
/quotesinglbase /quotedblbase /quotedblright /guillemotright /ellipsis /perthousand /.notdef /questiondown
/.notdef /grave /acute /circumflex /tilde /macron /breve /dotaccent
/dieresis /.notdef /ring /cedilla /.notdef /hungarumlaut /ogonek /caron
/emdash /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef
/.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef /.notdef
/.notdef /AE /.notdef /ordfeminine /.notdef /.notdef /.notdef /.notdef
/Lslash /Oslash /OE /ordmasculine /.notdef /.notdef /.notdef /.notdef
/.notdef /ae /.notdef /.notdef /.notdef /dotlessi /.notdef /.notdef
/lslash /oslash /oe /germandbls /.notdef /.notdef /.notdef /.notdef
256 array astore def
)ps";

// The font that stands for all others. Its matrix is what scalefont multiplies, and what sizes are read
// from.
const std::string_view kHelveticaText = R"ps(/Helvetica
7 dict begin
/FontName /Helvetica def
/FontType 1 def
/PaintType 0 def
/FontMatrix [0.001 0 0 0.001 0 0] def
/Encoding StandardEncoding def
/FontBBox {-174 -285 1028 953} def
/UniqueID 15139632 def
currentdict end definefont pop
)ps";

}  // namespace quillpress
