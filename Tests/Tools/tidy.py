#!/usr/bin/env python3
"""Runs clang-tidy over one target of a build folder: tidy.py BUILD_FOLDER TARGET.

Files of a unity build are checked together, since most of the time is spent on Qt's headers. Files that were not
recompiled since they were last clean are skipped.
"""
import json
import re
import shlex
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
SOURCES = ROOT / 'Sources'
# Without the analyzer, which takes minutes and sees only the named file; the preset "tidy" has it. Unity files include
# source files on purpose.
CHECKS = '--checks=-clang-analyzer-*,-bugprone-suspicious-include'
INCLUDE = re.compile(r'^#include "([^"]+\.cpp)"', re.MULTILINE)


class Unit:
    """Sources that are checked together, with the compile command of the (first) file."""

    def __init__(self, command, sources, objects):
        self.command, self.sources, self.objects = command, sources, objects


def object_of(entry):
    words = shlex.split(entry['command'])
    return Path(entry['directory'], words[words.index('-o') + 1])


def sources_of(file):
    """The sources of the tree in `file`: itself, or those that a unity file includes."""
    if file.is_relative_to(SOURCES):
        return [file]
    included = [Path(name) for name in INCLUDE.findall(file.read_text())] if file.parent.name == 'Unity' else []
    return [name for name in included if name.is_relative_to(SOURCES)]


def units_of(build, target):
    together, units = {}, []
    for entry in json.loads((build / 'compile_commands.json').read_text()):
        if f'/CMakeFiles/{target}.dir/' not in '/' + str(object_of(entry).relative_to(build)):
            continue
        file = Path(entry['file'])
        unit = Unit(entry, sources_of(file), [object_of(entry)])
        # The X headers define macros that conflict with Qt's headers.
        if file.parent.name in ('X11', 'Unity'):
            units.append(unit)
        elif first := together.get(file.parent):
            first.sources += unit.sources
            first.objects += unit.objects
        else:
            together[file.parent] = unit
    return [unit for unit in [*together.values(), *units] if unit.sources]


def write_database(folder, units):
    """Writes a file for each unit, and a compilation database with them."""
    folder.mkdir(parents=True, exist_ok=True)
    database = []
    for number, unit in enumerate(units):
        unit.file = folder / f'{number}.cpp'
        unit.file.write_text(''.join(f'#include "{source}"\n' for source in unit.sources))
        command = unit.command['command'].replace(unit.command['file'], str(unit.file))
        database.append({**unit.command, 'command': command, 'file': str(unit.file)})
    (folder / 'compile_commands.json').write_text(json.dumps(database))


def is_known_clean(unit, stamp):
    if not stamp.exists() or stamp.read_text() != unit.file.read_text():
        return False
    inputs = [*unit.objects, ROOT / '.clang-tidy', Path(__file__)]
    return all(file.stat().st_mtime < stamp.stat().st_mtime for file in inputs)


def complaints(folder, unit):
    done = subprocess.run(
        ['clang-tidy', '-p', folder, '--quiet', f'--config-file={ROOT / ".clang-tidy"}', CHECKS, unit.file],
        stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    return (done.stdout.strip() or done.stderr.strip()) if done.returncode else ''


def main(build, target):
    units = units_of(build, target)
    if not units:
        return f'{build} has no target {target}'
    missing = [str(file) for unit in units for file in unit.objects if not file.exists()]
    if missing:
        return f'build {target} first: {missing[0]} is not there'
    folder = build / 'tidy' / target
    write_database(folder, units)
    found = []
    for unit in units:
        stamp = unit.file.with_suffix('.clean')
        if is_known_clean(unit, stamp):
            continue
        if complaint := complaints(folder, unit):
            found.append(complaint)
        else:
            stamp.write_text(unit.file.read_text())
    return '\n'.join(found)


if __name__ == '__main__':
    sys.exit(main(Path(sys.argv[1]).resolve(), sys.argv[2]) or 0)
