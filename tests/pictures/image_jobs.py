"""Jobs that carry image data. The data is computed, so that the project holds no blobs: each function
of JOBS returns the bytes of one job, the same at every call."""

import base64

PROLOGUE = b"""%%BeginProlog
/b { bind def } bind def
/q { gsave } b /Q { grestore } b
/at { % x y width height, y down the page: the unit square becomes that box, upright
  /bh exch def /bw exch def bh add translate bw bh neg scale
} b
/size { /ih exch def /iw exch def } b
/upright { [iw 0 0 ih neg 0 ih] } b
/hexRows { /row exch string def { currentfile row readhexstring pop } } b
/rawRows { /row exch string def { currentfile row readstring pop } } b
/gray { size 0 setgray iw ih 8 upright iw hexRows image } b
/gray4 { size 0 setgray iw ih 4 upright iw 2 idiv hexRows image } b
/bits { size 0 setgray iw ih 1 upright iw 8 idiv hexRows image } b
/rgb { size iw ih 8 upright iw 3 mul hexRows false 3 colorimage } b
/cmyk { size iw ih 8 upright iw 4 mul hexRows false 4 colorimage } b
/rawGray { size 0 setgray iw ih 8 upright iw rawRows image } b
/rawRgb { size iw ih 8 upright iw 3 mul rawRows false 3 colorimage } b
/frame { % x y width height: a thin box, so that a picture in the wrong place shows
  /bh exch def /bw exch def newpath moveto bw 0 rlineto 0 bh rlineto bw neg 0 rlineto closepath
  0 setgray 10 setlinewidth stroke
} b
%%EndProlog
"""


def document(title, *pages):
    """A letter-size job whose pages count 600 dots an inch, downwards from the upper left corner."""
    job = b"%!PS-Adobe-3.0\n%%Title: " + title.encode() + b"\n%%Creator: Quillpress picture tests\n"
    job += b"%%%%BoundingBox: 0 0 612 792\n%%%%Pages: %d\n%%%%EndComments\n" % len(pages) + PROLOGUE
    for number, page in enumerate(pages, 1):
        job += b"%%%%Page: %d %d\n%%%%BeginPageSetup\nsave [0.12 0 0 -0.12 0 792] concat\n%%%%EndPageSetup\n" % (
            number, number)
        job += page + b"restore showpage\n"
    return job + b"%%Trailer\n%%EOF\n"


def placed(box, body):
    """Draws `body`, which fills the unit square, in a box (x, y, width, height) of the page."""
    x, y, width, height = box
    return b"q %d %d %d %d at\n" % (x, y, width, height) + body + b"\nQ\n%d %d %d %d frame\n" % (x, y, width, height)


def hex_lines(data):
    text = data.hex().upper().encode()
    return b"\n".join(text[i:i + 76] for i in range(0, len(text), 76))


def read(operator, width, height, data):
    """An image whose rows follow as hex digits."""
    return b"%d %d %s\n" % (width, height, operator) + hex_lines(data)


def read_binary(operator, width, height, data):
    """An image whose rows follow as plain bytes, counted for whoever splits the job into pages."""
    call = b"%d %d %s\n" % (width, height, operator)
    return b"%%%%BeginData: %d Binary Bytes\n" % (len(call) + len(data)) + call + data + b"\n%%EndData"


def samples(width, height, channels):
    """8-bit samples, first row first. No two corners, edges or channels look alike."""
    rows = bytearray()
    for y in range(height):
        for x in range(width):
            across, down = 255 * x // max(width - 1, 1), 255 * y // max(height - 1, 1)
            inside = (2 * x - width) ** 2 * 9 + (2 * y - height) ** 2 * 16 < width * height * 4
            values = (across, down, 255 - across, 255 - (across + down) // 2)
            if channels == 1:
                values = ((across + 2 * down) // 3,)
            rows += bytes(255 - v if inside else v for v in values[:channels])
    return bytes(rows)


def bit_samples(width, height):
    """1-bit samples, `width` a multiple of 8: slanted bands, and a wedge from the upper left corner."""
    return bytes(
        sum(((x + 2 * y) // 12 % 3 == 0 or x + y < width // 3) << (7 - x % 8) for x in range(start, start + 8))
        for y in range(height) for start in range(0, width, 8))


def gray():
    nibbles = bytes(((x + y) // 3 % 16) << 4 | (x * y // 20) % 16 for y in range(40) for x in range(20))
    return document(
        "Gray images, small and large",
        placed((400, 400, 1800, 1500), read(b"gray", 16, 12, samples(16, 12, 1)))
        + placed((2600, 400, 2000, 2600), read(b"gray", 90, 117, samples(90, 117, 1)))
        + placed((400, 3600, 1600, 1600), read(b"gray4", 40, 40, nibbles))
        + placed((2600, 3600, 1600, 1600), read(b"bits", 64, 64, bit_samples(64, 64)))
        + placed((400, 5500, 4000, 800), read(b"bits", 512, 96, bit_samples(512, 96))))


def rgb():
    return document(
        "RGB images, small and large",
        placed((400, 400, 1800, 1500), read(b"rgb", 24, 20, samples(24, 20, 3)))
        + placed((400, 2500, 4200, 3200), read(b"rgb", 84, 64, samples(84, 64, 3)))
        + placed((2600, 400, 500, 1500), read(b"rgb", 1, 3, samples(1, 3, 3))))


def cmyk():
    return document(
        "CMYK images, small and large",
        placed((400, 400, 1500, 1500), read(b"cmyk", 20, 20, samples(20, 20, 4)))
        + placed((400, 2500, 4200, 3200), read(b"cmyk", 80, 60, samples(80, 60, 4))))


def masks():
    small, large = bit_samples(32, 32), bit_samples(256, 192)

    def mask(width, height, polarity, source):
        return b"%d %d %s [%d 0 0 -%d 0 %d]\n%s imagemask" % (width, height, polarity, width, height, height, source)

    def text(data):
        return b"<" + hex_lines(data) + b">"

    return document(
        "One-bit masks in the current colour",
        b"0.8 0.2 0.1 setrgbcolor " + placed((400, 400, 1500, 1500), mask(32, 32, b"true", text(small)))
        + b"0.1 0.3 0.8 setrgbcolor " + placed((2600, 400, 1500, 1500), mask(32, 32, b"false", text(small)))
        + b"0.2 0.6 0 0.1 setcmykcolor " + placed((400, 2400, 2000, 1500), mask(256, 192, b"true", text(large)))
        + b"0.5 setgray " + placed((2600, 2400, 2000, 1500), mask(256, 192, b"false", b"{" + text(large) + b"}"))
        + b"/kept " + text(small) + b" def 0 0.5 0.2 setrgbcolor "
        + placed((400, 4500, 800, 800), mask(32, 32, b"true", b"kept"))
        + b"q newpath 3000 5300 800 0 360 arc clip newpath 0.6 0 0.6 setrgbcolor "
        + placed((2000, 4500, 2000, 1600), mask(32, 32, b"true", text(small))) + b"Q\n")


def hex_strings():
    def source(data):
        return b"<" + hex_lines(data) + b">"

    def base85(data):
        text = base64.a85encode(data)
        return b"<~" + b"\n".join(text[i:i + 76] for i in range(0, len(text), 76)) + b"~>"

    def call(width, height, text, rest):
        return b"%d %d 8 [%d 0 0 -%d 0 %d]\n%s %s" % (width, height, width, height, height, text, rest)

    return document(
        "Images given as encoded strings",
        b"0 setgray " + placed((400, 400, 1500, 1500), call(20, 20, source(samples(20, 20, 1)), b"image"))
        + b"0 setgray " + placed((2600, 400, 2000, 1500), call(96, 72, source(samples(96, 72, 1)), b"image"))
        + placed((400, 2400, 1500, 1500), call(16, 16, source(samples(16, 16, 3)), b"false 3 colorimage"))
        + placed((2600, 2400, 2000, 1500), call(64, 48, source(samples(64, 48, 3)), b"false 3 colorimage"))
        + placed((400, 4400, 1500, 1500), call(16, 16, base85(samples(16, 16, 3)), b"false 3 colorimage"))
        + placed((2600, 4400, 2000, 1500), call(60, 45, base85(samples(60, 45, 4)), b"false 4 colorimage")))


def binary():
    # Every byte value, in an order that puts brackets, per cent signs, zeros and line ends everywhere.
    every = bytes((x * 7 + y * 40) % 256 for y in range(96) for x in range(128))
    delimiters = (b"()<>[]{}/%\0\r\n \t\x04" * 16)[:256]
    return document(
        "Images read as plain bytes",
        placed((400, 400, 1500, 1500), read_binary(b"rawGray", 16, 16, delimiters))
        + placed((2600, 400, 2000, 1500), read_binary(b"rawGray", 128, 96, every))
        + placed((400, 2500, 4200, 3200), read_binary(b"rawRgb", 84, 64, samples(84, 64, 3))))


def repeated():
    large, small = read(b"rgb", 60, 45, samples(60, 45, 3)), read(b"gray", 12, 12, samples(12, 12, 1))
    return document(
        "The same image several times",
        placed((300, 300, 2000, 1500), large) + placed((2700, 300, 2000, 1500), large)
        + b"q 2500 3500 translate 25 rotate\n" + placed((-1000, -700, 2000, 1500), large) + b"Q\n"
        + placed((300, 5200, 1000, 1000), small) + placed((1700, 5200, 1000, 1000), small),
        placed((300, 300, 4400, 3300), large) + placed((300, 4200, 2000, 800), small))


def dictionaries():
    def image(space, width, height, channels):
        return (
            b"/%s setcolorspace /row %d string def\n" % (space, width * channels)
            + b"10 dict begin /ImageType 1 def /Width %d def /Height %d def /BitsPerComponent 8 def\n" % (width, height)
            + b"/ImageMatrix [%d 0 0 -%d 0 %d] def /Decode [%s] def\n" % (width, height, height, b"0 1 " * channels)
            + b"/DataSource { currentfile row readhexstring pop } def currentdict end image\n"
            + hex_lines(samples(width, height, channels)))

    return document(
        "Images described by a dictionary",
        placed((400, 400, 1500, 1500), image(b"DeviceGray", 20, 20, 1))
        + placed((2600, 400, 2000, 1500), image(b"DeviceRGB", 64, 48, 3))
        + placed((400, 2500, 2000, 1500), image(b"DeviceCMYK", 40, 30, 4)))


def planes():
    # The converter takes separate planes last to first, so first and last are alike here.
    width, height = 72, 54
    outer, middle = samples(width, height, 1), samples(width, height, 3)[1::3]
    rows = b"\n".join(
        plane[y * width:(y + 1) * width].hex().encode() for y in range(height) for plane in (outer, middle, outer))
    plane = b"{ currentfile %s readhexstring pop }"
    return document(
        "A colour image in separate planes",
        b"/first 72 string def /second 72 string def /third 72 string def\n"
        + placed((400, 400, 4000, 3000),
                 b"72 54 8 [72 0 0 -54 0 54]\n" + b" ".join(plane % n for n in (b"first", b"second", b"third"))
                 + b" true 3 colorimage\n" + rows))


def in_pattern():
    cell = samples(48, 48, 3)
    brush = (
        b"/brush 8 dict begin /PatternType 1 def /PaintType 1 def /TilingType 1 def\n"
        b"/BBox [0 0 1 1] def /XStep 1 def /YStep 1 def\n"
        b"/PaintProc { pop 48 48 8 [48 0 0 -48 0 48]\n{<" + hex_lines(cell) + b">} false 3 colorimage } def\n"
        b"currentdict end [1440 0 0 -1440 0 0] makepattern def\n")
    disc = b"q brush setpattern newpath 2500 3200 2000 0 360 arc closepath fill Q\n"
    return document("A large image inside a brush", brush + disc)


JOBS = {
    "image_gray": gray,
    "image_rgb": rgb,
    "image_cmyk": cmyk,
    "image_masks": masks,
    "image_hex_strings": hex_strings,
    "image_binary": binary,
    "image_repeated": repeated,
    "image_dictionaries": dictionaries,
    "image_planes": planes,
    "image_in_pattern": in_pattern,
}
