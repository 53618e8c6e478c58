#!/usr/bin/env python3
"""Runs the samples of the manual, and compares what they give with what they say.

    samples.py generate ROOT PROGRAM.cpp    writes one program of all samples
    samples.py check ROOT PROGRAM           runs each sample in it

A sample is a ```cpp block of README.md or docs/*.md, or a run of lines in a header's `///` comment that is
indented by five blanks and has a statement. It is a whole program, or statements that stand for the body of one.
Two things are compared: a ```text block below a sample with its output, and the result of `expression;  // result`.
A result begins with a literal, and may go on in words: true or false, a number, a "text", a date (1 March 2025),
a time of day (00:30), a period (1.5 hours). A declaration or an assignment has no result: words behind it are free.

The machine's clock stands still at 4 July 2024, 18:28:38 UTC; `work()` moves it by 1.25 seconds. Every header needs
a sample, and so do the pages that are made of them.
"""
import os, re, subprocess, sys
from pathlib import Path

PAGES = {"README.md", "docs/beside.md", "docs/pitfalls.md", "docs/cookbook.md", "docs/moving.md", "docs/zones.md"}
WITHOUT = {"time/export.h", "time/time_varnel.h"}
RESULT = re.compile(r'("(?:[^"\\]|\\.)*"|true|false|\d\d:\d\d(?::\d\d)?|\d+ [A-Z][a-z]+ -?\d+'
                    r'|-?[\d.]+ (?:day|hour|minute|second)s?|-?\d+(?:\.\d+)?)(?=$|[,:;] )')
DECLARATION = re.compile(r"(?:const |constexpr |static )*(?!return\b)[a-z_:]+[&*]? \w+[ ({;=]|.* [-+*/%]?= ")
UNITS = {"day": 86400, "hour": 3600, "minute": 60, "second": 1}


class Sample:
    def __init__(self, file, line, code):
        self.file, self.line, self.code, self.output = file, line, code, None
        self.results = {}  # line -> result
        for at, text in enumerate(code, line):
            found = re.match(r"\s*([^/\s].*?);\s+// (.*)", text)
            if not found or DECLARATION.match(found[1]):
                continue
            result = RESULT.match(found[2])
            if not result:
                sys.exit(f"{file}:{at}: no result to compare with: {found[2]}")
            self.results[at] = result[1]

    def source(self, number):
        shown = [re.sub(r"^(\s*)(.*?);\s+// .*", rf"\1show({at}, (\2));", text) if at in self.results else text
                 for at, text in enumerate(self.code, self.line)]
        text = "\n".join("" if each.startswith("#include") else each for each in shown)
        if "int main()" in text:
            text = f'#line {self.line} "{self.file}"\n' + text.replace("int main()", "void run()")
        else:
            text = f'void run()\n{{\n#line {self.line} "{self.file}"\n{text}\n}}'
        return f"namespace sample_{number} {{\n{text}\n}}\n"

    def includes(self):
        own = {f"#include <{self.file}>"} if self.file.endswith(".h") else set()
        return own | {each for each in self.code if each.startswith("#include")}


def samples_of_header(file, lines):
    block = []
    for at, text in enumerate(lines + [""], 1):
        if re.match(r"///     \s*\S", text) or (block and text == "///"):
            block.append((at, text[8:]))
            continue
        if any(";" in each for _, each in block):
            yield Sample(file, block[0][0], [each for _, each in block])
        block = []


def samples_of_page(file, lines):
    last, at = None, 0
    while at < len(lines):
        if not lines[at].startswith("```"):
            at += 1
            continue
        end = lines.index("```", at + 1)
        if lines[at] == "```cpp":
            last = Sample(file, at + 2, lines[at + 1:end])
            yield last
        elif lines[at] == "```text" and last:
            last.output = "".join(each + "\n" for each in lines[at + 1:end])
            last = None
        at = end + 1


def all_samples(root):
    found = []
    for path in [root / "README.md", *sorted(root.glob("docs/*.md")), *sorted(root.glob("time/*.h"))]:
        file = path.relative_to(root).as_posix()
        reader = samples_of_header if file.endswith(".h") else samples_of_page
        samples = list(reader(file, path.read_text().splitlines()))
        if not samples and (file in PAGES or path.suffix == ".h" and file not in WITHOUT):
            sys.exit(f"{file}: no sample")
        for each in samples:
            if not each.results and each.output is None:
                sys.exit(f"{file}:{each.line}: a sample with nothing to compare")
        found += samples
    return found


def generate(samples, program):
    includes = set().union(*(each.includes() for each in samples))
    prelude = Path(__file__).with_name("samples.h").read_text().splitlines()
    runs = ", ".join(f"sample_{number}::run" for number in range(len(samples)))
    text = "\n".join([*sorted(includes), *prelude, ""]) + "".join(
        each.source(number) for number, each in enumerate(samples))
    text += f"int main(int, char** words)\n{{\n    void (*const runs[])() = {{{runs}}};\n"
    Path(program).write_text(text + "    runs[std::atoi(words[1])]();\n}\n")


def same(actual, shown):
    period = re.fullmatch(r"(-?[\d.]+) (day|hour|minute|second)s?", shown)
    if period and re.fullmatch(r"-?[\d.]+ seconds?", actual):
        return float(actual.split()[0]) == float(period[1]) * UNITS[period[2]]
    if re.fullmatch(r"\d\d:\d\d", shown):
        shown += ":00"
    return actual == shown


def check(samples, program):
    faults = []
    environment = {**os.environ, "LC_ALL": "C", "TZ": "UTC0"}
    for number, each in enumerate(samples):
        run = subprocess.run([program, str(number)], capture_output=True, text=True, env=environment)
        if run.returncode != 0:
            faults.append(f"{each.file}:{each.line}: ended with {run.returncode}\n{run.stderr}")
        actual = dict(re.findall("^\x01(\\d+) (.*)\n", run.stdout, re.M))
        for line, shown in each.results.items():
            got = actual.get(str(line), "nothing")
            if not same(got, shown):
                faults.append(f"{each.file}:{line}: shows {shown}, gives {got}")
        output = re.sub("\x01.*\n", "", run.stdout)
        if each.output is not None and output != each.output:
            faults.append(f"{each.file}:{each.line}: shows\n{each.output}gives\n{output}")
    print(f"{len(samples)} samples, {sum(len(each.results) for each in samples)} results,",
          f"{sum(each.output is not None for each in samples)} outputs compared")
    sys.exit("\n".join(faults) if faults else 0)


if __name__ == "__main__":
    {"generate": generate, "check": check}[sys.argv[1]](all_samples(Path(sys.argv[2])), sys.argv[3])
