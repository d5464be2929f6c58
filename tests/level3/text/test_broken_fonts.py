"""Fonts that are broken, by mistake or on purpose: a font is invalidfont, or a glyph is missing, and that soon.

    test_broken_fonts.py [NAME...]

A case says how the program must end: with the warning that characters are lacking, with an error of a name, or
well. Besides, whole fonts are damaged at places that a row of numbers chooses, always the same; those must end
in one of these ways, whichever it is.
"""

import concurrent.futures
import os
import pathlib
import random
import subprocess
import sys
import tempfile

import charstrings as cs
import cid_fonts
import wrapped_fonts as fonts

CLI = os.environ["QUILLPRESS_CLI"]
SECONDS = 20
START = b"%!PS-Adobe-3.0\n<< /PageSize [240 100] >> setpagedevice\n"
SHOW = "/Own 40 selectfont 10 30 moveto (ABA) show showpage\n"

LACKS = "lack"
INVALID = "invalidfont"
WELL = ""


def glyph(words, subrs=(), **more):
    """A font whose A is broken."""
    return cs.font("Own", {"A": words, "B": cs.NOTCH}, subrs=subrs, **more) + SHOW


def truetype(change):
    """A TrueType font of which something is changed: its bytes, after they were put together."""
    data = bytearray(fonts.Sfnt(fonts.LIBERATION).without())
    change(data)
    return wrapped(bytes(data))


def wrapped(data):
    return ("12 dict begin /FontName /Own def /FontType 42 def /PaintType 0 def /FontMatrix [1 0 0 1 0 0] def /FontBBox [0 0 1 1] "
            "def /Encoding StandardEncoding def /CharStrings << /.notdef 0 /A 36 /B 37 >> def "
            f"/sfnts {fonts.strings(data)} def FontName currentdict end definefont pop {SHOW}")


def directory(tag):
    """Where the entry of a table is."""
    data = fonts.Sfnt(fonts.LIBERATION).without()
    return next(12 + 16 * entry for entry in range(20) if data[12 + 16 * entry:16 + 16 * entry] == tag)


def table(tag, place, value):
    """A change of one table's bytes."""
    def change(data):
        start = directory(tag) + 8
        at = int.from_bytes(data[start:start + 4], "big") + place
        data[at:at + len(value)] = value
    return lambda: truetype(change)


def entry(tag, place, value):
    """A change of a table's entry: 8 is its offset, 12 its length."""
    def change(data):
        data[directory(tag) + place:directory(tag) + place + len(value)] = value
    return lambda: truetype(change)


def composite(*parts):
    """Glyphs in a GlyphDirectory that are made of each other: each is the number of its only component."""
    glyphs = "".join(f"{number} <FFFF 0000 0000 0100 0100 0002 {part:04x} 0000>\n" for number, part in parts)
    font = fonts.Sfnt(fonts.LIBERATION)
    return ("13 dict begin /FontName /Own def /FontType 42 def /PaintType 0 def /FontMatrix [1 0 0 1 0 0] def /FontBBox [0 0 1 1] "
            "def /Encoding StandardEncoding def /CharStrings << /.notdef 0 /A 36 /B 37 >> def "
            f"/GlyphDirectory << {glyphs} >> def /sfnts {fonts.strings(font.without('glyf', 'loca'))} def "
            f"FontName currentdict end definefont pop {SHOW}")


def cid_font(change):
    text = cid_fonts.type0("Own", {1: (0, cs.TRIANGLE), 2: (0, cs.NOTCH)}).decode()
    changed = change(text)
    assert changed != text
    return changed + "/Own /CIDFont findresource 40 scalefont setfont 10 30 moveto 1 glyphshow 2 glyphshow showpage\n"


def procedure(body, entries=""):
    return ("10 dict begin /FontType 3 def /FontMatrix [0.001 0 0 0.001 0 0] def /FontBBox [0 0 1000 1000] def /Encoding "
            f"StandardEncoding def {entries} /BuildChar {{{body}}} def currentdict end /Own exch definefont pop {SHOW}")


def set_of_fonts(change, length=None):
    data = bytearray(fonts.Sfnt(fonts.NIMBUS_OTF).tables["CFF "])
    change(data)
    head = f"/FontSetInit /ProcSet findresource begin /Own {length or len(data)} StartData "
    return head.encode() + bytes(data) + b"\n/NimbusSans-Regular 40 selectfont 10 30 moveto (ABA) show showpage\n"


ITSELF = ("/M << /FontType 0 /FMapType 2 /FontMatrix matrix /Encoding [0] /FDepVector 1 array dup /V exch def >> definefont pop "
          "V 0 /M findfont put /M 20 selectfont 10 10 moveto <0000000000000041> show\n")

CASES = {
    "a subroutine that calls itself": (lambda: glyph("0 500 hsbw 4 callsubr endchar", ["4 callsubr return"]), LACKS),
    "subroutines that call each other": (lambda: glyph("0 500 hsbw 4 callsubr endchar", ["5 callsubr return", "4 callsubr return"]),
                                         LACKS),
    "subroutines that double": (lambda: glyph("0 500 hsbw 4 callsubr endchar", [
        f"{place} callsubr {place} callsubr return" for place in range(5, 40)] + ["return"]), LACKS),
    "a subroutine that is not there": (lambda: glyph("0 500 hsbw 999 callsubr endchar"), LACKS),
    "a subroutine below the first": (lambda: glyph("0 500 hsbw -1 callsubr endchar"), LACKS),
    "too many operands": (lambda: glyph("0 500 hsbw " + "1 " * 500 + "rlineto endchar"), None),
    "too few operands": (lambda: glyph("0 500 hsbw rrcurveto endchar"), LACKS),
    "an accented character of itself": (lambda: glyph("0 500 hsbw 0 0 0 65 65 seac"), LACKS),
    "an accented character of what is not there": (lambda: glyph("0 500 hsbw 0 0 0 200 201 seac"), LACKS),
    "other subroutines without end": (lambda: glyph("0 500 hsbw 1 30000 3 callothersubr pop callsubr endchar"), LACKS),
    "a division by zero": (lambda: glyph("0 500 0 div hsbw endchar"), LACKS),
    "a glyph that ends in a number": (lambda: glyph(b"\xff\x00"), LACKS),
    "a glyph of no bytes": (lambda: glyph(b""), WELL),
    "a glyph that is a number": (lambda: glyph(cs.TRIANGLE).replace("/A <", "/A 5 def /X <"), LACKS),
    "numbers that are too large": (lambda: glyph("0 500 hsbw 2000000000 2000000000 rlineto 2000000000 2000000000 rlineto endchar"),
                                   LACKS),
    "a matrix of zeros": (lambda: glyph(cs.TRIANGLE, entries="/FontMatrix [0 0 0 0 0 0] def"), WELL),
    "a matrix of huge numbers": (lambda: glyph(cs.TRIANGLE, entries="/FontMatrix [1e30 0 0 1e30 0 0] def"), None),
    "a matrix that flattens": (lambda: glyph(cs.TRIANGLE, entries="/FontMatrix [0.001 0 0.001 0 0 0] def"), WELL),
    "a matrix of names": (lambda: glyph(cs.TRIANGLE, entries="/FontMatrix [/a /b /c /d /e /f] def"), INVALID),
    "random bytes without number": (lambda: glyph(cs.TRIANGLE).replace("/lenIV 4", "/lenIV 100000"), None),
    "an encoding that is short": (lambda: glyph(cs.TRIANGLE, entries="/Encoding [/A /B] def"), WELL),
    "an encoding of numbers": (lambda: glyph(cs.TRIANGLE, entries="/Encoding 256 array 0 1 255 {1 index exch 7 put} for def"), WELL),
    "Private that is a number": (lambda: glyph(cs.TRIANGLE).replace("/CharStrings", "/Private 5 def /CharStrings"), INVALID),
    "CharStrings that is a number": (lambda: glyph(cs.TRIANGLE).replace("FontName currentdict", "/CharStrings 5 def FontName currentdict"),
                                     INVALID),
    "a weight vector of a hundred": (lambda: glyph(cs.TRIANGLE, entries="/WeightVector 100 array 0 1 99 {1 index exch 0.01 put} for "
                                                                        "def"), WELL),
    "sfnts that are empty": (lambda: wrapped(b""), INVALID),
    "sfnts of one byte": (lambda: wrapped(b"\0"), INVALID),
    "sfnts of numbers": (lambda: wrapped(b"").replace("/sfnts []", "/sfnts [1 2]"), INVALID),
    "more tables than there are": (lambda: truetype(lambda data: data.__setitem__(slice(4, 6), b"\xff\xff")), None),
    "a table beyond the end": (entry(b"glyf", 8, b"\xff\xff\xff\x00"), None),
    "a table that is too long": (entry(b"glyf", 12, b"\xff\xff\xff\xff"), None),
    "a character map of glyphs beyond the end": (table(b"loca", 36 * 4, b"\xff\xff\xff\xff"), None),
    "more glyphs than places": (table(b"maxp", 4, b"\xff\xff"), None),
    "an em of zero units": (table(b"head", 18, b"\0\0"), None),
    "more metrics than there are": (table(b"hhea", 34, b"\xff\xff"), None),
    "a glyph made of itself": (lambda: composite((36, 36)), LACKS),
    "glyphs made of each other": (lambda: composite((36, 37), (37, 36)), LACKS),
    "a chain of a hundred glyphs": (lambda: composite(*((36 + place, 37 + place) for place in range(100))), LACKS),
    "a glyph made of one beyond the end": (lambda: composite((36, 65535)), LACKS),
    "a glyph entry that is cut off": (lambda: composite((36, 37)).replace("36 <FFFF 0000", "36 <FFFF> 99 <FFFF"), LACKS),
    "a CIDMap beyond the data": (lambda: cid_font(lambda text: text.replace("/CIDMapOffset 0", "/CIDMapOffset 900000")), LACKS),
    "a CIDMap of no bytes beyond the data": (lambda: cid_font(lambda text: text.replace("/CIDMapOffset 0", "/CIDMapOffset 900000")
                                                            .replace("/FDBytes 1", "/FDBytes 0")), LACKS),
    "more CIDs than there are": (lambda: cid_font(lambda text: text.replace("/CIDCount 3", "/CIDCount 2000000000")), None),
    "numbers of nine bytes": (lambda: cid_font(lambda text: text.replace("/GDBytes 2", "/GDBytes 9")), INVALID),
    "a negative offset": (lambda: cid_font(lambda text: text.replace("/CIDMapOffset 0", "/CIDMapOffset -5")), INVALID),
    "subroutines beyond the data": (lambda: cid_font(lambda text: text.replace("/SubrCount 0", "/SubrCount 60000")), INVALID),
    "no font dictionaries": (lambda: cid_font(lambda text: text.replace("(Hex)", "/FDArray [] def (Hex)")), INVALID),
    "data that end too soon": (lambda: cid_font(lambda text: text.replace("StartData\n", "StartData\n> pop ")), "ioerror"),
    "a font set that is cut off": (lambda: set_of_fonts(lambda data: data.__delitem__(slice(200, None))), None),
    "a font set longer than the job": (lambda: set_of_fonts(lambda data: None, 9000000), "ioerror"),
    "a font set of zeros": (lambda: set_of_fonts(lambda data: data.__setitem__(slice(0, len(data)), bytes(len(data)))), None),
    "a glyph that shows itself": (lambda: procedure("pop pop 500 0 setcharwidth /Own 10 selectfont 0 0 moveto (A) show"), None),
    "a glyph that stops": (lambda: procedure("pop pop stop"), None),
    "a glyph that leaves its operands": (lambda: procedure("pop pop 500 0 setcharwidth 1 2 3"), WELL),
    "a glyph that takes operands": (lambda: procedure("pop pop pop pop pop pop"), "stackunderflow"),
    "a glyph that says no width": (lambda: procedure("pop pop 0 0 500 500 rectfill"), WELL),
    "a glyph that says its width twice": (lambda: procedure("pop pop 500 0 setcharwidth 500 0 setcharwidth"), None),
    "a glyph that restores": (lambda: "save " + procedure("pop pop 500 0 setcharwidth dup restore"), None),
    "a glyph that shows the page": (lambda: procedure("pop pop 500 0 setcharwidth showpage"), None),
    "a glyph without a way back": (lambda: procedure("pop pop 500 0 setcharwidth", "/FontMatrix [0 0 0 0 0 0] def"), None),
    "a composite font in itself": (lambda: ITSELF, INVALID),
    "a composite font of numbers": (lambda: "/M << /FontType 0 /FMapType 2 /FontMatrix matrix /Encoding [0] /FDepVector [5] >> "
                                    "definefont pop /M 20 selectfont 10 10 moveto <0041> show", None),
    "a CMap of itself": (lambda: "/CIDInit /ProcSet findresource begin 5 dict begin begincmap /CMapName /X def currentdict /X exch "
                         "/CMap defineresource pop /X usecmap /X usecmap /X usecmap endcmap end end", None),
    "a CMap of codes of nine bytes": (lambda: "/CIDInit /ProcSet findresource begin 5 dict begin begincmap 1 begincodespacerange "
                                      "<000000000000000000> <FFFFFFFFFFFFFFFFFF> endcodespacerange", "rangecheck"),
    "noise as an encrypted font": (lambda: "currentfile eexec " + "9F3C" * 200, None),
}


def damaged():
    """Fonts with a few bytes changed, by name."""
    chance = random.Random(20)
    sources = {
        "TrueType": lambda data: wrapped(bytes(data)).encode(),
        "CFF": lambda data: set_of_fonts(lambda whole: whole.__setitem__(slice(0, len(whole)), data)),
    }
    originals = {"TrueType": fonts.Sfnt(fonts.LIBERATION).without(), "CFF": fonts.Sfnt(fonts.NIMBUS_OTF).tables["CFF "]}
    for kind, original in originals.items():
        for number in range(20):
            data = bytearray(original)
            # Most of what matters stands at the beginning.
            reach = (200, 2000, len(data))[number % 3]
            for _ in range(1 + number % 5):
                data[chance.randrange(reach)] = chance.randrange(256)
            yield f"damaged {kind} font {number}", sources[kind], data


def outcome(job):
    """The exit code and what was said."""
    with tempfile.TemporaryDirectory() as name:
        path = pathlib.Path(name) / "job.ps"
        path.write_bytes(START + job)
        result = subprocess.run([CLI, "--dialect", "full", str(path), "-o", str(path) + ".pdf"], capture_output=True,
                                timeout=SECONDS, check=False)
    return result.returncode, result.stderr.decode(errors="replace").replace(str(path), "job").strip()


def examine(case):
    name, make, expected = case
    try:
        job = make()
        code, said = outcome(job if isinstance(job, bytes) else job.encode("latin-1"))
    except subprocess.TimeoutExpired:
        return f"{name}: does not end"
    if code not in (0, 1, 5, 6):
        return f"{name}: exit code {code}: {said}"
    if expected is None:
        return None
    isError = code in (1, 6)
    if isError != (expected not in (LACKS, WELL)) or expected not in said:
        return f"{name}: {expected or 'no error'} expected, exit code {code}: {said}"
    return None


def main():
    cases = [(name, make, expected) for name, (make, expected) in CASES.items()]
    cases += [(name, lambda make=make, data=data: make(data), None) for name, make, data in damaged()]
    if sys.argv[1:]:
        cases = [case for case in cases if case[0] in sys.argv[1:]]
    with concurrent.futures.ThreadPoolExecutor(max_workers=os.cpu_count() or 2) as pool:
        failures = [failure for failure in pool.map(examine, cases) if failure]
    print("\n".join(failures))
    print(f"{len(cases)} broken fonts, {len(failures)} end in a wrong way")
    sys.exit(1 if failures else 0)


if __name__ == "__main__":
    main()
