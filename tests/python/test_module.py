"""The module for Python, over the library of the build tree."""
import os
import struct
import subprocess
import sys
import tempfile
import threading
import unittest
import zlib
from pathlib import Path

import numpy
import zplhost
from zplhost import _pictures

TREE = Path(__file__).parents[2]
BOX = "^XA^FO10,20^GB5,3,3^FS^XZ"
SMALL = {"size": "100x60dots"}


def png(depth, colour, width, rows, filter_type=0, extra=b"", interlaced=0):
    """A PNG of samples that are packed already; rows come filtered."""
    def chunk(body):
        return struct.pack(">I", len(body) - 4) + body + struct.pack(">I", zlib.crc32(body))

    head = b"IHDR" + struct.pack(">IIBBBBB", width, len(rows), depth, colour, 0, 0, interlaced)
    data = b"IDAT" + zlib.compress(b"".join(bytes([filter_type]) + row for row in rows))
    return b"\x89PNG\r\n\x1a\n" + chunk(head) + (chunk(extra) if extra else b"") + chunk(data) + chunk(b"IEND")


class RenderTest(unittest.TestCase):
    def test_pages_are_those_of_the_command_line(self):
        with tempfile.TemporaryDirectory() as folder:
            for name, dpi in (("shipping-label", 203), ("inventory-batch", 203), ("pharmacy-label", 300)):
                stream = TREE / "examples" / f"{name}.zpl"
                subprocess.run([os.environ["ZPL_PROGRAM"], "render", "--dpi", str(dpi), str(stream)], cwd=folder,
                               check=True, capture_output=True)
                files = sorted(Path(folder).glob(f"{name}-*.png"))
                pages = zplhost.render(stream.read_bytes(), dpi)
                self.assertEqual([page.png for page in pages], [file.read_bytes() for file in files], name)
                zplhost.assert_same(stream.read_bytes(), files, dpi)

    def test_a_page_is_an_array_of_its_dots(self):
        page = zplhost.render(BOX, size="99x60dots")[0]
        array = numpy.asarray(page)
        expected = numpy.zeros((60, 99), bool)
        expected[20:23, 10:15] = True
        numpy.testing.assert_array_equal(array, expected)
        self.assertEqual(numpy.packbits(array, axis=1).tobytes(), page.rows)
        self.assertEqual(page.fields[0]["box"], {"left": 10, "top": 20, "width": 5, "height": 3})

    def test_findings_are_those_of_the_stream_and_of_each_label(self):
        pages = zplhost.render("^XA^FO9,9^BEN^FDx^FS^PQ3^XZ" + "^XA^XY^FO1,1^GB9,9^FS^XZ", most_copies=2)
        self.assertEqual([(page.label, [f["kind"] for f in page.findings]) for page in pages],
                         [(1, ["barcode-refused"])] * 2 + [(2, ["unknown-command"])])
        self.assertEqual(len(pages.findings), 2)
        self.assertEqual(zplhost.render(BOX).findings, [])

    def test_sizes_have_units(self):
        for size, dpi, dots in (("1x2in", 203, (203, 406)), ("1x.5", 300, (300, 150)), ("50.8x25.4mm", 203, (406, 203)),
                                ("400x300dots", 600, (400, 300))):
            page = zplhost.render(BOX, dpi, size)[0]
            self.assertEqual((page.width, page.height, page.dpi), (*dots, dpi), size)

    def test_a_desk_keeps_what_is_stored_and_nothing_else(self):
        desk = zplhost.Desk(**SMALL)
        self.assertEqual(desk.render("^XA^DFR:A.ZPL^FS^FO1,1^GB9,9^FS^XZ" + "^XA^FO1,1^GB8,8^FS"), [])
        self.assertEqual(len(desk.render("^XA^XFR:A.ZPL^FS^XZ")), 1)
        self.assertEqual(len(zplhost.render("^XA^XFR:A.ZPL^FS^XZ")), 0)

    def test_pages_are_drawn_and_read_by_threads_at_once(self):
        desk, expected, drawn = zplhost.Desk(), zplhost.render(BOX)[0].png, []

        def work():
            for page in [page for _ in range(20) for page in desk.render(BOX)]:
                drawn.append(page.png)

        threads = [threading.Thread(target=work) for _ in range(4)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(drawn, [expected] * 80)

    def test_what_cannot_be_used_is_said(self):
        page = zplhost.render(BOX, **SMALL)[0]
        for call, reason in (
            (lambda: zplhost.render(BOX, dpi=204), "a resolution is"),
            (lambda: zplhost.render(BOX, dpi=-1), "a resolution is"),
            (lambda: zplhost.render(BOX, dpi=0, size="9x9dots"), "a resolution is"),
            (lambda: zplhost.render(BOX, size="4by6"), "WIDTHxHEIGHT"),
            (lambda: zplhost.render(BOX, size="201x1in"), "0.1 to 200 inches"),
            (lambda: zplhost.render(BOX, fonts={"L": "/nowhere.ttf"}), "/nowhere.ttf"),
            (lambda: zplhost.render(BOX, time="noon\0"), "zero character"),
            (lambda: page.save("page.gif"), '"gif"'),
            (lambda: zplhost.pdf([]), "a page at least"),
        ):
            with self.assertRaisesRegex(zplhost.Misuse, reason):
                call()


class CompareTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.golden = Path(folder.name) / "golden.png"
        self.difference = Path(folder.name) / "golden.difference.png"
        zplhost.render(BOX, **SMALL)[0].save(self.golden)

    def test_what_differs_is_counted_and_placed_as_zpl_compare_does(self):
        stream = Path(self.golden.parent, "actual.zpl")
        for actual, size in (("^XA^FO12,21^GB5,3,3^FS^XZ", "100x60dots"), (BOX, "103x61dots"),
                             ("^XA^FO10,20^GB5,3,3^FS^FO98,58^GB1,1^FS^XZ", "100x60dots"),
                             (BOX + BOX, "100x60dots"), ("^XA^FO90,50^GB20,20,20^FS^XZ", "110x70dots")):
            with self.subTest(actual, size=size), self.assertRaises(AssertionError) as caught:
                stream.write_text(actual)
                zplhost.assert_same(actual, self.golden, size=size)
            told = subprocess.run(
                [os.environ["ZPL_PROGRAM"], "compare", "--size", size, self.golden, stream, "--difference",
                 self.golden.parent], capture_output=True, text=True, check=False).stdout
            told = told.replace(str(self.golden.parent / "difference-1.png"), str(self.difference))
            self.assertEqual(str(caught.exception), told.strip())
            if self.difference.exists():
                # The pictures of both are alike too.
                self.assertEqual(_pictures.read(self.difference.read_bytes()),
                                 _pictures.read(Path(self.golden.parent, "difference-1.png").read_bytes()))

    def test_dots_are_tolerated(self):
        other = "^XA^FO10,20^GB5,3,3^FS^FO50,50^GB2,1,1^FS^XZ"
        zplhost.assert_same(other, self.golden, tolerance=2, **SMALL)
        with self.assertRaisesRegex(AssertionError, r"2 dots differ \(0 missing, 2 too many\).*2 x 1 dots at 50, 50"):
            zplhost.assert_same(other, self.golden, tolerance=1, **SMALL)

    def test_pictures_of_every_kind_are_read(self):
        dots = _pictures.Picture(10, 2, b"\x80\x40\x01\x00")  # black at 0 and 9, then at 7
        white, black = b"\xff" * 3, b"\0" * 3
        colours = [black + white * 8 + black, white * 7 + black + white * 2]
        grey = [row[::3] for row in colours]
        palette = b"PLTE" + white + b"\x80\x70\x60" + black
        sub = [bytes((row[i] - (row[i - 3] if i >= 3 else 0)) & 255 for i in range(30)) for row in colours]
        up = [grey[0], bytes((b - a) & 255 for a, b in zip(*grey))]
        for name, file in {
            "1 bit": png(1, 0, 10, [b"\x7f\x80", b"\xfe\xff"]),
            "2 bits": png(2, 0, 10, [b"\x3f\xff\xc0", b"\xff\xfc\xf0"]),
            "4 bits of a palette": png(4, 3, 10, [b"\x20\x00\x00\x00\x01", b"\x00\x00\x00\x01\x00"], extra=palette),
            "8 bits": png(8, 0, 10, grey),
            "16 bits": png(16, 0, 10, [bytes(b for byte in row for b in (byte, 7)) for row in grey]),
            "filtered by the row above": png(8, 0, 10, up, 2),
            "colours, filtered by the left": png(8, 2, 10, sub, 1),
            "black through alpha": png(8, 4, 10, [bytes(b for byte in row for b in (0, 255 - byte)) for row in grey]),
            "a bitmap": b"P4\n# drawn by hand\n10 2\n\x80\x40\x01\x3f",
        }.items():
            self.assertEqual(_pictures.read(file), dots, name)

    def test_a_picture_that_cannot_be_read_is_named(self):
        whole = self.golden.read_bytes()
        for file, reason in ((b"GIF89a", "neither"), (whole[:-30], "damaged"), (whole.replace(b"IDAT", b"IDAX"), "damaged"),
                             (png(8, 0, 1, [b"\0"], interlaced=1), "interlaced"), (png(8, 0, 9, [b"\0"]), "last row"),
                             (png(8, 3, 1, [b"\0"]), "palette"), (b"P4 99 99 ", "last row"), (b"P4 0 9 ", "no pixels")):
            self.golden.write_bytes(file)
            with self.assertRaisesRegex(ValueError, f"golden.png: .*{reason}"):
                zplhost.assert_same(BOX, self.golden, **SMALL)
        with self.assertRaises(FileNotFoundError):
            zplhost.assert_same(BOX, self.golden.with_name("none.png"))


class ExampleTest(unittest.TestCase):
    def test_it_lists_what_a_label_says(self):
        with tempfile.TemporaryDirectory() as folder:
            run = subprocess.run(
                [sys.executable, "-B", TREE / "examples/embed/fields.py", TREE / "examples/shipping-label.zpl", "page.png"],
                cwd=folder, capture_output=True, text=True, check=True)
            self.assertIn("label 1: 812 x 1218 dots at 203 dpi\n", run.stdout)
            self.assertRegex(run.stdout, r"(?m)^ +\d+ +\d+  barcode: ")
            zplhost.assert_same((TREE / "examples/shipping-label.zpl").read_bytes(), Path(folder, "page.png"))


if __name__ == "__main__":
    unittest.main()
