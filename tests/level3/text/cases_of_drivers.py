"""What printer drivers and other programs do with text."""

import charstrings as cs
import wrapped_fonts as fonts
from text_case import Case, text

ROMAN = "/Times-Roman 24 selectfont "
AGAIN = ("/Times-Roman findfont dup length dict begin {1 index /FID ne {def} {pop pop} ifelse} forall currentdict end /Again "
         "exch definefont pop ")
PATTERN = ("<< /PatternType 1 /PaintType 1 /TilingType 1 /BBox [0 0 6 6] /XStep 6 /YStep 6 /PaintProc {pop 1 0 0 setrgbcolor "
           "0 0 3 3 rectfill 0 0 1 setrgbcolor 3 3 3 3 rectfill} >> matrix makepattern setpattern ")
HATCH = ("[/Pattern /DeviceRGB] setcolorspace 0 0.5 0 << /PatternType 1 /PaintType 2 /TilingType 1 /BBox [0 0 4 4] /XStep 4 "
         "/YStep 4 /PaintProc {pop 0 0 2 4 rectfill} >> matrix makepattern setcolor ")
SHADE = ("<< /PatternType 2 /Shading << /ShadingType 2 /ColorSpace /DeviceRGB /Coords [0 0 200 0] /Extend [true true] /Function "
         "<< /FunctionType 2 /Domain [0 1] /C0 [1 0 0] /C1 [0 0 1] /N 1 >> >> >> matrix makepattern setpattern ")
PICTURE = "gsave 10 35 translate 120 30 scale 2 2 8 [2 0 0 -2 0 2] <80C0FF40> image grestore "
STAMP = ("/BuildChar {1 index /Glyphs get exch 2 copy known {get exec} {pop pop pop 0 0 setcharwidth} ifelse} def "
         "/Glyphs 20 dict dup begin ")


def renamed(name, string="Fig"):
    return lambda: fonts.type42(name, fonts.LIBERATION, string) + f"/{name} 30 selectfont 10 30 moveto ({string}) show\n"


def letters_in_bitmaps(size):
    """Letters as pictures of squares, dvips's way: each a string with its box, in a font of 1 unit a pixel."""
    rows = {65: "183C66C3FFC3C3C3", 66: "FCC6C6FCC6C3C3FE", 67: "3E63C0C0C0C0633E"}
    glyphs = "".join(f"{code} {{pop 9 0 0 0 8 8 setcachedevice 8 8 true [1 0 0 -1 0 8] {{<{row}>}} imagemask}} def "
                     for code, row in rows.items())
    return (f"10 dict begin /FontType 3 def /FontMatrix [{size} 0 0 {size} 0 0] def /FontBBox [0 0 8 8] def /Encoding 256 array 0 1 "
            "255 {1 index exch dup 3 string cvs cvn put} for def " + STAMP + glyphs + "end def currentdict end /Fa exch definefont "
            "pop /Fa findfont setfont ")


def downloaded_per_page_part():
    """The same font again and again, with the letters that the next words need."""
    parts = []
    for place, word in enumerate(("apple", "pear", "plum")):
        parts.append(f"save {fonts.type42('MSTT31', fonts.LIBERATION, word)} /MSTT31 20 selectfont 10 {70 - 25 * place} moveto "
                     f"({word}) show restore\n")
    return "".join(parts)


def one_font_many_sizes():
    return fonts.type42("TT", fonts.LIBERATION, "Sizes") + "".join(
        f"/TT {size} selectfont 10 {place} moveto (Sizes) show\n" for size, place in ((8, 85), (12, 65), (20, 40), (30, 10)))


CASES = [
    Case("font with a driver's name", renamed("MSTT31c2d4"), "Fig", fonts=1),
    Case("font with a name of odd characters", lambda: renamed("F+Times,Bold")(), "Fig", fonts=1),
    Case("font with another's tag", renamed("ABCDEF+Liberation"), "Fig", fonts=1),
    Case("one font at many sizes is one program", one_font_many_sizes, "Sizes Sizes Sizes Sizes", fonts=1),
    Case("one font downloaded again is one program", downloaded_per_page_part, "apple pear plum", fonts=1),
    text(AGAIN + "/Again 24 selectfont 10 60 moveto (one) show " + ROMAN + "10 20 moveto (two) show", "one two",
         "a copy of a font is the same program", fonts=1),
    text(ROMAN + "0 setgray 0 0 240 100 rectfill 1 setgray 10 40 moveto (white) show", "white", "white text on black"),
    text(ROMAN + "1 setgray 10 40 moveto (unseen) show", "unseen", "white text on white"),
    text(ROMAN + "10 40 moveto (under) show " + PICTURE, "under", "text under a picture"),
    text(ROMAN + PICTURE + "10 40 moveto 1 1 0 setrgbcolor (over) show", "over", "text over a picture"),
    text(ROMAN + "gsave 0 45 240 20 rectclip 10 40 moveto (clipped) show grestore", "clipped", "text that a clip cuts"),
    text(ROMAN + "gsave 120 50 30 0 360 arc clip newpath 80 40 moveto (round) show grestore", None, "text in a round clip"),
    text(ROMAN + PATTERN + "10 40 moveto (pattern) show", "pattern", "text in a pattern"),
    text("/Helvetica-Bold 50 selectfont " + HATCH + "10 30 moveto (hatch) show", "hatch", "text in a pattern without colours"),
    text("/Helvetica-Bold 50 selectfont " + SHADE + "10 30 moveto (shade) show", "shade", "text in a shading"),
    text(ROMAN + "0.2 0.9 0.1 0 setcmykcolor 10 40 moveto (cmyk) show", "cmyk", "text in CMYK"),
    text(ROMAN + "[/Separation (Spot) /DeviceCMYK {dup 0 exch 0 0}] setcolorspace 0.8 setcolor 10 40 moveto (spot) show", "spot",
         "text in a spot colour"),
    text(ROMAN + "10 40 moveto (bold) show 10.4 40 moveto (bold) show", None, "bold by striking twice"),
    text(ROMAN + "10 40 moveto (bold) dup show 10 40 moveto false charpath 0.6 setlinewidth stroke", "bold",
         "bold by stroking the outline too"),
    text(ROMAN + "10 40 moveto (under) show 10 36 moveto (under) stringwidth rlineto 1.2 setlinewidth stroke", "under",
         "underlined by a line"),
    text(ROMAN + "10 40 moveto (struck) show 10 46 (struck) stringwidth pop 1.5 rectfill", "struck", "struck out by a bar"),
    text(ROMAN + "20 20 moveto gsave 35 rotate (turned) show grestore", None, "turned by user space"),
    text("90 rotate 0 -240 translate " + ROMAN + "10 40 moveto (sideways) show", "sideways", "page turned"),
    text("1 -1 scale 0 -100 translate /Times-Roman findfont [24 0 0 -24 0 0] makefont setfont 10 40 moveto (downwards) show",
         "downwards", "page mirrored, font mirrored back"),
    text("0.12 dup scale /Times-Roman findfont [200 0 0 200 0 0] makefont setfont 83 333 moveto (pixels) show", "pixels",
         "page in pixels"),
    text("0.06 dup scale /Times-Roman findfont 400 scalefont setfont 166 666 moveto (a b) [187 100 200] xshow", None,
         "distances in whole pixels"),
    text(ROMAN + "10 40 moveto 3 0 32 0.2 0 (set to the full) awidthshow", "set to the full", "justified"),
    text(ROMAN + "10 60 moveto (T) show -2.2 0 rmoveto (o) show -0.5 0 rmoveto (p) show", "Top", "kerned by moves"),
    text(letters_in_bitmaps(2) + "10 40 moveto (AB) show 6 0 rmoveto (C) show", None, "bitmap font"),
    text(letters_in_bitmaps(1) + "0.5 dup scale 10 40 moveto (ABC) show (CBA) show", None, "bitmap font in pixels"),
    text(letters_in_bitmaps(2) + "1 0 0 setrgbcolor 10 40 moveto (AB) show", None, "bitmap font in colour"),
    text("/Nonesuch 24 selectfont 10 40 moveto (fall back) show", "fall back", "font that is not there",
         warning="Nonesuch replaced by", alike=lambda: "/Times-Roman 24 selectfont 10 40 moveto (fall back) show"),
    text("/Helvetica 24 selectfont 10 40 moveto (stand in) show", "stand in", "standard font", warning="Helvetica replaced by"),
    text("/Palatino-Italic 24 selectfont 10 40 moveto (book) show", "book", "standard font of another family"),
    Case("character without a glyph", lambda: cs.font("Own", {"A": cs.TRIANGLE}) + "/Own 40 selectfont 10 30 moveto (AZA) show\n",
         None, warning="lacks 1 character"),
    Case("code without a name", lambda: cs.font("Own", {"A": cs.TRIANGLE}) + "/Own 40 selectfont 10 30 moveto (A\\001A) show\n", "A A"),
    text("<< /FormType 1 /BBox [0 0 200 50] /Matrix matrix /PaintProc {pop /Times-Roman 20 selectfont 5 10 moveto (form) show} >> "
         "dup execform 0 50 translate execform", "form form", "text in a form"),
    text("<< /PatternType 1 /PaintType 1 /TilingType 1 /BBox [0 0 60 20] /XStep 60 /YStep 20 /PaintProc {pop /Times-Roman 16 "
         "selectfont 2 4 moveto (tile) show} >> matrix makepattern setpattern 0 0 240 100 rectfill", None, "text in a pattern's cell"),
    text(ROMAN + "-30 40 moveto (left of the page) show", None, "text that begins beside the page"),
    text(ROMAN + "10 200 moveto (above) show 10 40 moveto (here) show", "here", "text beside the page"),
    text(ROMAN + "10 40 moveto (one) show showpage /Times-Roman 24 selectfont 10 40 moveto (two) show", "one two", "two pages",
         fonts=1),
    text(ROMAN + "gsave nulldevice 10 40 moveto (none) show grestore 10 40 moveto (some) show", "some", "text on no device"),
    text("/Times-Roman findfont dup length 1 add dict begin {1 index /FID ne {def} {pop pop} ifelse} forall /PaintType 2 def "
         "/StrokeWidth 20 def currentdict end /Line exch definefont pop /Line 40 selectfont 10 30 moveto (Outline) show", "Outline",
         "outlined copy of a standard font"),
    text("/a {moveto} bind def /F {findfont exch makefont setfont} bind def [24 0 0 24 0 0] /Times-Roman F (short) 10 40 a show",
         "short", "short names for everything"),
]
