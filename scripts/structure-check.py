#!/usr/bin/env python3
"""Checks the structure of src/: which folder includes which, whether any
folders include each other in a circle, the kernel and the control library
keep to their places, the largest files, and window names written as
strings at call sites.

Run from the repository's top: python3 scripts/structure-check.py
Exits with 1 when a rule is broken."""
import os
import re
import sys

SRC = 'src'
# Folders that may be used by the kernel and the controls: nothing above them.
ALLOWED = {
    'platform': set(),
    'controls': {'platform'},
    'core': {'platform', 'controls'},
}

graph = {}
sizes = []
for root, _, files in os.walk(SRC):
    parts = root.split(os.sep)
    if len(parts) < 2:
        continue
    folder = parts[1]
    for name in files:
        if not name.endswith(('.cpp', '.h')):
            continue
        path = os.path.join(root, name)
        with open(path, errors='replace') as f:
            lines = f.readlines()
        sizes.append((len(lines), path))
        for line in lines:
            m = re.match(r'\s*#\s*include\s+"([a-z]+)/', line)
            if m and m.group(1) != folder and os.path.isdir(os.path.join(SRC, m.group(1))):
                graph.setdefault(folder, set()).add(m.group(1))

# Cycles: strongly connected components of more than one folder.
index, low, stack, on, comps = {}, {}, [], set(), []
def visit(v, counter=[0]):
    index[v] = low[v] = counter[0]; counter[0] += 1
    stack.append(v); on.add(v)
    for w in graph.get(v, ()):
        if w not in index:
            visit(w); low[v] = min(low[v], low[w])
        elif w in on:
            low[v] = min(low[v], index[w])
    if low[v] == index[v]:
        comp = []
        while True:
            w = stack.pop(); on.discard(w); comp.append(w)
            if w == v: break
        if len(comp) > 1: comps.append(sorted(comp))
for v in sorted(set(graph) | {w for ws in graph.values() for w in ws}):
    if v not in index: visit(v)

broken = False
print('Folder dependencies:')
for folder in sorted(graph):
    print(f'  {folder} -> {", ".join(sorted(graph[folder]))}')
if comps:
    broken = True
    for comp in comps: print('CYCLE between folders: ' + ', '.join(comp))
else:
    print('No include cycle between folders.')
for folder, allowed in ALLOWED.items():
    extra = graph.get(folder, set()) - allowed
    if extra:
        broken = True
        print(f'{folder}/ must not include: {", ".join(sorted(extra))}')

sizes.sort(reverse=True)
print('Largest files: ' + ', '.join(f'{p} ({n})' for n, p in sizes[:3]))

# Window names written as string literals outside the roles table and object names.
with open(os.path.join(SRC, 'core', 'WindowRoles.h')) as f:
    body = f.read()
names = re.findall(r'^\s+(\w+),$', body.split('enum class WindowId {')[1].split('};')[0], re.M)
pattern = re.compile(r'"(' + '|'.join(names) + r')"')
count = 0
for _, path in sizes:
    if path.endswith(os.path.join('core', 'WindowRoles.cpp')):
        continue
    with open(path, errors='replace') as f:
        for line in f:
            if 'setObjectName' in line:
                continue
            count += len(pattern.findall(line))
print(f'Window names written as strings at call sites: {count}')
sys.exit(1 if broken else 0)
