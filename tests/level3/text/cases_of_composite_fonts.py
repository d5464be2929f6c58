"""Composite fonts: every way from the bytes of a string to descendants, and CIDFonts of every type."""

import charstrings as cs
import cid_fonts
from text_case import Case, text
from wrapped_fonts import DEJAVU, LIBERATION, cid_type2, hex_cids

# Descendants that differ at a glance: Times and Courier, both 1000 units of code A to Z.
FONTS = "/Times-Roman findfont /Courier findfont"
LATIN = "/One /Times-Roman findfont def /Two /Helvetica-Bold findfont def /Three /Courier findfont def\n"


def mapped(kind, entries="", encoding="[0 1 2]", vector="[One Two Three]", mode=0):
    return (f"{LATIN}12 dict begin /FontName /Mix def /FontType 0 def /FMapType {kind} def /WMode {mode} def\n"
            f"/FontMatrix [1 0 0 1 0 0] def /Encoding {encoding} def /FDepVector {vector} def {entries}\n"
            "/Mix currentdict end definefont pop\n/Mix 24 selectfont 10 40 moveto\n")


def nested():
    inner = ("12 dict begin /FontName /In def /FontType 0 def /FMapType 2 def /FontMatrix [1 0 0 1 0 0] def "
             "/Encoding [0 1] def /FDepVector [/Times-Roman findfont /Courier findfont] def /In currentdict end definefont pop\n")
    return (inner + "12 dict begin /FontName /Mix def /FontType 0 def /FMapType 3 def /FontMatrix [1 0 0 1 0 0] def "
            "/Encoding [0 1] def /FDepVector [/Helvetica findfont /In findfont] def /Mix currentdict end definefont pop\n"
            "/Mix 24 selectfont 10 40 moveto <4142FF01 0041 0142 FF00 43> show\n")


CMAP = """/CIDInit /ProcSet findresource begin 12 dict begin begincmap
/CMapName /{name} def /CMapType 1 def /WMode {mode} def
/CIDSystemInfo 3 dict dup begin /Registry (Adobe) def /Ordering (Identity) def /Supplement 0 def end def
{rows}
endcmap CMapName currentdict /CMap defineresource pop end end
"""


def cmap(rows, name="Own-H", mode=0):
    return CMAP.format(name=name, mode=mode, rows=rows)


SHAPES = {0: (0, "0 500 hsbw endchar"), 1: (0, cs.TRIANGLE), 2: (0, cs.NOTCH), 3: (0, cs.RING)}
# Charstrings that end in the middle of a number, and one that calls itself by a subroutine that is not there.
BROKEN = {**SHAPES, 3: (0, "0 500 hsbw 99 callsubr"), 4: (0, "pop pop pop")}
SHARED = {0: (0, "0 500 hsbw endchar"), 1: (0, "50 600 hsbw 0 callsubr endchar"), 2: (1, "50 600 hsbw 0 callsubr endchar")}
SQUARE = ["0 vmoveto 500 hlineto 500 vlineto -500 hlineto closepath return"]
USE_OWN = "/Made 40 selectfont 10 30 moveto "


def cid0(show, glyphs=SHAPES, ordering="Identity", name="Identity-H", **more):
    return lambda: (cid_fonts.type0("Cid", glyphs, ordering=ordering, **more) +
                    (cid_fonts.composed("Made", "Cid", name) + USE_OWN + show).encode())


def cid2_without_characters(cids):
    """TrueType glyphs that no table tells the characters of."""
    return lambda: (cid_type2("Cid", LIBERATION, tables=()) + cid_fonts.composed("Made", "Cid") +
                    f"/Made 40 selectfont 10 30 moveto <{''.join(f'{cid:04x}' for cid in cids)}> show\n")


def cid2(string, path=LIBERATION, name="Identity-H", size=40, at="10 30", **more):
    return lambda: (cid_type2("Cid", path, **more) + cid_fonts.composed("Made", "Cid", name) +
                    f"/Made {size} selectfont {at} moveto {hex_cids(path, string)} show\n")


def vertical():
    return (cid_type2("Cid", LIBERATION) + "/Cid /CIDFont findresource dup length 1 add dict copy dup /FID undef "
            "dup /Metrics2 << 41 [0 -1 0.3 0.9] 76 [0 -0.8 0.15 0.8] 74 [0 -1.1 0.25 0.7] >> put /Down exch /CIDFont "
            "defineresource pop\n" + cid_fonts.composed("Made", "Down", "Identity-V") +
            f"/Made 30 selectfont 100 95 moveto {hex_cids(LIBERATION, 'Fig')} show\n")


def through(rows, show, extra=""):
    """A CIDFont of type 0 through a CMap of the job's."""
    return lambda: (cid_fonts.type0("Cid", SHAPES) +
                    (extra + cmap(rows) + cid_fonts.composed("Made", "Cid", "Own-H") + USE_OWN + show).encode())


def grown():
    return (cid_fonts.incremental("Cid", "30 dict") + cid_fonts.glyph_added("Cid", 0, "0 500 hsbw endchar") +
            cid_fonts.glyph_added("Cid", 7, cs.TRIANGLE) + cid_fonts.composed("Made", "Cid") + USE_OWN + "<0007> show\n" +
            cid_fonts.glyph_added("Cid", 9, cs.RING) + "<0009> show\n")


def grown_at_once():
    return cs.font("Own", {"A": cs.TRIANGLE, "O": cs.RING}) + "/Own 40 selectfont 10 30 moveto (AO) show\n"


def bitmaps(rows):
    return cid_fonts.bitmap_font("Bits") + rows + "end\n" + cid_fonts.composed("Made", "Bits")


AS_TYPE_3 = """10 dict begin /FontType 3 def /FontMatrix [0.0625 0 0 0.0625 0 0] def /FontBBox [0 0 16 16] def
/Encoding StandardEncoding def /BuildChar { exch pop 53 eq
 { 20 0 0 0 16 16 setcachedevice 16 16 true [1 0 0 1 0 0] <3FFC60068C31F00F8C318001A0059FF980014812481224241FF8000000000000> }
 { 12 0 2 0 10 8 setcachedevice 8 8 true [1 0 0 1 -2 0] <FF8181BDBD8181FF> } ifelse imagemask } def
currentdict end /Bits3 exch definefont pop /Bits3 40 selectfont 10 30 moveto """


SMILE = "[20 0 0 0 16 16] <3FFC60068C31F00F8C318001A0059FF980014812481224241FF8000000000000> 5 /Bits /CIDFont findresource addglyph\n"
BAR = "[12 0 2 0 10 8] <FF8181BDBD8181FF> 6 /Bits /CIDFont findresource addglyph\n"
BASES = "beginbfrange <41> <43> <44> endbfrange"


def names_by_cmap(rows):
    return (f"/CIDInit /ProcSet findresource begin 12 dict begin begincmap /CMapName /Own-H def /CMapType 1 def "
            f"/WMode 0 def 1 begincodespacerange <00> <FF> endcodespacerange {rows} endcmap CMapName currentdict "
            "/CMap defineresource pop end end /Made /Own-H [/Times-Roman] composefont pop " + USE_OWN)


# The character for one, by its CID in Japan's, China's and Korea's collections; and Japan's a.
ONE = {number: {0: (0, "0 500 hsbw endchar"), number: (0, cs.TRIANGLE)} for number in (1200, 4162, 6460)}
JAPAN = {**ONE[1200], 843: (0, cs.RING)}

ONE_BYTE = "1 begincodespacerange <00> <FF> endcodespacerange "
TWO_BYTES = "1 begincodespacerange <0000> <FFFF> endcodespacerange "
MIXED = "2 begincodespacerange <00> <7F> <8000> <FFFF> endcodespacerange "

CASES = [
    text(mapped(2) + "<0041 0142 0243 0044> show\n", "ABCD", "FMapType 2, font number and code"),
    text(mapped(3) + "<4142 FF01 4344 FF02 45> show\n", "ABCDE", "FMapType 3, escape"),
    text(mapped(3, "/EscChar 27 def") + "<4142 1B01 43> show\n", "ABC", "FMapType 3, another escape"),
    text(mapped(4, encoding="[0 1]", vector="[One Two]") + "<41 C2 43> show\n", "ABC", "FMapType 4, first bit"),
    text(mapped(5) + "<0041 00C2 0143> show\n", "ABC", "FMapType 5, nine bits and seven"),
    text(mapped(6, "/SubsVector <00 50 50> def") + "<41 42 91 92 E3> show\n", "ABABC", "FMapType 6, ranges of one byte"),
    text(mapped(6, "/SubsVector <01 0100 0100> def") + "<0041 0142 0243> show\n", "ABC", "FMapType 6, ranges of two bytes"),
    text(mapped(7) + "<4142 FF01 43 FF00 44> show\n", "ABCD", "FMapType 7, double escape"),
    text(mapped(8, encoding="[0 1]", vector="[One Two]") + "<4142 0E 43 0F 44> show\n", "ABCD", "FMapType 8, shift"),
    text(mapped(8, "/ShiftIn 1 def /ShiftOut 2 def", encoding="[0 1]", vector="[One Two]") + "<41 02 42 01 43> show\n",
         "ABC", "FMapType 8, other shifts"),
    text(mapped(2, encoding="[1 0 0]") + "<0041 0142 0243> show\n", "ABC", "font numbers through Encoding"),
    text(nested(), "ABABC", "composite font in a composite font"),
    text(mapped(2) + "/Mix findfont [24 6 -6 24 0 0] makefont setfont 20 20 moveto <0041 0142 0243> show\n", None,
         "composite font, turned"),
    text(mapped(2, vector="[One Two [0.5 0 0 1 0 0] makefont Three]") + "<0041 0142 0243> show\n", "ABC",
         "descendant with a matrix of its own"),
    text(mapped(2) + "<0041 0142 0243> stringwidth pop 0 rlineto 3 setlinewidth stroke\n", "", "composite font, stringwidth"),
    text(mapped(2) + "<0041 0142 0243> false charpath 0.5 setlinewidth stroke\n", None, "composite font, charpath"),
    Case("CIDFont of type 0, hexadecimal", cid0("<000100020003> show"), None),
    Case("CIDFont of type 0, binary", cid0("<000100020003> show", form="Binary"), None),
    Case("CIDFont of type 0, subroutines and two font dictionaries",
         cid0("<00010002> show", SHARED, subrs=SQUARE, matrices=(cid_fonts.UPRIGHT, "0.0005 0 0 0.0005 0 0")), None),
    # What readers take for the text then is the CID.
    Case("CIDFont of type 0, CIDs that nothing tells the meaning of",
         cid0("<004100500042> show", {0: SHAPES[0], 65: SHAPES[1], 80: SHAPES[2], 66: SHAPES[3]}), "APB"),
    Case("CIDFont of type 2, CIDs that nothing tells the meaning of", cid2_without_characters((36, 46, 37)), "$.%"),
    Case("CIDFont of type 0, CID without a glyph", cid0("<000100990002> show"), None, warning="lack",
         alike=cid0("<000100000002> show")),
    Case("CIDFont of type 0, vertical without metrics for it", cid0("<00010002> show", name="Identity-V"), None),
    Case("CIDFont of type 0, broken glyph", cid0("<0001000300020004> show", BROKEN), None, warning="lack",
         alike=cid0("<00010002> show")),
    Case("CIDFont of type 0, glyphs between shows", grown, None, alike=grown_at_once),
    Case("CIDFont of type 0, glyph by CID",
         lambda: cid_fonts.type0("Cid", SHAPES) + b"/Cid /CIDFont findresource 40 scalefont setfont 10 30 moveto 1 glyphshow "
         b"3 glyphshow", None),
    Case("CIDFont of type 1", lambda: cid_fonts.procedure_font("Cid") + cid_fonts.composed("Made", "Cid") + USE_OWN +
         "<000100020003> show\n", None),
    Case("CIDFont of type 2", cid2("Fig Ab"), "Fig Ab"),
    Case("CIDFont of type 2, another family", cid2("Fig Ab", DEJAVU), "Fig Ab"),
    Case("CIDFont of type 2, vertical without metrics for it", cid2("Fig", name="Identity-V"), "Fig",
         alike=cid2("Fig")),
    Case("CIDFont of type 2, vertical by Metrics2", vertical, None),
    Case("CIDFont of type 2, CIDMap as a string", lambda: cid_type2("Cid", LIBERATION, "<0000 0024 0025>") +
         cid_fonts.composed("Made", "Cid") + USE_OWN + "<00010002> show\n", "AB"),
    Case("CIDFont of type 2, CIDMap as strings", lambda: cid_type2("Cid", LIBERATION, "[<0000> <0024> <0025>]") +
         cid_fonts.composed("Made", "Cid") + USE_OWN + "<00010002> show\n", "AB"),
    Case("CIDFont of type 2, CIDMap as a dictionary", lambda: cid_type2("Cid", LIBERATION, "<< 0 0 1 36 2 37 >>") +
         cid_fonts.composed("Made", "Cid") + USE_OWN + "<00010002> show\n", "AB"),
    Case("CIDFont of type 2, CIDMap as a number", lambda: cid_type2("Cid", LIBERATION, "35") +
         cid_fonts.composed("Made", "Cid") + USE_OWN + "<00010002> show\n", "AB"),
    Case("CIDFont of type 4, bitmaps", lambda: bitmaps(SMILE + BAR) + USE_OWN + "<000500060005> show\n", None,
         alike=lambda: AS_TYPE_3 + "(565) show\n"),
    Case("CIDFont of type 4, glyphs removed",
         lambda: bitmaps(BAR.replace(" 6 ", " 0 ") + SMILE + BAR + "5 5 /Bits /CIDFont findresource removeglyphs\n") +
         USE_OWN + "<00060005> show\n", None,
         alike=lambda: AS_TYPE_3 + "(66) show\n"),
    Case("CMap, ranges and characters", through(TWO_BYTES + "1 begincidrange <2000> <2001> 1 endcidrange "
                                                "1 begincidchar <3000> 3 endcidchar", "<200020013000> show"), None),
    Case("CMap, codes of one and two bytes", through(MIXED + "1 begincidrange <41> <42> 1 endcidrange "
                                                     "1 begincidchar <8001> 3 endcidchar", "<41800142> show"), None),
    Case("CMap, notdef range", through(ONE_BYTE + "1 begincidrange <41> <42> 1 endcidrange "
                                       "1 beginnotdefrange <00> <20> 3 endnotdefrange", "<411042> show"), None,
         alike=cid0("<000100030002> show")),
    Case("CMap, another one used", through("/Base-H usecmap 1 begincidchar <5A> 3 endcidchar", "<41425A> show",
                                           cmap(ONE_BYTE + "1 begincidrange <41> <42> 1 endcidrange", "Base-H")), None),
    text(names_by_cmap("1 beginbfrange <41> <43> <44> endbfrange") + "(ABC) show\n", "DEF", "CMap, base font's codes"),
    text(names_by_cmap("2 beginbfchar <41> /Aring <42> /germandbls endbfchar") + "(AB) show\n", "\u00c5\u00df",
         "CMap, base font's names"),
    Case("CMap, two fonts", lambda: cmap(ONE_BYTE + "0 usefont 1 beginbfrange <41> <43> <41> endbfrange "
                                         "1 usefont 1 beginbfrange <61> <63> <41> endbfrange") +
         "/Made /Own-H [/Times-Roman /Courier-Bold] composefont pop " + USE_OWN + "(AaBb) show\n", "AABB"),
    Case("predefined CMap, Japanese", cid0("<82A0 88EA> show", JAPAN, "Japan1", "90ms-RKSJ-H"), "\u3042\u4e00"),
    Case("predefined CMap, Chinese", cid0("<D2BB> show", ONE[4162], "GB1", "GBK-EUC-H"), "\u4e00"),
    Case("predefined CMap, Korean", cid0("<ECE9> show", ONE[6460], "Korea1", "KSCms-UHC-H"), "\u4e00"),
    Case("predefined CMap, Unicode", cid0("<4E00> show", JAPAN, "Japan1", "UniJIS-UCS2-H"), "\u4e00"),
]
