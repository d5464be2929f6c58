"""Each operator that shows text, in simple and composite fonts."""

import charstrings as cs
import cid_fonts
from text_case import Case, text
from wrapped_fonts import DEJAVU, LIBERATION, cid_type2, hex_cids, type42

ROMAN = "/Times-Roman 24 selectfont 10 40 moveto "
TWO = ("12 dict begin /FontName /Mix def /FontType 0 def /FMapType 2 def /FontMatrix [1 0 0 1 0 0] def /Encoding [0 1] def "
       "/FDepVector [/Times-Roman findfont /Courier findfont] def /Mix currentdict end definefont pop "
       "/Mix 24 selectfont 10 40 moveto ")
CODED = ("/BuildChar {exch pop 600 0 0 0 600 700 setcachedevice 65 eq {0 0 moveto 500 0 lineto 500 700 lineto 0 700 lineto closepath fill} {0 0 moveto 500 0 lineto "
         "250 700 lineto fill} ifelse} def ")
TYPE_3 = ("10 dict begin /FontType 3 def /FontMatrix [0.001 0 0 0.001 0 0] def /FontBBox [0 0 1000 1000] def "
          "/Encoding StandardEncoding def " + CODED + "currentdict end /Own exch definefont pop /Own 40 selectfont 10 30 moveto ")
RULE = "gsave 2 setlinewidth currentpoint 10 sub moveto 0 30 rlineto stroke grestore "


def truetype(string, program):
    return lambda: type42("TT", LIBERATION, string) + "/TT 24 selectfont 10 40 moveto " + program


def cid(program):
    return lambda: cid_type2("Cid", DEJAVU) + cid_fonts.composed("Made", "Cid") + "/Made 24 selectfont 10 40 moveto " + program


ABC = hex_cids(DEJAVU, "ABC")
BLOCK = "0.5 setgray 0 0 240 100 rectfill 1 0 0 setrgbcolor 0 40 240 20 rectfill"

CASES = [
    text(ROMAN + "(Hello) show " + RULE, "Hello", "show"),
    text(ROMAN + "() show (Hi) show () show " + RULE, "Hi", "show, empty strings"),
    text(ROMAN + "(one two) show ( three) show", "one two three", "show, strings that go on"),
    text(ROMAN + "3 0 (wide) ashow " + RULE, "wide", "ashow"),
    text(ROMAN + "-1 2 (rising) ashow " + RULE, None, "ashow, rising and closer"),
    text(ROMAN + "12 0 32 (a b c) widthshow " + RULE, "a b c", "widthshow"),
    text(ROMAN + "5 3 98 (abab) widthshow " + RULE, None, "widthshow, another character"),
    text(ROMAN + "9 0 32 1 0 (ab cd) awidthshow " + RULE, "ab cd", "awidthshow"),
    text(ROMAN + "(abc) [20 30 10] xshow " + RULE, None, "xshow"),
    text(ROMAN + "(abc) [1 2 3] {10 mul} forall 3 array astore xshow", None, "xshow, computed distances"),
    text(ROMAN + "(abc) <95200003000A00140005> xshow " + RULE, None, "xshow, encoded numbers"),
    text(ROMAN + "(abc) [5 -10 5] yshow " + RULE, None, "yshow"),
    text(ROMAN + "(abc) [15 5 15 -10 15 5] xyshow " + RULE, None, "xyshow"),
    text(ROMAN + "(word) [10.662 12 8.004 12] xshow " + RULE, "word", "xshow, the font's own widths"),
    text(ROMAN + "/A glyphshow /Aring glyphshow /fi glyphshow " + RULE, "A\u00c5fi", "glyphshow"),
    text(ROMAN + "{pop pop 4 0 rmoveto} (kern) kshow " + RULE, None, "kshow"),
    text(ROMAN + "{2 copy 65 eq exch 86 eq and {-4 0 rmoveto} if pop pop} (TAVA) kshow " + RULE, "TAVA", "kshow, pairs"),
    text(ROMAN + "{pop pop currentfont /Courier 24 selectfont setfont} (ab) kshow " + RULE, "ab", "kshow, font in the procedure"),
    text(ROMAN + "{pop pop /Helvetica 24 selectfont} (ab) kshow " + RULE, "ab", "kshow, another font from there"),
    text(ROMAN + "{pop pop 1 0 0 setrgbcolor} (abc) kshow " + RULE, "abc", "kshow, colour in the procedure"),
    text(ROMAN + "{pop pop currentpoint 0 0 40 100 rectclip moveto} (wwww) kshow", None, "kshow, clip in the procedure"),
    text(ROMAN + "{pop exch 65 sub 10 mul exch 2 div exch rmoveto (x) show} (ABC) cshow", None, "cshow"),
    text(ROMAN + "{pop pop pop} (ABC) cshow (D) show", "D", "cshow shows nothing by itself"),
    text(ROMAN + "(Hello) stringwidth rmoveto (x) show", "x", "stringwidth"),
    text(ROMAN + "(Hello) stringwidth exch 2 div neg exch rmoveto 120 0 rmoveto (Hello) show", "Hello", "stringwidth centres"),
    text("100 0 60 100 rectclip " + ROMAN + "(before, within, behind) show", "before, within, behind", "show, clipped at both ends"),
    text("100 0 60 100 rectclip " + ROMAN + "(outside) show (, within) show", ", within", "show, a string outside the clip"),
    text("0 60 240 40 rectclip " + ROMAN + "(below) show 60 70 moveto (within) show", "within", "show, another line outside the clip"),
    text("20 60 moveto 120 60 lineto 70 90 lineto clip newpath " + ROMAN + "(below a triangle) show 40 60 moveto (within it) show",
         "within it", "show, outside a clip that is no rectangle"),
    text("100 0 60 100 rectclip " + ROMAN + "(abcdef) [20 40 40 40 20 20] xshow", None, "xshow, clipped at both ends"),
    text("30 0 100 100 rectclip " + TYPE_3 + "(ABAB) show", None, "type 3, clipped"),
    text(ROMAN + "(Ag) false charpath 0.5 setlinewidth stroke", None, "charpath stroked"),
    text(ROMAN + "(Ag) true charpath fill", None, "charpath filled"),
    text("/Times-Bold 60 selectfont 10 30 moveto (Clip) false charpath clip newpath " + BLOCK, None, "charpath as clip"),
    text(ROMAN + "(Ag) false charpath (Bg) false charpath fill", None, "charpath twice"),
    text(ROMAN + "(Ag) false charpath pathbbox 2 index sub exch 3 index sub exch rectstroke", None, "charpath, its box"),
    text(ROMAN + "(Ag) false charpath flattenpath 0.4 setlinewidth stroke", None, "charpath flattened"),
    text(ROMAN + "(Ag) false charpath currentpoint lineto 0 20 rlineto 1 setlinewidth stroke", None, "charpath and on"),
    text(TYPE_3 + "(AB) show " + RULE, "AB", "show, type 3"),
    text(TYPE_3 + "5 0 (AB) ashow " + RULE, "AB", "ashow, type 3"),
    text(TYPE_3 + "(AB) [60 30] xshow " + RULE, None, "xshow, type 3"),
    text(TYPE_3 + "(AB) stringwidth rlineto 3 setlinewidth stroke", "", "stringwidth, type 3"),
    text(TYPE_3 + "(AB) false charpath 1 setlinewidth stroke", None, "charpath, type 3"),
    text(TYPE_3.replace("BuildChar {", "BuildChar {1 0 0 setrgbcolor ") + "0 0 1 setrgbcolor (ABA) show " + RULE, None,
         "type 3, a colour of the procedure's"),
    text(TYPE_3.replace("setcachedevice", "pop pop pop pop setcharwidth 1 0 0 setrgbcolor") + "0 0 1 setrgbcolor (ABA) show "
         + RULE, None, "type 3, colours of its own between others"),
    text(TYPE_3 + "{pop pop 0 20 rmoveto} (AB) kshow " + RULE, None, "kshow, type 3"),
    Case("show, TrueType", truetype("Hello", "(Hello) show " + RULE), "Hello"),
    Case("awidthshow, TrueType", truetype("ab cd", "9 0 32 1 0 (ab cd) awidthshow " + RULE), "ab cd"),
    Case("xyshow, TrueType", truetype("abc", "(abc) [15 5 15 -10 15 5] xyshow " + RULE), None),
    Case("glyphshow, TrueType", truetype("Ab", "/G41 glyphshow /G62 glyphshow " + RULE), "Ab"),
    Case("charpath, TrueType", truetype("Ag", "(Ag) false charpath 0.5 setlinewidth stroke"), None),
    Case("stringwidth, TrueType", truetype("Ag", "(Ag) stringwidth rlineto 3 setlinewidth stroke"), ""),
    text(TWO + "<0041 0142> show " + RULE, "AB", "show, composite"),
    text(TWO + "4 0 <0041 0142> ashow " + RULE, "AB", "ashow, composite"),
    text(TWO + "<0041 0142> [30 20] xshow " + RULE, None, "xshow, composite"),
    text(TWO + "<0041 0142 0043> [10 10 10 -5 10 10] xyshow " + RULE, None, "xyshow, composite"),
    text(TWO + "{rmoveto pop currentfont setfont gsave (x) show grestore} <0041 0142> cshow", None, "cshow, composite"),
    text(TWO + "10 0 322 <0041 0142 0043> widthshow " + RULE, None, "widthshow, composite"),
    Case("show, CIDFont", cid(f"{ABC} show " + RULE), "ABC"),
    Case("xshow, CIDFont", cid(f"{ABC} [30 20 25] xshow " + RULE), None),
    Case("cshow, CIDFont", cid(f"{{pop pop glyphshow 3 0 rmoveto}} {ABC} cshow " + RULE), None),
    Case("charpath, CIDFont", cid(f"{ABC} false charpath 0.5 setlinewidth stroke"), None),
    text("/Times-Roman findfont [24 0 12 24 0 0] makefont setfont 10 40 moveto (Slant) show " + RULE, "Slant", "makefont slants"),
    text("/Times-Roman findfont [24 0 0 -24 0 0] makefont setfont 10 60 moveto (Flip) show " + RULE, None, "makefont mirrors"),
    text("/Times-Roman findfont [0 24 -24 0 0 0] makefont setfont 60 20 moveto (Up) show", "Up", "makefont turns"),
    text("/Times-Roman findfont [24 0 0 24 10 15] makefont setfont 10 30 moveto (Off) show " + RULE, "Off", "makefont moves the origin"),
    text("/Times-Roman findfont [36 0 0 18 0 0] makefont setfont 10 40 moveto (Wide) show " + RULE, "Wide", "makefont widens"),
    text("/Times-Roman [20 5 -5 20 0 0] selectfont 20 20 moveto (Turn) show " + RULE, None, "selectfont with a matrix"),
    text("30 rotate /Times-Roman 24 selectfont 40 0 moveto (Turn) show " + RULE, None, "user space turned"),
    text("2 0.5 scale /Times-Roman 40 selectfont 5 60 moveto (Wide) show", "Wide", "user space widened"),
    text("/Times-Roman findfont 12 scalefont 2 scalefont setfont 10 40 moveto (twice) show", "twice", "scalefont twice"),
    text("/Times-Roman 0.5 selectfont 10 40 moveto (tiny) show /Times-Roman 24 selectfont (big) show", None, "tiny sizes"),
    text("/Times-Roman 300 selectfont -20 -40 moveto (O) show", None, "larger than the page"),
    text("/Times-Roman 0 selectfont 10 40 moveto (none) show /Times-Roman 24 selectfont (some) show", "some",
         "size zero", alike=lambda: "/Times-Roman 24 selectfont 10 40 moveto (some) show"),
    text("/Own 40 selectfont 10 30 moveto (A) show".join([cs.font("Own", {"A": cs.TRIANGLE}), " /Z glyphshow (A) show"]), "A A",
         "glyphshow of a name without a glyph", warning="lack"),
]
