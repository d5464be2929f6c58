"""CIDFonts of types 0, 1 and 4, written by hand."""

import charstrings

SYSTEM_INFO = ("/CIDSystemInfo 3 dict dup begin /Registry (Adobe) def /Ordering ({}) def /Supplement 0 def end def\n")


def private(offset, count):
    return (f"/Private 12 dict dup begin /BlueValues [] def /password 5839 def /lenIV 4 def /SubrMapOffset {offset} def "
            f"/SDBytes 2 def /SubrCount {count} def end def")


def glyph_data(glyphs, subrs):
    """The map of CIDs, that of subroutines, subroutines and glyphs: one byte of font dictionary, two of offset.
    `glyphs` has charstrings in words by CID."""
    count = max(glyphs) + 1
    subr_map = 3 * (count + 1)
    place = subr_map + 2 * (len(subrs) + 1)
    places, body = [], b""
    for words in subrs:
        places.append(place + len(body))
        body += charstrings.charstring(words)
    places.append(place + len(body))
    cid_map = b""
    for cid in range(count):
        dictionary, words = glyphs.get(cid, (0, None))
        cid_map += bytes([dictionary]) + (place + len(body)).to_bytes(2, "big")
        if words:
            body += charstrings.charstring(words)
    cid_map += b"\0" + (place + len(body)).to_bytes(2, "big")
    return cid_map + b"".join(each.to_bytes(2, "big") for each in places) + body, subr_map, count


def head(name, matrices, ordering, subr_map, subrs, count):
    dictionaries = "".join(
        f"dup {place} 8 dict dup begin /FontName /{name}{place} def /FontType 1 def /PaintType 0 def "
        f"/FontMatrix [{matrix}] def {private(subr_map, subrs)} end put\n" for place, matrix in enumerate(matrices))
    return (f"/CIDInit /ProcSet findresource begin\n20 dict begin\n/CIDFontName /{name} def /CIDFontType 0 def\n"
            f"{SYSTEM_INFO.format(ordering)}/FontBBox [0 0 1000 1000] def /FontMatrix [1 0 0 1 0 0] def /UIDBase 1 def\n"
            f"/CIDMapOffset 0 def /FDBytes 1 def /GDBytes 2 def /CIDCount {count} def\n"
            f"/FDArray {len(matrices)} array {dictionaries} def\n")


UPRIGHT = "0.001 0 0 0.001 0 0"


def type0(name, glyphs, subrs=(), matrices=(UPRIGHT,), ordering="Identity", form="Hex"):
    data, subr_map, count = glyph_data(glyphs, subrs)
    start = head(name, matrices, ordering, subr_map, len(subrs), count)
    if form == "Hex":
        return start.encode() + f"(Hex) {len(data)} StartData\n{data.hex()}>\n".encode()
    return start.encode() + f"(Binary) {len(data)} StartData ".encode() + data + b"\n"


def incremental(name, container):
    """Without glyphs; they go into GlyphDirectory, with a byte of font dictionary in front."""
    start = head(name, (UPRIGHT,), "Identity", 0, 0, 100).replace("/CIDInit /ProcSet findresource begin\n", "")
    return (f"{start} /GlyphDirectory {container} def CIDFontName currentdict end /CIDFont defineresource pop\n")


def glyph_added(name, cid, words):
    return (f"/{name} /CIDFont findresource /GlyphDirectory get {cid} "
            f"<00{charstrings.charstring(words).hex()}> put\n")


def bitmap_font(name):
    """Type 4, in pixels of a sixteenth of the em."""
    return (f"10 dict begin /CIDFontName /{name} def /CIDFontType 4 def {SYSTEM_INFO.format('Identity')}"
            "/FontBBox [0 0 16 16] def /FontMatrix [0.0625 0 0 0.0625 0 0] def /WMode 0 def /CIDCount 100 def\n"
            "CIDFontName currentdict end /CIDFont defineresource pop\n/BitmapFontInit /ProcSet findresource begin\n")


def procedure_font(name):
    """Type 1: a BuildGlyph that is called with CIDs. Odd CIDs are squares, even ones triangles."""
    return (f"10 dict begin /CIDFontName /{name} def /CIDFontType 1 def {SYSTEM_INFO.format('Identity')}"
            "/FontBBox [0 0 1000 1000] def /FontMatrix [0.001 0 0 0.001 0 0] def /CIDCount 100 def\n"
            "/BuildGlyph { exch pop 700 0 0 0 600 600 setcachedevice 2 mod 1 eq { 0 0 600 600 rectfill }\n"
            "  { 0 0 moveto 600 0 lineto 300 600 lineto fill } ifelse } def\n"
            "CIDFontName currentdict end /CIDFont defineresource pop\n")


def composed(name, cid_font, cmap="Identity-H"):
    return f"/{name} /{cmap} [/{cid_font}] composefont pop\n"
