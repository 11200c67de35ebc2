"""How a value of a shop's JSON answer reads as text, number, date and list."""
import json
import math
import re
from datetime import datetime
from decimal import ROUND_HALF_UP, Decimal
from zoneinfo import ZoneInfo

BERLIN = ZoneInfo("Europe/Berlin")


def number(digits):
    """A JSON number: whole if it is one and fits 64 bits, however it is written."""
    if re.fullmatch(r"-?\d+", digits) and -2**63 <= int(digits) < 2**63:
        return int(digits)
    value = float(digits)
    return int(value) if value.is_integer() and -2.0**63 <= value < 2.0**63 else value


def parse(text):
    return json.loads(text, parse_float=number, parse_int=number)


def decimal_and_exponent(sign, digits, exponent):
    """digits without trailing zeros, value 0.DIGITS * 10^exponent -> both ways to write it."""
    if exponent <= 0:
        fixed = "0." + "0" * -exponent + digits
    elif exponent >= len(digits):
        fixed = digits + "0" * (exponent - len(digits))
    else:
        fixed = digits[:exponent] + "." + digits[exponent:]
    power = exponent - 1
    mantissa = digits[0] + ("." + digits[1:] if len(digits) > 1 else "")
    return sign + fixed, f"{sign}{mantissa}e{'-' if power < 0 else '+'}{abs(power):02d}", power


def split(value):
    """Decimal -> sign, digits, exponent as decimal_and_exponent takes them."""
    sign, digits, power = value.as_tuple()
    text = "".join(map(str, digits))
    return "-" if sign else "", text.rstrip("0"), power + len(text)


def shortest(value):
    """The shortest digits that read back as the same double; the shorter notation wins."""
    if value == 0:
        return "0"
    fixed, scientific, _ = decimal_and_exponent(*split(Decimal(repr(value))))
    return scientific if len(scientific) < len(fixed) else fixed


def six(value):
    """At most six significant digits, in exponent form outside 1e-4 to 1e6."""
    if value == 0:
        return "0"
    exact = Decimal(value)
    rounded = exact.quantize(Decimal(1).scaleb(exact.adjusted() - 5), ROUND_HALF_UP)
    fixed, scientific, power = decimal_and_exponent(*split(rounded))
    return fixed if -4 <= power < 6 else scientific


def text(value):
    if isinstance(value, bool):
        return "true" if value else "false"
    if isinstance(value, float):
        return shortest(value)
    return str(value) if isinstance(value, (int, str)) else ""


def double(value):
    if isinstance(value, str):
        plain = re.fullmatch(r"\s*([+-]?(\d+\.?\d*|\.\d+)([eE][+-]?\d+)?)\s*", value)
        return float(plain[1]) if plain else 0.0
    return float(value) if isinstance(value, (int, float)) else 0.0


def integer(value):
    if isinstance(value, str):
        value = int(value) if re.fullmatch(r"\s*[+-]?\d+\s*", value) else 0
        return value if -2**31 <= value < 2**31 else 0
    if isinstance(value, float):
        return int(math.copysign(math.floor(abs(value) + 0.5), value))
    return int(value) if isinstance(value, int) else 0


def obj(value):
    return value if isinstance(value, dict) else {}


def array(value):
    return value if isinstance(value, list) else []


def by_unit(names):
    return sorted(names, key=lambda name: name.encode("utf-16-be"))


def money(value):
    """Rounded to two places from the exact binary value, ties away from zero."""
    return float(Decimal(value).quantize(Decimal("0.01"), ROUND_HALF_UP))


ISO = re.compile(r"(\d{4}-\d\d-\d\d)(?:[T ](\d\d:\d\d)(?::(\d\d)(?:[.,]\d+)?)?"
                 r"(Z|[+-]\d\d:?\d\d)?)?")


def read_date(date):
    match = ISO.fullmatch(date)
    if not match:
        return None, ""
    try:
        clock = f"{match[2] or '00:00'}:{match[3] or '00'}"
        return datetime.fromisoformat(f"{match[1]}T{clock}"), match[4] or ""
    except ValueError:
        return None, ""


def local_date(record, key):
    """The field `key`_gmt as wall clock of the German zone."""
    date = text(record.get(key + "_gmt"))
    if not date.strip():
        return date
    wall, suffix = read_date(date)
    if wall is None:
        return ""
    utc = wall.replace(tzinfo=ZoneInfo("UTC"))
    return (wall + utc.astimezone(BERLIN).utcoffset()).isoformat() + suffix


def switch(value):
    if isinstance(value, str):
        return value.lower() not in ("", "0", "false")
    return bool(value) and isinstance(value, (bool, int, float))
