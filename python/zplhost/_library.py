"""The shared library, its failures, and what the other modules call it by."""
from __future__ import annotations

from typing import Any, Callable

from zplhost import _interface

ffi: Any = _interface.ffi
# The number is that of the interface which _interface.py was made from.
lib: Any = ffi.dlopen("libzplhost.so.0")


class Error(Exception):
    """A label that cannot be drawn, or memory that cannot be had; the text says which, in one line."""


class Misuse(Error, ValueError):
    """An argument that cannot be used: a resolution that no printer has, say, or a font that cannot be read."""


def text(characters: Any) -> str:
    """A text of the library; bytes that are no UTF-8 become replacement characters."""
    decoded: str = ffi.string(characters).decode("utf-8", "replace")
    return decoded


def check(status: int) -> None:
    if status != lib.ZPL_OK:
        raise (Misuse if status == lib.ZPL_MISUSED else Error)(text(lib.zpl_error()))


def file_of(write: Callable[[Any, Any], Any]) -> bytes:
    """A whole file of a function that is asked for the size first."""
    size = ffi.new("size_t *")
    check(write(ffi.NULL, size))
    memory = ffi.new("unsigned char[]", size[0])
    check(write(memory, size))
    return bytes(ffi.buffer(memory, size[0]))
