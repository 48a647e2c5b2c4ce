"""words.py SIMD TESTS: every word of the vector layer, which is what its headers declare inline for others, is named by a test, and
so is its class. What is private, stands in a namespace of its own or in a processor's folder, is a part of other words."""

import copy
import pathlib
import re
import sys

from verdict import conclude

TOKEN = re.compile(r"^#\s*(?P<branch>if|el|endif)|\b(?P<scope>namespace|class|struct)\s+(?P<named>\w[\w:]*)[^;{}()<>]*\{|"
                   r"(?P<open>\{)|(?P<close>\})|\b(?P<access>private|public):|"
                   r"\bZEL_INLINE\b[^;{}()]*?(?P<word>operator\b|\w+)[^\s\w]*\(", re.M)


def without_prose(text):
    return re.sub(r"//.*|\"[^\"\n]*\"", "", text)


class Scope:
    def __init__(self, name, is_class, is_open):
        self.name, self.is_class, self.is_open = name, is_class, is_open


def words_in(text):
    """The names of each word: its own, and that of the class whose member it is."""
    text = re.sub(r"^#\s*(?:define|pragma|include|error).*", "", without_prose(text), flags=re.M)
    scopes, before_branches = [Scope("", False, True)], []
    for token in TOKEN.finditer(text):
        scope = scopes[-1]
        if token["branch"] == "if":
            before_branches.append(copy.deepcopy(scopes))
        elif token["branch"] == "el":
            scopes = copy.deepcopy(before_branches[-1])
        elif token["branch"] == "endif":
            before_branches.pop()
        elif token["scope"]:
            is_class = token["scope"] != "namespace"
            is_of_all = token["scope"] == "struct" or token["named"].startswith("zel::")
            scopes.append(Scope(token["named"] if is_class else "", is_class, scope.is_open and is_of_all))
        elif token["open"]:
            scopes.append(Scope(scope.name, False, False))
        elif token["close"]:
            scopes.pop()
        elif token["access"]:
            scope.is_open = token["access"] == "public"
        elif scope.is_open:
            yield {scope.name, token["word"]} - {"", "operator"}


simd, tests = map(pathlib.Path, sys.argv[1:])
named = {name for path in tests.glob("*_test.cpp") for name in re.findall(r"\w+", without_prose(path.read_text()))}
processors = {path.parent for path in simd.glob("*/level.h")}
headers = [path for path in simd.rglob("*.h") if processors.isdisjoint(path.parents)]
words = {(path.relative_to(simd).as_posix(), *sorted(names)) for path in headers for names in words_in(path.read_text())}
faults = [f"{header}: no test names {' of '.join(names)}" for header, *names in sorted(words) if not named.issuperset(names)]
if len(words) < 100:
    faults.append("fewer words were found than there are")
conclude(faults, f"{len(words)} words")
