"""Drawn pages."""
from __future__ import annotations

import json
import os
from typing import Any, Iterable

from zplhost._library import Error, ffi, file_of, lib, text

# The eight dots of each byte of a row, a byte for each.
_DOTS_OF = [bytes(byte >> bit & 1 for bit in range(7, -1, -1)) for byte in range(256)]


class Page:
    """A drawn page, 1 bit a dot. It outlives its desk, and any threads may read it at once.

    numpy.asarray(page) gives an array of bool, shape (height, width), True where a dot is black.
    """

    width: int  #: dots
    height: int  #: dots
    dpi: int  #: dots per inch
    bytes_per_row: int  #: of `rows`: (width + 7) // 8
    findings: list[dict[str, Any]]  #: of its label, see `Pages.findings`

    label: int  #: that it belongs to, counted from 1 in its stream

    def __init__(self, handle: Any, label: int) -> None:
        self._handle = ffi.gc(handle, lib.zpl_page_free)
        self.width = lib.zpl_page_width(handle)
        self.height = lib.zpl_page_height(handle)
        self.dpi = lib.zpl_page_dpi(handle)
        self.bytes_per_row = lib.zpl_page_bytes_per_row(handle)
        self.label = label
        self.findings = []

    def __repr__(self) -> str:
        return f"<zplhost.Page of {self.width} x {self.height} dots at {self.dpi} dpi>"

    @property
    def rows(self) -> bytes:
        """Rows of `bytes_per_row` bytes from the top, most significant bit first; a set bit is black.

        Bits right of the page are 0. Raises Error if there is no memory for them.
        """
        rows = lib.zpl_page_rows(self._handle)
        if rows == ffi.NULL:
            raise Error(text(lib.zpl_error()))
        return bytes(ffi.buffer(rows, self.bytes_per_row * self.height))

    @property
    def png(self) -> bytes:
        """As a PNG file, byte for byte that of `zpl render`."""
        return self.write("png")

    @property
    def fields(self) -> list[dict[str, Any]]:
        """What stands where: the field map of docs/report.md. Boxes are in pixels of the page, places in bytes of
        the stream. Empty if the desk does not map fields."""
        fields: list[dict[str, Any]] = json.loads(text(lib.zpl_page_fields(self._handle)))
        return fields

    @property
    def report(self) -> dict[str, Any]:
        """What programs are told of it: "copy" and "copies", from 1, "turned" and the rest of docs/report.md."""
        report: dict[str, Any] = json.loads(text(lib.zpl_page_report(self._handle)))
        return report

    def write(self, format: str) -> bytes:
        """As a file: "png", "pbm" (raw portable bitmap) or "pdf". Raises Misuse for another one."""
        name = format.encode()
        return file_of(lambda memory, size: lib.zpl_page_write(self._handle, name, memory, size))

    def save(self, path: str | os.PathLike[str]) -> None:
        """Writes a file in the format that its name ends with. Raises Misuse for an unknown one, and OSError."""
        file = self.write(os.path.splitext(path)[1].lower().lstrip("."))
        with open(path, "wb") as opened:
            opened.write(file)

    def _repr_png_(self) -> bytes:
        """Shows the page in a notebook."""
        return self.png

    @property
    def __array_interface__(self) -> dict[str, Any]:
        rows, stride = self.rows, self.bytes_per_row
        dots = b"".join(
            b"".join([_DOTS_OF[byte] for byte in rows[start : start + stride]])[: self.width]
            for start in range(0, len(rows), stride)
        )
        return {"version": 3, "shape": (self.height, self.width), "typestr": "|b1", "data": dots}


def pdf(pages: Iterable[Page]) -> bytes:
    """One PDF document of these pages, each with its own size. Raises Misuse if there is none."""
    kept = list(pages)  # holds the handles
    handles = ffi.new("zpl_page const *[]", [page._handle for page in kept])
    return file_of(lambda memory, size: lib.zpl_pages_write_pdf(handles, len(kept), memory, size))
