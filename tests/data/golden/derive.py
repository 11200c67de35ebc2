#!/usr/bin/env python3
"""Works out the export of a case a second time, without the program.

    derive.py --check [CASE ...]   compares every case (or those named) with its files
    derive.py --write CASE ...     writes expected.csv, log and pdfs of a case that is
                                   too long to be worked out by hand

Python 3 with the standard library only; the zone database must know Europe/Berlin.
"""
import argparse
import base64
import json
import re
import sys
from pathlib import Path

sys.dont_write_bytecode = True

from shopvalues import (array, by_unit, double, integer, local_date, money, obj, parse,
                        read_date, shortest, six, switch, text)

HERE = Path(__file__).resolve().parent
API = "/wp-json/wc/v3"

# role: accounts in SKR03, SKR04, SKR49
KONTEN = {
    1: (8400, 4400, 8030), 2: (8300, 4300, 8026), 3: (8200, 4200, 8000), 4: (8400, 4400, 8030),
    5: (8300, 4300, 8026), 6: (8200, 4200, 8000), 7: (4760, 6770, 0), 8: (4700, 6700, 0),
    9: (4700, 6700, 0), 10: (2660, 4840, 8137), 11: (2150, 6880, 8367), 12: (8120, 4120, 0),
    13: (8125, 4125, 0), 14: (8320, 4320, 0), 15: (8120, 4120, 0), 16: (8125, 4125, 0),
    17: (8320, 4320, 0), 18: (-1, -1, -1), 19: (-1, -1, -1), 20: (1362, 1462, 707),
    21: (1360, 1460, 705), 22: (8338, 4338, 0), 23: (8336, 4336, 0), 24: (8331, 4331, 0),
    25: (8310, 4310, 0), 26: (8315, 4315, 0), 27: (8310, 4310, 0), 28: (8315, 4315, 0),
    29: (8449, 4449, 0), 30: (8449, 4449, 0), 31: (4970, 6855, 4712), 32: (1220, 1820, 955),
    33: (1361, 1461, 706), 34: (8192, 4185, 8000), 36: (0, 0, 0), 37: (3123, 5923, 0)}

NO_ORDER_COLUMN = set("""_links cart_hash cart_tax created_via currency_symbol
    customer_ip_address customer_note customer_user_agent direct_debit_bic direct_debit_holder
    direct_debit_iban direct_debit_mandate_id is_editable needs_confirmation needs_payment
    needs_processing payment_url parent_id prices_include_tax date_completed_gmt
    date_created_gmt date_modified_gmt date_paid_gmt version""".split())
NO_LINE_FIELD = {"image", "meta_data", "parent_name", "sku", "tax_class", "variation_id"}
DATES = {"date_completed", "date_created", "date_modified", "date_paid"}
GM = ["gm_number", "gm_order_number", "gm_formatted_number", "gm_invoice_filename",
      "gm_invoice_date_created"]
LAST = ["paypal_fee", "is_refund", "refund_id", "refund_date", "refund_flags", "errors"]
SECRETS = ("api_key_chain", "api_secret_chain")
FORM_PREFIXES = ("::mod_form_qt_auto_var:", "::mod_form_qt_widget_data:",
                 "::mod_form_qt_object_data:")


# --- lines --------------------------------------------------------------------------------

def local_rates(record):
    return {integer(line.get("rate_id")): text(line["rate_percent"])
            for line in map(obj, array(record.get("tax_lines"))) if "rate_percent" in line}


def split_shipping(record, rates):
    """-> {rate id, -1 for untaxed: amount}, error flags"""
    shipping, errors, tax_sum, total_sum = {}, 0, 0.0, 0.0
    for line in map(obj, array(record.get("shipping_lines"))):
        total = double(line.get("total"))
        tax_sum += double(line.get("total_tax"))
        total_sum += total
        remaining, net_sum = abs(total), 0.0
        for tax in map(obj, array(line.get("taxes"))):
            rate_id = integer(tax.get("id"))
            rate = double(rates.get(rate_id, ""))
            if rate_id not in rates or money(rate) == 0:
                continue
            net = money(double(tax.get("total")) / (rate * 0.01))
            part = min(abs(remaining), abs(net))
            remaining -= part
            shipping[rate_id] = shipping.get(rate_id, 0.0) + (-part if net < 0 else part)
            net_sum += net
        if not array(line.get("taxes")):
            shipping[-1] = shipping.get(-1, 0.0) + total
        if money(net_sum) != money(total):
            errors |= 1
    if errors and shipping:
        shipping = {min(shipping): tax_sum + total_sum}
    return shipping, errors


def extract_lines(record, shop_rates, is_refund):
    """-> list of (line fields, marks), error flags"""
    rates = local_rates(record)
    shipping, errors = split_shipping(record, rates)
    refund_id = integer(record.get("id")) if is_refund else -1
    date = local_date(record, "date_created") if is_refund else ""
    lines, used = [], set()
    for item in map(obj, array(record.get("line_items"))):
        fields, rate_id = {"tax_rate": "0.00"}, -1
        for key in by_unit(item.keys() - NO_LINE_FIELD):
            if key != "taxes":
                fields[key] = item[key]
            elif array(item[key]):
                rate_id = integer(obj(item[key][0]).get("id"))
                unknown = "-1" if money(double(item.get("total_tax"))) != 0 else "0.00"
                fields["tax_rate"] = rates.get(rate_id, shop_rates.get(rate_id, unknown))
        fields["shipping_part"] = ""
        if rate_id in shipping and rate_id not in used:
            fields["shipping_part"] = six(shipping[rate_id])
            used.add(rate_id)
        marks = {"is_refund": is_refund, "refund_id": refund_id, "refund_date": date}
        if errors:
            marks["errors"] = errors
        lines.append((fields, marks))
    return lines, errors


def sums(lines):
    return (sum(double(f.get("total")) for f, _ in lines),
            sum(double(f.get("total_tax")) for f, _ in lines))


def repair_by_amount(lines, before, added, amount):
    total, tax = sums(lines[before:])
    if money(abs(total + tax)) == money(amount):
        return
    lines[before][0].update(total=six(-amount), total_tax="0.00")
    if money(total) != 0 or before < added:
        return
    mirrored = lines[before - added:before]
    if money(abs(sum(sums(mirrored)))) == money(amount):
        pairs = [(double(f.get("total")), double(f.get("total_tax"))) for f, _ in mirrored]
        for (fields, _), (t, x) in zip(lines[before:], pairs):
            fields.update(total=six(-t), total_tax=six(-x))
    else:
        del lines[before + 1:]


def repair_without_amount(lines, cursor, date):
    if cursor >= len(lines):
        return
    fields, marks = lines[cursor]
    t, x = double(fields.get("total")), double(fields.get("total_tax"))
    if money(t + x) == 0:
        fields.update(total=-t, total_tax=-x)
        marks.update(is_refund=True, refund_id=fields.get("id"), refund_date=date)


def add_refunds(lines, refunds, shop_rates):
    cursor = 0
    for refund in map(obj, refunds):
        before = len(lines)
        more, errors = extract_lines(refund, shop_rates, True)
        lines += more
        if errors or not more:
            continue
        if "amount" in refund:
            repair_by_amount(lines, before, len(more), abs(double(refund["amount"])))
        else:
            repair_without_amount(lines, cursor, local_date(refund, "date_created"))
        cursor += len(more)


# --- run ----------------------------------------------------------------------------------

class Order:
    """One order as it is scanned: cells of its own, its lines and what the log shows."""

    def __init__(self, order, shop_rates):
        self.id = integer(order.get("id"))
        self.title = text(order.get("payment_method_title"))
        self.method = text(order.get("payment_method"))
        self.email = self.name = self.created = self.status = ""
        self.has_refunds = bool(array(order.get("refunds")))
        self.paypal, self.fee, self.cells = False, None, []
        self.lines, _ = extract_lines(order, shop_rates, False)
        for key in by_unit(order.keys() - NO_ORDER_COLUMN - {"line_items", "tax_lines"}):
            self.scan(key, local_date(order, key) if key in DATES else order[key])
        self.paypal |= self.fee is not None

    def scan(self, key, value):
        if key == "payment_method":
            self.paypal |= text(value).lower().startswith("ppcp-gateway")
        elif key == "payment_method_title":
            self.paypal |= "paypal" in text(value).lower()
        elif key == "date_created":
            self.created = value
        elif key == "status":
            self.status = text(value).strip()
        elif key == "billing":
            self.email = text(obj(value).get("email")).strip()
            self.name = text(obj(value).get("last_name")).strip()
        if isinstance(value, dict):
            titles = {"title", "title_formatted"} if key in ("billing", "shipping") else set()
            for sub in by_unit(value.keys() - titles):
                self.cells.append((f'"{key}_{sub}"', text(value[sub])))
        elif not isinstance(value, list):
            self.cells.append((f'"{key}"', text(value)))
        elif key == "meta_data":
            for entry in map(obj, value):
                found = obj(obj(entry.get("value")).get("paypal_fee"))
                if entry.get("key") == "_ppcp_paypal_fees" and found:
                    self.fee = double(found.get("value"))

    def is_refunded(self):
        return self.has_refunds or self.status.lower() == "refunded"

    def log_line(self, count):
        when = read_date(self.created)[0]
        date = when.strftime("%d.%m.%Y:%H:%M:%S") if when else ""
        return (f"Zähler: {count}, ID: {self.id}, Datum: {date}, Email: {self.email}, "
                f"Name: {self.name}, Type: {self.title} ({self.method}), Status: {self.status}")


class Run:
    def __init__(self, folder):
        self.case = parse((folder / "case.json").read_text(encoding="utf-8"))
        self.options = self.case["options"]
        self.shop = folder / self.case["shop"]
        index = json.loads((self.shop / "index.json").read_text(encoding="utf-8"))
        # Entries that name credentials are answers to wrong ones.
        self.answers = {e["request"]: e for e in index["entries"] if "credentials" not in e}
        self.requests, self.log, self.columns, self.out = [], [], [], []
        self.rates, self.products = {}, {}
        before = self.case.get("pdfs_before", {})
        self.pdfs = {name: content.encode() for name, content in before.items()}

    def get(self, request):
        self.requests.append(request)
        answer = self.answers.get(request)
        if answer is None or answer["status"] != 200:
            raise SystemExit(f"the shop does not answer {request}")
        body = (self.shop / answer["file"]).read_text(encoding="utf-8")
        return parse(re.sub(r"https:(\\?/)\1shop\.example", "@SHOP@", body))

    def konten_text(self):
        konten = dict(KONTEN)
        konten.update({int(role): row for role, row in self.case.get("konten", {}).items()})
        return "".join(f"|{role}_{chart}|{konto}" for role in sorted(konten)
                       for chart, konto in zip(("03", "04", "49"), konten[role]))

    def option_string(self):
        result = "export_version|1"
        for key in by_unit(self.options):
            value = self.options[key]
            if key in SECRETS or key.startswith(FORM_PREFIXES) or value is None:
                continue
            if key == "buchungs_konten":
                result += self.konten_text()
                continue
            if isinstance(value, bool):
                value = str(int(value))
            elif isinstance(value, dict) and "list" in value:
                value = text(value["list"][0]).replace("|[]", "") if value["list"] else ""
            else:
                value = value["date"] if isinstance(value, dict) else text(value)
                value = value.replace("|[]", "").replace("\r", "").replace("\n", "~")
            result += f"|{key}|{value}"
        return result

    def run(self):
        for page in range(1, 1000):
            request = f"{API}/taxes?per_page=100&page={page}&orderby=id&order=asc"
            rates = array(self.get(request))
            if not rates:
                break
            self.rates.update({integer(r.get("id")): text(r.get("rate")) for r in map(obj, rates)})
        for page in range(1, 1000):
            orders = array(self.get(f"{API}/orders?per_page=100&status=completed,%20refunded"
                                    f"&page={page}&orderby=date&order=asc&dates_are_gmt=true"))
            for order in orders:
                self.export(Order(obj(order), self.rates))
            if len(orders) < 100:
                break
        return self

    def export(self, order):
        line_columns = by_unit(order.lines[0][0]) if order.lines else []
        gm = self.invoices(order.id) if self.options["germanized_use"] else {}
        if not self.columns:
            fixed = ["line_items_virtual", "line_items_downloadable"] + list(gm) + LAST
            self.columns = [column for column, _ in order.cells]
            self.columns += [f'"line_items_{key}"' for key in line_columns]
            self.columns += [f'"{column}"' for column in fixed]
            self.out = [self.option_string(), ";".join(self.columns)]
        if not self.options["paypal_use" if order.paypal else "woocommerce_use"]:
            return
        if order.is_refunded():
            refunds = self.get(f"{API}/orders/{order.id}/refunds")
            add_refunds(order.lines, array(refunds), self.rates)
        self.rows(order, gm)
        self.log.append(order.log_line(len(self.log) + 1))

    def invoices(self, order_id):
        gm, paths = dict.fromkeys(GM, ""), []
        for invoice in map(obj, array(self.get(f"{API}/orders/{order_id}/invoices"))):
            for key in ("number", "order_number", "formatted_number"):
                gm["gm_" + key] = text(invoice.get(key))
            gm["gm_invoice_date_created"] = local_date(invoice, "date_created")
            file = gm["gm_formatted_number"] + ".pdf"
            paths.append("@PDF@/" + file)
            for link in map(obj, array(obj(invoice.get("_links")).get("pdf"))):
                href, keep = text(link.get("href")), not self.options["germanized_overwrite_pdf"]
                if not href or (file in self.pdfs and keep):
                    continue
                answer = obj(self.get(href.removeprefix("@SHOP@")))
                content = base64.b64decode(text(answer.get("file")))
                if content:
                    self.pdfs[file] = content
        gm["gm_invoice_filename"] = "|".join(paths)
        return gm

    def flags(self, product):
        if product not in self.products:
            record = obj(self.get(f"{API}/products/{product}"))
            values = (record.get("virtual"), record.get("downloadable"))
            self.products[product] = [str(int(switch(value))) for value in values]
        return self.products[product]

    def rows(self, order, gm):
        product, fee_done = -1, False
        fee_text = "" if order.fee is None else shortest(order.fee)
        for index, (fields, marks) in enumerate(order.lines):
            cells = [(f'"line_items_{key}"', text(fields[key])) for key in by_unit(fields)]
            product = integer(fields.get("product_id", product))
            if product >= 0:
                virtual, downloadable = self.flags(product)
                cells += [('"line_items_virtual"', virtual),
                          ('"line_items_downloadable"', downloadable)]
            fee = fee_text if index == 0 else ""
            takes_fee = marks["is_refund"] and (index > 0 or len(order.lines) == 1)
            if takes_fee and fee_text and not fee_done:
                fee_done = True
                fee = six(0.35 - order.fee) if money(order.fee) != 0 else fee
            cells += [('"paypal_fee"', fee), ('"is_refund"', str(int(marks["is_refund"]))),
                      ('"refund_id"', text(marks["refund_id"])),
                      ('"refund_date"', marks["refund_date"]),
                      ('"errors"', text(marks.get("errors")))]
            self.write(order.cells + cells + [(f'"{key}"', value) for key, value in gm.items()])

    def write(self, cells):
        row = [""] * len(self.columns)
        for column, cell in cells:
            if column in self.columns:
                cell = cell.replace('"', '""')
                quoted = f'"{cell}"' if re.search('[;"\r\n]', cell) else cell
                row[self.columns.index(column)] = quoted
        self.out.append(";".join(row))

    def csv(self):
        return "".join(line + "\n" for line in self.out).encode()


def differences(folder, run):
    expected, found = (folder / "expected.csv").read_bytes(), run.csv()
    if expected != found:
        pairs = zip(expected.split(b"\n"), found.split(b"\n"))
        for line, (old, new) in enumerate(pairs, 1):
            if old != new:
                yield f"line {line}:\n  file    {old.decode()}\n  derived {new.decode()}"
        yield f"expected.csv: {len(expected)} bytes, derived {len(found)}"
    for key, value in (("log", run.log), ("pdfs", sorted(run.pdfs)), ("requests", run.requests)):
        if (key != "requests" or key in run.case) and run.case[key] != value:
            yield f"{key}:\n  file    {run.case[key]}\n  derived {value}"
    for name, content in run.case.get("pdf_texts", {}).items():
        if run.pdfs.get(name) != content.encode():
            yield f"{name}: {run.pdfs.get(name)}"


def write_case(folder, run):
    (folder / "expected.csv").write_bytes(run.csv())
    file = folder / "case.json"
    case = json.loads(file.read_text(encoding="utf-8"))
    case.update(pdfs=sorted(run.pdfs), log=run.log, requests=run.requests)
    file.write_text(json.dumps(case, ensure_ascii=False, indent=1) + "\n", encoding="utf-8")


def main():
    arguments = argparse.ArgumentParser()
    arguments.add_argument("--check", action="store_true")
    arguments.add_argument("--write", action="store_true")
    arguments.add_argument("cases", nargs="*")
    given = arguments.parse_args()
    if given.check == given.write or (given.write and not given.cases):
        arguments.error("either --check, or --write with the names of cases")
    failed = False
    for name in given.cases or sorted(path.parent.name for path in HERE.glob("*/case.json")):
        run = Run(HERE / name).run()
        if given.write:
            write_case(HERE / name, run)
            continue
        found = list(differences(HERE / name, run))
        failed |= bool(found)
        print("differs" if found else "same   ", name, *[f"\n{entry}" for entry in found])
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
