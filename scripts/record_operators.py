#!/usr/bin/env python3
"""Writes the header with == and << for every record to standard output, from the headers that declare them: paths in the
source tree, api/records/... and protocol/records/... What it cannot read is an error, and not left out."""

import re
import sys

print("// Made by scripts/record_operators.py from the headers of the records.\n#pragma once\n")
headers = {}
for path in sys.argv[1:]:
    headers[path] = re.sub("//.*", "", open(path, encoding="ascii").read())
    print(f'#include "{path.replace("api/", "") if path.startswith("api/") else "../" + path}"')
print('#include "values/printing.h"\n\n#include <ostream>')

for path, text in headers.items():
    found = re.findall(r"^struct (\w+)\s*\{(.*?)^\};", text, re.MULTILINE | re.DOTALL)
    if len(found) != len(re.findall(r"\b(?:struct|class|union)\b", text)):
        sys.exit(f"{path}: a type that is not a plain record")
    for record, body in found:
        body = re.sub(rf"{record}\(\) :[^;]*\{{\}}", "", body)
        members = []
        for declaration in filter(None, (each.strip() for each in body.split(";"))):
            declared = re.fullmatch(r"[\w:]+(?:\s+\w+)*?\s+(\w+)(?:\[\d+\])*", declaration)
            if not declared:
                sys.exit(f"{path}: {record}: cannot read \"{declaration}\"")
            members.append(declared[1])
        equal = " &&\n           ".join(f"velm_zavra::detail::same(a.{m}, b.{m})" for m in members)
        printed = "".join(f'("{m}", r.{m})\n        ' for m in members)
        print(f"""
inline bool operator==(const {record}& a, const {record}& b)
{{
    return {equal};
}}

inline bool operator!=(const {record}& a, const {record}& b)
{{
    return !(a == b);
}}

inline std::ostream& operator<<(std::ostream& out, const {record}& r)
{{
    return velm_zavra::detail::Record_Printer(out)
        {printed}.end();
}}""")
