"""Pages held against those that somebody has looked at once."""
from __future__ import annotations

import os
from pathlib import Path
from typing import Any, Sequence, Union

from zplhost import _pictures
from zplhost._desk import Stream, render
from zplhost._pictures import Picture

_Path = Union[str, "os.PathLike[str]"]
_PALETTE = bytes((255, 255, 255, 0, 96, 204, 213, 43, 30, 185, 185, 185))  # white, blue, red, grey


def assert_same(
    stream: Stream,
    golden: _Path | Sequence[_Path],
    dpi: int = 203,
    size: str = "4x6in",
    *,
    tolerance: int = 0,
    **settings: Any,
) -> None:
    """Holds the pages of a stream against pictures (PNG that is not interlaced, or raw PBM), dot for dot.

    golden: the picture of its only page, or those of all pages in their order
    tolerance: how many dots of a page may differ
    settings: as of render

    Raises AssertionError if a page differs or is missing. Its text says for each page how many dots differ and where,
    in dots from the top left corner, as `zpl compare` does; a picture, as golden.difference.png beside golden.png,
    shows it: grey is what is alike, red is missing, blue is too much. Raises OSError or ValueError for a picture that
    cannot be read, and what render raises.
    """
    paths = [Path(golden)] if isinstance(golden, (str, os.PathLike)) else [Path(path) for path in golden]
    expected = [_read(path) for path in paths]
    actual = [Picture(page.width, page.height, page.rows) for page in render(stream, dpi, size, **settings)]
    faults = []
    for number, (path, before, after) in enumerate(zip(paths, expected, actual), 1):
        if fault := _fault(path, before, after, tolerance):
            faults.append(f"page {number}: {fault}")
    if len(actual) != len(expected):
        faults.append(f"{_count(len(actual), 'page')}, and not {_count(len(expected), 'page')} as expected")
    if faults:
        raise AssertionError("\n".join(faults))


def _read(path: Path) -> Picture:
    try:
        return _pictures.read(path.read_bytes())
    except ValueError as error:
        raise ValueError(f"cannot read the picture {path}: {error}") from None


def _count(count: int, name: str) -> str:
    return f"{count} {name}" if count == 1 else f"{count} {name}s"


def _lines(picture: Picture, width: int, height: int) -> list[int]:
    """A number for each row of a picture that is enlarged by white at the right and below."""
    stride = (picture.width + 7) // 8
    rows = (picture.rows[start : start + stride] for start in range(0, len(picture.rows), stride))
    lines = [int.from_bytes(row.ljust((width + 7) // 8, b"\0"), "big") for row in rows]
    return lines + [0] * (height - picture.height)


def _fault(path: Path, expected: Picture, actual: Picture, tolerance: int) -> str | None:
    width, height = max(expected.width, actual.width), max(expected.height, actual.height)
    before, after = _lines(expected, width, height), _lines(actual, width, height)
    missing = sum((e & ~a).bit_count() for e, a in zip(before, after))
    extra = sum((a & ~e).bit_count() for e, a in zip(before, after))
    has_same_size = expected[:2] == actual[:2]
    if has_same_size and missing + extra <= tolerance:
        return None
    fault = ""
    if not has_same_size:
        fault = f"is {actual.width} x {actual.height} dots and not {expected.width} x {expected.height} dots; "
    fault += _place(before, after, width, missing, extra) if missing + extra else "no dot differs"
    picture = path.with_name(path.stem + ".difference.png")
    try:
        picture.write_bytes(_difference(before, after, width, height))
    except OSError as error:
        return f"{fault}; a picture of that cannot be written: {error}"
    return f"{fault}; see {picture}"


def _place(before: list[int], after: list[int], width: int, missing: int, extra: int) -> str:
    differing = [e ^ a for e, a in zip(before, after)]
    rows = [y for y, line in enumerate(differing) if line]
    columns = 0
    for line in differing:
        columns |= line
    bits = (width + 7) // 8 * 8
    left, right = bits - columns.bit_length(), bits - (columns & -columns).bit_length() + 1
    return (
        f"{_count(missing + extra, 'dot')} {'differs' if missing + extra == 1 else 'differ'} "
        f"({missing} missing, {extra} too many), all within {right - left} x {rows[-1] + 1 - rows[0]} dots "
        f"at {left}, {rows[0]}"
    )


def _difference(before: list[int], after: list[int], width: int, height: int) -> bytes:
    digits = f"0{(width + 7) // 8 * 8}b"
    indices = b"".join(
        bytes(2 * (e == "1") + (a == "1") for e, a in zip(format(old, digits)[:width], format(new, digits)))
        for old, new in zip(before, after)
    )
    return _pictures.png_of_colours(width, height, _PALETTE, indices)
