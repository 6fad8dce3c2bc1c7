# SPDX-License-Identifier: Apache-2.0

"""What public headers declare for export, as mangled names: read from the compiler's syntax tree of them."""
import json
import re
import subprocess

# Constructors and destructors are symbols of several variants: complete object, base object, deleting.
CONSTRUCTOR_VARIANTS = ("C1", "C2")
DESTRUCTOR_VARIANTS = ("D1", "D2")


def declared_symbols(compiler, headers, include_folders, names):
    """The mangled names, and the number of declarations that are written with the export attribute.

    names: parts of qualified names that select the declarations to look at."""
    command = [compiler, "-std=c++17", "-x", "c++", "-", "-fsyntax-only", "-Xclang", "-ast-dump=json"]
    command += [option for folder in include_folders for option in ("-I", folder)]
    text = "".join(f"#include <{header}>\n" for header in headers)
    symbols, marked = set(), {}
    for name in names:
        dump = subprocess.run(command + ["-Xclang", f"-ast-dump-filter={name}"], input=text, check=True,
                              stdout=subprocess.PIPE, text=True).stdout
        for declaration in documents(dump):
            collect(declaration, symbols, marked)
    return symbols, len(marked)


def documents(text):
    """The JSON values that the text holds one after the other."""
    decoder, place = json.JSONDecoder(), 0
    while (start := re.compile(r"\s*").match(text, place).end()) < len(text):
        value, place = decoder.raw_decode(text, start)
        yield value


def children(declaration):
    return declaration.get("inner", [])


def is_marked(declaration):
    return any(child["kind"] == "VisibilityAttr" and not child.get("implicit") for child in children(declaration))


def is_written(declaration):
    """Whether the attribute is written here, not inherited from an earlier declaration."""
    return any(child["kind"] == "VisibilityAttr" and not child.get("implicit") and not child.get("inherited")
               for child in children(declaration))


def has_body(declaration):
    return any(child["kind"] in ("CompoundStmt", "CXXTryStmt") for child in children(declaration))


def is_compiled_into_its_users(declaration):
    return (declaration.get("inline") or declaration.get("constexpr") or declaration.get("isImplicit")
            or declaration.get("explicitlyDefaulted") or declaration.get("explicitlyDeleted")
            or declaration.get("pure") or has_body(declaration))


def collect(declaration, symbols, marked):
    kind = declaration["kind"]
    if is_written(declaration):
        marked[declaration["id"]] = declaration.get("name")
    if kind in ("NamespaceDecl", "LinkageSpecDecl"):
        for child in children(declaration):
            collect(child, symbols, marked)
    elif kind == "CXXRecordDecl" and declaration.get("completeDefinition"):
        collect_class(declaration, is_marked(declaration), symbols, marked)
    elif kind in ("FunctionDecl", "VarDecl") and is_marked(declaration) and not is_compiled_into_its_users(declaration):
        symbols.add(declaration["mangledName"])


def collect_class(declaration, exported, symbols, marked):
    polymorphic = declaration.get("definitionData", {}).get("isPolymorphic", False)
    for member in children(declaration):
        kind = member["kind"]
        if kind == "CXXRecordDecl" and member.get("completeDefinition") and not member.get("isImplicit"):
            # A nested class is as visible as the one around it.
            if is_written(member):
                marked[member["id"]] = member["name"]
            collect_class(member, exported or is_marked(member), symbols, marked)
        elif kind == "FriendDecl":
            marked.update((friend["id"], friend.get("name")) for friend in children(member) if is_written(friend))
        elif kind == "FunctionTemplateDecl":
            for instance in children(member):
                # Instances that the headers declare extern bear the attribute of their own.
                if instance["kind"] == "CXXMethodDecl" and "mangledName" in instance and is_marked(instance):
                    symbols.add(instance["mangledName"])
        elif kind in ("CXXMethodDecl", "CXXConstructorDecl", "CXXDestructorDecl", "CXXConversionDecl", "VarDecl"):
            if exported and not is_compiled_into_its_users(member):
                symbols.update(variants(member, polymorphic))
    if exported and polymorphic:
        # The constructor's name holds that of the class.
        name = re.fullmatch(r"_ZN(.+)[CD][12]E.*", any_structor(declaration)).group(1)
        encoded = f"N{name}E" if not is_single(name) else name
        symbols.update(f"_ZT{part}{encoded}" for part in "VIS")


def any_structor(declaration):
    return next(member["mangledName"] for member in children(declaration)
                if member["kind"] in ("CXXConstructorDecl", "CXXDestructorDecl") and "mangledName" in member)


def is_single(name):
    """Whether a mangled name is that of a class outside of namespaces."""
    length = re.match(r"\d+", name).group()
    return len(name) == len(length) + int(length)


def variants(member, polymorphic):
    name = member["mangledName"]
    if member["kind"] == "CXXConstructorDecl":
        return {re.sub(r"C1(?=E)", variant, name, count=1) for variant in CONSTRUCTOR_VARIANTS}
    if member["kind"] == "CXXDestructorDecl":
        # An overriding destructor is virtual without saying so, and every class with virtual functions has a virtual one.
        kinds = DESTRUCTOR_VARIANTS + (("D0",) if polymorphic else ())
        return {re.sub(r"D1(?=Ev$)", variant, name) for variant in kinds}
    return {name}
