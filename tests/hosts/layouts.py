#!/usr/bin/env python3
"""layouts.py PROGRAM PAGE: holds the table of layouts in PAGE against every locale of the machine.

A row of the table reads `| code | kind | languages |`; a language that stands in none of a code's rows
is told to print the same as the C runtime.
"""
import os
import re
import subprocess
import sys
from pathlib import Path

program, page = sys.argv[1:]
rows = re.findall(r"^\| `(%[xXc])` \| (padding|otherwise) \| (.*) \|$", Path(page).read_text(), re.M)
told = {(code, language): kind for code, kind, languages in rows for language in languages.split()}
if not told:
    sys.exit(f"{page}: no table of layouts")

folder = os.environ.get("LOCPATH")
listed = subprocess.run(["locale", "-a"], capture_output=True, check=True).stdout.decode(errors="replace")
found = os.listdir(folder) if folder else listed.split()
faults = []
for locale in sorted(found):
    language = re.sub(r"\.[^@]*", "", locale)
    environment = {**os.environ, "LC_ALL": locale, "TZ": "UTC0"}
    run = subprocess.run([program], capture_output=True, check=True, env=environment)
    for line in run.stdout.decode(errors="replace").splitlines():
        code, kind, here, there = line.split("|")
        expected = told.get((code, language), "same")
        if kind != expected:
            faults.append(f"{locale} {code}: the page says {expected}, found {kind}: '{here}' beside '{there}'")
print(f"{len(found)} locales compared")
sys.exit("\n".join(faults) or 0)
