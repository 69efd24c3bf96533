"""Desks: printers in memory."""
from __future__ import annotations

import json
import os
import re
import threading
from typing import Any, Iterator, Mapping, Union

from zplhost._library import Misuse, check, ffi, lib, text
from zplhost._page import Page

Stream = Union[bytes, bytearray, memoryview, str]


class Pages(list[Page]):
    """The pages of a stream in the order in which they print."""

    #: What a person should know of the stream: what would not print as it was sent, and barcodes that will not scan.
    #: Each has "kind" and "text", and where it has them "label" (from 1) and its place in the stream: "offset" in
    #: bytes from 0, "line" and "column" from 1. docs/report.md lists the kinds.
    findings: list[dict[str, Any]]


def _inches(size: str, dpi: int) -> tuple[float, float]:
    number = r"(\d+\.?\d*|\.\d+)"
    match = re.fullmatch(f"{number}x{number}(in|mm|dots|)", size)
    if not match:
        raise Misuse(f'size is WIDTHxHEIGHT with the unit in (if none is named), mm or dots, as 4x6in; not "{size}"')
    per_inch = {"mm": 25.4, "dots": dpi or 1}.get(match[3], 1)
    return float(match[1]) / per_inch, float(match[2]) / per_inch


class Desk:
    """A printer in memory. What a stream stores on it (formats, graphics) the next one can recall.

    dpi: dots per inch that streams are made for: 203, 300 or 600
    size: of the label: width x height in "in", "mm" or "dots"; a stream that gives its own has the last word
    printer_dpi: dots per inch of the pages, if other than those of the streams
    time: "2026-03-31T14:05:00" lets the clock stand still; local time without it
    fonts: files that draw fonts, by letter or name, as {"L": "logo.ttf"}
    fonts_folder: font files are below it; where the system has them, without it
    storage_folder: of stored formats and graphics; they last as long as the desk, without it
    tag: "blank" or "epc=...,user=..." gives every label an RFID tag
    fields: whether pages have their `fields`; drawing is a little cheaper without

    Raises Misuse for a value that cannot be used. Several threads may use one desk: they take turns.
    """

    def __init__(
        self,
        dpi: int = 203,
        size: str = "4x6in",
        *,
        printer_dpi: int = 0,
        time: str | None = None,
        fonts: Mapping[str, str | os.PathLike[str]] | None = None,
        fonts_folder: str | os.PathLike[str] | None = None,
        storage_folder: str | os.PathLike[str] | None = None,
        tag: str | None = None,
        fields: bool = True,
    ) -> None:
        kept: list[Any] = []  # what the settings point at

        def characters(value: str | os.PathLike[str] | None) -> Any:
            if value is None:
                return ffi.NULL
            if b"\0" in (encoded := os.fsencode(value)):
                raise Misuse(f"{value!r} has a zero character")
            kept.append(ffi.new("char[]", encoded))
            return kept[-1]

        files = [characters(f"{name}={os.fspath(file)}") for name, file in (fonts or {}).items()]
        kept.append(ffi.new("char const *[]", [*files, ffi.NULL]))
        settings = ffi.new("zpl_settings *")
        lib.zpl_settings_init(settings)
        settings.fonts = kept[-1]
        try:
            settings.dpi = dpi
            settings.printer_dpi = printer_dpi
        except OverflowError:
            raise Misuse("a resolution is 203, 300 or 600 dpi") from None
        settings.width_inches, settings.height_inches = _inches(size, dpi)
        settings.storage_folder = characters(storage_folder)
        settings.fonts_folder = characters(fonts_folder)
        settings.time = characters(time)
        settings.tag = characters(tag)
        settings.maps_fields = fields
        desk = ffi.new("zpl_desk **")
        check(lib.zpl_desk_open(settings, desk))
        self._handle = ffi.gc(desk[0], lib.zpl_desk_close)
        self._lock = threading.Lock()

    def render(self, stream: Stream, *, most_copies: int = 1000) -> Pages:
        """Draws every page of a stream: each label as many times as it asks for, and at most `most_copies`.

        A stream as str is sent in UTF-8. What is wrong with a stream is a finding and no exception; Error says that
        a label cannot be drawn, or that there is no memory for it.
        """
        data = ffi.from_buffer(stream.encode() if isinstance(stream, str) else stream)
        with self._lock:
            try:
                check(lib.zpl_desk_feed(self._handle, data, len(data)))
                check(lib.zpl_desk_finish(self._handle))
                pages = Pages(page for label in self._labels() for page in _copies(label, most_copies))
            finally:
                self._forget()
            findings = ffi.new("char const **")
            check(lib.zpl_desk_findings(self._handle, findings))
            pages.findings = json.loads(text(findings[0]))
        for page in pages:
            page.findings = [finding for finding in pages.findings if finding.get("label") == page.label]
        return pages

    def _labels(self) -> Iterator[Any]:
        """Each with its end, since a label that is kept keeps its stream."""
        label = ffi.new("zpl_label **")
        while (status := lib.zpl_desk_next_label(self._handle, label)) != lib.ZPL_NONE:
            check(status)
            yield ffi.gc(label[0], lib.zpl_label_free)

    def _forget(self) -> None:
        """Leaves nothing of a stream to the next one, also where a label of it has failed."""
        lib.zpl_desk_finish(self._handle)
        label = ffi.new("zpl_label **")
        while lib.zpl_desk_next_label(self._handle, label) == lib.ZPL_OK:
            lib.zpl_label_free(label[0])


def _copies(label: Any, most: int) -> Iterator[Page]:
    page = ffi.new("zpl_page **")
    for copy in range(min(lib.zpl_label_copies(label), most)):
        check(lib.zpl_label_draw(label, copy, page))
        yield Page(page[0], lib.zpl_label_number(label))


def render(stream: Stream, dpi: int = 203, size: str = "4x6in", *, most_copies: int = 1000, **settings: Any) -> Pages:
    """Draws every page of a stream on a desk of its own.

    dpi: dots per inch that the stream is made for: 203, 300 or 600
    size: of the label: width x height in "in", "mm" or "dots"; a stream that gives its own has the last word
    most_copies: how many copies of one label are drawn at most
    settings: the others of Desk

    Raises what Desk and Desk.render raise.
    """
    return Desk(dpi, size, **settings).render(stream, most_copies=most_copies)
