#!/usr/bin/env python3
"""Generates the type library source and the COM adapters from the class descriptions.

One description file per public class or control (src/com/classes/*.com) is the single source of
its COM face: this script writes the IDL that widl compiles into the type library, the C++
interface declarations with their GUIDs, one adapter per class that forwards each member to the
C++ object, and the table of classes that the factory and the registration walk.

Usage: comgen.py OUTDIR DESCRIPTION...
"""
import os
import re
import sys
import uuid

# GUIDs are derived from names, so that both architectures and every build agree without a table
# to keep by hand. Renaming a class or an interface gives it new GUIDs, as COM wants.
NAMESPACE = uuid.UUID("6b1f4f1e-3d8a-4e0c-9a53-7a2f0c6e1d30")
LIBRARY = "TarnwickControls30"


def guid(kind, name):
    return str(uuid.uuid5(NAMESPACE, f"{LIBRARY}.{kind}.{name}")).upper()


# Stock members keep the dispatch ids that hosts and property browsers know.
STOCK_DISPIDS = {
    "Enabled": -514, "Font": -512, "BackColor": -501, "ForeColor": -513, "Caption": -518,
    "Text": -517, "hWnd": -515, "Hwnd": -515, "Click": -600, "DblClick": -601, "KeyDown": -602,
    "KeyPress": -603, "KeyUp": -604, "MouseDown": -605, "MouseMove": -606, "MouseUp": -607,
    "_NewEnum": -4,
}

# type name -> (IDL type, C++ tag in ComConvert.h)
SIMPLE_TYPES = {
    "string": ("BSTR", "String"),
    "bool": ("VARIANT_BOOL", "Bool"),
    "byte": ("unsigned char", "Byte"),
    "short": ("short", "Short"),
    "long": ("long", "Long"),
    "float": ("float", "Single"),
    "double": ("double", "Double"),
    "currency": ("CURRENCY", "Currency"),
    "handle": ("LONG_PTR", "Handle"),
    "color": ("OLE_COLOR", "Color"),
    "bytes": ("SAFEARRAY(unsigned char)", "Bytes"),
    "variant": ("VARIANT", "Variant"),
    "font": ("IFontDisp*", "Font"),
    "picture": ("IPictureDisp*", "Picture"),
    "dispatch": ("IDispatch*", "Dispatch"),
    "unknown": ("IUnknown*", "Unknown"),
    "rect": ("CTL_RECT", "Rect"),
    "point": ("CTL_POINTAPI", "Point"),
}

# C++ wire types of the vtable, matching what widl writes into the type library.
WIRE_TYPES = {
    "BSTR": "BSTR", "VARIANT_BOOL": "VARIANT_BOOL", "unsigned char": "BYTE", "short": "SHORT",
    "long": "LONG", "float": "FLOAT", "double": "DOUBLE", "CURRENCY": "CY", "LONG_PTR": "LONG_PTR",
    "OLE_COLOR": "OLE_COLOR", "SAFEARRAY(unsigned char)": "SAFEARRAY*", "VARIANT": "VARIANT",
    "IFontDisp*": "IFontDisp*", "IPictureDisp*": "IPictureDisp*", "IDispatch*": "IDispatch*",
    "IUnknown*": "IUnknown*", "CTL_RECT": "CTL_RECT", "CTL_POINTAPI": "CTL_POINTAPI",
}


class DescriptionError(Exception):
    pass


class Type:
    """A member's value type: a simple type, an enumeration, or another class of the library."""

    def __init__(self, text, classes, enums):
        self.text = text
        if text in SIMPLE_TYPES:
            self.idl, self.tag = SIMPLE_TYPES[text]
            self.wire = WIRE_TYPES[self.idl]
        elif text in enums:
            self.idl, self.tag, self.wire = text, "Enum", "LONG"
        elif text in classes:
            cls = classes[text]
            self.cls = cls
            self.idl = f"{cls.interface}*"
            self.tag = f"Obj_{cls.name}"
            self.wire = f"{cls.interface}*"
        else:
            raise DescriptionError(f"unknown type '{text}'")

    @property
    def is_record(self):
        return self.tag in ("Rect", "Point")


class Param:
    def __init__(self, text, classes, enums):
        m = re.fullmatch(r"\s*(ref\s+|opt\s+)?(\w+)\s+(\w+)\s*(?:=\s*(.+?))?\s*", text)
        if not m:
            raise DescriptionError(f"bad parameter '{text}'")
        mode, type_text, self.name, self.default = m.groups()
        self.byref = (mode or "").strip() == "ref"
        # "opt" marks an optional variant without a default: absent reaches C++ as an empty value.
        self.optional_variant = (mode or "").strip() == "opt"
        self.type = Type(type_text, classes, enums)
        if self.type.is_record and not self.byref:
            raise DescriptionError(f"record parameter '{self.name}' must be ref")

    def idl(self):
        attrs = ["in, out" if self.byref else "in"]
        if self.default is not None:
            attrs.append(f"optional, defaultvalue({self.default})")
        elif self.optional_variant:
            attrs.append("optional")
        star = "*" if self.byref else ""
        return f"[{', '.join(attrs)}] {self.type.idl}{star} {self.name}"

    def wire(self):
        star = "*" if self.byref else ""
        return f"{self.type.wire}{star} {self.name}"


class Member:
    """method, get, let, set, prop (get and let), propobj (get and set) or event."""

    def __init__(self, kind, name, params, result, call, flags, classes, enums):
        self.kind, self.name, self.call, self.flags = kind, name, call, flags
        self.params = [Param(p, classes, enums) for p in params] if params else []
        # A required parameter after an optional one makes a function the platform cannot read.
        for before, after in zip(self.params, self.params[1:]):
            if (before.default is not None or before.optional_variant) and \
                    after.default is None and not after.optional_variant:
                raise DescriptionError(f"parameter '{after.name}' needs a default after an optional one")
        self.result = Type(result, classes, enums) if result else None
        self.dispid = None

    @property
    def has_record(self):
        return any(p.type.is_record for p in self.params)


class ComClass:
    def __init__(self, name, kind, creatable):
        self.name, self.kind, self.creatable = name, kind, creatable
        self.headers, self.members, self.events = [], [], []
        self.cpp = name
        self.events_cpp = None
        # The C++ type a control's event hands over for an object of this class (a view that
        # lives for one event), e.g. SurfaceDataObject for the data object of the drag events.
        self.event_arg = None
        # Controls drawn into an AutoRedraw surface.
        self.autoredraw = False
        self.base = None
        self.help = ""

    @property
    def interface(self):
        return f"_{self.name}"

    @property
    def event_interface(self):
        return f"__{self.name}"

    @property
    def adapter(self):
        return f"Com_{self.name}"


class Enum:
    def __init__(self, name):
        self.name = name
        self.values = []  # (published name, value)


MEMBER_RE = re.compile(
    r"(method|get|let|set|prop|propobj|event)\s+(\w+)\s*(?:\((.*?)\))?\s*(?::\s*(\w+)|->\s*(\w+))?"
    r"\s*(\[[^\]]*\])?\s*(?:=\s*(.+))?$")


def split_params(text):
    parts, depth, current = [], 0, ""
    for ch in text:
        if ch == "," and depth == 0:
            parts.append(current)
            current = ""
            continue
        depth += ch in "(<"
        depth -= ch in ")>"
        current += ch
    if current.strip():
        parts.append(current)
    return parts


def parse(paths):
    raw_classes, enums = [], {}
    for path in paths:
        current = None
        with open(path, encoding="utf-8") as f:
            for number, line in enumerate(f, 1):
                line = line.split("#", 1)[0].rstrip()
                if not line.strip():
                    continue
                words = line.split()
                where = f"{path}:{number}"
                if words[0] in ("class", "control"):
                    current = ComClass(words[1], words[0], "noncreatable" not in words[2:])
                    raw_classes.append((current, []))
                elif words[0] == "enum":
                    # enum eName: "Published Name" = 0, "Other" = 1
                    m = re.fullmatch(r"\s*enum\s+(\w+)\s*:\s*(.*)", line)
                    e = Enum(m.group(1))
                    for item in re.finditer(r'"([^"]+)"\s*=\s*(-?\w+)', m.group(2)):
                        e.values.append((item.group(1), int(item.group(2), 0)))
                    if not e.values:
                        raise DescriptionError(f"{where}: enumeration without members")
                    enums[e.name] = e
                elif current is None:
                    raise DescriptionError(f"{where}: '{words[0]}' outside a class")
                elif words[0] == "header":
                    current.headers.append(words[1])
                elif words[0] == "cpp":
                    current.cpp = line.split(None, 1)[1].strip()
                elif words[0] == "events_cpp":
                    current.events_cpp = words[1]
                elif words[0] == "event_arg":
                    current.event_arg = words[1]
                elif words[0] == "autoredraw":
                    current.autoredraw = True
                elif words[0] == "base":
                    current.base = words[1]
                elif words[0] == "help":
                    current.help = line.split(None, 1)[1].strip().strip('"')
                else:
                    raw_classes[-1][1].append((where, line.strip()))
    classes = {c.name: c for c, _ in raw_classes}
    for cls, lines in raw_classes:
        for where, text in lines:
            m = MEMBER_RE.fullmatch(text)
            if not m:
                raise DescriptionError(f"{where}: cannot read '{text}'")
            kind, name, params, prop_type, result, flags, call = m.groups()
            try:
                member = Member(kind, name, split_params(params or ""), prop_type or result, call,
                                (flags or "[]")[1:-1].split(), classes, enums)
            except DescriptionError as error:
                raise DescriptionError(f"{where}: {error}") from None
            (cls.events if kind == "event" else cls.members).append(member)
        assign_dispids(cls)
    return list(classes.values()), enums


def assign_dispids(cls):
    used, next_id = set(), 1
    for group in (cls.members, cls.events):
        for member in group:
            if "default" in member.flags:
                member.dispid = 0
            elif member.name in STOCK_DISPIDS:
                member.dispid = STOCK_DISPIDS[member.name]
            else:
                while next_id in used:
                    next_id += 1
                member.dispid = next_id
            used.add(member.dispid)
        next_id = 1


# ---------------------------------------------------------------------------------------- IDL

def idl_methods(member):
    """(attributes, name, parameter list) of each vtable entry of a member, in vtable order."""
    attrs = [f"id({member.dispid})"]
    if "hidden" in member.flags or "restricted" in member.flags:
        attrs += [f for f in member.flags if f in ("hidden", "restricted")]
    params = [p.idl() for p in member.params]
    kind = member.kind
    entries = []
    if kind in ("get", "prop", "propobj"):
        t = member.result
        entries.append((attrs + ["propget"], params + [f"[out, retval] {t.idl}* pVal"]))
    if kind in ("let", "prop"):
        entries.append((attrs + ["propput"], params + [f"[in] {member.result.idl} newVal"]))
    if kind in ("set", "propobj"):
        entries.append((attrs + ["propputref"], params + [f"[in] {member.result.idl} newVal"]))
    if kind == "method":
        tail = [f"[out, retval] {member.result.idl}* pResult"] if member.result else []
        entries.append((attrs, params + tail))
    return entries


def write_idl(classes, enums, out):
    lines = [
        "// Generated by comgen.py from src/com/classes/*.com: edit the descriptions, not this file.",
        'import "Prerequisites.idl";', "",
        f"[uuid({guid('library', LIBRARY)}), version(3.0), helpstring(\"{LIBRARY}\")]",
        f"library {LIBRARY}", "{",
        '    importlib("stdole2.tlb");', "",
        f"    typedef [uuid({guid('record', 'CTL_RECT')})] struct CTL_RECT {{",
        "        long left; long top; long right; long bottom;", "    } CTL_RECT;",
        f"    typedef [uuid({guid('record', 'CTL_POINTAPI')})] struct CTL_POINTAPI {{",
        "        long x; long y;", "    } CTL_POINTAPI;", "",
    ]
    for e in enums.values():
        lines.append(f"    typedef [uuid({guid('enum', e.name)})] enum {e.name} {{")
        lines += [f"        {placeholder(n)} = {v}," for n, v in e.values]
        lines[-1] = lines[-1].rstrip(",")
        lines.append(f"    }} {e.name};")
    lines.append("")
    for cls in classes:
        lines.append(f"    interface {cls.interface};")
    for cls in classes:
        lines += ["", f"    [object, uuid({guid('interface', cls.interface)}), dual, nonextensible, oleautomation,",
                  f"     helpstring(\"{cls.help or cls.name}\")]",
                  f"    interface {cls.interface} : IDispatch", "    {"]
        for member in cls.members:
            for attrs, params in idl_methods(member):
                lines.append(f"        [{', '.join(attrs)}] HRESULT {member.name}({', '.join(params)});")
        lines.append("    }")
        if cls.events:
            lines += [f"    [uuid({guid('events', cls.event_interface)})]",
                      f"    dispinterface {cls.event_interface}", "    {", "    properties:", "    methods:"]
            for ev in cls.events:
                lines.append(f"        [id({ev.dispid})] void {ev.name}({', '.join(p.idl() for p in ev.params)});")
            lines.append("    }")
        attrs = [f"uuid({guid('class', cls.name)})"]
        if not cls.creatable:
            attrs.append("noncreatable")
        if cls.kind == "control":
            attrs.append("control")
        lines += [f"    [{', '.join(attrs)}]", f"    coclass {cls.name}", "    {",
                  f"        [default] interface {cls.interface};"]
        if cls.events:
            lines.append(f"        [default, source] dispinterface {cls.event_interface};")
        lines.append("    }")
    lines.append("}")
    write(out, "\n".join(lines) + "\n")


def spaced_names(enums):
    """(placeholder, published name, value) of every enumeration member whose name has a blank."""
    return [(placeholder(n), n, v) for e in enums.values() for n, v in e.values if " " in n]


# widl writes no 8-byte default value (the platform then cannot read the member): the build writes
# these after widl. VT_I8 is a handle on x64; on x86 a handle is 4 bytes and widl writes it.
WIDE_DEFAULT_TYPES = {"Handle": 20, "Currency": 6}


def wide_defaults(classes):
    """(interface, member, parameter, VARTYPE, 64-bit value) of every 8-byte default value."""
    rows = []
    for cls in classes:
        for m in cls.members:
            for p in m.params:
                if p.default is None or p.type.tag not in WIDE_DEFAULT_TYPES:
                    continue
                try:
                    value = int(p.default, 0) if p.type.tag == "Handle" else round(float(p.default) * 10000)
                except ValueError:
                    raise DescriptionError(f"{cls.name}.{m.name}: default of '{p.name}' must be a number") from None
                rows.append((cls.interface, m.name, p.name, WIDE_DEFAULT_TYPES[p.type.tag], value))
    return rows


def placeholder(name):
    # widl cannot write blanks in a name: a blank becomes "_" here, and the build puts the blank
    # back into the compiled library (the same length, so no offset moves).
    return name.replace(" ", "_")


# ---------------------------------------------------------------------------------- C++ code

def guid_init(text):
    u = uuid.UUID(text)
    d = u.bytes
    tail = ", ".join(f"0x{b:02X}" for b in d[8:])
    return f"{{0x{u.fields[0]:08X}, 0x{u.fields[1]:04X}, 0x{u.fields[2]:04X}, {{{tail}}}}}"


def vtable_entries(member):
    """(C++ method name, wire parameters, body) for each vtable entry of a member."""
    args = [p.wire() for p in member.params]
    out = []
    kind = member.kind
    if kind in ("get", "prop", "propobj"):
        out.append((f"get_{member.name}", args + [f"{member.result.wire}* pVal"], getter_body(member)))
    if kind in ("let", "prop"):
        out.append((f"put_{member.name}", args + [f"{member.result.wire} newVal"], putter_body(member)))
    if kind in ("set", "propobj"):
        out.append((f"putref_{member.name}", args + [f"{member.result.wire} newVal"], putter_body(member)))
    if kind == "method":
        tail = [f"{member.result.wire}* pResult"] if member.result else []
        out.append((member.name, args + tail, method_body(member)))
    return out


def arg_locals(member):
    lines, names = [], {}
    for p in member.params:
        local = f"a_{p.name}"
        if p.byref and p.default is not None:
            # An omitted optional [in, out] argument may arrive as no pointer at all.
            lines.append(f"ComOptionalRef<comtype::{p.type.tag}> {local}({p.name}, {p.default});")
            names[p.name] = f"{local}.value"
        elif p.byref:
            lines.append(f"ComRef<comtype::{p.type.tag}> {local}({p.name});")
            names[p.name] = f"{local}.value"
        else:
            lines.append(f"decltype(auto) {local} = ComIn<comtype::{p.type.tag}>({p.name});")
            names[p.name] = local
    return lines, names


def expand(call, names, default):
    if not call:
        return default
    text = call.replace("@obj", "Object()")
    for name, local in sorted(names.items(), key=lambda item: -len(item[0])):
        text = re.sub(rf"@{name}\b", local, text)
    return text


def commits(member):
    return [f"a_{p.name}.Commit();" for p in member.params if p.byref]


def method_body(member):
    lines, names = arg_locals(member)
    call = expand(member.call, names, f"Object().{member.name}({', '.join(names[p.name] for p in member.params)})")
    if member.result:
        lines.append(f"ComOut<comtype::{member.result.tag}>(pResult, {call});")
    else:
        lines.append(f"{call};")
    return lines + commits(member)


def getter_body(member):
    lines, names = arg_locals(member)
    call = member.call.split("|")[0].strip() if member.call else None
    call = expand(call, names, f"Object().{member.name}({', '.join(names[p.name] for p in member.params)})")
    return lines + [f"ComOut<comtype::{member.result.tag}>(pVal, {call});"] + commits(member)


def putter_body(member):
    lines, names = arg_locals(member)
    lines.append(f"decltype(auto) a_newVal = ComIn<comtype::{member.result.tag}>(newVal);")
    names["newVal"] = "a_newVal"
    setter = member.call.split("|")[1].strip() if member.call and "|" in member.call else None
    args = [names[p.name] for p in member.params] + ["a_newVal"]
    call = expand(setter, names, f"Object().{member.name}({', '.join(args)})")
    return lines + [f"{call};"] + commits(member)


# Member names that the platform headers define as macros for their A and W entry points. The
# vtables must declare the member's own name, whatever header an adapter includes after them.
PLATFORM_MACROS = frozenset({
    "CreateDC", "DrawText", "TextOut", "CopyFile", "MoveFile", "DeleteFile", "GetObject", "LoadImage",
    "SendMessage", "PostMessage", "CreateFont", "GetClassName", "SetWindowText", "GetWindowText",
    "LoadString", "MessageBox", "ChooseColor", "ChooseFont", "GetOpenFileName", "GetSaveFileName",
    "CreateWindow", "FindText", "ReplaceText", "GetCurrentDirectory", "SetCurrentDirectory",
})


def platform_macro_undefs(classes):
    names = sorted({m.name for cls in classes for m in cls.members} & PLATFORM_MACROS)
    return [f"#undef {name}" for name in names] + ([""] if names else [])


def write_interfaces(classes, enums, out):
    lines = [
        "// Generated by comgen.py: the vtables of the library's interfaces, their GUIDs and enumerations.",
        "#pragma once", "", "#include <memory>", "", '#include "com/ComPrerequisites.h"',
        '#include "common/CtlTypes.h"', "",
    ]
    lines += platform_macro_undefs(classes)
    lines += [
        "namespace tc::com {", "",
        f"inline constexpr GUID LIBID_{LIBRARY} = {guid_init(guid('library', LIBRARY))};",
        "", "// Published enumeration members with their blanks, for the build step that puts them back.",
        "struct PublishedEnumName { const wchar_t* idlName; const wchar_t* name; long value; };",
        "inline constexpr PublishedEnumName kPublishedEnumNames[] = {",
    ]
    lines += [f'    {{L"{a}", L"{b}", {v}}},' for a, b, v in spaced_names(enums)] or ['    {nullptr, nullptr, 0},']
    lines += ["};", ""]
    for cls in classes:
        lines.append(f"struct {cls.interface};")
    lines.append("}  // namespace tc::com")
    lines += [f"class {cls.cpp};" for cls in classes if re.fullmatch(r"\w+", cls.cpp)]
    lines += ["namespace tc::com::comtype {"]
    for cls in classes:
        lines += [f"struct Obj_{cls.name} {{",
                  f"    using Cpp = ::{cls.cpp};",
                  f"    using Interface = {cls.interface};",
                  "    // A new adapter around an object of the library; null for none.",
                  "    static HRESULT Wrap(std::shared_ptr<Cpp> object, Interface** out);",
                  "    // The object behind an interface of this class; throws for a foreign object.",
                  "    static std::shared_ptr<Cpp> Unwrap(Interface* itf);",
                  "};"]
    lines += ["}  // namespace tc::com::comtype", "namespace tc::com {"]
    for cls in classes:
        lines += ["", f"inline constexpr GUID IID_{cls.interface} = {guid_init(guid('interface', cls.interface))};",
                  f"inline constexpr GUID CLSID_{cls.name} = {guid_init(guid('class', cls.name))};"]
        if cls.events:
            lines.append(f"inline constexpr GUID DIID_{cls.event_interface} = "
                         f"{guid_init(guid('events', cls.event_interface))};")
        lines.append(f"struct {cls.interface} : public IDispatch {{")
        for member in cls.members:
            for name, params, _ in vtable_entries(member):
                lines.append(f"    virtual HRESULT STDMETHODCALLTYPE {name}({', '.join(params)}) = 0;")
        lines.append("};")
    lines += ["", "}  // namespace tc::com", ""]
    write(out, "\n".join(lines))


def write_adapter(cls, outdir):
    base = cls.base or ("ControlObject" if cls.kind == "control" else "DualObject")
    headers = "".join(f'#include "{h}"\n' for h in cls.headers)
    lines = [
        f"// Generated by comgen.py from {cls.name}.com: the COM face of {cls.name}.",
        f'#include "com/{base}.h"', '#include "com/ComConvert.h"', '#include "com/ComClassTable.h"',
        '#include "com/generated/ComInterfaces.h"', headers,
        "namespace tc::com {", "",
    ]
    event_lines = []
    if cls.events:
        event_lines = write_event_forwarder(cls)
        lines += event_lines
    traits = f"{cls.name}Traits"
    lines += [f"struct {traits} {{",
              f"    using Interface = {cls.interface};",
              f"    using ObjectType = {cls.cpp};",
              f"    static constexpr const GUID& iid = IID_{cls.interface};",
              f"    static constexpr const GUID& clsid = CLSID_{cls.name};",
              f"    static constexpr const GUID* events = {('&DIID_' + cls.event_interface) if cls.events else 'nullptr'};",
              f"    static constexpr const wchar_t* name = L\"{cls.name}\";",
              f"    static constexpr const wchar_t* source = L\"{cls.name}\";",
              f"    static constexpr bool autoRedraw = {str(cls.autoredraw).lower()};",
              f"    static constexpr DISPID recordMembers[] = {{{', '.join(str(m.dispid) for m in cls.members if m.has_record) or '0'}}};"]
    if cls.events:
        lines.append(f"    using EventForwarder = {cls.name}EventForwarder;")
    lines += ["};", "",
              f"class {cls.adapter} final : public {base}<{traits}> {{", "public:",
              f"    using {base}<{traits}>::{base};"]
    for member in cls.members:
        for name, params, body in vtable_entries(member):
            lines.append(f"    HRESULT STDMETHODCALLTYPE {name}({', '.join(params)}) override {{")
            lines.append("        return Guard([&] {")
            lines += [f"            {b}" for b in body]
            lines += ["        });", "    }"]
    record_members = [m for m in cls.members if m.has_record]
    if record_members:
        lines += write_record_dispatch(cls, record_members)
    lines += ["};", "",
              f"const ComClassEntry& ClassEntry_{cls.name}() {{",
              f"    static const ComClassEntry entry{{L\"{cls.name}\", CLSID_{cls.name}, IID_{cls.interface}, "
              f"{str(cls.creatable).lower()}, {str(cls.kind == 'control').lower()}, "
              f"&CreateInstance<{cls.adapter}>}};",
              "    return entry;", "}", "",
              f"HRESULT comtype::Obj_{cls.name}::Wrap(std::shared_ptr<Cpp> object, Interface** out) {{"]
    if cls.kind == "control":
        # A control lives on the surface its adapter made: a C++ control has no COM face of its own.
        lines += ["    (void)object;", "    if (out) *out = nullptr;", "    return E_NOTIMPL;"]
    else:
        lines.append(f"    return WrapExisting<{cls.adapter}>(std::move(object), out);")
    lines += ["}", "",
              f"std::shared_ptr<{cls.cpp}> comtype::Obj_{cls.name}::Unwrap(Interface* itf) {{",
              f"    return UnwrapExisting<{cls.adapter}>(itf);",
              "}", "", "}  // namespace tc::com", ""]
    write(os.path.join(outdir, f"Com_{cls.name}.cpp"), "\n".join(lines))


def write_record_dispatch(cls, members):
    """Invoke by hand for members with records by reference: the platform's type-library dispatch
    answers E_NOTIMPL for them under Wine."""
    lines = ["", "protected:",
             "    HRESULT InvokeByHand(DISPID id, WORD flags, DispArgs& args, VARIANT* result) override {",
             "        static_cast<void>(result);  // only members with a result use it",
             "        switch (id) {"]
    for m in members:
        lines.append(f"        case {m.dispid}: {{")
        lines.append("            if (!(flags & DISPATCH_METHOD)) return DISP_E_MEMBERNOTFOUND;")
        lines.append(f"            if (!args.Expect({len(m.params)}, {sum(1 for p in m.params if p.default is None)})) return args.Error();")
        call_args = []
        for i, p in enumerate(m.params):
            if p.type.is_record:
                lines.append(f"            auto* r_{p.name} = args.RecordAt<{ 'CTL_RECT' if p.type.tag == 'Rect' else 'CTL_POINTAPI'}>({i});")
                lines.append(f"            if (!r_{p.name}) return args.Error();")
                call_args.append(f"r_{p.name}")
            else:
                default = p.default if p.default is not None else f"decltype(v_{p.name}){{}}"
                lines.append(f"            {p.type.wire}{'*' if p.byref else ''} v_{p.name}{{}};")
                if p.byref:
                    raise DescriptionError(f"{cls.name}.{m.name}: by-reference non-record beside a record")
                lines.append(f"            if (!args.Get<comtype::{p.type.tag}>({i}, v_{p.name}, {default})) return args.Error();")
                call_args.append(f"v_{p.name}")
        if m.result:
            lines.append(f"            {m.result.wire} r{{}};")
            lines.append(f"            const HRESULT hr = {m.name}({', '.join(call_args + ['&r'])});")
            lines.append(f"            if (SUCCEEDED(hr)) StoreResult<comtype::{m.result.tag}>(result, r);")
            lines.append("            return hr;")
        else:
            lines.append(f"            return {m.name}({', '.join(call_args)});")
        lines.append("        }")
    lines += ["        default: return DISP_E_MEMBERNOTFOUND;", "        }", "    }"]
    return lines


def write_event_forwarder(cls):
    """A C++ sink for the object's events that fires each of them to the connected dispatch sinks."""
    if not cls.events_cpp:
        raise DescriptionError(f"{cls.name}: events need 'events_cpp <C++ sink interface>'")
    lines = [f"class {cls.name}EventForwarder final : public {cls.events_cpp} {{", "public:",
             f"    explicit {cls.name}EventForwarder(EventSource& source) : m_source(source) {{}}"]
    for ev in cls.events:
        params = ", ".join(f"{cpp_event_type(p)} {p.name}" for p in ev.params)
        lines.append(f"    void {ev.name}({params}) override {{")
        lines.append(f"        EventArgs args({len(ev.params)});")
        views = []
        # Arguments go in reverse order, as in every dispatch call.
        for i, p in enumerate(ev.params):
            slot = len(ev.params) - 1 - i
            if p.type.tag.startswith("Obj_"):
                # The object is a view of the C++ argument for this one event: it is cut off after
                # it, so a handler that keeps it cannot reach the gone argument.
                cpp = p.type.cls.cpp
                lines += [f"        auto v_{p.name} = std::make_shared<{cpp}>({p.name});",
                          f"        ComPtr<{p.type.cls.interface}> d_{p.name};",
                          f"        comtype::{p.type.tag}::Wrap(v_{p.name}, d_{p.name}.put());",
                          f"        args.Object({slot}, d_{p.name}.get());"]
                views.append(p.name)
                continue
            verb = "Ref" if p.byref else "Val"
            lines.append(f"        args.{verb}<comtype::{p.type.tag}>({slot}, {p.name});")
        lines.append(f"        m_source.Fire({ev.dispid}, args);")
        lines += [f"        v_{name}->Detach();" for name in views]
        if any(p.byref for p in ev.params):
            for i, p in enumerate(ev.params):
                if p.byref and not p.type.tag.startswith("Obj_"):
                    lines.append(f"        args.Back<comtype::{p.type.tag}>({len(ev.params) - 1 - i}, {p.name});")
        lines.append("    }")
    lines += ["", "private:", "    EventSource& m_source;", "};", ""]
    return lines


CPP_EVENT_TYPES = {"Bool": "bool", "Short": "int16_t", "Long": "int32_t", "Single": "float",
                   "Double": "double", "String": "const CtlString&", "Currency": "int64_t",
                   "Color": "int32_t", "Byte": "uint8_t"}


def cpp_event_type(p):
    tag = p.type.tag
    if tag.startswith("Obj_"):
        if not p.type.cls.event_arg:
            raise DescriptionError(f"class {p.type.text} needs 'event_arg' to be an event argument")
        return f"{p.type.cls.event_arg}&"
    base = CPP_EVENT_TYPES.get(tag)
    if base is None:
        raise DescriptionError(f"event parameter type {p.type.text} has no C++ form")
    if p.byref:
        return base.replace("const ", "").replace("&", "") + "&"
    return base


def write_table(classes, out):
    lines = ["// Generated by comgen.py: every class of the type library, in description order.",
             '#include "com/ComClassTable.h"', "", "namespace tc::com {", ""]
    lines += [f"const ComClassEntry& ClassEntry_{c.name}();" for c in classes]
    lines += ["", "std::span<const ComClassEntry* const> ComClasses() {",
              "    static const ComClassEntry* const table[] = {"]
    lines += [f"        &ClassEntry_{c.name}()," for c in classes]
    lines += ["    };", "    return table;", "}", "", "}  // namespace tc::com", ""]
    write(out, "\n".join(lines))


def write(path, text):
    # Unchanged outputs keep their time stamps, so that the build does not recompile them.
    try:
        with open(path, encoding="utf-8") as f:
            if f.read() == text:
                return
    except FileNotFoundError:
        pass
    with open(path, "w", encoding="utf-8") as f:
        f.write(text)


def main(argv):
    outdir, paths = argv[1], sorted(argv[2:])
    os.makedirs(outdir, exist_ok=True)
    try:
        classes, enums = parse(paths)
    except DescriptionError as error:
        sys.stderr.write(f"comgen: {error}\n")
        return 1
    write_idl(classes, enums, os.path.join(outdir, f"{LIBRARY}.idl"))
    write_interfaces(classes, enums, os.path.join(outdir, "ComInterfaces.h"))
    for cls in classes:
        write_adapter(cls, outdir)
    write_table(classes, os.path.join(outdir, "ComClassTable.cpp"))
    write(os.path.join(outdir, "PublishedEnumNames.txt"), "".join(f"{a}\t{b}\n" for a, b, _ in spaced_names(enums)))
    try:
        defaults = wide_defaults(classes)
    except DescriptionError as error:
        sys.stderr.write(f"comgen: {error}\n")
        return 1
    write(os.path.join(outdir, "TypeLibDefaults.txt"), "".join("\t".join(map(str, row)) + "\n" for row in defaults))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
