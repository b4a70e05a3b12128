#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
# SPDX-License-Identifier: GPL-3.0-or-later
"""Reads Numbers and Pages packages without any code of ours, as the readers that Debian has stop at 256 rows.

    iwa_decode.py cells FILE...   a JSON line a table: [name, [[text or null, ...], ...]]
    iwa_decode.py text FILE...    a JSON line a paragraph: [name of its style, text]
    iwa_decode.py objects FILE... a JSON line an object: [number, type, message in hexadecimal]

Ends with a message when a package is not sound: a block or message that does not add up, a pointer that leads nowhere
or out of a component that does not declare it, the two forms of a cell that disagree.
"""
import json
import struct
import sys
import zipfile


def check(holds, message):
    if not holds:
        sys.exit("unsound: " + message)


def varint(data, at):
    value = shift = 0
    while True:
        value |= (data[at] & 0x7F) << shift
        at += 1
        if data[at - 1] < 0x80:
            return value, at
        shift += 7


def snappy(data):
    size, at = varint(data, 0)
    out = bytearray()
    while at < len(data):
        tag = data[at]
        kind, length = tag & 3, tag >> 2
        at += 1
        if kind == 0:
            if length >= 60:
                count = length - 59
                length = int.from_bytes(data[at : at + count], "little")
                at += count
            out += data[at : at + length + 1]
            at += length + 1
            continue
        if kind == 1:
            length, offset, at = (length & 7) + 4, (tag >> 5) << 8 | data[at], at + 1
        else:
            count = 2 if kind == 2 else 4
            length, offset = length + 1, int.from_bytes(data[at : at + count], "little")
            at += count
        check(0 < offset <= len(out), "a copy from before the block")
        start = len(out) - offset
        if offset >= length:
            out += out[start : start + length]
        else:
            for i in range(length):
                out.append(out[start + i])
    check(len(out) == size <= 65536, "a block of %d bytes says %d" % (len(out), size))
    return bytes(out)


def unframe(data):
    parts, at = [], 0
    while at < len(data):
        check(data[at] == 0, "a block that does not begin with 0")
        length = int.from_bytes(data[at + 1 : at + 4], "little")
        parts.append(snappy(data[at + 4 : at + 4 + length]))
        at += 4 + length
    check(at == len(data), "the last block is cut off")
    return b"".join(parts)


class Message:
    """Fields by number, each a list of raw values."""

    def __init__(self, data):
        self.fields = {}
        at = 0
        while at < len(data):
            tag, at = varint(data, at)
            wire = tag & 7
            if wire == 0:
                value, at = varint(data, at)
            elif wire in (1, 5):
                size = 8 if wire == 1 else 4
                value, at = data[at : at + size], at + size
            else:
                check(wire == 2, "wire type %d" % wire)
                length, at = varint(data, at)
                value, at = data[at : at + length], at + length
                check(len(value) == length, "a field is cut off")
            self.fields.setdefault(tag >> 3, []).append(value)

    def all(self, number):
        return self.fields.get(number, [])

    def one(self, number):
        check(len(self.all(number)) == 1, "field %d occurs %d times" % (number, len(self.all(number))))
        return self.fields[number][0]

    def messages(self, number):
        return [Message(value) for value in self.all(number)]

    def message(self, number):
        return Message(self.one(number))

    def texts(self, number):
        return [value.decode("utf-8") for value in self.all(number)]

    def ref(self, number):
        return self.message(number).one(1)


def packed(data):
    values, at = [], 0
    while at < len(data):
        value, at = varint(data, at)
        values.append(value)
    return values


class Package:
    def __init__(self, path):
        self.objects = {}  # id: (type, payload)
        homes, references = {}, {}
        with zipfile.ZipFile(path) as archive:
            check(archive.testzip() is None, "a member with a wrong checksum")
            members = {info.filename: info for info in archive.infolist()}
            check(all(info.compress_type == zipfile.ZIP_STORED for info in members.values()), "a compressed member")
            for name in members:
                if not name.endswith(".iwa"):
                    continue
                data, at = unframe(archive.read(name)), 0
                while at < len(data):
                    size, at = varint(data, at)
                    info, at = Message(data[at : at + size]), at + size
                    part = info.message(2)
                    identifier, length = info.one(1), part.one(3)
                    check(identifier not in self.objects, "object %d is there twice" % identifier)
                    self.objects[identifier] = (part.one(1), data[at : at + length])
                    homes[identifier] = name
                    references[identifier] = packed(part.one(5)) if part.all(5) else []
                    at += length
                check(at == len(data), name + " is cut off")
            for name in ("Properties.plist", "BuildVersionHistory.plist", "DocumentIdentifier"):
                check("Metadata/" + name in members, name + " is missing")
        self.check_metadata(homes, references)

    def check_metadata(self, homes, references):
        metadata = self.get(2, 11006)
        check(metadata.one(1) >= max(self.objects), "the last identifier is too low")
        components, outside = {}, {}
        for component in metadata.messages(3):
            root = component.one(1)
            locator = (component.texts(3) or component.texts(2))[0]
            components["Index/%s.iwa" % locator] = root
            check(homes.get(root) == "Index/%s.iwa" % locator, "the root of %s is elsewhere" % locator)
            outside[root] = {(link.one(1), link.one(2)) for link in component.messages(6)}
        check(set(components) | {"Index/Metadata.iwa"} == set(homes.values()), "components are not all listed")
        for source, targets in references.items():
            for target in targets:
                check(target in homes, "object %d points to %d, which is not there" % (source, target))
                home, away = homes[source], homes[target]
                declared = home == away or (components[away], target) in outside[components[home]]
                check(declared, "%s does not declare object %d" % (home, target))

    def get(self, identifier, wanted):
        kind, payload = self.objects[identifier]
        check(kind == wanted, "object %d has type %d, not %d" % (identifier, kind, wanted))
        return Message(payload)

    def strings(self, identifier):
        table = {}
        listing = self.get(identifier, 6005)
        check(listing.one(1) == 1, "a list of type %d, not of texts" % listing.one(1))
        for entry in listing.messages(3):
            check(entry.one(1) not in table, "a key is there twice")
            table[entry.one(1)] = [entry.texts(3)[0], entry.one(2)]
        check(all(key < listing.one(2) for key in table), "the next key is taken")
        return table


def cells_of_row(row, columns):
    """column: key of the text, the same from both forms of the row."""
    forms = []
    for buffer, offsets, unit, size, key_at in ((3, 4, 1, 16, 12), (6, 7, 4, 16, 12)):
        data = row.one(buffer)
        places = struct.unpack("<%dH" % (len(row.one(offsets)) // 2), row.one(offsets))
        check(len(places) >= columns, "offsets are missing")
        found = {}
        for column, place in enumerate(places):
            if place == 0xFFFF:
                continue
            cell = data[place * unit : place * unit + size]
            old = buffer == 3
            check(cell[0] == (3 if old else 5) and cell[2 if old else 1] == 3, "a cell that is no text")
            flags = struct.unpack("<I", cell[4:8] if old else cell[8:12])[0]
            check(flags == (0x10 if old else 8), "a cell with flags %#x" % flags)
            found[column] = struct.unpack("<I", cell[key_at : key_at + 4])[0]
        check(len(data) == size * len(found), "a row buffer of another length")
        forms.append(found)
    check(forms[0] == forms[1], "the two forms of a row differ")
    check(len(forms[0]) == row.one(2), "a row counts its cells wrongly")
    return forms[1]


def tables(package):
    for sheet in package.get(1, 1).messages(1):
        for drawable in package.get(sheet.one(1), 2).messages(2):
            yield table(package, package.get(package.get(drawable.one(1), 6000).ref(2), 6001))


def table(package, model):
    rows, columns, store = model.one(6), model.one(7), model.message(4)
    texts = package.strings(store.ref(4))
    grid = [[None] * columns for _ in range(rows)]
    uses = dict.fromkeys(texts, 0)
    tiles = store.message(3).messages(1)
    tree = {node.one(2): node.one(1) for node in store.message(9).messages(1)}
    for tile in tiles:
        first = tree[tile.one(1)]
        content = package.get(tile.ref(2), 6002)
        infos = content.messages(5)
        places = [row.one(1) for row in infos]
        check(len(infos) == content.one(4) and first % 256 == 0, "a tile of %d rows" % len(infos))
        check(places == sorted(set(places) & set(range(256))), "the rows of a tile are out of order")
        for row in infos:
            for column, key in cells_of_row(row, columns).items():
                grid[first + row.one(1)][column] = texts[key][0]
                uses[key] += 1
    check(all(uses[key] == texts[key][1] for key in texts), "texts are not used as often as they say")
    check_headers(package, store.message(1).ref(2), [sum(c is not None for c in row) for row in grid])
    check_headers(package, store.ref(2), [sum(row[c] is not None for row in grid) for c in range(columns)])
    return [model.texts(8)[0], grid]


def check_headers(package, identifier, counts):
    found = [(header.one(1), header.one(4)) for header in package.get(identifier, 6006).messages(2)]
    check(found == list(enumerate(counts)), "headers count their cells wrongly")


def paragraphs(package):
    body = package.get(package.get(1, 10000).ref(4), 2001)
    units = body.texts(3)[0].encode("utf-16-le")
    runs = [(run.one(1), run.ref(2)) for run in body.message(5).messages(1)]
    check(runs and runs[0][0] == 0 and runs == sorted(set(runs)), "the runs of styles are out of order")
    style, at, start = None, 0, 0
    while start < len(units):
        end = start
        while end < len(units) and units[end : end + 2] != b"\n\0":
            end += 2
        while at < len(runs) and runs[at][0] * 2 <= start:
            style = package.get(runs[at][1], 2022).message(1).texts(1)[0]
            at += 1
        check(at == len(runs) or runs[at][0] * 2 >= min(end + 2, len(units)), "a style begins within a paragraph")
        yield [style, units[start:end].decode("utf-16-le")]
        start = end + 2


def objects(package):
    return ([number, kind, message.hex()] for number, (kind, message) in package.objects.items())


def main():
    readers = {"cells": tables, "text": paragraphs, "objects": objects}
    for path in sys.argv[2:]:
        for line in readers[sys.argv[1]](Package(path)):
            print(json.dumps(line))


if __name__ == "__main__":
    main()
