#!/usr/bin/python3
"""fields: draws a stream in memory, and lists what its pages say, and what is wrong with it.

usage: fields.py FILE.zpl [PAGE.png]
"""
import sys

import zplhost


def main() -> int:
    if not 2 <= len(sys.argv) <= 3:
        sys.exit(__doc__)
    with open(sys.argv[1], "rb") as file:
        pages = zplhost.render(file.read(), dpi=203, size="4x6in")
    for page in pages:
        print(f"label {page.label}: {page.width} x {page.height} dots at {page.dpi} dpi")
        for field in page.fields:
            if "text" in field:
                box = field.get("box", {"left": "-", "top": "-"})
                print(f"  {box['left']:>4} {box['top']:>4}  {field['kind']}: {field['text']}")
    for finding in pages.findings:
        print(f"byte {finding.get('offset', '-')}: {finding['text']}", file=sys.stderr)
    if len(sys.argv) > 2 and pages:
        pages[0].save(sys.argv[2])
    return 0 if pages else 1


if __name__ == "__main__":
    sys.exit(main())
