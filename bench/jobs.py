"""Writes the jobs that compare.py times: jobs.py KIND PATH. The same bytes at every call."""

import random
import sys

PAGE_BYTES = 2_600_000
PAGES = 8
HEX_SIDE = 2600  # 2600 x 2600 RGB samples: 20.3 MB decoded
BINARY_SIDE = 3560  # 38.0 MB
DIGITS_A_LINE = 78
TOKEN_BYTES = 20_000_000

HEADER = """%!PS-Adobe-3.0
%%Title: (Benchmark)
%%BoundingBox: 0 0 612 792
%%Pages: @PAGES@
%%EndComments
%%BeginProlog
/b { bind def } bind def
/m { moveto } b /l { lineto } b /c { curveto } b /h { closepath } b
/n { newpath } b /f { fill } b /s { stroke } b /k { setrgbcolor } b
%%EndProlog
"""


def page(number, body):
    return (f"%%Page: {number} {number}\ngsave [0.12 0 0 -0.12 0 792] concat\n".encode()
            + body + b"grestore showpage\n")


def drawing():
    """One page of lines, curves, colours and painting, without a composite."""
    numbers = random.Random(1)
    lines, size = [], 0
    while size < PAGE_BYTES:
        x, y = numbers.randrange(4800), numbers.randrange(6300)

        def point():
            return f"{x + numbers.randrange(-300, 300)} {y + numbers.randrange(-3000, 3000) / 10:g}"

        colour = " ".join(f".{numbers.randrange(1000):03}" for _ in range(3))
        shape = f"{colour} k n {x} {y} m\n"
        shape += "".join(f"{point()} l\n" for _ in range(6))
        shape += "".join(f"{point()} {point()} {point()} c\n" for _ in range(3))
        shape += numbers.choice(("h f\n", "s\n"))
        lines.append(shape)
        size += len(shape)
    return "".join(lines).encode()


def write_vector(output, pages):
    body = drawing()
    output.write(HEADER.replace("@PAGES@", str(pages)).encode())
    for number in range(1, pages + 1):
        output.write(page(number, body))
    output.write(b"%%Trailer\n%%EOF\n")


def rows(side):
    """The rows of a picture like a photograph: slow changes of colour, and noise in the lower bits."""
    noise = random.Random(2).randbytes(1 << 20)
    grain = bytes(byte & 7 for byte in noise)
    gradient = bytes(min(255, 224 * x // side + shift) for x in range(side) for shift in (0, 12, 24))
    width = 3 * side
    for y in range(side):
        at = y * 7919 % (len(grain) - width)
        smooth = int.from_bytes(gradient, "big") ^ int.from_bytes(bytes([y * 31 // side]) * width, "big")
        yield (smooth ^ int.from_bytes(grain[at:at + width], "big")).to_bytes(width, "big")


def image_call(side, reader):
    source = f"{{ currentfile row {reader} pop }}"
    return f"{side} {side} 8 [{side} 0 0 -{side} 0 {side}] {source} false 3 colorimage\n".encode()


def write_image(output, side, reader, counted):
    output.write(HEADER.replace("@PAGES@", "1").encode())
    output.write(b"%%Page: 1 1\ngsave 612 792 scale /row %d string def\n" % (3 * side))
    call = image_call(side, reader)
    if counted:
        output.write(b"%%%%BeginData: %d Binary Bytes\n" % (len(call) + 3 * side * side))
    output.write(call)
    for row in rows(side):
        if counted:
            output.write(row)
        else:
            digits = row.hex().upper()
            lines = (digits[at:at + DIGITS_A_LINE] + "\n" for at in range(0, len(digits), DIGITS_A_LINE))
            output.write("".join(lines).encode())
    output.write(b"\n%%EndData\n" if counted else b"")
    output.write(b"grestore showpage\n%%Trailer\n%%EOF\n")


LANGUAGE = """%!PS
/a { add } def /s { sub } def /x { exch } def /d { dup } def /p { pop } def
/value 5 def
/step { d 3 a x p 1 s 7 mul 1000 mod } def
0 13 { 1000 { 300 { step value a 2 s } repeat } repeat } repeat p
"""


def write_language(output):
    """3.9 million rounds of 23 objects: numbers, operators, and names that are looked up for all of them."""
    output.write(LANGUAGE.encode())


def write_tokens(output, size=TOKEN_BYTES):
    """Names, numbers, strings, arrays and procedures that are read and dropped; nothing is drawn."""
    numbers = random.Random(3)

    def number():
        return f"{numbers.randrange(5000)}{numbers.choice(('', '', '', '.25'))}"

    output.write(b"%!PS\n/drop { pop } def /width 10 def\n")
    while size > 0:
        line = (f"{number()} {number()} add drop width drop /name drop (a string\\nof text) drop "
                f"true {{ {number()} }} {{ width }} ifelse drop [{number()} {number()}] drop % note\n")
        output.write(line.encode())
        size -= len(line)


TEXT_PAGES = 39
TEXT_LINES = 50
TEXT_WORDS = 22  # a line; 39 pages of 1,100 words are 42,900 shows
TEXT_PROLOGUE = b"""%!PS-Adobe-3.0
%%Title: (Benchmark)
/b { bind def } bind def /a { moveto } b /w { 0 rmoveto } b /s { show } b
/font { 8 dict begin /FontType 3 def /FontMatrix [0.02 0 0 0.02 0 0] def /FontBBox [0 0 50 50] def
  /Encoding 256 array def 0 1 255 { Encoding exch /.notdef put } for /Bitmaps exch def
  /BuildChar { 3 dict begin exch /Bitmaps get exch get aload pop /data exch def /height exch def /width exch def
    width 2 add 0 0 0 width height setcachedevice width height true [1 0 0 -1 0 height] { data } imagemask end } b
  currentdict end definefont pop } b
"""


def write_text(output):
    """A document in bitmap fonts, as TeX's driver writes them: a show for each word, and the way to the next."""
    numbers = random.Random(4)
    output.write(TEXT_PROLOGUE)
    for font in range(3):
        glyphs = []
        for code in range(256):
            width, height = numbers.randrange(14, 40), numbers.randrange(20, 45)
            if not 65 <= code < 123:
                glyphs.append("[1 1 <00>]")
                continue
            # Blots of black, as letters are, rather than noise.
            row = numbers.getrandbits(width)
            rows = []
            for _ in range(height):
                row ^= 1 << numbers.randrange(width)
                rows.append((row << -width % 8).to_bytes((width + 7) // 8, "big").hex())
            glyphs.append(f"[{width} {height} <{''.join(rows)}>]")
        output.write(f"/F{font} [{' '.join(glyphs)}] font\n".encode())
    letters = [code for code in range(65, 123) if chr(code).isalpha()]
    for number in range(1, TEXT_PAGES + 1):
        output.write(f"%%Page: {number} {number}\n0.12 0.12 scale\n".encode())
        for line in range(TEXT_LINES):
            font = numbers.choice((0, 0, 0, 1, 2))
            output.write(f"/F{font} findfont 50 scalefont setfont 500 {6000 - 110 * line} a\n".encode())
            words = []
            for _ in range(TEXT_WORDS):
                word = "".join(chr(numbers.choice(letters)) for _ in range(numbers.randrange(1, 6)))
                words.append(f"({word})s {numbers.randrange(14, 24)} w")
            output.write((" ".join(words) + "\n").encode())
        output.write(b"showpage\n")
    output.write(b"%%Trailer\n%%EOF\n")


def write_images(output, count):
    """Images of 64 by 64 samples, no two alike, each too large to stand in the page text."""
    output.write(b"%%!PS\n/row 4096 string def /n 0 def %d {\n" % count)
    output.write(b"row 0 n 9 string cvs putinterval 64 64 8 [64 0 0 64 0 0] row image\n"
                 b"/n n 1 add def } repeat\n")


def write_patterns(output, count):
    """Patterns that are each made, set and painted with once."""
    output.write(b"%%!PS\n/m [1 0 0 1 0 0] def %d {\n" % count)
    output.write(b"10 dict begin /PatternType 1 def /PaintType 1 def /TilingType 1 def /BBox [0 0 9 9] def\n"
                 b"/XStep 9 def /YStep 9 def /PaintProc { pop 0 0 moveto 9 9 lineto stroke } def currentdict end\n"
                 b"m makepattern setpattern 0 0 9 9 rectfill } repeat\n")


def write_walks(output, count):
    """A walk over a dictionary that takes out the key it meets and puts another in, for all keys."""
    output.write(b"%!PS\n/d 1 dict def\n")
    for number in range(count):
        output.write(b"d /key%06d %d put\n" % (number * 7919 % count, number))
    output.write(b"/n 0 def d { pop d exch undef d n 9 string cvs cvn 0 put /n n 1 add def } forall\n")


KINDS = {
    "vector": lambda output: write_vector(output, PAGES),
    "vector-long": lambda output: write_vector(output, 4 * PAGES),
    "image-hex": lambda output: write_image(output, HEX_SIDE, "readhexstring", counted=False),
    "image-binary": lambda output: write_image(output, BINARY_SIDE, "readstring", counted=True),
    "language": write_language,
    "tokens": write_tokens,
    "text": write_text,
    **{f"images-{count}": lambda output, count=count: write_images(output, count) for count in (10000, 40000)},
    **{f"patterns-{count}": lambda output, count=count: write_patterns(output, count) for count in (10000, 40000)},
    **{f"walks-{count}": lambda output, count=count: write_walks(output, count) for count in (2000, 8000)},
}
DECODED_BYTES = {"image-hex": 3 * HEX_SIDE ** 2, "image-binary": 3 * BINARY_SIDE ** 2}

if __name__ == "__main__":
    kind, path = sys.argv[1:]
    with open(path, "wb") as job:
        KINDS[kind](job)
