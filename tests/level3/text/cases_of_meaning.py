"""The ways by which a glyph's meaning is known, so that text can be searched and copied."""

import charstrings as cs
import wrapped_fonts as fonts
from text_case import Case, text

SHAPES = [cs.TRIANGLE, cs.NOTCH, cs.RING]


def named(*names):
    """Up to three shapes under names, shown by codes from 1 on."""
    glyphs = dict(zip(names, SHAPES))
    encoding = "".join(f"dup {code} /{name} put " for code, name in enumerate(names, 1))
    return lambda: (cs.font("Own", glyphs, entries="/Encoding 256 array 0 1 255 {1 index exch /.notdef put} for " +
                            encoding + "def") +
                    f"/Own 40 selectfont 10 30 moveto <{''.join(f'{code:02x}' for code in range(1, len(names) + 1))}> show\n")


def told(table, names="ABC"):
    """Names that say nothing, and a table that does."""
    glyphs = {f"g{place}": shape for place, shape in enumerate(SHAPES)}
    encoding = "".join(f"dup {place + 1} /g{place} put " for place in range(3))
    return lambda: (cs.font("Own", glyphs, entries="/Encoding 256 array 0 1 255 {1 index exch /.notdef put} for " +
                            encoding + f"def /FontInfo 2 dict dup begin /GlyphNames2Unicode {table} def end def") +
                    "/Own 40 selectfont 10 30 moveto <010203> show\n")


def numbered_truetype(string, tables=("cmap",), table=""):
    """TrueType glyphs under numbers, at codes from 1 on."""
    font = fonts.Sfnt(fonts.LIBERATION)
    glyphs = [font.glyph_of(character) for character in string]
    encoding = "".join(f"dup {code} /g{glyph} put " for code, glyph in enumerate(glyphs, 1))
    names = "".join(f"/g{glyph} {glyph} def " for glyph in glyphs)
    return lambda: ("12 dict begin /FontName /TT def /FontType 42 def /PaintType 0 def /FontMatrix [1 0 0 1 0 0] def "
                    f"/FontBBox [0 0 1 1] def {table} /Encoding 256 array 0 1 255 {{1 index exch /.notdef put}} for "
                    f"{encoding} def /CharStrings 50 dict dup begin /.notdef 0 def {names} end def "
                    f"/sfnts {fonts.strings(font.without(more=tables))} def FontName currentdict end definefont pop "
                    f"/TT 40 selectfont 10 30 moveto <{''.join(f'{code:02x}' for code in range(1, len(glyphs) + 1))}> show\n")


TYPE_3 = ("10 dict begin /FontType 3 def /FontMatrix [0.001 0 0 0.001 0 0] def /FontBBox [0 0 1000 1000] def {entries}\n"
          "/Encoding 256 array 0 1 255 {{1 index exch /.notdef put}} for {encoding} def /BuildGlyph {{exch pop 600 0 0 0 600 "
          "700 setcachedevice {first} eq {{0 0 500 700 rectfill}} {{0 0 300 300 rectfill}} ifelse}} def\n"
          "currentdict end /Own exch definefont pop /Own 40 selectfont 10 30 moveto {show}\n")


def procedures(first, second, show="<4142> show", entries=""):
    return TYPE_3.format(first=first, encoding=f"dup 65 {first} put dup 66 {second} put", show=show, entries=entries)


def two_by_code(first, second):
    """Fonts of which nothing but the codes tells the text, with glyphs of their own at the same codes."""
    font = TYPE_3.replace("BuildGlyph", "BuildChar").format(first=102, encoding="", entries="", show="({word}) show")
    upper = font.replace("{word}", first).replace("/Own", "/Upper").replace("10 30 moveto", "10 55 moveto")
    return upper + font.replace("{word}", second).replace("500 700 rectfill", "400 500 rectfill").replace("10 30", "10 10")


CASES = [
    Case("names of the glyph list", named("Aacute", "germandbls", "Euro"), "\u00c1\u00df\u20ac"),
    Case("names of Greek letters", named("Gamma", "alpha", "omega"), "\u0393\u03b1\u03c9"),
    Case("names of Cyrillic letters", named("afii10017", "afii10065", "afii10097"), "\u0410\u0430\u044f"),
    Case("names of signs", named("bullet", "endash", "quotedblleft"), "\u2022\u2013\u201c"),
    Case("names by number, uni", named("uni0041", "uni20AC", "uni0416"), "A\u20ac\u0416"),
    Case("names by number, uni of several", named("uni00410042", "uni0043"), "ABC"),
    Case("names by number, u", named("u0041", "u1D400", "u20AC"), "A\U0001d400\u20ac"),
    Case("names by number, lower case is no number", named("uni20ac", "A"), None),
    Case("codes of two fonts whose glyphs have no names", lambda: two_by_code("first", "strife"), "first strife"),
    # Codes below the blank are no text of anybody's.
    Case("a glyph by a name that says nothing, without a code",
         lambda: cs.font("Own", {"notehead": cs.TRIANGLE, "A": cs.NOTCH}, entries="/Encoding StandardEncoding def") +
         "/Own 40 selectfont 10 30 moveto (A) show /notehead glyphshow\n", "A\x01"),
    Case("names with suffixes", named("A.sc", "one.oldstyle", "f.alt1"), "A1f"),
    Case("names of ligatures by parts", named("f_i", "f_f_l", "T_h"), "fifflTh"),
    Case("names of ligatures", named("fi", "fl", "ff"), "fiflff"),
    Case("names of ligatures by number", named("uniFB01", "A"), "\ufb01A"),
    Case("names of ligatures with a suffix", named("f_i.liga", "uni00660069.liga"), "fifi"),
    Case("names of small capitals", named("Asmall", "oneoldstyle", "Bsmall"), None),
    Case("names that say nothing, at their codes", lambda: cs.font(
        "Own", {"g1": cs.TRIANGLE, "g2": cs.NOTCH},
        entries="/Encoding 256 array 0 1 255 {1 index exch /.notdef put} for dup 65 /g1 put dup 66 /g2 put def") +
         "/Own 40 selectfont 10 30 moveto (AB) show\n", "AB"),
    Case("table by numbers", told("<< /g0 16#41 /g1 16#E9 /g2 16#20AC >>"), "A\u00e9\u20ac"),
    Case("table by strings", told("<< /g0 <0041> /g1 <00E9> /g2 <20AC> >>"), "A\u00e9\u20ac"),
    Case("table of several characters", told("<< /g0 <00660069> /g1 <0041> /g2 <D835DC00> >>"), "fiA\U0001d400"),
    Case("table before names", lambda: cs.font("Own", {"A": cs.TRIANGLE}, entries="/FontInfo << /GlyphNames2Unicode << /A "
                                               "16#3A9 >> >> def") + "/Own 40 selectfont 10 30 moveto (A) show\n", "\u03a9"),
    Case("TrueType by its own table", numbered_truetype("A\u00e9\u20ac"), "A\u00e9\u20ac"),
    Case("TrueType by its own table, Greek and Cyrillic", numbered_truetype("\u0393\u03c9\u0416"), "\u0393\u03c9\u0416"),
    Case("TrueType by a table for glyphs", numbered_truetype("AB", (), "/FontInfo << /GlyphNames2Unicode << /g36 16#41 /g37 "
                                                             "16#42 >> >> def"), "AB"),
    text(procedures("/A", "/eacute"), "A\u00e9", "type 3 by names"),
    text(procedures("/a1", "/a2", entries="/FontInfo << /GlyphNames2Unicode << /a1 16#41 /a2 16#3A9 >> >> def"),
         "A\u03a9", "type 3 by a table"),
    text(procedures("/uni0416", "/f_i"), "\u0416fi", "type 3 by numbers and parts"),
    text("/Symbol 40 selectfont 10 30 moveto (abG) show", "\u03b1\u03b2\u0393", "Symbol"),
    text("/ZapfDingbats 40 selectfont 10 30 moveto (4n) show", "\u2714\u25a0", "ZapfDingbats"),
    text("/Times-Roman findfont dup length dict begin {1 index /FID ne {def} {pop pop} ifelse} forall /Encoding "
         "ISOLatin1Encoding def currentdict end /Latin exch definefont pop /Latin 30 selectfont 10 30 moveto "
         "(\\311\\351\\337 \\277) show", "\u00c9\u00e9\u00df \u00bf", "ISOLatin1Encoding"),
    text("/Times-Roman 30 selectfont 10 30 moveto (\\256\\257 \\252\\272) show", "fifl \u201c\u201d", "StandardEncoding"),
    text("/Times-Roman 30 selectfont 10 30 moveto (two words) show 10 5 moveto (line) show", "two words line", "words and lines"),
    text("/Times-Roman 30 selectfont 10 30 moveto (t) show (w) show (o) show ( ) show (w) show (o) show", "two wo",
         "letters one by one"),
    text("/Times-Roman 30 selectfont 10 30 moveto (two) show 15 0 rmoveto (gap) show", "two gap", "a gap without a blank"),
    text("/Courier 24 selectfont 10 30 moveto (mono) {gsave ( ) dup 0 4 -1 roll put show grestore 14.4 0 rmoveto} forall",
         "mono", "letters set one by one"),
]
