"""Writes the jobs that compare.py times: jobs.py KIND PATH. The same bytes at every call."""

import random
import sys

PAGE_BYTES = 2_600_000
PAGES = 8
HEX_SIDE = 2600  # 2600 x 2600 RGB samples: 20.3 MB decoded
BINARY_SIDE = 3560  # 38.0 MB
DIGITS_A_LINE = 78

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


KINDS = {
    "vector": lambda output: write_vector(output, PAGES),
    "vector-long": lambda output: write_vector(output, 4 * PAGES),
    "image-hex": lambda output: write_image(output, HEX_SIDE, "readhexstring", counted=False),
    "image-binary": lambda output: write_image(output, BINARY_SIDE, "readstring", counted=True),
}
DECODED_BYTES = {"image-hex": 3 * HEX_SIDE ** 2, "image-binary": 3 * BINARY_SIDE ** 2}

if __name__ == "__main__":
    kind, path = sys.argv[1:]
    with open(path, "wb") as job:
        KINDS[kind](job)
