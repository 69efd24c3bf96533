"""Labels in the ZPL label language, drawn into memory.

    import zplhost

    page = zplhost.render(stream, dpi=203, size="4x6in")[0]
    page.png, page.rows, page.fields, page.findings

`render` draws the pages of a stream, `Desk` those of several that share what they store, `assert_same` holds pages
against pictures in tests, and `pdf` makes one document of pages. Sizes are dots of the printer, which are the pixels
of the page, unless said otherwise. Whatever fails raises Error, and Misuse (a ValueError) if an argument is to blame.
"""
from zplhost._compare import assert_same
from zplhost._desk import Desk, Pages, Stream, render
from zplhost._library import Error, Misuse, lib as _lib, text as _text
from zplhost._page import Page, pdf

__version__: str = _text(_lib.zpl_version())
__all__ = ["Desk", "Error", "Misuse", "Page", "Pages", "Stream", "assert_same", "pdf", "render"]
