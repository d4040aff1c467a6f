"""Fails when a document names a test, a file or a place in the tree that is not there.

A table of hazards is worth what its tests are worth: a renamed test must take its row along.
"""
import pathlib
import re
import sys

DOCUMENTS = ["*.md", "docs/*.md", "bench/*.md"]
CODE = re.compile(r"`([^`\n]+)`")
LINK = re.compile(r"\]\(([^)#]+)(?:#[^)]*)?\)")
TEST_NAME = re.compile(r"^[A-Z]\w+\.[A-Z]\w+$")
PLACE = re.compile(r"^[\w.-]+(/[\w.-]+)*/?$")
TEST = re.compile(r"^TEST(?:_P|_F)?\((\w+), (\w+)\)", re.MULTILINE)


def tests(top):
    """Suite.Name of every test."""
    sources = (top / "tests").rglob("*.cpp")
    return {f"{suite}.{name}" for s in sources for suite, name in TEST.findall(s.read_text("utf-8"))}


def is_place(text, top):
    """Whether a text in code type means a file or a folder of the tree."""
    return PLACE.match(text) and "/" in text and (top / text.split("/")[0]).is_dir()


def wrong_in(document, top, known):
    """What a document names that is not there."""
    text = document.read_text(encoding="utf-8")
    links = [link for link in LINK.findall(text) if "://" not in link]
    wrong = [link for link in links if not (document.parent / link).exists()]
    for code in CODE.findall(text):
        if TEST_NAME.match(code) and code not in known:
            wrong.append(code)
        elif is_place(code, top) and not code.startswith("build/") and not (top / code).exists():
            wrong.append(code)
    return wrong


def check(top):
    """Everything that is named and not there, one line of text each."""
    known = tests(top)
    documents = sorted(path for pattern in DOCUMENTS for path in top.glob(pattern))
    missing = [(path, name) for path in documents for name in wrong_in(path, top, known)]
    return [f"{path.relative_to(top)}: {name} is not there" for path, name in missing]


def main():
    found = check(pathlib.Path(sys.argv[1]))
    print("\n".join(found) or "every test and file that the documents name is there")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
