#!/usr/bin/env python3
"""Condenses what abidw tells of the library (XML on standard input) to the part that applications depend on: the exported
symbols, and the layout of the public classes, records and enumerations. One line per fact, in an order of names."""

import re
import sys
import xml.etree.ElementTree as xml

corpus = xml.parse(sys.stdin).getroot()
types = {element.get("id"): element for element in corpus.iter() if element.get("id")}
# the compiler decides which inline functions it emits
symbols = {s.get("name") for s in corpus.iter("elf-symbol") if s.get("binding") != "weak-binding"}
symbols |= {s.get("name") for s in corpus.iter("elf-symbol") if re.match("_ZT[ISV]", s.get("name"))}


def name_of(type_id):
    element = types[type_id]
    if element.tag == "array-type-def":
        return name_of(element.get("type-id")) + "".join(f"[{r.get('length')}]" for r in element.iter("subrange"))
    if element.tag == "pointer-type-def":
        return name_of(element.get("type-id")) + "*"
    if element.tag == "reference-type-def":
        return name_of(element.get("type-id")) + "&"
    if element.tag == "qualified-type-def":
        return "const " + name_of(element.get("type-id"))
    return element.get("name", element.tag)


def facts(element):
    if element.tag == "enum-decl":
        yield from (f"{e.get('value')} {e.get('name')}" for e in element.iter("enumerator"))
        return
    for base in element.findall("base-class"):
        yield f"bit {base.get('layout-offset-in-bits')} base {name_of(base.get('type-id'))}"
    for member in element.findall("data-member"):
        variable = member.find("var-decl")
        if member.get("static") != "yes":
            yield f"bit {member.get('layout-offset-in-bits')} {name_of(variable.get('type-id'))} {variable.get('name')}"
    # a destructor is told of again for every source that destroys such an object
    virtual = {(int(f.get("vtable-offset")), f.find("function-decl").get("mangled-name", f.find("function-decl").get("name")))
               for f in element.findall("member-function") if f.get("vtable-offset")}
    for slot, function in sorted(virtual):
        yield f"virtual {slot} {function}"


public = {}


def collect(parent, scope=""):
    for element in parent:
        if element.tag in ("class-decl", "enum-decl"):
            name = scope + element.get("name")
            if re.match("(VELM_)?ZAVRA_", name) and element.get("is-declaration-only") != "yes":
                described = [f"{name} {element.get('size-in-bits', '')}".rstrip(), *("  " + f for f in facts(element))]
                public[name] = max(public.get(name, []), described, key=len)
                collect(element, name + "::")
        elif element.tag in ("abi-instr", "member-type"):
            collect(element, scope)


collect(corpus)
if "VELM_ZAVRA_API" not in public or "ZAVRA_100" not in public:
    sys.exit("the library has no debug information about its public classes")
for name in sorted(public):
    print("\n".join(public[name]))
returned = {f.get("mangled-name"): name_of(f.find("return").get("type-id")) for f in corpus.iter("function-decl")
            if f.get("mangled-name") in symbols and f.get("name").lstrip("~") not in public and f.find("return") is not None}
for symbol in sorted(symbols):
    print(" ".join(filter(None, (symbol, returned.get(symbol)))))
