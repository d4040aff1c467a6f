"""Fails on an include that the rooms do not allow.

Each folder is a room with a job of its own, and includes run one way. A change that needs a new arrow
needs a thought first: does the code live in the right room?
"""
import graphlib
import pathlib
import re
import sys

# Room: the rooms of ours that it may include.
ALLOWED = {
    "model": set(),
    "uncertainty": {"model"},
    "columns": {"model"},
    "landmarks": set(),
    "storage": set(),
    "case": {"model", "storage"},
    "platform": {"storage"},
    "diagram": {"case", "platform"},
    "caseform": {"case", "platform"},
    "report": {"case", "diagram", "model", "platform", "uncertainty"},
    "view3d": {"case", "platform", "storage"},
    "radiograph": set(),
    "measuring": {"case", "diagram", "landmarks", "model", "platform", "radiograph", "report",
                  "uncertainty"},
    "batch": {"case", "columns", "model", "storage", "uncertainty"},
    "python": {"columns", "model", "uncertainty"},
}
EVERYTHING = {"app", "tests", "bench"}  # may include every room
ROOMS = set(ALLOWED) | EVERYTHING

# Toolkit headers that a room may use: none, those without windows, or all.
TOOLKIT = {"model": "none", "uncertainty": "none", "columns": "none", "landmarks": "none",
           "storage": "core", "case": "core", "batch": "core",
           "python": "none"}
# What a room without the toolkit may include beside the standard library.
LIBRARIES = {"uncertainty": re.compile(r"^hwy/"), "python": re.compile(r"^pybind11/")}
QT_CORE_ONLY = re.compile(
    r"^(Qt|QtCore/.*|QAnyStringView|QByteArray\w*|QChar|QCoreApplication|QCryptographicHash|QDate|"
    r"QDateTime|QDir|QDirIterator|QFile|QFileInfo|QIODevice|QJsonArray|QJsonDocument|"
    r"QJsonObject|QJsonValue|QLatin1Char|QLatin1String|QLocale|QList|"
    r"QLockFile|QObject|QRegularExpression|QSaveFile|QStandardPaths|QString|QStringBuilder|"
    r"QStringConverter|QStringDecoder|QStringEncoder|QStringList|QStringLiteral|QStringView|"
    r"QSysInfo|QTemporaryDir|QTemporaryFile|QTextStream|QTime|QTimeZone|QVariant|QtGlobal|"
    r"QtMath|QtNumeric|QtTypes)$"
)
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)
STANDARD = re.compile(r"^[a-z_0-9]+$")  # <vector>, <cmath>: no slash, no ending


def forbidden(room, quote, header):
    """Why `room` may not include `header`; empty if it may."""
    first = header.split("/")[0]
    if quote == '"':
        if "/" not in header or first not in ROOMS:
            return "our own headers are included by their path from the top folder"
        if first != room and room in ALLOWED and first not in ALLOWED[room]:
            return f"{room}/ may not include {first}/"
        return ""
    if first in ROOMS and "/" in header:
        return "our own headers are included with quotes"
    toolkit = TOOLKIT.get(room, "all")
    allowed = LIBRARIES.get(room)
    if allowed and allowed.match(header):
        return ""
    if toolkit == "none" and not STANDARD.match(header):
        return f"{room}/ may include the C++ standard library only"
    is_qt = re.match(r"^Q[A-Zt]", header)
    if toolkit == "core" and is_qt and not QT_CORE_ONLY.match(header):
        return f"{room}/ may use Qt Core only"
    return ""


def includes(top):
    """Room, file, quote and header of every include below `top`."""
    for room in sorted(ROOMS):
        for path in sorted((top / room).rglob("*")):
            if path.suffix in {".h", ".cpp"}:
                for quote, header in INCLUDE.findall(path.read_text(encoding="utf-8")):
                    yield room, path.relative_to(top), quote, header


def circle(found):
    """The first circle of files that include each other, a header and its source being one."""
    graph = {}
    for _, path, quote, header in found:
        mine, other = path.with_suffix(""), pathlib.PurePath(header).with_suffix("")
        if quote == '"' and mine != other:
            graph.setdefault(mine, set()).add(other)
    try:
        graphlib.TopologicalSorter(graph).prepare()
    except graphlib.CycleError as trouble:
        return ["a circle: " + " < ".join(str(name) for name in trouble.args[1])]
    return []


def check(top):
    """All forbidden includes below `top` and a circle, one line of text each."""
    found = list(includes(top))
    reasons = [(path, header, forbidden(room, quote, header)) for room, path, quote, header in found]
    return [f"{path}: {header}: {why}" for path, header, why in reasons if why] + circle(found)


def main():
    found = check(pathlib.Path(sys.argv[1]))
    print("\n".join(found) or "every include follows the rooms")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
