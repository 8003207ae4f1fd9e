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


TYPES = {
    "String": "kText", "MultilineString": "kText", "IntlString": "kText",
    "IntlMultilineString": "kText", "Enumeration": "kEnumeration", "GridSquareList": "kGridList",
    "IOTARefNo": "kIota", "POTARefList": "kPotaList", "SOTARef": "kSota", "WWFFRef": "kWwff",
}
# Lists of awards and counties: their parts are not checked, only that they are plain text.
UNCHECKED = {"AwardList", "CreditList,AwardList", "SecondaryAdministrativeSubdivisionListAlt",
             "SecondarySubdivisionList", "SponsoredAwardList"}


def cpp_number(text):
    return text if text else "kNone"


def field_types(facts):
    """TOBARINE_TYPE(field, type, enumeration, smallest, largest), sorted as the fields are."""
    known = set(enumeration_values(facts))
    lines = []
    for row in sorted(rows(facts, "fields.tsv"), key=lambda r: r["Field Name"]):
        if row["Header Field"] == "true":
            continue
        data_type = row["Data Type"]
        kind = "kText" if data_type in UNCHECKED else TYPES.get(data_type, "k" + data_type)
        enumeration = row["Enumeration"] or ""
        if kind != "kEnumeration" or enumeration not in known:
            enumeration = ""
        if kind == "kEnumeration" and not enumeration:
            kind = "kText"
        lines.append(f'TOBARINE_TYPE({enumerator(row["Field Name"])}, {kind}, "{enumeration}", '
                     f'{cpp_number(row["Minimum Value"])}, {cpp_number(row["Maximum Value"])})\n')
    return "".join(lines)


def enumeration_values(facts):
    """Name of an enumeration -> its values, import-only ones included."""
    found = {}
    for row in rows(facts, "small_enumerations.tsv"):
        found.setdefault(row["Enumeration"], []).append(row["Value"])
    found["Band"] = [r["Band"] for r in rows(facts, "bands.tsv")]
    found["Propagation_Mode"] = [r["Enumeration"] for r in rows(facts, "propagation_modes.tsv")]
    found["Mode"] = [r["Mode"] for r in rows(facts, "modes.tsv")]
    found["DXCC_Entity_Code"] = [r["Entity Code"] for r in rows(facts, "dxcc_entities.tsv")]
    return found


def enumerations(facts):
    """TOBARINE_VALUE(enumeration, value), sorted by both."""
    pairs = sorted((name, value.upper()) for name, values in enumeration_values(facts).items()
                   for value in values)
    return "".join(f'TOBARINE_VALUE("{name}", "{value}")\n' for name, value in pairs)


def modes(facts):
    """TOBARINE_MODE(mode) for the modes to write, then TOBARINE_SUBMODE(submode, mode) for every
    submode, import-only modes that became submodes of the same name included; both sorted."""
    written = sorted(r["Mode"] for r in rows(facts, "modes.tsv") if r["Import-only"] != "true")
    submodes = {r["Submode"]: r["Mode"] for r in rows(facts, "submodes.tsv")}
    return ("".join(f'TOBARINE_MODE("{mode}")\n' for mode in written) +
            "".join(f'TOBARINE_SUBMODE("{sub}", "{submodes[sub]}")\n' for sub in sorted(submodes)))


def hertz(mhz):
    whole, _, part = mhz.partition(".")
    return int(whole or 0) * 1_000_000 + int(part.ljust(6, "0"))


def bands(facts):
    """TOBARINE_BAND(name, lowest, highest), Hz, ascending."""
    return "".join(f'TOBARINE_BAND("{r["Band"]}", {hertz(r["Lower Freq (MHz)"])}, '
                   f'{hertz(r["Upper Freq (MHz)"])})\n' for r in rows(facts, "bands.tsv"))


TABLES = {
    "src/log/fields.inc": fields,
    "src/log/modes.inc": modes,
    "src/log/bands.inc": bands,
    "src/adif/field_types.inc": field_types,
    "src/adif/enumerations.inc": enumerations,
}


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
