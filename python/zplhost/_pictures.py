"""Pictures of pages as files: those that are expected, and those of differences."""
from __future__ import annotations

import re
import struct
import zlib
from typing import Callable, Iterator, NamedTuple

_SIGNATURE = b"\x89PNG\r\n\x1a\n"
_MOST_PIXELS = 1 << 26
_SAMPLES = {0: 1, 2: 3, 3: 1, 4: 2, 6: 4}  # of a pixel, by colour type


class Picture(NamedTuple):
    """Rows of whole bytes, most significant bit first; a set bit is black."""

    width: int
    height: int
    rows: bytes


def read(file: bytes) -> Picture:
    """A PNG of any kind that is not interlaced, or a raw PBM; dots darker than half are black.

    Raises ValueError for another file.
    """
    if file.startswith(_SIGNATURE):
        return _read_png(file)
    if match := re.match(rb"P4(?:\s|#.*\n)+(\d+)(?:\s|#.*\n)+(\d+)\s", file):
        width, height = _sides(int(match[1]), int(match[2]))
        size = (width + 7) // 8 * height
        if len(file) < match.end() + size:
            raise ValueError("it ends before its last row")
        return Picture(width, height, _clear(file[match.end() :][:size], width))
    raise ValueError("it is neither a PNG nor a raw PBM")


def _sides(width: int, height: int) -> tuple[int, int]:
    if not 0 < width * height <= _MOST_PIXELS:
        raise ValueError("it has no pixels, or more than 64 Mi")
    return width, height


def _clear(rows: bytes, width: int) -> bytes:
    """The same with nothing right of the picture."""
    cleared = bytearray(rows)
    if width % 8:
        for last in range(width // 8, len(rows), (width + 7) // 8):
            cleared[last] &= 0xFF00 >> width % 8 & 0xFF
    return bytes(cleared)


def _chunks(file: bytes) -> Iterator[tuple[bytes, bytes]]:
    at = len(_SIGNATURE)
    while at + 12 <= len(file):
        (length,) = struct.unpack_from(">I", file, at)
        body = file[at + 4 : at + 8 + length]
        if file[at + 8 + length : at + 12 + length] != struct.pack(">I", zlib.crc32(body)):
            raise ValueError("it is damaged")
        yield body[:4], body[4:]
        at += 12 + length


def _read_png(file: bytes) -> Picture:
    parts: dict[bytes, bytes] = {}
    for kind, body in _chunks(file):
        parts[kind] = parts.get(kind, b"") + body
    try:
        width, height, depth, colour, _, _, interlaced = struct.unpack(">IIBBBBB", parts[b"IHDR"])
        _sides(width, height)
        if interlaced:
            raise ValueError("it is interlaced; save it without that")
        bits = depth * _SAMPLES[colour]
        stride = (width * bits + 7) // 8
        data = zlib.decompressobj().decompress(parts[b"IDAT"], height * (stride + 1))
    except (KeyError, struct.error, zlib.error):
        raise ValueError("it is damaged") from None
    if len(data) < height * (stride + 1):
        raise ValueError("it ends before its last row")
    rows = _unfiltered(data, stride, max(1, bits // 8))
    if (depth, colour) == (1, 0) and b"tRNS" not in parts:
        return Picture(width, height, _clear(b"".join(rows).translate(bytes(range(255, -1, -1))), width))
    is_black = _judge(depth, colour, parts.get(b"PLTE", b""), parts.get(b"tRNS", b""))
    return Picture(width, height, b"".join(_dots(row, width, bits, is_black) for row in rows))


def _unfiltered(data: bytes, stride: int, pixel: int) -> list[bytes]:
    """Rows without the filter that each names in its first byte."""
    rows = []
    above = bytes(stride)
    for start in range(0, len(data), stride + 1):
        kind, row = data[start], bytearray(data[start + 1 : start + 1 + stride])
        for i in range(stride) if kind else ():
            left, corner = (row[i - pixel], above[i - pixel]) if i >= pixel else (0, 0)
            row[i] = row[i] + _predicted(kind, left, above[i], corner) & 0xFF
        above = bytes(row)
        rows.append(above)
    return rows


def _predicted(kind: int, left: int, above: int, corner: int) -> int:
    if kind == 4:
        estimate = left + above - corner
        return min((left, above, corner), key=lambda byte: abs(estimate - byte))
    if kind > 4:
        raise ValueError("it is damaged")
    return (0, left, above, (left + above) // 2)[kind]


def _judge(depth: int, colour: int, palette: bytes, clear: bytes) -> Callable[[bytes], bool]:
    """Tells of a pixel, by its bytes, whether it is dark on white paper."""
    known: dict[bytes, bool] = {}

    def is_dark(pixel: bytes) -> bool:
        samples = list(pixel if depth <= 8 else pixel[::2])
        alpha = 255
        if colour == 3:
            index = samples[0]
            samples = list(palette[3 * index : 3 * index + 3])
            alpha = clear[index] if index < len(clear) else 255
        elif colour & 4:
            alpha = samples.pop()
        elif depth < 8:
            samples = [sample * 255 // ((1 << depth) - 1) for sample in samples]
        if colour in (0, 2) and clear and pixel == (clear if depth == 16 else clear[1::2]):
            alpha = 0
        red, green, blue = samples if len(samples) == 3 else samples[:1] * 3
        light = 0.2126 * red + 0.7152 * green + 0.0722 * blue
        return 255 + (light - 255) * alpha / 255 < 128

    def is_black(pixel: bytes) -> bool:
        if pixel not in known:
            try:
                known[pixel] = is_dark(pixel)
            except ValueError:
                raise ValueError("it has a colour that is not in its palette") from None
        return known[pixel]

    return is_black


def _dots(row: bytes, width: int, bits: int, is_black: Callable[[bytes], bool]) -> bytes:
    if bits < 8:
        mask = (1 << bits) - 1
        row = bytes(byte >> shift & mask for byte in row for shift in range(8 - bits, -1, -bits))
    size = max(1, bits // 8)
    digits = "".join("1" if is_black(row[i : i + size]) else "0" for i in range(0, width * size, size))
    return int(digits.ljust((width + 7) // 8 * 8, "0"), 2).to_bytes((width + 7) // 8, "big")


def png_of_colours(width: int, height: int, palette: bytes, indices: bytes) -> bytes:
    """A PNG with a byte for each pixel, which says its place in the palette."""

    def chunk(body: bytes) -> bytes:
        return struct.pack(">I", len(body) - 4) + body + struct.pack(">I", zlib.crc32(body))

    rows = b"".join(b"\0" + indices[start : start + width] for start in range(0, width * height, width))
    head = b"IHDR" + struct.pack(">IIBBBBB", width, height, 8, 3, 0, 0, 0)
    return _SIGNATURE + b"".join(map(chunk, (head, b"PLTE" + palette, b"IDAT" + zlib.compress(rows), b"IEND")))
