"""Flattens pages of orders into CSV rows with Python's json and csv modules; prints ms per page."""

import csv
import io
import json
import sys
import time


def rows(order):
    base = []
    for key in sorted(order):
        value = order[key]
        if isinstance(value, dict):
            base.extend(str(value[sub]) for sub in sorted(value))
        elif not isinstance(value, list):
            base.append(str(value))
    for line in order["line_items"]:
        yield base + [str(line[key]) for key in sorted(line) if key != "taxes"]


def main():
    folder, count = sys.argv[1], int(sys.argv[2])
    pages = [open(f"{folder}/{i}.json", "rb").read() for i in range(count)]
    with open(f"{folder}/out.csv", "w", encoding="utf-8", newline="") as out:
        start = time.perf_counter()
        for page in pages:
            buffer = io.StringIO()
            writer = csv.writer(buffer, delimiter=";")
            for order in json.loads(page):
                writer.writerows(rows(order))
            out.write(buffer.getvalue())
            out.flush()
        print((time.perf_counter() - start) * 1000 / count)


main()
