"""Fonts of every base type, as jobs carry them."""

import charstrings as cs
from text_case import Case, text
from wrapped_fonts import (DEJAVU, LIBERATION, NIMBUS_T1, added, font_set, incremental, type1_file, type42)

SHAPES = {"A": cs.TRIANGLE, "B": cs.NOTCH, "O": cs.RING}
SHOW = "/Own 40 selectfont 10 30 moveto ({}) show\n"


def own(string, glyphs=None, **more):
    return lambda: cs.font("Own", glyphs or SHAPES, **more) + SHOW.format(string)


# Flex: the reference point, then six more, each handed over with subroutine 2; subroutine 0 draws.
FLEX = ("50 700 hsbw 0 vmoveto 1 callsubr 250 0 rmoveto 2 callsubr -100 0 rmoveto 2 callsubr 50 20 rmoveto 2 callsubr "
        "50 0 rmoveto 2 callsubr 50 0 rmoveto 2 callsubr 50 -20 rmoveto 2 callsubr 150 0 rmoveto 2 callsubr "
        "50 550 0 0 callsubr 600 vlineto -500 hlineto closepath endchar")
REPLACED = ("50 600 hsbw 0 20 hstem 0 100 vstem 0 vmoveto 500 hlineto 300 vlineto 4 1 3 callothersubr pop callsubr "
            "400 vlineto -500 hlineto closepath endchar")
DOT = "50 300 hsbw dotsection 0 100 hstem 600 vmoveto 150 hlineto 120 vlineto -150 hlineto closepath dotsection endchar"
STEMS = ("50 700 hsbw 0 100 250 100 500 100 vstem3 0 50 300 50 600 50 hstem3 0 vmoveto 600 hlineto 650 vlineto "
         "-600 hlineto closepath endchar")
ACCENTED = {"A": cs.TRIANGLE, "acute": "100 333 hsbw 750 vmoveto 100 hlineto 150 vlineto -100 hlineto closepath endchar",
            "Aacute": "50 600 hsbw 100 250 60 65 194 seac"}
SIDE = "50 -20 600 0 sbw 0 20 rmoveto 500 hlineto 700 vlineto -500 hlineto closepath endchar"
HALVES = ("50 1200 2 div hsbw 0 vmoveto 1001 2 div hlineto 1400 2 div vlineto -1001 2 div hlineto closepath endchar")

# Multiple masters: a light and a bold stem; the instance lies between. Subroutine 4 blends one value, 5 two.
BLENDS = ["2 14 callothersubr pop return", "4 15 callothersubr pop pop return"]
MASTERS = ("/WeightVector [0.25 0.75] def /Blend 3 dict dup begin /FontBBox [[0 0][0 0][1000 1000][1000 1000]] def "
           "/Private 14 dict def end def")
BLENDED = "50 600 hsbw 0 vmoveto 100 300 4 callsubr hlineto 700 vlineto -100 -300 4 callsubr hlineto closepath endchar"
BLENDED_TWICE = ("50 600 hsbw 0 vmoveto 500 hlineto 0 600 100 133 5 callsubr rlineto -500 hlineto closepath endchar")

TYPE_3 = ("/Own 10 dict begin /FontType 3 def /FontMatrix [{matrix}] def /FontBBox [0 0 {em} {em}] def\n"
          "/Encoding StandardEncoding def\n{body}\ncurrentdict end definefont pop\n")


def type3(body, matrix="0.001 0 0 0.001 0 0", em=1000):
    return TYPE_3.format(body=body, matrix=matrix, em=em)


BY_NAME = ("/CharProcs 4 dict dup begin /.notdef {} def /A {0 0 moveto 500 0 lineto 250 700 lineto fill} def\n"
           "/B {50 50 400 600 rectfill} def end def\n"
           "/BuildGlyph {600 0 0 0 600 700 setcachedevice exch /CharProcs get exch get exec} def\n"
           "/BuildChar {1 index /Encoding get exch get 1 index /BuildGlyph get exec} def\n")
BY_CODE = ("/BuildChar {exch pop 600 0 0 0 600 700 setcachedevice 65 eq {0 0 500 700 rectfill}\n"
           "{250 350 250 0 360 arc fill} ifelse} def\n")
COLOURED = ("/BuildGlyph {600 0 setcharwidth exch pop /A eq {1 0 0} {0 0 1} ifelse setrgbcolor 0 0 500 350 rectfill\n"
            "0 0.6 0 setrgbcolor 0 350 500 350 rectfill} def\n")
MASK = ("/BuildGlyph {pop pop 9 0 0 0 8 8 setcachedevice 8 8 true [1 0 0 -1 0 8] <3C7EE7C3C3E77E3C> imagemask} def\n")
PROCEDURE_MASK = ("/BuildGlyph {pop pop 9 0 0 0 8 8 setcachedevice 8 8 true [1 0 0 -1 0 8] "
                  "{<183C7EFFFF7E3C18>} imagemask} def\n")
IMAGE = ("/BuildGlyph {pop pop 9 0 setcharwidth 8 8 scale 2 2 8 [2 0 0 -2 0 2] {<FF000000FF000000FFFFFF00>} false 3\n"
         "colorimage} def\n")
NESTED = ("/BuildGlyph {pop pop 900 0 setcharwidth /Helvetica 900 selectfont 0 0 moveto (R) show} def\n")
STROKED = ("/BuildGlyph {pop pop 700 0 -50 -50 650 750 setcachedevice 60 setlinewidth 0 0 moveto 600 700 lineto\n"
           "600 0 moveto 0 700 lineto stroke} def\n")
SIZED = ("/BuildGlyph {pop pop 700 0 0 0 600 700 setcachedevice 0.5 0.5 scale 2 2 translate 0 0 1200 1400 rectfill} def\n")


def show_grown():
    """Letters of which each is downloaded when it is first shown."""
    parts = [incremental("Grown", DEJAVU)]
    for place, word in enumerate(("Hamb", "urg", "Hagel")):
        parts.append(added("Grown", DEJAVU, word))
        parts.append(f"/Grown 20 selectfont 10 {70 - 25 * place} moveto ({word}) show\n")
    return "".join(parts)


def grown_at_once(directory):
    return (incremental("Grown", DEJAVU, directory) + added("Grown", DEJAVU, "Tall") +
            "/Grown 40 selectfont 10 30 moveto (Tall) show\n")


def grown_within_save():
    return ("/Outer save def\n" + incremental("Grown", DEJAVU) + added("Grown", DEJAVU, "one") +
            "/Grown 20 selectfont 10 60 moveto (one) show Outer restore\n" + incremental("Grown", DEJAVU) +
            added("Grown", DEJAVU, "two") + "/Grown 20 selectfont 10 20 moveto (two) show\n")


def truetype(string, path=LIBERATION, **more):
    return lambda: (type42("TT", path, string, **more) +
                    f"/TT 40 selectfont 10 30 moveto ({string}) show\n")


CASES = [
    Case("type 1, binary eexec", lambda: type1_file("binary") + b"/NimbusRoman-Regular 40 selectfont 10 30 moveto (Fig Ab) show",
         "Fig Ab"),
    Case("type 1, hexadecimal eexec", lambda: type1_file("hex") + b"/NimbusRoman-Regular 40 selectfont 10 30 moveto (Fig Ab) show",
         "Fig Ab"),
    Case("type 1, eexec of a string", lambda: type1_file("string") + b"/NimbusRoman-Regular 40 selectfont 10 30 moveto (Fig) show",
         "Fig"),
    Case("type 1, shapes", own("AOB"), "AOB"),
    Case("type 1, subroutine", own("AB", {"A": "50 600 hsbw 4 callsubr endchar", "B": cs.NOTCH},
                                    subrs=["0 vmoveto 500 hlineto 700 vlineto -500 hlineto closepath return"]), "AB"),
    Case("type 1, subroutine in a subroutine",
         own("AB", {"A": "50 600 hsbw 0 vmoveto 4 callsubr closepath endchar", "B": cs.NOTCH},
             subrs=["5 callsubr 700 vlineto -500 hlineto return", "500 hlineto return"]), "AB"),
    Case("type 1, flex", own("AB", {"A": FLEX, "B": cs.NOTCH}), "AB"),
    Case("type 1, hint replacement", own("AB", {"A": REPLACED, "B": cs.NOTCH}, subrs=["0 50 vstem return"]), "AB"),
    Case("type 1, dot section and stems of three", own("iB", {"i": DOT, "B": STEMS}), "iB"),
    Case("type 1, accented character", own("\\301B", {**ACCENTED, "B": cs.NOTCH},
                                            entries="/Encoding StandardEncoding 256 array copy dup 193 /Aacute put def"),
         "\u00c1B"),
    Case("type 1, side bearing of two numbers", own("AB", {"A": SIDE, "B": cs.NOTCH}), "AB"),
    Case("type 1, division", own("AB", {"A": HALVES, "B": cs.NOTCH}), "AB"),
    Case("type 1, no random bytes in front", own("AB", length_iv=0), "AB"),
    Case("type 1, charstrings in the clear", own("AB", length_iv=-1), "AB"),
    Case("type 1, font matrix that slants", own("AB", entries="/FontMatrix [0.001 0 0.0003 0.001 0 0] def"), "AB"),
    Case("type 1, font matrix of 2048 units", own("AB", entries="/FontMatrix [0.000488 0 0 0.000488 0 0] def"), "AB"),
    Case("type 1, outlined by PaintType 2", own("AB", entries="/PaintType 2 def /StrokeWidth 30 def"), "AB"),
    Case("type 1, Metrics by number", own("AAB", entries="/Metrics 2 dict dup /A 900 put def"), None),
    Case("type 1, Metrics with side bearing", own("AAB", entries="/Metrics 2 dict dup /A [150 900] put def"), None),
    Case("type 1, CDevProc", own("AAB", entries="/CDevProc {pop 10 -1 roll pop 800 10 1 roll} def"), None,
         alike=own("AAB", entries="/Metrics 2 dict dup /A 800 put dup /B 800 put def")),
    Case("multiple masters, one value", own("AB", {"A": BLENDED, "B": cs.NOTCH}, subrs=BLENDS, entries=MASTERS), "AB",
         alike=own("AB", {"A": cs.box(600, 50, 0, 375, 700), "B": cs.NOTCH})),
    Case("multiple masters, two values", own("AB", {"A": BLENDED_TWICE, "B": cs.NOTCH}, subrs=BLENDS, entries=MASTERS),
         "AB", alike=own("AB", {"A": cs.box(600, 50, 0, 550, 700).replace("700 vlineto", "75 700 rlineto"), "B": cs.NOTCH})),
    Case("CFF font set", lambda: font_set("Set") + b"/NimbusSans-Regular 40 selectfont 10 30 moveto (Fig Ab) show", "Fig Ab"),
    Case("CFF font, encoded anew",
         lambda: font_set("Set") + b"/NimbusSans-Regular findfont dup length dict begin {1 index /FID ne {def} {pop pop} "
         b"ifelse} forall /Encoding 256 array 0 1 255 {1 index exch /.notdef put} for dup 1 /eacute put dup 2 /Euro put "
         b"def currentdict end /Again exch definefont pop /Again 40 selectfont 10 30 moveto <0102> show", "\u00e9\u20ac"),
    Case("CFF font, glyph by name",
         lambda: font_set("Set") + b"/NimbusSans-Regular 40 selectfont 10 30 moveto /Aring glyphshow /s glyphshow", "\u00c5s"),
    text(type3(BY_NAME) + SHOW.format("AB"), "AB", "type 3, BuildGlyph"),
    text(type3(BY_CODE) + SHOW.format("AB"), "AB", "type 3, BuildChar"),
    text(type3(COLOURED) + SHOW.format("AB"), "AB", "type 3, colours of its own"),
    text(type3(MASK, "0.125 0 0 0.125 0 0", 8) + SHOW.format("OO"), "OO", "type 3, image mask"),
    text(type3(PROCEDURE_MASK, "0.125 0 0 0.125 0 0", 8) + SHOW.format("OO"), "OO", "type 3, image mask by a procedure"),
    text(type3(IMAGE, "0.125 0 0 0.125 0 0", 8) + SHOW.format("OO"), "OO", "type 3, picture"),
    text(type3(NESTED) + SHOW.format("AB"), None, "type 3, text in a glyph"),
    text(type3(STROKED) + SHOW.format("AB"), "AB", "type 3, stroked"),
    text(type3(SIZED) + SHOW.format("AB"), "AB", "type 3, matrix changed in the glyph"),
    text(type3(BY_NAME, "0.001 0 0.0004 0.001 0 0") + SHOW.format("AB"), "AB", "type 3, slanted"),
    text(type3(BY_NAME, "1 0 0 1 0 0", 1) + "/Own 0.04 selectfont 10 30 moveto (AB) show\n", "AB", "type 3, units as large as the size"),
    text(type3(BY_NAME) + "1 0.5 0 setrgbcolor " + SHOW.format("AB") + "0 0.5 0 setrgbcolor (AB) show\n", "ABAB",
         "type 3, in two colours"),
    text(type3(BY_NAME) + "/Own 20 selectfont 10 60 moveto (AB) show /Own 60 selectfont 10 5 moveto (AB) show\n", "AB AB",
         "type 3, at two sizes"),
    text(type3(BY_NAME) + "/Own findfont [30 10 -10 30 0 0] makefont setfont 30 20 moveto (AB) show\n", None,
         "type 3, turned"),
    Case("type 42", truetype("Fig Ab"), "Fig Ab"),
    Case("type 42, small pieces", truetype("Fig Ab", piece=4000), "Fig Ab"),
    Case("type 42, pieces without a byte behind", truetype("Fig Ab", piece=5002, padding=""), "Fig Ab"),
    Case("type 42, another family", truetype("Quay", path=DEJAVU), "Quay"),
    Case("type 42, accented characters", truetype("\xc4\xe9\xf1\xdf"), "\u00c4\u00e9\u00f1\u00df"),
    Case("type 42, every letter", truetype("The quick zy", path=LIBERATION), "The quick zy"),
    Case("type 42, outlined", truetype("Fig", head="/PaintType 2 def /StrokeWidth 0.02 def"), "Fig"),
    Case("type 42, Metrics", truetype("AAB", head="/Metrics 2 dict dup /G41 1.2 put def"), None),
    Case("type 42, glyphs between shows", show_grown, "Hamb urg Hagel"),
    Case("type 42, glyphs in a dictionary", lambda: grown_at_once("dict"), "Tall"),
    Case("type 42, glyphs in an array", lambda: grown_at_once("array"), "Tall", alike=lambda: grown_at_once("dict")),
    Case("type 42, downloaded again after restore", grown_within_save, "one two"),
]
