#!/usr/bin/env python3
"""Makes the small fixture pictures of this folder.

Every picture but the icons shows the same 32x24 quadrants: red top left,
green top right, blue bottom left, white bottom right; the one-bit kinds
show black on the left half and white on the right. Raster kinds are made
with ImageMagick's convert; the metafiles and the PC Paintbrush variants
are written byte by byte from their record layouts.
"""
import os
import struct
import subprocess

HERE = os.path.dirname(os.path.abspath(__file__))
W, H = 32, 24
QUADS = [((0, 0, 16, 12), (255, 0, 0)), ((16, 0, 32, 12), (0, 255, 0)),
         ((0, 12, 16, 24), (0, 0, 255)), ((16, 12, 32, 24), (255, 255, 255))]


def path(name):
    return os.path.join(HERE, name)


def convert(*args):
    subprocess.run(["convert", *args], check=True)


def quadrants_ppm():
    rows = []
    for y in range(H):
        for x in range(W):
            for (l, t, r, b), colour in QUADS:
                if l <= x < r and t <= y < b:
                    rows.append(bytes(colour))
    return b"P6 %d %d 255\n" % (W, H) + b"".join(rows)


def halves_pbm():
    # One bit a pixel, 1 is black; the left half is black.
    row = bytes([0xFF, 0xFF, 0x00, 0x00])
    return b"P4 %d %d\n" % (W, H) + row * H


# --- Windows metafile -------------------------------------------------------

def wmf_record(function, *words):
    return struct.pack("<IH", 3 + len(words), function) + struct.pack("<%dh" % len(words), *words)


def wmf_brush(colour):
    r, g, b = colour
    return struct.pack("<IHH", 7, 0x02FC, 0) + bytes([r, g, b, 0]) + struct.pack("<H", 0)


def make_wmf():
    records = [wmf_record(0x020B, 0, 0), wmf_record(0x020C, H, W)]  # window origin, extent (y, x)
    # A null pen, object 0.
    records.append(struct.pack("<IHHhhBBBB", 8, 0x02FA, 5, 0, 0, 0, 0, 0, 0))
    records.append(wmf_record(0x012D, 0))
    for (l, t, r, b), colour in QUADS:
        records.append(wmf_brush(colour))             # becomes object 1
        records.append(wmf_record(0x012D, 1))          # select it
        records.append(wmf_record(0x041B, b, r, t, l))  # rectangle (bottom, right, top, left)
        records.append(wmf_record(0x01F0, 1))          # delete it again
    records.append(wmf_record(0x0000))
    return wmf_file(records, W, H, 2)


def make_text_wmf():
    # "Hello" in a bold 40-unit sans serif font on a 200x60 page: the
    # metafile renderer draws nothing of it without its fonts.
    width, height = 200, 60
    face = b"Arial".ljust(32, b"\0")
    font = struct.pack("<hhhhh", -40, 0, 0, 0, 700) + bytes(8) + face
    text = b"Hello"
    textout = struct.pack("<h", len(text)) + text + b"\0" + struct.pack("<hh", 10, 10)
    records = [wmf_record(0x020B, 0, 0), wmf_record(0x020C, height, width),
               struct.pack("<IH", 3 + len(font) // 2, 0x02FB) + font, wmf_record(0x012D, 0),
               struct.pack("<IH", 3 + len(textout) // 2, 0x0521) + textout, wmf_record(0x0000)]
    return wmf_file(records, width, height, 1)


def wmf_file(records, width, height, objects):
    body = b"".join(records)
    max_record = max(struct.unpack_from("<I", rec)[0] for rec in records)
    header = struct.pack("<HHHIHIH", 1, 9, 0x0300, (18 + len(body)) // 2, objects, max_record, 0)
    placeable = struct.pack("<IHhhhhHI", 0x9AC6CDD7, 0, 0, 0, width, height, 96, 0)
    checksum = 0
    for (word,) in struct.iter_unpack("<H", placeable[:20]):
        checksum ^= word
    return placeable + struct.pack("<H", checksum) + header + body


# --- Enhanced metafile ------------------------------------------------------

def make_emf():
    records = []
    handle = 1
    records.append(struct.pack("<III", 37, 12, 0x80000008))  # select the stock null pen
    for (l, t, r, b), colour in QUADS:
        red, green, blue = colour
        records.append(struct.pack("<IIII", 39, 24, handle, 0) + bytes([red, green, blue, 0]) +
                       struct.pack("<I", 0))
        records.append(struct.pack("<III", 37, 12, handle))
        records.append(struct.pack("<IIiiii", 43, 24, l, t, r, b))
        records.append(struct.pack("<III", 37, 12, 0x80000000))  # stock white brush
        records.append(struct.pack("<III", 40, 12, handle))
    records.append(struct.pack("<IIIII", 14, 20, 0, 16, 20))
    body = b"".join(records)
    header_size = 108
    total = header_size + len(body)
    frame = (0, 0, round(W * 2540 / 96), round(H * 2540 / 96))
    header = struct.pack("<II", 1, header_size)
    header += struct.pack("<iiii", 0, 0, W - 1, H - 1)
    header += struct.pack("<iiii", *frame)
    header += struct.pack("<IIIIHHIII", 0x464D4520, 0x10000, total, len(records) + 1, 2, 0, 0, 0, 0)
    header += struct.pack("<iiii", 1024, 768, 271, 203)
    header += struct.pack("<III", 0, 0, 0)
    header += struct.pack("<ii", 270933, 203200)
    assert len(header) == header_size
    return header + body


# --- PC Paintbrush ----------------------------------------------------------

def pcx_rle(line):
    out = bytearray()
    i = 0
    while i < len(line):
        run = 1
        while i + run < len(line) and line[i + run] == line[i] and run < 63:
            run += 1
        if run > 1 or line[i] >= 0xC0:
            out += bytes([0xC0 | run, line[i]])
        else:
            out.append(line[i])
        i += run
    return bytes(out)


def pcx_header(bits, planes, bytes_per_line, palette16):
    head = struct.pack("<BBBBhhhhhh", 0x0A, 5, 1, bits, 0, 0, W - 1, H - 1, 96, 96)
    head += bytes(palette16).ljust(48, b"\0")
    head += struct.pack("<BBhhhh", 0, planes, bytes_per_line, 1, 0, 0)
    return head.ljust(128, b"\0")


def quad_index(x, y):
    for n, ((l, t, r, b), _) in enumerate(QUADS):
        if l <= x < r and t <= y < b:
            return n
    return 0


PALETTE16 = [c for _, colour in QUADS for c in colour]


def make_pcx_planes():
    # Four one-bit planes (EGA), the header palette holding the quadrants.
    bpl = W // 8
    data = bytearray()
    for y in range(H):
        line = bytearray()
        for plane in range(4):
            for byte in range(bpl):
                v = 0
                for bit in range(8):
                    if (quad_index(byte * 8 + bit, y) >> plane) & 1:
                        v |= 0x80 >> bit
                line.append(v)
        data += pcx_rle(line)
    return pcx_header(1, 4, bpl, PALETTE16) + data


def make_pcx_2bit():
    bpl = W // 4
    data = bytearray()
    for y in range(H):
        line = bytearray()
        for byte in range(bpl):
            v = 0
            for n in range(4):
                v |= quad_index(byte * 4 + n, y) << (6 - 2 * n)
            line.append(v)
        data += pcx_rle(line)
    return pcx_header(2, 1, bpl, PALETTE16) + data


def main():
    ppm, pbm = path("quadrants.ppm"), path("halves.pbm")
    open(ppm, "wb").write(quadrants_ppm())
    open(pbm, "wb").write(halves_pbm())
    try:
        convert(ppm, "BMP3:" + path("picture.bmp"))
        convert(ppm, "BMP3:" + path("picture.dib"))
        convert(ppm, "-type", "Palette", "-compress", "RLE", "BMP3:" + path("picture.rle"))
        convert(pbm, "XBM:" + path("picture.xbm"))
        convert(ppm, "GIF:" + path("picture.gif"))
        for ext in ("jpeg", "jpe", "jpg"):
            convert(ppm, "-quality", "95", "-sampling-factor", "1x1", "JPEG:" + path("picture." + ext))
        convert(ppm, "PNG24:" + path("picture.png"))
        convert(ppm, "MNG:" + path("picture.mng"))
        convert(ppm, "-compress", "LZW", "TIFF:" + path("picture.tif"))
        convert(ppm, "-compress", "None", "TIFF:" + path("picture.tiff"))
        convert(pbm, "-compress", "Group4", "TIFF:" + path("picture.jfx"))
        convert(pbm, "-compress", "Fax", "TIFF:" + path("picture.xif"))
        convert(ppm, "PCX:" + path("picture.pcx"))
        convert(ppm, "-type", "Palette", "PCX:" + path("palette8.pcx"))
        convert(pbm, "PCX:" + path("mono.pcx"))
        # An icon of two entries, the small one first; a cursor of one.
        convert("(", ppm, "-resize", "16x16!", ")", "(", ppm, "-resize", "48x48!", ")",
                "ICO:" + path("picture.ico"))
        convert(ppm, "-resize", "32x32!", "CUR:" + path("picture.cur"))
    finally:
        os.remove(ppm)
        os.remove(pbm)

    open(path("picture.wmf"), "wb").write(make_wmf())
    open(path("picture.emf"), "wb").write(make_emf())
    open(path("text.wmf"), "wb").write(make_text_wmf())
    open(path("planes.pcx"), "wb").write(make_pcx_planes())
    open(path("twobit.pcx"), "wb").write(make_pcx_2bit())

    # A photograph to be turned a quarter clockwise: EXIF orientation 6.
    jpg = open(path("picture.jpg"), "rb").read()
    tiff = b"II*\0" + struct.pack("<IHHHIHHI", 8, 1, 0x0112, 3, 1, 6, 0, 0)
    app1 = b"Exif\0\0" + tiff
    open(path("turned.jpg"), "wb").write(jpg[:2] + b"\xff\xe1" + struct.pack(">H", len(app1) + 2) +
                                         app1 + jpg[2:])

    # Damaged files.
    jpg = open(path("picture.jpg"), "rb").read()
    open(path("noend.jpg"), "wb").write(jpg[:-2])
    png = open(path("picture.png"), "rb").read()
    open(path("truncated.png"), "wb").write(png[: len(png) // 2])
    open(path("broken.wmf"), "wb").write(b"\xd7\xcd\xc6\x9a" + b"\xff" * 60)
    emf = make_emf()
    open(path("broken.emf"), "wb").write(emf[:108] + b"\xff" * 64)


if __name__ == "__main__":
    main()
