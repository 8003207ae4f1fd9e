#!/usr/bin/env python3
"""Writes data/dxcc_mas.txt, data/l2h_cty.mas and data/h2l_cty.mas.

Current entities come from the cty.csv of Debian's package hamradio-files, which carries the DXCC
numbers; deleted ones are listed below. Hamlog's DX codes are its maker's own and not public: only
500A (Japan) is filled in; `tobarine-cli build codes` learns the others from a user's log.

    tools/make_entity_files.py [CTY.CSV]
"""
import csv
import pathlib
import sys

DATA = pathlib.Path(__file__).resolve().parent.parent / "data"
L2H_LINES = 350

# The prefix Japanese operators use where it differs from the one in cty.csv.
CUSTOMARY = {"K": "W", "UA9": "UA0", "JD/m": "JD1/M", "JD/o": "JD1/O"}
# Names that do not fit the 26 columns of the code tables.
SHORTER = {"Tristan da Cunha & Gough Islands": "Tristan da Cunha & Gough"}

# DXCC number, prefix, continent, CQ zone, ITU zone, name. The first ten are the ones best known in
# Japanese logs; they fill the last lines of l2h_cty.mas.
DELETED = """
229 Y2 EU 14 28 German Democratic Republic
218 OK-OM EU 15 28 Czechoslovakia
81 DL EU 14 28 Germany
194 7J1 OC 27 45 Okino Torishima
193 KR6 AS 25 45 Okinawa
85 PJ2 SA 9 11 Bonaire & Curacao
255 PJ5 NA 8 11 St Maarten Saba Eustatius
134 KH5K OC 31 61 Kingman Reef
154 4W AS 21 39 Yemen Arab Republic
243 7O AS 21 39 P.D.R. of Yemen
2 J2/A AF 37 48 Abu Ail Islands
8 VQ9/A AF 39 53 Aldabra
19 HK0/B NA 7 11 Bajo Nuevo
23 VQ9/B AF 39 53 Blenheim Reef
25 ZC5 OC 28 54 British North Borneo
26 VQ6 AF 37 48 British Somaliland
28 KZ5 NA 7 11 Canal Zone
30 PK6 OC 28 54 Celebe & Molucca Islands
39 FB8 AF 39 53 Comoros (before 1975)
42 CR8/D AS 22 41 Damao & Diu
44 VQ9/D AF 39 53 Desroches
55 VQ9/F AF 39 53 Farquhar
57 FQ8 AF 36 47 French Equatorial Africa
58 FI8 AS 26 49 French Indo-China
59 FF AF 35 46 French West Africa
67 FN8 AS 22 41 French India
68 8Z5 AS 21 39 Kuwait/Saudi Neutral Zone
93 1G AF 39 53 Geyser Reef
101 CR8/G AS 22 41 Goa
102 ZD4 AF 35 46 Gold Coast & Togoland
113 EA9/I AF 33 37 Ifni
115 I5 AF 37 48 Italian Somaliland
119 PK1 OC 28 54 Java
127 VS9K AS 21 39 Kamaran Islands
128 UN1 EU 16 19 Karelo-Finnish Republic
139 VS9H AS 21 39 Kuria Muria Islands
151 R1MV EU 16 29 Malyj Vysotskij
155 VS2 AS 28 54 Malaya
164 C9/M AS 24 33 Manchuria
178 1M OC 32 62 Minerva Reef
183 PK5 OC 28 54 Netherlands Borneo
184 JZ0 OC 28 51 Netherlands New Guinea
186 VO NA 5 9 Newfoundland & Labrador
196 ZC6 AS 20 39 Palestine (before 1968)
198 VK9/P OC 28 51 Papua Territory
200 CR10 OC 28 54 Portuguese Timor
208 9U5 AF 36 52 Ruanda-Urundi
210 9S4 EU 14 28 Saar
220 KS4 NA 7 11 Serrana & Roncador Cay
226 8Z4 AS 21 39 Saudi/Iraq Neutral Zone
228 AC3 AS 22 41 Sikkim
231 VS4 OC 28 54 Sarawak
244 ST0 AF 34 48 Southern Sudan
258 PK4 OC 28 54 Sumatra
261 KS4/S NA 7 11 Swan Islands
264 CN2 AF 33 37 Tangier
267 VK9/N OC 28 51 Territory of New Guinea
268 AC4 AS 23 41 Tibet
271 I1/T EU 15 28 Trieste
307 VQ1 AF 37 53 Zanzibar
488 ZS9 AF 38 57 Walvis Bay
493 ZS0 AF 38 57 Penguin Islands
"""


def current(path):
    entities, parents = [], {}
    with open(path, newline="") as file:
        for row in csv.reader(file):
            prefix, name, number = row[0], row[1], int(row[2])
            if prefix.startswith("*"):
                parents.setdefault(number, []).append(prefix)
                continue
            entities.append({
                "number": number, "prefix": CUSTOMARY.get(prefix, prefix).upper(),
                "name": SHORTER.get(name, name), "continent": row[3], "cq": int(row[4]),
                "itu": int(row[5]), "deleted": " ", "keys": [prefix]})
    for entity in entities:
        entity["keys"] += parents.pop(entity["number"], [])
    assert not parents, parents
    return entities


def deleted():
    entities = []
    for line in DELETED.strip().splitlines():
        number, prefix, continent, cq, itu, name = line.split(" ", 5)
        entities.append({
            "number": int(number), "prefix": prefix, "name": name, "continent": continent,
            "cq": int(cq), "itu": int(itu), "deleted": "D", "keys": ["-"]})
    return entities


def write(name, lines):
    (DATA / name).write_bytes("".join(line.rstrip() + "\r\n" for line in lines).encode("cp932"))


def main():
    source = sys.argv[1] if len(sys.argv) > 1 else "/usr/share/hamradio-files/cty.csv"
    now, gone = current(source), deleted()
    numbers = [e["number"] for e in now + gone]
    assert len(set(numbers)) == len(numbers), "a DXCC number stands twice"
    assert all(len(e["name"]) <= 26 for e in now + gone)
    in_order = now + sorted(gone, key=lambda e: e["number"])
    write("dxcc_mas.txt", [
        "# DXCC entities: number, prefix, continent, CQ zone, ITU zone, D = deleted,",
        "# names of the entity in cty.dat (* = counts as this entity), name",
    ] + [
        f"{e['number']:03} {e['prefix']:<8} {e['continent']} {e['cq']:02} {e['itu']:02} "
        f"{e['deleted']} {','.join(e['keys']):<12} {e['name']}" for e in in_order])
    table = (now + gone)[:L2H_LINES]
    code = {339: "500A"}
    write("l2h_cty.mas", [
        f"{e['number']:03} {e['prefix']:<14}{code.get(e['number'], ''):<5} {e['name']:<26}"
        for e in table])
    write("h2l_cty.mas", [
        f"{code.get(e['number'], ''):<5} {e['number']:03} {e['prefix']:<13} {e['name']:<26}"
        for e in table])
    print(f"{len(now)} current and {len(gone)} deleted entities")


main()
