# SPDX-License-Identifier: BSL-1.0
"""Shows entries, import lists and messages in gdb as their users would write them.

gdb loads this file together with libgleigem.so if its auto-load safe-path allows it; otherwise `source` it. The
printers depend on the layout of libstdc++'s types and of the reference platform's.
"""

import re
import sys

import gdb
import gdb.printing

UTF_8 = "utf-8"
UTF_16 = "utf-16-le" if sys.byteorder == "little" else "utf-16-be"
MOVED_FROM = "<moved from>"


# The contents of standard library objects. An object that was never constructed causes a gdb.error.


def limited(count):
    """The number of `count` elements that gdb is set to print."""
    limit = gdb.parameter("print elements")
    return count if limit is None else min(count, limit)


def target_of(pointer):
    return pointer.type.strip_typedefs().target()


def read_string(string, encoding=UTF_16):
    data, length = string["_M_dataplus"]["_M_p"], int(string["_M_string_length"])
    shown = limited(length)
    if shown == 0:  # gdb 16 does not read no bytes
        return "..." if length else ""
    memory = gdb.selected_inferior().read_memory(int(data), shown * target_of(data).sizeof)
    return memory.tobytes().decode(encoding, "replace") + ("..." if shown < length else "")


class Elements:
    """The elements of a std::vector."""

    def __init__(self, vector):
        members = ("_M_start", "_M_finish", "_M_end_of_storage")
        start, finish, end = (int(vector["_M_impl"][member]) for member in members)
        self.first = vector["_M_impl"]["_M_start"]
        size = target_of(self.first).sizeof
        if not start <= finish <= end or (finish - start) % size != 0:
            raise gdb.error("a vector that was not constructed")
        self.count = (finish - start) // size

    def __len__(self):
        return self.count

    def __iter__(self):
        return ((self.first + index).dereference() for index in range(self.count))

    def joined(self, separator, describe_element):
        shown = limited(self.count)
        texts = [describe_element(element) for element, _ in zip(self, range(shown))]
        return separator.join(texts + ["..."] if shown < self.count else texts)


def view_as(value, type_):
    """The object of another type at the same address."""
    if value.address is None:
        raise gdb.error("not in memory")
    return value.address.cast(type_.pointer()).dereference()


def held_by_unique_ptr(owner):
    return view_as(owner, owner.type.strip_typedefs().template_argument(0).pointer())


def held_by_variant(variant):
    """The active alternative, which is stored at the beginning; None if there is none."""
    index = variant["_M_index"]
    if int(index) == 2 ** (8 * index.type.sizeof) - 1:
        return None
    try:
        return view_as(variant, variant.type.strip_typedefs().template_argument(int(index)))
    except RuntimeError as failure:
        raise gdb.error("a variant that was not constructed") from failure


# The text for each type.


def describe(value):
    return DESCRIPTIONS[type_name(value)](value)


def type_name(value):
    return value.type.strip_typedefs().unqualified().name


def quoted(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


def describe_name(entry):
    return read_string(entry["rawArgument"]) or MOVED_FROM


def describe_package(entry):
    specifier = entry["packageSpecifier"]
    text = describe_specifier(specifier)
    introduced_name = read_string(entry["introducedName"])
    has_alias = text != MOVED_FROM and introduced_name != read_string(specifier["name"])
    return f"{text} as {introduced_name}" if has_alias else text


def describe_specifier(specifier):
    name = read_string(specifier["name"])
    comparators = Elements(specifier["range"]["comparators"])
    if len(comparators) == 0:
        return name or MOVED_FROM
    return f"{name}@{comparators.joined(',', describe_comparator)}"


RELATIONS = {
    "Any": "*",
    "Plain": "",
    "Equal": "=",
    "Greater": ">",
    "GreaterOrEqual": ">=",
    "Less": "<",
    "LessOrEqual": "<=",
    "Compatible": "^",
    "Approximate": "~",
}


def describe_comparator(comparator):
    version = comparator["version"]
    relation = str(comparator["relation"]).rpartition("::")[2]
    text = RELATIONS.get(relation, relation) + Elements(version["numbers"]).joined(".", read_string)
    for mark, part in (("-", "preRelease"), ("+", "build")):
        suffix = read_string(version[part])
        text += mark + suffix if suffix else ""
    return text


def describe_invalid(entry):
    return f"diagnostic {describe_holder(entry['msgHolder'])}"


def describe_holder(holder):
    message = held_by_unique_ptr(holder["msgID"])
    return describe_message(message.dereference()) if int(message) != 0 else "<empty>"


def describe_message(message):
    catalogue = read_string(message["catalogue"], UTF_8)
    key = read_string(message["key"], UTF_8)
    return f"{catalogue}:{key}({Elements(message['arguments']).joined(', ', describe_argument)})"


def describe_argument(argument):
    held = held_by_variant(argument)
    if held is None:
        return "<valueless>"
    if held.type.strip_typedefs().code == gdb.TYPE_CODE_INT:
        return str(int(held))
    is_narrow = target_of(held["_M_dataplus"]["_M_p"]).sizeof == 1
    return quoted(read_string(held, UTF_8 if is_narrow else UTF_16))


def describe_entry(variant):
    entry = held_by_variant(variant)
    return describe(entry) if entry is not None else "<valueless>"


def describe_parsed_entry(variant):
    pair = held_by_variant(variant)
    return f"argument {int(pair['second'])}: {describe(pair['first'])}" if pair is not None else "<valueless>"


DESCRIPTIONS = {
    "lf::import::FullyQualifiedImportEntry": describe_name,
    "lf::import::WildcardImportEntry": describe_name,
    "lf::import::PackageImportEntry": describe_package,
    "lf::import::InvalidImportEntry": describe_invalid,
    "resource_core::GenericMsgIDHolder": describe_holder,
    "resource_core::BaseMsgID": describe_message,
    "Oxtavel::KeldarComponents::PackageSpecifier": describe_specifier,
}


# The printers.


def escaped(text):
    """Escapes control characters and characters that the terminal's encoding lacks."""
    visible = "".join(c if c.isprintable() else c.encode("unicode_escape").decode() for c in text)
    encoding = gdb.target_charset()
    return visible.encode(encoding, "backslashreplace").decode(encoding)


class TextPrinter:
    """Prints an object as one text."""

    def __init__(self, text):
        self.text = text

    def to_string(self):
        return escaped(self.text)


class ListPrinter:
    """Prints an ImportList: the numbers of its entries, its parent, and its own entries."""

    ENTRIES = {"name": "fullyQualifiedEntries", "wildcard": "wildcardEntries", "package": "packageEntries"}

    def __init__(self, import_list):
        self.parent = import_list["parent"]["_M_ptr"]
        self.entries = {kind: Elements(import_list[member]) for kind, member in self.ENTRIES.items()}

    def to_string(self):
        counts = {kind: len(entries) for kind, entries in self.entries.items()}
        return "import list of " + ", ".join(f"{n} {kind}{'' if n == 1 else 's'}" for kind, n in counts.items())

    def children(self):
        yield "parent", self.parent
        for kind, entries in self.entries.items():
            for index, entry in enumerate(entries):
                yield f"{kind} {index}", entry["entry"]


def print_text(description):
    return lambda value: TextPrinter(description(value))


def print_list(value):
    """Without debug information of the library, and for a foreign list, only the interface is known."""
    dynamic_type = value.dynamic_type
    is_known = dynamic_type.strip_typedefs().unqualified().name == "lf::import::ImportList"
    return ListPrinter(view_as(value, dynamic_type)) if is_known else None


def guarded(make_printer):
    """The printer of a value; falls back to gdb's own format if the host's types have unknown members."""

    def printer_of(value):
        try:
            return make_printer(value)
        except gdb.error as failure:
            # gdb uses a different message for classes.
            is_other_type = re.search("no member (or method )?named", str(failure))
            return None if is_other_type else TextPrinter(f"<not readable: {failure}>")

    return printer_of


def collection():
    printers = gdb.printing.RegexpCollectionPrettyPrinter("gleigem")
    for name, description in DESCRIPTIONS.items():
        printers.add_printer(name, f"^{name}$", guarded(print_text(description)))
    entry = "lf::import::[A-Za-z]+ImportEntry,"
    for name, pattern, make_printer in (
        ("lf::import::ImportEntry", f"^std::variant<{entry}", print_text(describe_entry)),
        ("lf::import::ParsedImportEntry", f"^std::variant<std::pair<{entry}", print_text(describe_parsed_entry)),
        ("lf::import::IImportList", "^lf::import::I?ImportList$", print_list),
    ):
        printers.add_printer(name, pattern, guarded(make_printer))
    return printers


gdb.printing.register_pretty_printer(gdb.current_objfile(), collection(), replace=True)
