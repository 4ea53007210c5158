#!/usr/bin/env python3
"""texts-to-table.py OUTPUT.cpp en.po [other.po ...]: writes the program's texts as one constant table, sorted by key
(src/OrvaneCommon/TextTable.h). A file's name is its language; the first is what the others fall back to."""

import ast
import pathlib
import sys


def read_texts(path):
    """The texts of a .po file by their keys; without its header, and without those not translated."""
    texts = {}
    key = text = None
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        word, _, rest = line.strip().partition(" ")
        if not word or word.startswith("#"):
            continue
        if word == "msgid":
            key, text, literal = "", None, rest
        elif word == "msgstr" and key is not None and text is None:
            text, literal = "", rest
        elif word.startswith('"') and key is not None:
            literal = line.strip()
        else:
            sys.exit(f"{path}:{number}: neither msgid nor msgstr nor the rest of one")
        value = ast.literal_eval(literal)
        if text is None:
            key += value
            continue
        text += value
        if key and text:
            texts[key] = text
    return texts


def literal(text):
    """A string literal of C++ with the text's UTF-8 bytes."""
    escaped = (chr(byte) if 0x20 <= byte < 0x7F and byte not in b'"\\' else f"\\{byte:03o}" for byte in text.encode())
    return '"' + "".join(escaped) + '"'


def rows(values):
    return "".join(f"    {literal(value)},\n" for value in values)


def main(output, *files):
    paths = [pathlib.Path(file) for file in files]
    texts = [read_texts(path) for path in paths]
    keys = sorted({key for language in texts for key in language}, key=str.encode)
    arrays = {
        "kLanguages": [path.stem for path in paths],
        "kKeys": keys,
        "kTexts": [language.get(key, texts[0].get(key, key)) for key in keys for language in texts],
    }
    with open(output, "w", encoding="ascii") as file:
        file.write('#include "OrvaneCommon/TextTable.h"\n\nnamespace orvane {\n\nnamespace {\n\n')
        for name, values in arrays.items():
            file.write(f"constexpr std::string_view {name}[] = {{\n{rows(values)}}};\n\n")
        file.write("}  // namespace\n\nconstinit const TextTable kTextTable{kLanguages, kKeys, kTexts};\n\n")
        file.write("}  // namespace orvane\n")


if __name__ == "__main__":
    main(*sys.argv[1:])
