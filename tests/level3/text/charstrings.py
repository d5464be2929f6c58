"""Fonts of type 1 whose charstrings are written by hand, for what no font of the system has."""

COMMANDS = {
    "hstem": [1], "vstem": [3], "vmoveto": [4], "rlineto": [5], "hlineto": [6], "vlineto": [7], "rrcurveto": [8],
    "closepath": [9], "callsubr": [10], "return": [11], "hsbw": [13], "endchar": [14], "rmoveto": [21],
    "hmoveto": [22], "vhcurveto": [30], "hvcurveto": [31], "dotsection": [12, 0], "vstem3": [12, 1],
    "hstem3": [12, 2], "seac": [12, 6], "sbw": [12, 7], "div": [12, 12], "callothersubr": [12, 16],
    "pop": [12, 17], "setcurrentpoint": [12, 33],
}


def number(value):
    if -107 <= value <= 107:
        return bytes([value + 139])
    if 108 <= value <= 1131:
        return bytes([247 + (value - 108) // 256, (value - 108) % 256])
    if -1131 <= value <= -108:
        return bytes([251 + (-value - 108) // 256, (-value - 108) % 256])
    return b"\xff" + value.to_bytes(4, "big", signed=True)


def assembled(text):
    """The bytes of a charstring that is written as words."""
    return b"".join(bytes(COMMANDS[word]) if word in COMMANDS else number(int(word)) for word in text.split())


def encrypted(data, key, lead=4):
    result = bytearray()
    for byte in bytes(lead) + data:
        cipher = byte ^ key >> 8
        key = ((cipher + key) * 52845 + 22719) & 0xFFFF
        result.append(cipher)
    return bytes(result)


def decrypted(data, key, lead=4):
    result = bytearray()
    for cipher in data:
        result.append(cipher ^ key >> 8)
        key = ((cipher + key) * 52845 + 22719) & 0xFFFF
    return bytes(result[lead:])


def charstring(text):
    return encrypted(assembled(text), 4330)


def box(width, left, bottom, right, top):
    """A glyph that is a rectangle."""
    return (f"{left} {width} hsbw {bottom} vmoveto {right - left} hlineto {top - bottom} vlineto "
            f"{left - right} hlineto closepath endchar")


# A triangle, a rectangle with a notch, and a ring that is curved.
TRIANGLE = "50 600 hsbw 0 0 rmoveto 500 hlineto -250 700 rlineto closepath endchar"
NOTCH = "50 600 hsbw 0 vmoveto 500 hlineto 700 vlineto -250 -300 rlineto -250 300 rlineto closepath endchar"
RING = ("50 600 hsbw 350 vmoveto 193 157 157 193 vhcurveto 193 157 -157 -193 hvcurveto -193 -157 -157 -193 vhcurveto "
        "-193 -157 157 193 hvcurveto closepath endchar")

# What every font has at the first four places: the ends of flex, and hint replacement.
USUAL_SUBRS = ["3 0 callothersubr pop pop setcurrentpoint return", "0 1 callothersubr return",
               "0 2 callothersubr return", "return"]


def font(name, glyphs, subrs=(), entries="", private="", length_iv=4):
    """The text of a font dictionary with charstrings in hex, not encrypted as a whole. `glyphs` maps names to
    words, `entries` are more entries of the dictionary."""
    def hexed(words):
        data = assembled(words) if isinstance(words, str) else words
        plain = data if length_iv < 0 else encrypted(data, 4330, length_iv)
        return f"<{plain.hex()}>"

    rows = [*USUAL_SUBRS, *subrs]
    subr_lines = "".join(f"dup {place} {hexed(words)} put\n" for place, words in enumerate(rows))
    glyph_lines = "".join(f"/{glyph} {hexed(words)} def\n" for glyph, words in
                          {".notdef": "0 500 hsbw endchar", **glyphs}.items())
    return (f"16 dict begin /FontName /{name} def /FontType 1 def /PaintType 0 def\n"
            "/FontMatrix [0.001 0 0 0.001 0 0] def /FontBBox [0 0 1000 1000] def /Encoding StandardEncoding def\n"
            f"{entries}\n/Private 12 dict dup begin /BlueValues [] def /password 5839 def /lenIV {length_iv} def\n"
            f"{private}\n/Subrs {len(rows)} array\n{subr_lines}def end def\n"
            f"/CharStrings {len(glyphs) + 1} dict dup begin\n{glyph_lines}end def\n"
            "FontName currentdict end definefont pop\n")
