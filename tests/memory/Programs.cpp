#include "tests/memory/Programs.h"

#include <array>

namespace {

constexpr auto kPrograms = std::to_array<Program>({
    {"Tokens", R"ps(12 -3.5 16#FF 1e3 /name (text (nested) \101\
more) <48656c6c6f> <~87cURD]~> {1 {2} /a (b)} [3 [4]] //true % comment
)ps"},
    {"Stack", "1 2 3 4 5 3 copy 4 2 roll exch dup 2 index mark 1 2 counttomark cleartomark count pop clear "},
    {"Math",
     "1 2 add 3.5 sub 2 mul 7 div 9 2 idiv pop 30 cos 30 sin 1 2 atan 2 sqrt neg abs 7 3 mod 1.5 floor 1.5 "
     "ceiling 1.5 round "},
    {"Comparison", "1 2 eq (a) (b) lt /a /b ne [1 2] [1 2] eq 3 dict dup eq 1.5 2 ge (b) (a) gt 1 2 le "},
    {"Logic", "true false and 7 3 or true true xor 5 not null false "},
    {"Control",
     "true {1} if false {1} {2} ifelse {3 4} exec {5} stopped pop {stop} stopped pop [6] cvx exec "
     "/p {7} bind def p "},
    {"Loops",
     "3 {1 pop} repeat 0 1 4 {pop} for 0 0.5 2 {pop} for {exit} loop [1 2 (c)] {pop} forall (abc) {pop} "
     "forall 3 dict dup /a 1 put dup /b 2 put {pop pop} forall "},
    {"Arrays",
     "4 array dup 0 7 put aload pop 1 2 2 array astore dup 1 get pop 1 2 3 3 packedarray true setpacking "
     "currentpacking pop [1 2 3] dup 1 2 getinterval exch 0 [9] putinterval "},
    {"Strings",
     "9 string dup 0 65 put dup 2 (bc) putinterval dup 1 3 getinterval pop length (abc) (ab) anchorsearch "
     "<414243> dup 0 66 put 1 get (xyz) 9 string copy "},
    {"Conversion",
     "(12) cvi (1.5) cvr (name) cvn 7 9 string cvs /n 9 string cvs 1.5 type {1} cvx xcheck readonly "
     "true 9 string cvs 3.7 cvi "},
    {"Dictionaries",
     "5 dict begin /a 1 def /b 2 def currentdict /a known /a load /a 3 store a where pop currentdict "
     "end dup /b undef dup length exch maxlength 40 dict begin 0 1 30 {9 string cvs cvn dup def} for end "
     "systemdict /add get cleardictstack "},
    {"CurrentFile",
     "currentfile 9 string readstring 123456789currentfile 5 string readhexstring 48656c6c6f\n"
     "currentfile 20 string readline a line of text\ncurrentfile read a "
     "currentfile 0 () /SubFileDecode filter "},
    {"Filter",
     "(data) 0 () /SubFileDecode filter {(abc) exch} /X filter (abc) /ASCIIHexDecode filter /ASCII85Decode "
     "filter "},
    {"Output", "(hi) print 1 = (text) == {a 1 [2]} == 3 dict == /n = stack vmstatus "},
    {"Matrix",
     "matrix dup 2 3 put identmatrix [2 0 0 2 0 0] matrix concatmatrix matrix currentmatrix matrix "
     "defaultmatrix 1 2 transform 3 4 dtransform 5 6 itransform 7 8 idtransform "},
    {"Transformations",
     "2 3 translate 2 2 scale 30 rotate [1 0 0 1 5 5] concat 1 1 matrix scale 1 2 matrix translate "
     "3 matrix rotate matrix currentmatrix setmatrix "},
    {"Paths",
     "10 20 moveto 30 40 lineto 1 2 rmoveto 3 4 rlineto 1 2 3 4 5 6 curveto 1 2 3 4 5 6 rcurveto closepath "
     "currentpoint newpath 5 5 moveto 9 9 lineto stroke "},
    {"Arcs",
     "100 100 50 0 270 arc 100 100 50 0 -200 arcn 0 0 moveto 10 0 10 10 3 arct 20 0 20 20 3 arcto fill "},
    {"Painting",
     "1 1 moveto 9 1 lineto 9 9 lineto closepath gsave eofill grestore gsave fill grestore stroke 1 2 3 4 "
     "rectfill 1 2 3 4 rectstroke "},
    {"Clipping",
     "1 1 moveto 9 1 lineto 9 9 lineto closepath clip newpath 1 2 3 4 rectclip 2 2 moveto 5 5 lineto "
     "eoclip initclip clippath "},
    {"Colours",
     "0.5 setgray currentgray 1 0 0 setrgbcolor currentrgbcolor 0.3 1 1 sethsbcolor currenthsbcolor 0 0 0 1 "
     "setcmykcolor currentcmykcolor /DeviceRGB setcolorspace [/DeviceCMYK] setcolorspace "},
    {"Lines",
     "2 setlinewidth 1 setlinecap 1 setlinejoin 4 setmiterlimit [3 5 2] 1 setdash [] 0 setdash "
     "currentlinewidth "},
    {"States", "gsave 2 2 scale save gsave gsave restore grestore save restore grestore "},
    {"Fonts",
     "/Helvetica findfont dup 12 scalefont setfont (text) show (text) stringwidth currentfont /F exch "
     "definefont pop /F findfont pop FontDirectory pop "},
    {"InlineImages",
     "2 2 8 matrix {(abcd)} image 2 2 8 matrix <61626364> image 1 1 8 matrix {(abc)} false 3 "
     "colorimage 2 1 8 matrix {(ab)} {(cd)} {(ef)} true 3 colorimage 8 2 true matrix (ab) imagemask "},
    {"ImageObjects",
     "90 50 8 matrix {450 string} image 64 64 8 matrix {64 string dup 0 1 put} image "
     "9 dict dup /Width 70 put dup /Height 60 put dup /BitsPerComponent 8 put dup /Decode [0 1] put "
     "dup /DataSource {700 string} put image "},
    {"ImageFromFile",
     "4 4 8 matrix {currentfile 8 string readhexstring pop} image "
     "00112233445566778899aabbccddeeff\n"},
    {"Patterns",
     "9 dict begin /PaintType 1 def /PatternType 1 def /TilingType 1 def /BBox [0 0 8 8] def /XStep 8 def "
     "/YStep 8 def /PaintProc {pop 0.5 setgray 0 0 4 4 rectfill 2 2 8 matrix {(abcd)} image} def "
     "currentdict end matrix makepattern setpattern 0 0 90 90 rectfill "},
    {"Generated",
     "1 setflat currentflat 3 dict setsystemparams currentsystemparams [1 2] 3 setscreen currentscreen "
     "{} settransfer currenttransfer 1 2 infill 0 setstrokeadjust pop 1 2 3 4 setbbox rootfont "},
});

constexpr std::string_view kNextJob = R"ps(
clear cleardictstack 5 dict begin /a 3 def /p {a 1 add} def
p 4 eq {0.25 setgray} {0.75 setgray} ifelse
10 20 moveto 30 40 lineto 100 100 50 0 90 arc closepath stroke
gsave 2 2 scale 0 0 5 5 rectfill grestore
0 1 3 {dup moveto 9 9 lineto} for fill
currentfile 5 string readstring abcde pop (abcde) eq {1 setlinewidth} if
2 2 8 matrix {(abcd)} image
9 dict dup /PaintType 1 put dup /BBox [0 0 8 8] put dup /XStep 8 put dup /YStep 8 put
dup /PaintProc {pop 0 0 4 4 rectfill} put matrix makepattern setpattern
0 0 9 9 rectfill end clear
)ps";

}  // namespace

std::span<const Program> programs() {
  return kPrograms;
}

std::string_view nextJob() {
  return kNextJob;
}
