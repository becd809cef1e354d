#!/usr/bin/env python3
"""Writes what Python sees of the library, from the headers that declare it: the bindings of every record and enumeration
(records_N.cpp), of every operation (operations_N.cpp), and the stub that tells type checkers of them (_core.pyi).
What it cannot read is an error, and not left out.

Usage: generate.py SOURCES OUTPUT_DIRECTORY
"""
import re
import sys
from pathlib import Path

SOURCES_EACH = 3  # of records and of operations: a source compiles in some ten seconds
INTEGERS = {"bool": "bool", "unsigned char": "int", "unsigned short": "int", "unsigned int": "int", "int": "int",
            "unsigned long long": "int", "float": "float", "double": "float"}
# Bytes and file names, which are pointers in C++: Python's parameters, what they are called with, and Python's result.
POINTERS = {"Send_Startracker_Native_Command": ("data: bytes", "native_command", "None"),
            "Read_Startracker_Native_Reply": ("", "native_reply", "int"),
            "parse_TLE_file": ("file_name: str | os.PathLike[str]", "tle_file", "TleFileData")}


def python_class(name):
    words = name.removeprefix("VELM_ZAVRA_API_").replace("_XYZ", "").removesuffix("_FLOAT").split("_")
    return "".join(word.capitalize() for word in words)


def python_operation(name):
    lower = name.lower()
    return lower.removesuffix("_mode") if lower.startswith(("start_", "stop_")) else lower


def enumerator_name(enum, name):
    rest = name.removeprefix(enum + "_")
    if not rest.isidentifier():
        rest = enum.rsplit("_", 1)[1] + "_" + rest
    return rest.removeprefix("VELM_ZAVRA_API_")


def share(things, number):
    size = -(-len(things) // SOURCES_EACH)
    return things[number * size:(number + 1) * size]


def fail(path, text):
    sys.exit(f"{path}: cannot read \"{text}\"")


class Header:
    """Declarations with the comments that belong to them."""

    def __init__(self, path):
        self.path, self.enums, self.records = path, [], []
        text = path.read_text(encoding="ascii")
        pattern = r"((?:^///[^\n]*\n)*)^(struct|enum) (\w+)(?: : unsigned int)?\s*\{(.*?)^\};"
        found = list(re.finditer(pattern, text, re.M | re.S))
        if len(found) != len(re.findall(r"\b(?:struct|class|union|enum)\b", re.sub("//.*", "", text))):
            sys.exit(f"{path}: a type that is no plain record or enumeration")
        for doc, kind, name, body in (match.groups() for match in found):
            (self.enums if kind == "enum" else self.records).append(
                (name, comment(doc), self.enumerators(name, body) if kind == "enum" else self.members(name, body)))

    def enumerators(self, name, body):
        found = re.findall(r"(\w+) = (\d+),?", body)
        if re.sub(r"\w+ = \d+,?|//.*|\s", "", body):
            fail(self.path, body)
        return [(enumerator_name(name, each), int(value)) for each, value in found]

    def members(self, record, body):
        members = []
        body = re.sub(rf"^ *///.*\n *{record}\(\) :[^;]*\{{\}}", "", body, flags=re.M)
        body = re.sub(r"^( *[\w ]+)\n +(\w+;)", r"\1 \2", body, flags=re.M)  # a declaration on two lines
        before = ""
        for line in filter(None, (each.strip() for each in body.splitlines())):
            if line.startswith("/// "):
                before += line[4:] + " "
                continue
            match = re.fullmatch(r"([\w:]+(?: \w+)*) (\w+)((?:\[\d+\])*);(?:\s*///< (.*))?", line)
            if not match:
                fail(self.path, line)
            members.append((match[2], match[1], match[3], (before + (match[4] or "")).strip()))
            before = ""
        # The components of a quaternion stand in another order in memory than in anybody's head.
        return sorted(members, key=lambda each: int((re.search(r"\d+$", each[0]) or "0")[0]) if is_vector(members) else 0)


def is_vector(members):
    return len({each[1] for each in members}) == 1 and members[0][1] in ("float", "unsigned short") and len(members) > 2 \
        and all(not each[2] and re.fullmatch(r"[xyzuvw]|q_\d|m\d\d", each[0]) for each in members)


def comment(text):
    return " ".join(line.removeprefix("///").strip() for line in text.splitlines())


def role(name, type_):
    """What a number of 64 bits is for people, if it is a time in milliseconds."""
    if type_ != "unsigned long long":
        return "plain"
    return "epoch" if "epoch_time" in name else "interval" if name.endswith("_msec") else "plain"


class Operations:
    """The operations of the class in the order of its declaration."""

    def __init__(self, path):
        self.path, self.all = path, []
        text = path.read_text(encoding="ascii")
        body = re.search(r"^class VELM_ZAVRA_API\n\{\npublic:\n(.*?)^private:", text, re.M | re.S)[1]
        doc = []
        declaration = ""
        for line in (each.strip() for each in body.splitlines()):
            if line.startswith("///"):
                doc.append(line[3:].strip())
                continue
            if not line:
                doc = []
                continue
            declaration += line + " "
            if line.endswith(";"):
                self.add(declaration.strip().rstrip(";"), [each for each in doc if not each.startswith("@{")])
                doc, declaration = [], ""

    def add(self, declaration, doc):
        declaration = re.sub(r"\( +", "(", declaration)
        if re.match(r"(virtual ~)?VELM_ZAVRA_API\(|VELM_ZAVRA_API& operator=", declaration):
            return  # the class Unit has its own
        match = re.fullmatch(r"(\w+(?: \w+)*?) (\w+)\((.*)\)", declaration)
        if not match:
            fail(self.path, declaration)
        result, name, parameters = match.groups()
        if name in POINTERS:
            arguments = []
        else:
            arguments = [re.fullmatch(r"(\w+(?:::\w+)?(?: \w+)*?) (\w+)", each.strip()) for each in parameters.split(",")
                         if each.strip()]
            if None in arguments:
                fail(self.path, declaration)
        self.all.append((result, name, [(each[1], each[2]) for each in arguments], doc))


class Writer:
    def __init__(self, sources):
        headers = [Header(path) for path in sorted((sources / "api/records").glob("*.h"))]
        self.enums = [each for header in headers for each in header.enums]
        self.records = [each for header in headers for each in header.records]
        self.operations = Operations(sources / "api/VELM_ZAVRA_API.h").all
        self.enum_names = {each[0] for each in self.enums}
        self.names = {each[0]: python_class(each[0]) for each in self.enums + self.records}
        self.names |= {name: python_operation(name) for _, name, _, _ in self.operations}
        self.names |= {"VELM_ZAVRA_API_Exception": "velm_zavra.Error", "VELM_INIPARSER_Exception": "velm_zavra.Error",
                       "VELM_ZAVRA_API": "Unit", "VELM_ZAVRA_REGISTER_MAP::Decode": "RegisterMap.decode"}

    def in_python(self, text):
        """A comment with the names that Python has for things."""
        return re.sub(r"\w+(?:::\w+)?", lambda match: self.names.get(match[0], match[0]), text)

    def type_hint(self, type_, dimensions="", is_result=True):
        if type_ == "char" or type_ == "std::string":
            hint, dimensions = "str", "" if type_ == "char" else dimensions
        elif type_ in self.enum_names and not is_result:
            hint = "int"
        elif type_ in INTEGERS or type_ == "void":
            hint = INTEGERS.get(type_, "None")
        else:
            hint = self.names[type_]
        for _ in range(dimensions.count("[")):
            hint = f"Array[{hint}]"
        return hint

    def parameter_hint(self, name, type_):
        return {"epoch": "int | datetime", "interval": "int | timedelta"}.get(role(name, type_)) or (
            self.names[type_] + " | int" if type_ in self.enum_names else self.type_hint(type_))

    def result_hint(self, result):
        return self.names[result] + " | int" if result in self.enum_names else self.type_hint(result)

    def docstring(self, lines):
        """The first sentence, then what Doxygen marks."""
        text = self.in_python("\n".join(lines))
        text = re.sub(r"@param (\w+) +", r"\n\1: ", text)
        text = re.sub(r"@return +", r"\nReturns: ", text)
        text = re.sub(r"@throws +(velm_zavra\.Error)(, \1)?", r"\nRaises \1", text)
        return text.strip()

    def signature(self, operation):
        result, name, arguments, _ = operation
        if name in POINTERS:
            parameters, _, hint = POINTERS[name]
        else:
            parameters = ", ".join(f"{each}: {self.parameter_hint(each, type_)}" for type_, each in arguments)
            hint = self.result_hint(result)
        return parameters, hint

    def records_h(self):
        """So that templates know an API record when they see one."""
        return ["#pragma once", "", "#include <VELM_ZAVRA_API.h>", "", "// Made by python/generate.py.", "",
                "namespace zavra::python", "{", "", "template <class T>", "inline constexpr bool is_api_record = false;", "",
                *(f"template <>\ninline constexpr bool is_api_record<{name}> = true;" for name, _, _ in self.records), "", "}"]

    def records_cpp(self, number):
        out = ['#include "record.h"', "", "// Made by python/generate.py from the headers of the records.", "",
               "namespace zavra::python", "{", "", "namespace", "{"]
        calls = []
        for name, doc, enumerators in share(self.enums, number):
            values = ", ".join(f'{{"{each}", {value}}}' for each, value in enumerators)
            calls.append(f'    add_enumeration<{name}>(module, "{self.names[name]}", {quoted(doc)}, {{{values}}});')
        for name, doc, members in share(self.records, number):
            out += ["", f"const Member {name}_members[] = {{"]
            for member, type_, dimensions, about in members:
                out.append(f'    {{"{member}", type_of<decltype({name}::{member})>(), offsetof({name}, {member}), '
                           f"Role::{role(member, type_)}, {quoted(self.in_python(about))}}},")
            out.append("};")
            calls.append(f'    add_record<{name}>(module, "{self.names[name]}", {quoted(self.in_python(doc))}, '
                         f"{name}_members, {str(is_vector(members)).lower()});")
        return out + ["", "}", "", f"void add_records_{number}(py::module_& module)", "{", *calls, "}", "", "}"]

    def operations_cpp(self, number):
        out = ['#include "unit.h"', "", "// Made by python/generate.py from the header of VELM_ZAVRA_API.", "",
               "namespace zavra::python", "{", "", f"void add_operations_{number}(Unit_Class& unit)", "{"]
        for operation in share(self.operations, number):
            _, name, arguments, doc = operation
            parameters, hint = self.signature(operation)
            python = self.names[name]
            text = f"{python}({parameters}) -> {hint}\n\n{self.docstring(doc)}".strip()
            if name in POINTERS:
                out.append(f'    unit.{POINTERS[name][1]}("{python}", {quoted(text)});')
                continue
            types = ", ".join({"epoch": "Epoch", "interval": "Interval"}.get(role(each, type_), type_)
                              for type_, each in arguments)
            names = "".join(f', "{each}"' for _, each in arguments)
            out.append(f'    unit.add<{types}>("{python}", &VELM_ZAVRA_API::{name}, {quoted(text)}{names});')
        return out + ["}", "", "}"]

    def stub(self):
        public = ["Array", "RegisterMap", "Unit", *(self.names[each[0]] for each in self.enums + self.records)]
        out = [self.stub_head, f"__all__ = {sorted(public)}"]
        for name, doc, enumerators in self.enums:
            out += ["", f"class {self.names[name]}(IntEnum):", f"    {text_block(doc)}"]
            out += [f"    {each} = {value}" for each, value in enumerators]
        for name, doc, members in self.records:
            base = "VectorRecord" if is_vector(members) else "TimedRecord" if is_timed(members) else "Record"
            out += ["", f"class {self.names[name]}({base}):", f"    {text_block(self.in_python(doc))}"]
            hints = [(each, self.type_hint(type_, dimensions), role(each, type_)) for each, type_, dimensions, _ in members]
            for each, hint, purpose in hints:
                out.append(f"    {each}: {hint}")
                if purpose == "epoch":
                    out.append(f"    {each.removesuffix('_msec')}_utc: datetime")
            accepted = {"epoch": " | datetime", "interval": " | timedelta", "plain": ""}
            arguments = ", ".join(f"{each}: {constructor_hint(hint)}{accepted[purpose]} = ..." for each, hint, purpose in hints)
            if is_vector(members):
                out += ["    @overload", f"    def __init__(self, {arguments}) -> None: ...",
                        "    @overload", "    def __init__(self, components: Iterable[float], /) -> None: ..."]
            else:
                out.append(f"    def __init__(self, {arguments}) -> None: ...")
        out += ["", self.stub_unit]
        for operation in self.operations:
            parameters, hint = self.signature(operation)
            text = text_block(self.docstring(operation[3]), 8)
            start = f"    def {self.names[operation[1]]}(self{', ' if parameters else ''}{parameters}) -> {hint}:"
            out.append(f"{start} ..." if not text else f"{start}\n        {text}")
        return out


def is_timed(members):
    return role(members[0][0], members[0][1]) != "plain" and members[0][0].endswith("time_msec")


def constructor_hint(hint):
    return f"Sequence[{hint.removeprefix('Array[').removesuffix(']')}] | {hint}" if hint.startswith("Array") else hint


def quoted(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n") + '"'


def text_block(text, indent=4):
    return '"""' + text.replace("\n", "\n" + " " * indent) + '"""' if text else ""


def write(path, lines):
    text = "\n".join(lines) + "\n"
    if not path.exists() or path.read_text(encoding="ascii") != text:  # so that nothing is compiled for nothing
        path.write_text(text, encoding="ascii")


def main():
    sources, output = map(Path, sys.argv[1:])
    writer = Writer(sources)
    writer.stub_head, writer.stub_unit = (sources / "python/_core.pyi.in").read_text(encoding="ascii").split("# @operations\n")
    write(output / "records.h", writer.records_h())
    for number in range(SOURCES_EACH):
        write(output / f"records_{number}.cpp", writer.records_cpp(number))
        write(output / f"operations_{number}.cpp", writer.operations_cpp(number))
    write(output / "velm_zavra/_core.pyi", writer.stub())


main()
