#!/usr/bin/env python3
"""Checks the rooms of Sources/TolmiApp against the table in its README: allowed dependencies and no cycles."""
import re
import sys
from pathlib import Path

INCLUDE = re.compile(r'^#include "TolmiApp/([^"]+)/[^/"]+"', re.MULTILINE)
FOREIGN = re.compile(r'QML_NAMED_ELEMENT\((\w+)\)')
ELEMENT = re.compile(r'^class (\w+)[^;{]*\{\s*Q_OBJECT\s[^}]*?QML_ELEMENT', re.MULTILINE)
QML_NOISE = re.compile(r'//[^\n]*|/\*.*?\*/|"[^"\n]*"', re.DOTALL)
TYPE_NAME = re.compile(r'(?<![\w.])[A-Z]\w+')


def room_of(file, module):
    return file.parent.relative_to(module).as_posix()


def files_of(module, *suffixes):
    return [f for f in sorted(module.rglob('*')) if f.suffix in suffixes and f.parent.name != 'Resources']


def qml_types(module):
    """The room of every QML type, by name."""
    types = {f.stem: room_of(f, module) for f in files_of(module, '.qml')}
    for header in files_of(module, '.h'):
        text = header.read_text()
        for name in FOREIGN.findall(text) + ELEMENT.findall(text):
            types[name] = room_of(header, module)
    return types


def drawn_arrows(module):
    """{(from, to): the first file with this dependency}"""
    arrows = {}
    types = qml_types(module)
    for file in files_of(module, '.h', '.cpp', '.qml'):
        text = file.read_text()
        if file.suffix == '.qml':
            used = {types[name] for name in TYPE_NAME.findall(QML_NOISE.sub('', text)) if name in types}
        else:
            used = set(INCLUDE.findall(text))
        for room in used - {room_of(file, module)}:
            arrows.setdefault((room_of(file, module), room), file.relative_to(module))
    return arrows


def written_arrows(table):
    """The rows "| room | contents | allowed dependencies |" of the table."""
    rows = {}
    for line in table.read_text().splitlines():
        cells = [cell.strip() for cell in line.strip('|').split('|')]
        if line.startswith('| `') and len(cells) == 3:
            rows[cells[0].strip('`')] = set(re.findall(r'`([\w/]+)`', cells[2]))
    return rows


def circle_in(arrows):
    """The rooms in cycles: what is left after repeatedly removing rooms without dependencies."""
    left = {room: set() for arrow in arrows for room in arrow}
    for source, target in arrows:
        left[source].add(target)
    while leaves := {room for room, used in left.items() if not used}:
        left = {room: used - leaves for room, used in left.items() if room not in leaves}
    return sorted(left)


def complaints(module):
    rows = written_arrows(module / 'README.md')
    drawn = drawn_arrows(module)
    rooms = {room_of(f, module) for f in files_of(module, '.h', '.cpp', '.qml')}
    if not rooms or not drawn:
        yield f'no rooms found in {module}'
    for room in sorted(rooms - rows.keys()):
        yield f'{room} is not in the table'
    for room in sorted(rows.keys() - rooms):
        yield f'{room} is in the table, but holds no source'
    for (source, target), file in sorted(drawn.items()):
        if target not in rows.get(source, set()):
            yield f'{source} may not use {target}, but {file} does'
    for source, targets in sorted(rows.items()):
        for target in sorted(targets):
            if (source, target) not in drawn:
                yield f'the table allows {source} to use {target}, which nothing does'
    if circle := circle_in(drawn):
        yield 'rooms in a circle: ' + ', '.join(circle)


if __name__ == '__main__':
    module = Path(sys.argv[1])
    if sys.argv[2:] == ['--draw']:
        for source, target in sorted(drawn_arrows(module)):
            print(f'{source} -> {target}')
        sys.exit()
    found = list(complaints(module))
    print('\n'.join(found))
    sys.exit(bool(found))
