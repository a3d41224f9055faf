# SPDX-License-Identifier: MIT
"""Decodes TXT records for comparison: a line of hexadecimal digits in, a line of JSON out.

    txt_record_reference.py rfc       by the words of RFC 6763, section 6
    txt_record_reference.py zeroconf  by python3-zeroconf

A record becomes a list of [key, value] in the order of the keys, both in hexadecimal digits; the value is null where there
is none.
"""
import json
import sys


def by_rfc(record):
    entries, seen = {}, set()
    while record:
        length, record = record[0], record[1:]
        if length > len(record):
            break  # ends within the string
        entry, record = record[:length], record[length:]
        key, equals, value = entry.partition(b"=")
        # 6.4: at least one character, printable US-ASCII; case is ignored, and all but the first occurrence
        if not key or any(byte < 0x20 or byte > 0x7E for byte in key) or key.lower() in seen:
            continue
        seen.add(key.lower())
        entries[key] = value if equals else None
    return entries


def by_zeroconf(record):
    from zeroconf import ServiceInfo
    return ServiceInfo("_test._tcp.local.", "X._test._tcp.local.", properties=record).properties


decode = {"rfc": by_rfc, "zeroconf": by_zeroconf}[sys.argv[1]]
for line in sys.stdin:
    found = decode(bytes.fromhex(line.strip()))
    print(json.dumps([[key.hex(), None if value is None else value.hex()] for key, value in sorted(found.items())]))
