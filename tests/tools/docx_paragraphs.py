#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
# SPDX-License-Identifier: GPL-3.0-or-later
"""docx_paragraphs.py FILE: a JSON line a paragraph, [name of its style, text]; then one line, the time it was made.

Ends with a message where a part is missing, not declared or not well formed.
"""
import json
import posixpath
import sys
import zipfile
from xml.etree import ElementTree

W = "{http://schemas.openxmlformats.org/wordprocessingml/2006/main}"
TYPES = "{http://schemas.openxmlformats.org/package/2006/content-types}"
RELATIONS = "{http://schemas.openxmlformats.org/package/2006/relationships}"
CREATED = "{http://purl.org/dc/terms/}created"


def check(holds, message):
    if not holds:
        sys.exit("unsound: " + message)


def main():
    with zipfile.ZipFile(sys.argv[1]) as archive:
        check(archive.testzip() is None, "a member with a wrong checksum")
        parts = {name: ElementTree.fromstring(archive.read(name)) for name in archive.namelist()}
    declared = {item.get("PartName") for item in parts["[Content_Types].xml"].iter(TYPES + "Override")}
    check(declared <= {"/" + name for name in parts}, "a declared part is missing")
    for name, root in parts.items():
        base = posixpath.dirname(posixpath.dirname(name))
        for relation in root.iter(RELATIONS + "Relationship"):
            target = posixpath.join(base, relation.get("Target"))
            check(target in parts, "%s points to %s, which is not there" % (name, target))
    styles = {
        style.get(W + "styleId"): style.find(W + "name").get(W + "val")
        for style in parts["word/styles.xml"].iter(W + "style")
    }
    for paragraph in parts["word/document.xml"].iter(W + "p"):
        check(not any("\t" in (item.text or "") for item in paragraph.iter(W + "t")), "a tab that is shown as a space")
        signs = {W + "br": "\n", W + "tab": "\t"}
        pieces = [item for item in paragraph.iter() if item.tag in (W + "t", *signs)]
        text = "".join(signs.get(item.tag, item.text or "") for item in pieces)
        print(json.dumps([styles[paragraph.find("%spPr/%spStyle" % (W, W)).get(W + "val")], text]))
    check(any("PAGE" in (field.get(W + "instr") or "") for field in parts["word/footer1.xml"].iter()), "no page number")
    print(json.dumps(parts["docProps/core.xml"].find(CREATED).text))


if __name__ == "__main__":
    main()
