#!/usr/bin/env python3
"""A small host.

    host.py FOLDER          writes FOLDER/host.txt, starts ledora, waits, shows what came
    host.py --read EXPORT   shows an export that is there already

Python 3 with the standard library only.
"""
import csv
import io
import subprocess
import sys
from decimal import Decimal
from pathlib import Path

# An option's value may hold a bar, so a value ends only where the next known name begins.
OPTIONS = {
    "b2c_handling", "belegdatum", "buchungs_konto", "buchungs_text_erloes", "buchungs_text_gebuehr",
    "buchungs_text_group_show", "buchungs_text_versand", "buchungs_typ", "customers_create",
    "date_filter_after", "date_filter_before", "date_filter_use", "def_payment_method_s",
    "germanized_group_show", "germanized_overwrite_pdf", "germanized_pdf_folder", "germanized_use",
    "gm_buchungs_text_erloes", "gm_buchungs_text_gebuehr", "gm_buchungs_text_versand",
    "id_cache_use", "kostenstelle1", "kostenstelle2", "mainurl", "paypal_use",
    "server_group_show", "skr", "sonstiges_group_show", "woocommerce_use"}
OPTIONS |= {f"{role}_{chart}" for role in range(1, 38) for chart in ("03", "04", "49")}


def split_options(line):
    """The option string -> name to value."""
    tokens = line.split("|")
    options, name = {tokens[0]: tokens[1]}, ""
    expected = True  # a name comes next
    for token in tokens[2:]:
        if not expected and token in OPTIONS and name in options:
            expected = True
        if expected:
            name, expected = token, False
        elif name in options:
            options[name] += "|" + token
        else:
            options[name] = token
    return options


def read_export(path):
    """-> options, rows; each row a dictionary from column name to text. None, None without an export."""
    if not path.exists() or path.stat().st_size == 0:
        return None, None
    # newline="\n" leaves the line breaks inside of cells as they are.
    with open(path, encoding="utf-8", newline="\n") as file:
        options = split_options(file.readline().rstrip("\n"))
        # Names are quoted, but quotes inside of them are not doubled, so this line is no CSV.
        columns = file.readline().rstrip("\n")[1:-1].split('";"')
        cells = csv.reader(io.StringIO(file.read(), newline=""), delimiter=";")
        # Of equal names the first one is filled.
        return options, [dict(reversed(list(zip(columns, row)))) for row in cells]


def amount(text):
    return Decimal(text) if text else Decimal(0)


def gross(row):
    """What a row stands for, tax and its part of the shipping included."""
    shipping = amount(row["line_items_shipping_part"])
    if row["errors"] != "1":  # net then; with the flag it is gross already
        shipping *= 1 + amount(row["line_items_tax_rate"]) / 100
    return (amount(row["line_items_total"]) + amount(row["line_items_total_tax"])
            + shipping).quantize(Decimal("0.01"))


def show(path):
    options, rows = read_export(path)
    if rows is None:
        print("no export: given up, failed, or nothing to export")
        return
    skr = {"3": "03", "4": "04", "49": "49"}[options["skr"]]
    print(f"SKR{skr}, account of normal domestic sales: {options['1_' + skr]}")
    for row in rows:
        kind = "refund" if row["is_refund"] == "1" else "sale"
        when = row["refund_date"] or row["date_created"]
        print(f"order {row['id']} {kind:6} {when[:10]} {gross(row):>8} {row['currency']}"
              f"  fee {row['paypal_fee'] or '-':5}  {row['line_items_name']}")
    # The column is there only if the user wants invoices.
    names = {name for row in rows for name in row.get("gm_invoice_filename", "").split("|")}
    for name in sorted(names - {""}):
        print("invoice", name)


def run(folder):
    export, invoices = folder / "export.csv", folder / "rechnungen"
    folder.mkdir(parents=True, exist_ok=True)
    invoices.mkdir(exist_ok=True)
    (folder / "host.txt").write_text("\n".join([
        str(folder / "ledora.ini"), "3", "1362;1462;707", "1220;1820;955", "1361;1461;706",
        str(export), "0", "-", str(invoices)]) + "\n", encoding="utf-8")
    export.unlink(missing_ok=True)  # what is there afterwards is new
    subprocess.run(["ledora", str(folder / "host.txt")], check=False)
    show(export)


if __name__ == "__main__":
    if len(sys.argv) == 3 and sys.argv[1] == "--read":
        show(Path(sys.argv[2]))
    elif len(sys.argv) == 2 and not sys.argv[1].startswith("-"):
        run(Path(sys.argv[1]).resolve())
    else:
        sys.exit(__doc__)
