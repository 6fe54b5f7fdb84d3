#!/usr/bin/env python3
"""Builds data/TVR Countries.txt, the built-in countries list, from public data.

Sources (read only here; the build and the tests use the committed output):
  - the ADIF DXCC entity enumeration (numbers, names, deleted flags):
    ../shared/data/dxcc-entities.json, or the path given with --entities;
  - prefixes, whole callsigns, continents, positions and zones of the current entities:
    cty.csv of Debian's hamradio-files package (MIT licence, notice kept in data/LICENSES);
  - prefixes and dates of the deleted entities: CountryDel.tab of Debian's cqrlog-data
    package (GPL-2+).

Output: one line per entity, 13 double-quoted fields separated by commas, CR LF line ends,
sorted by ARRL prefix. Whole-callsign entries are kept only where they change the answer of
the longest-leading-match look-up that the program uses.

Python 3 standard library only. Usage:
  tools/make_countries.py [--entities FILE] [--cty FILE] [--deleted FILE] [--out FILE]
"""
import argparse
import csv
import datetime
import json
import os
import re
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(HERE)

HEADER_FIELDS = [
    "#\tDXCC number",
    "#\tARRL DXCC prefix,",
    "#\tDXCC Entity name,",
    "#\tContinent,",
    "#\tLatitude,",
    "#\tLongitude,",
    "#\tCQ Zone,",
    "#\tITU Zone,",
    "#\tActive (A) or Deleted (D),",
    "#\tDate from becoming a valid Entity,",
    "#\tPossible prefixes from ITU Assigned Blocks to Sovereign UN Territory(s)",
]


def strip_overrides(entry):
    """Removes the zone, position, continent and time overrides from a cty.csv entry."""
    return re.sub(r"\(\d+\)|\[\d+\]|<[^>]*>|\{[^}]*\}|~[^~]*~", "", entry).strip()


def expand_classes(token):
    """Expands one CountryDel.tab prefix such as D[ACIJKM], 6[T-U]0 or 7J1(O)."""
    token = re.sub(r"\([^)]*\)", "", token)
    m = re.search(r"\[([^\]]*)\]", token)
    if not m:
        return [token] if token else []
    chars = []
    members = m.group(1)
    i = 0
    while i < len(members):
        if i + 2 < len(members) and members[i + 1] == "-":
            chars.extend(chr(c) for c in range(ord(members[i]), ord(members[i + 2]) + 1))
            i += 3
        else:
            chars.append(members[i])
            i += 1
    out = []
    for c in chars:
        out.extend(expand_classes(token[: m.start()] + c + token[m.end():]))
    return out


def deg_text(value, pos, neg):
    return "%.2f%s" % (abs(value), pos if value >= 0 else neg)


def slash_date(text):
    """1973/09/17 -> 09-17-73 (the list's month-day-year form)."""
    y, m, d = text.split("/")
    return "%s-%s-%s" % (m, d, y[2:])


def read_active(cty_path, names):
    """Returns {dxcc: entity dict} for the current entities, from cty.csv."""
    entities = {}
    with open(cty_path, newline="", encoding="utf-8") as f:
        rows = [r for r in csv.reader(f) if len(r) >= 10]
        # Sub-entities ("*IT9", "*TA1") count for the DXCC entity whose number they carry.
        rows.sort(key=lambda r: r[0].startswith("*"))
        for row in rows:
            primary, _, dxcc, cont, cq, itu, lat, lon = row[:8]
            entries = [e for e in row[9].rstrip(";").split() if e]
            ent = entities.get(dxcc)
            if ent is None:
                if primary.startswith("*"):
                    raise SystemExit("cty.csv: sub-entity %s without its entity" % primary)
                ent = entities[dxcc] = {
                    "dxcc": dxcc, "arrl": primary, "name": names.get(dxcc, row[1]),
                    "cont": cont, "lat": deg_text(float(lat), "N", "S"),
                    "lon": deg_text(-float(lon), "E", "W"), "cq": cq, "itu": itu,
                    "status": "A", "from": "", "prefixes": [], "calls": []}
            for e in entries:
                e = strip_overrides(e)
                if e.startswith("="):
                    ent["calls"].append(e[1:].upper())
                elif e:
                    ent["prefixes"].append(e.upper())
    return entities


def read_deleted(path, names):
    """Returns {dxcc: entity dict} for the deleted entities, from CountryDel.tab."""
    entities = {}
    with open(path, encoding="latin-1") as f:
        for line in f:
            parts = line.rstrip("\r\n").split("|")
            if len(parts) < 11 or parts[9] != "D":
                continue
            dxcc = str(int(parts[8]))
            tokens = parts[0].split()
            valid = parts[10].split()[0] if parts[10].split() else ""
            start = valid.split("-")[0] if "-" in valid else ""
            ent = entities.setdefault(dxcc, {
                "dxcc": dxcc, "arrl": tokens[0], "name": names.get(dxcc, parts[1]),
                "cont": parts[2], "lat": parts[4], "lon": parts[5],
                "cq": parts[6].replace(";", "/"), "itu": parts[7].replace(";", "/"),
                "status": "D", "from": slash_date(start) if start else "",
                "prefixes": [], "calls": []})
            for t in tokens:
                for p in expand_classes(t):
                    if p not in ent["prefixes"]:
                        ent["prefixes"].append(p)
    return entities


def resolve(call, active, deleted):
    for table in (active, deleted):
        for n in range(len(call), 0, -1):
            if call[:n] in table:
                return table[call[:n]]
    return ""


def prune_calls(ordered):
    """Keeps the whole callsigns whose answer differs from the prefix-only answer."""
    active, deleted = {}, {}
    for ent in ordered:
        table = active if ent["status"] == "A" else deleted
        for p in ent["prefixes"]:
            table.setdefault(p, ent["dxcc"])
    kept = 0
    for ent in ordered:
        calls = [c for c in ent["calls"] if resolve(c, active, deleted) != ent["dxcc"]]
        ent["calls"] = sorted(set(calls))
        kept += len(ent["calls"])
    return kept


def quoted(fields):
    return ",".join('"%s"' % f.replace('"', "") for f in fields)


def main():
    ap = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    ap.add_argument("--entities", default=os.path.join(ROOT, "..", "shared", "data",
                                                       "dxcc-entities.json"))
    ap.add_argument("--cty", default="/usr/share/hamradio-files/cty.csv")
    ap.add_argument("--deleted", default="/usr/share/cqrlog/ctyfiles/CountryDel.tab")
    ap.add_argument("--out", default=os.path.join(ROOT, "data", "TVR Countries.txt"))
    args = ap.parse_args()

    with open(args.entities, encoding="utf-8") as f:
        enumeration = json.load(f)
    names = {e["EntityCode"]: e["EntityName"] for e in enumeration if e["EntityCode"] != "0"}
    deleted_codes = {e["EntityCode"] for e in enumeration if e.get("Deleted") == "true"}
    active = read_active(args.cty, names)
    deleted = read_deleted(args.deleted, names)
    for code in names:
        if code not in active and code not in deleted:
            table = deleted if code in deleted_codes else active
            table[code] = {"dxcc": code, "arrl": "", "name": names[code], "cont": "",
                           "lat": "", "lon": "", "cq": "", "itu": "",
                           "status": "D" if code in deleted_codes else "A", "from": "",
                           "prefixes": [], "calls": []}
            print("note: entity %s (%s) has no prefixes" % (code, names[code]), file=sys.stderr)
    for code in deleted_codes & set(active):
        raise SystemExit("entity %s is deleted but listed in cty.csv" % code)
    ordered = sorted(list(active.values()) + list(deleted.values()),
                     key=lambda e: (e["arrl"], int(e["dxcc"])))
    kept_calls = prune_calls(ordered)

    today = datetime.date.today().strftime("%d-%m-%Y")
    n_active = sum(1 for e in ordered if e["status"] == "A")
    lines = ["#" * 76, "#", "#\tTVR Countries.txt - DXCC entities and their prefixes", "#",
             "#\tFields, each in double quotes, separated by commas:"]
    lines += HEADER_FIELDS
    lines += ["#\t(two reserved fields follow, empty)", "#",
              "#\tPrefix entries: a prefix or a whole callsign; \"X < mm-dd-yy\" held until",
              "#\tthat date (dropped on loading), \"X > mm-dd-yy\" held from that date.", "#",
              "#" + "-" * 75, "#\tChange log (dd-mm-yyyy):",
              "#\t%s  generated by tools/make_countries.py: %d active and %d deleted" % (
                  today, n_active, len(ordered) - n_active),
              "#\t            entities, %d whole callsigns kept." % kept_calls,
              "#" + "-" * 75, "#",
              "#\tSources: the ADIF DXCC entity enumeration; cty.csv (Copyright (c) 1994-",
              "#\tJim Reisert AD1C, MIT licence, see LICENSES/cty-csv-MIT.txt) for the",
              "#\tcurrent entities; CountryDel.tab (GPL-2+) for the deleted entities.", "#",
              "#" * 76]
    for e in ordered:
        entries = e["prefixes"] + e["calls"]
        lines.append(quoted([e["dxcc"], e["arrl"], e["name"], e["cont"], e["lat"], e["lon"],
                             e["cq"], e["itu"], e["status"], e["from"], ",".join(entries),
                             "", ""]))
    with open(args.out, "w", encoding="latin-1", newline="") as f:
        f.write("\r\n".join(lines) + "\r\n")
    print("%s: %d entities (%d active, %d deleted), %d whole callsigns" % (
        args.out, len(ordered), n_active, len(ordered) - n_active, kept_calls))


if __name__ == "__main__":
    main()
