#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
# SPDX-License-Identifier: GPL-3.0-or-later
"""read_export.py xlsx|html|vcard FILE: what other people's readers find in an exported file, a JSON value a line.

xlsx: for each sheet [name, frozen at, filter], then a list a row; a cell that is no text ends the script.
html: [tag, class, style, text] a cell, a list a row; before them the title.
vcard: [name, types, value] a line, in order.
Status 77: the reader is not installed.
"""
import json
import sys


def read_xlsx(path):
    import openpyxl

    for sheet in openpyxl.load_workbook(path):
        yield [sheet.title, sheet.freeze_panes, sheet.auto_filter.ref]
        for number, row in enumerate(sheet.iter_rows(), 1):
            for cell in row:
                if cell.value is not None and (cell.data_type != "s" or cell.number_format != "@"):
                    sys.exit(f"{cell.coordinate}: {cell.data_type} {cell.number_format}")
                if cell.value is not None and (number == 1) != bool(cell.font.b):
                    sys.exit(f"{cell.coordinate}: bold is {cell.font.b}")
            yield [cell.value for cell in row]


def read_html(path):
    from xml.etree import ElementTree

    html = "{http://www.w3.org/1999/xhtml}"
    root = ElementTree.parse(path).getroot()
    yield root.findtext(f"{html}head/{html}title")
    for row in root.iterfind(f"{html}body/{html}table/{html}tr"):
        yield [[cell.tag.replace(html, ""), cell.get("class"), cell.get("style"), cell.text or ""] for cell in row]


def read_vcard(path):
    import vobject

    with open(path, encoding="utf-8", newline="") as file:
        for card in vobject.readComponents(file):
            for line in card.lines():
                types = sorted(line.params.get("TYPE", []))
                yield [line.name, types, str(line.value)]


try:
    for value in {"xlsx": read_xlsx, "html": read_html, "vcard": read_vcard}[sys.argv[1]](sys.argv[2]):
        print(json.dumps(value))
except ImportError:
    sys.exit(77)
