#!/usr/bin/env python3
"""Writes the tables of the ADIF standard (version 3.1.6) that the program is built with.

Source: the standard's lists as tab-separated files, one a list (fields.tsv, modes.tsv, ...), which
are not part of this project.

    tools/make_adif_tables.py FACTS            write the tables
    tools/make_adif_tables.py --check [FACTS]  exit 1 when a table is not what was written: compared
                                               with the lists where they are at hand, and in any
                                               case with the checksum in its first lines
"""
import csv
import hashlib
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
FIRST = "// Made by tools/make_adif_tables.py from the lists of ADIF 3.1.6. Do not edit.\n"


def rows(facts, name):
    with open(facts / name, encoding="utf-8", newline="") as file:
        return list(csv.DictReader(file, delimiter="\t", quoting=csv.QUOTE_NONE))


def enumerator(name):
    return "k" + "".join(word.capitalize() for word in name.split("_"))


def fields(facts):
    """TOBARINE_FIELD(enumerator, name), one for every field of a contact, sorted by name."""
    names = sorted(r["Field Name"] for r in rows(facts, "fields.tsv") if r["Header Field"] != "true")
    return "".join(f'TOBARINE_FIELD({enumerator(name)}, "{name}")\n' for name in names)


TABLES = {"src/log/fields.inc": fields}


def whole(body):
    return FIRST + f"// sha256 of what follows: {hashlib.sha256(body.encode()).hexdigest()}\n" + body


def as_written(text):
    return text == whole(text.split("\n", 2)[2]) if text.count("\n") > 2 else False


def main():
    words = [word for word in sys.argv[1:] if word != "--check"]
    facts = pathlib.Path(words[0]) if words else None
    if "--check" not in sys.argv[1:]:
        for name, table in TABLES.items():
            (ROOT / name).write_text(whole(table(facts)), encoding="utf-8")
        return
    wrong = []
    for name, table in TABLES.items():
        text = (ROOT / name).read_text(encoding="utf-8")
        if not as_written(text) or (facts and facts.is_dir() and text != whole(table(facts))):
            wrong.append(name)
    if wrong:
        sys.exit("not as the generator writes them: " + ", ".join(wrong))
    print("the tables are what their generator writes")


main()
