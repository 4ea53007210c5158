#!/usr/bin/env python3
"""check-texts.py MSGFMT ROOT: checks the program's texts: that gettext takes each file, that the program's own reading of
it is gettext's, that every key in the sources has a text in every language with the placeholders of the English one, and
that no text is left over."""

import gettext
import importlib.machinery
import importlib.util
import io
import pathlib
import re
import subprocess
import sys

KEY = re.compile(r'\b(?:localizedText(?:Key)?|text)\s*\(\s*"([^"]*)"')
PLACEHOLDER = re.compile(r"%(?:@|%|[-+ #0-9.]*[a-zA-Z])")


def module(path):
    loader = importlib.machinery.SourceFileLoader(path.stem, str(path))
    result = importlib.util.module_from_spec(importlib.util.spec_from_loader(loader.name, loader))
    sys.dont_write_bytecode = True
    loader.exec_module(result)
    return result


def catalogue(msgfmt, path):
    compiled = subprocess.run([msgfmt, "--check", "-o", "-", path], stdout=subprocess.PIPE, check=True).stdout
    texts = gettext.GNUTranslations(io.BytesIO(compiled))._catalog
    return {key: text for key, text in texts.items() if key}


def main(msgfmt, root):
    root = pathlib.Path(root)
    sources = [path for suffix in ("cpp", "h") for path in (root / "src").rglob(f"*.{suffix}")]
    used = {key for path in sources for key in KEY.findall(path.read_text(encoding="utf-8"))}
    read_texts = module(root / "cmake/texts-to-table.py").read_texts
    files = sorted((root / "data/texts").glob("*.po"))
    texts = {path.stem: catalogue(msgfmt, path) for path in files}
    english = texts["en"]

    faults = [f"no source uses {key}" for key in english.keys() - used]
    for path in files:
        language, known = path.stem, texts[path.stem]
        faults += [f"{language}: no text for {key}" for key in used - known.keys()]
        faults += [f"{language}: English has no {key}" for key in known.keys() - english.keys()]
        faults += [
            f"{language}: other placeholders in {key}"
            for key in known.keys() & english.keys()
            if PLACEHOLDER.findall(known[key]) != PLACEHOLDER.findall(english[key])
        ]
        if read_texts(path) != known:
            faults.append(f"{language}: read otherwise by the program than by gettext")
    print("\n".join(faults) or f"{len(used)} keys in {len(files)} languages")
    sys.exit(1 if faults or not used else 0)


if __name__ == "__main__":
    main(*sys.argv[1:])
