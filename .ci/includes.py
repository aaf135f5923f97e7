#!/usr/bin/env python3
"""Names every #include that does not point down."""

import pathlib
import re
import sys

# An include may point to a lower floor or into its own folder, never to a neighbour.
FLOORS = {
    "platform/system": 1,
    "platform/commandline": 2,
    "platform/drawing": 2,
    "curves": 2,
    "platform/windows": 3,
    "evaluation": 3,
    "platform/operator": 4,
    "plot": 4,
    "acquisition": 5,
    "ui": 5,
    "plugin": 6,
    "siblings": 6,
    "instrument": 6,
    "link": 6,
    "host": 7,
    "tools": 7,
}

# The session record stands with the screen, and the packet reader works on it.
UPWARD = {("acquisition", "plugin/RealTimeData.h")}

# What goes with the product without being part of it: free of floors, bound by the rules below.
AROUND = ("tests", "soak", "fuzz", "benchmarks", "docs")

# What only some folders include: pattern of the header, those folders, what it is.
RESERVED = (
    (r"platform/operator/.*", ("platform/operator", "host", "tests", "soak", "benchmarks", "docs"),
     "the scripted operator"),
    (r"platform/commandline/.*", ("platform/commandline", "host", "tools", "soak", "tests"),
     "the programs' command line"),
    (r"platform/\w+/qt/.*", ("platform",), "the inside of the platform"),
    (r"tests/(?!support/).*", ("tests",), "what the tests keep to themselves"),
    (r"<Q.*", ("platform", "siblings", "host", "benchmarks/alternatives"), "Qt"),
    (r"<(oneapi|tbb)/.*", ("platform",), "oneTBB"),
    (r"<(asio|openssl)[/.].*|<mosquitto\.h>|<mqtt_protocol\.h>", ("link", "tests"), "a transport's library"),
    # The headers of C++ itself have no ending.
    (r"<(?!openssl/|mosquitto\.|mqtt_protocol\.).*\.h>", ("platform", "tests", "soak", "benchmarks"), "the system's header"),
)

INCLUDE = re.compile(r'\s*#\s*include\s*(<[^>]+>|"[^"]+")')


def stands_in(path, folder):
    return path == folder or path.startswith(folder + "/")


def folder_of(path):
    """The folder with a floor, or the top folder, that a file stands in."""
    return next((folder for folder in FLOORS if stands_in(path, folder)), path.split("/")[0])


def find_fault(root, path, header):
    """What is wrong with an #include, or None."""
    if header.startswith('"'):
        header = header.strip('"')
        beside = (root / path).parent / header
        if beside.exists():
            header = beside.resolve().relative_to(root).as_posix()
        elif not (root / header).exists():
            return "there is no such file"

    source = folder_of(path)
    target = folder_of(header)
    for pattern, users, what in RESERVED:
        if re.fullmatch(pattern, header) and not any(stands_in(path, user) for user in users):
            return f"{what} is not for {source}"
    if header.startswith("<") or source not in FLOORS:
        return None
    if target == source or (source, header) in UPWARD:
        return None
    if source == "siblings" and not header.startswith("platform/"):
        return "siblings stand on the platform alone"
    if FLOORS.get(target, 99) >= FLOORS[source]:
        return f"{target} does not stand below {source}"
    return None


def main():
    root = pathlib.Path(__file__).resolve().parent.parent
    faults = 0
    for file in sorted([*root.glob("*/**/*.h"), *root.glob("*/**/*.cpp")]):
        path = file.relative_to(root).as_posix()
        if path.startswith(("build/", ".")):
            continue
        if folder_of(path) not in (*FLOORS, *AROUND):
            print(f"{path}: its folder has no floor")
            faults += 1
            continue
        for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
            match = INCLUDE.match(line)
            fault = match and find_fault(root, path, match[1])
            if fault:
                print(f"{path}:{number}: {line.strip()}: {fault}")
                faults += 1
    return 1 if faults else 0


sys.exit(main())
