"""Wraps font files of the system as the font dictionaries that jobs carry.

Fonts are taken from Debian's packages when a test runs; nothing of them is kept in the project.
"""

import pathlib
import re
import struct

DEJAVU = pathlib.Path("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf")
LIBERATION = pathlib.Path("/usr/share/fonts/truetype/liberation/LiberationSerif-Regular.ttf")
NIMBUS_T1 = pathlib.Path("/usr/share/fonts/type1/urw-base35/NimbusRoman-Regular.t1")
NIMBUS_OTF = pathlib.Path("/usr/share/fonts/opentype/urw-base35/NimbusSans-Regular.otf")


class Sfnt:
    """The tables of a TrueType or OpenType file."""

    def __init__(self, path):
        self.bytes = path.read_bytes()
        count = struct.unpack(">H", self.bytes[4:6])[0]
        self.tables = {}
        for entry in range(count):
            tag, _, offset, length = struct.unpack(">4sLLL", self.bytes[12 + 16 * entry:28 + 16 * entry])
            self.tables[tag.decode()] = self.bytes[offset:offset + length]

    def glyph_of(self, character):
        """By the subtable of format 4."""
        cmap = self.tables["cmap"]
        for entry in range(struct.unpack(">H", cmap[2:4])[0]):
            platform, encoding, offset = struct.unpack(">HHL", cmap[4 + 8 * entry:12 + 8 * entry])
            if (platform, encoding) != (3, 1):
                continue
            table = cmap[offset:]
            segments = struct.unpack(">H", table[6:8])[0] // 2
            words = struct.unpack(f">{len(table) // 2}H", table[:len(table) // 2 * 2])
            for segment in range(segments):
                end, start = words[7 + segment], words[8 + segments + segment]
                delta, place = words[8 + 2 * segments + segment], 8 + 3 * segments + segment
                if not start <= ord(character) <= end:
                    continue
                if words[place] == 0:
                    return (ord(character) + delta) & 0xFFFF
                return words[place + words[place] // 2 + ord(character) - start]
        return 0

    def outlines(self):
        """The bytes of each glyph."""
        isLong = struct.unpack(">H", self.tables["head"][50:52])[0]
        loca, glyf = self.tables["loca"], self.tables["glyf"]
        count = len(loca) // (4 if isLong else 2)
        places = [value * (1 if isLong else 2) for value in struct.unpack(f">{count}{'L' if isLong else 'H'}", loca)]
        return [glyf[start:end] for start, end in zip(places, places[1:])]

    def without(self, *tags, more=()):
        """The file with only the tables that outlines need, less some, and more."""
        kept = [tag for tag in (*more, "cvt ", "fpgm", "glyf", "head", "hhea", "hmtx", "loca", "maxp", "prep")
                if tag in self.tables and tag not in tags]
        header = struct.pack(">LHHHH", 0x10000, len(kept), 128, 3, 0)
        offset = len(header) + 16 * len(kept)
        directory, body = b"", b""
        for tag in kept:
            table = self.tables[tag]
            directory += struct.pack(">4sLLL", tag.encode(), 0, offset + len(body), len(table))
            body += table + bytes(-len(table) % 4)
        return header + directory + body


def strings(data, size=60000, padding="00"):
    """An sfnts array: pieces of even length, each with the byte that the format lets a job append."""
    pieces = [data[start:start + size] for start in range(0, len(data), size)]
    return "[" + "\n".join("<" + piece.hex() + padding + ">" for piece in pieces) + "]"


def names_of(text):
    """A name for each character of the text, and its code in the strings below."""
    return {character: f"G{ord(character):02X}" for character in sorted(set(text))}


def encoding(text):
    lines = ["/Encoding 256 array 0 1 255 {1 index exch /.notdef put} for"]
    lines += [f"dup {ord(character)} /{name} put" for character, name in names_of(text).items()]
    return "\n".join(lines) + " def\n"


def type42(name, path, text, piece=60000, padding="00", head=""):
    """All outlines at once."""
    font = Sfnt(path)
    glyphs = "".join(f"/{glyph} {font.glyph_of(character)} def " for character, glyph in names_of(text).items())
    return (f"%!PS-TrueTypeFont\n12 dict begin /FontName /{name} def /FontType 42 def /PaintType 0 def\n"
            f"/FontMatrix [1 0 0 1 0 0] def /FontBBox [0 0 1 1] def {head}\n{encoding(text)}"
            f"/CharStrings 300 dict dup begin /.notdef 0 def {glyphs} end def\n"
            f"/sfnts {strings(font.without(), piece, padding)} def\nFontName currentdict end definefont pop\n")


def incremental(name, path, directory="dict"):
    """No outlines yet: a GlyphDirectory that fills."""
    font = Sfnt(path)
    start = "300 dict" if directory == "dict" else f"{len(font.outlines())} array"
    return (f"14 dict begin /FontName /{name} def /FontType 42 def /PaintType 0 def\n"
            f"/FontMatrix [1 0 0 1 0 0] def /FontBBox [0 0 1 1] def /GlyphDirectory {start} def\n"
            "/Encoding 256 array 0 1 255 {1 index exch /.notdef put} for def\n"
            f"/CharStrings 300 dict dup begin /.notdef 0 def end def\n"
            f"/sfnts {strings(font.without('glyf', 'loca'))} def\nFontName currentdict end definefont pop\n"
            f"/AddGlyph {{ % font code name index outline\n"
            "  4 index /GlyphDirectory get 2 index 2 index put pop\n"
            "  3 index /CharStrings get 2 index 2 index put pop\n"
            "  3 -1 roll /Encoding get 3 1 roll put } bind def\n")


def added(name, path, text):
    """Calls that download the glyphs of a text, parts of composites first."""
    font = Sfnt(path)
    outlines = font.outlines()
    lines = []

    def part(index):
        lines.append(f"/{name} findfont /GlyphDirectory get {index} <{outlines[index].hex()}> put")
        outline = outlines[index]
        if len(outline) > 10 and struct.unpack(">h", outline[:2])[0] < 0:
            place, flags = 10, 0x20
            while flags & 0x20:
                flags, component = struct.unpack(">HH", outline[place:place + 4])
                part(component)
                place += 4 + (4 if flags & 1 else 2) + (2 if flags & 8 else 4 if flags & 0x40 else 8 if flags & 0x80 else 0)

    for character, glyph in names_of(text).items():
        index = font.glyph_of(character)
        part(index)
        lines.append(f"/{name} findfont {ord(character)} /{glyph} {index} <{outlines[index].hex()}> AddGlyph")
    return "\n".join(lines) + "\n"


def cid_type2(name, path, cids=None, tables=("cmap",)):
    """A CIDFont whose CIDs are glyph numbers."""
    font = Sfnt(path)
    return (f"16 dict begin /CIDFontName /{name} def /CIDFontType 2 def /FontType 42 def /PaintType 0 def\n"
            f"/FontMatrix [1 0 0 1 0 0] def /FontBBox [0 0 1 1] def /CIDCount {len(font.outlines())} def\n"
            "/CIDSystemInfo 3 dict dup begin /Registry (Adobe) def /Ordering (Identity) def /Supplement 0 def end def\n"
            "/Encoding 256 array 0 1 255 {1 index exch /.notdef put} for def\n"
            f"/CharStrings 1 dict dup begin /.notdef 0 def end def /GDBytes 2 def /CIDMap {cids or 0} def\n"
            f"/sfnts {strings(font.without(more=tables))} def\nCIDFontName currentdict end /CIDFont defineresource pop\n")


def hex_cids(path, text):
    font = Sfnt(path)
    return "<" + "".join(f"{font.glyph_of(character):04x}" for character in text) + ">"


def font_set(name):
    """A CFF font set as jobs carry it: binary data after StartData."""
    data = Sfnt(NIMBUS_OTF).tables["CFF "]
    head = f"%!PS-Adobe-3.0 Resource-FontSet\n/FontSetInit /ProcSet findresource begin\n/{name} {len(data)} StartData "
    return head.encode() + data + b"\n"


def type1_file(form):
    """A font of the system as it stands, with its encrypted part binary, hexadecimal or as a string."""
    head, rest = NIMBUS_T1.read_bytes().split(b"currentfile eexec", 1)
    cipher = re.split(rb"\s?(?:0{64}\s+){8}cleartomark", rest.lstrip(b"\r\n"))[0]
    if form == "string":
        return head + b"<" + cipher.hex().encode() + b"> eexec\n"
    zeros = b"\n" + b"\n".join([b"0" * 64] * 8) + b"\ncleartomark\n"
    return head + b"currentfile eexec\n" + (cipher if form == "binary" else cipher.hex().encode()) + zeros
