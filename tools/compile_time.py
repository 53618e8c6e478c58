#!/usr/bin/env python3
"""Prints how long compilers take over the library's headers, beside <chrono> and <string>.

Processor time, the median of 15 rounds that take turns. Run in the root of the sources, as scripts/compile_time does.
"""

import resource
import statistics
import subprocess

headers = ["time/time_varnel.h", "chrono", "string"]


def seconds(compiler, header):
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    subprocess.run([compiler, "-std=c++20", "-O0", "-fsyntax-only", "-I.", "-x", "c++", "-"],
                   input=f"#include <{header}>\n", text=True, check=True)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime - before.ru_utime + after.ru_stime - before.ru_stime


for compiler in ["g++", "clang++"]:
    rounds = [[seconds(compiler, header) for header in headers] for _ in range(15)]
    medians = [statistics.median(column) for column in zip(*rounds)]
    ratio = statistics.median(row[0] / row[1] for row in rounds)
    shown = ", ".join(f"<{header}> {median:.2f} s" for header, median in zip(headers, medians))
    print(f"{compiler}: {shown}; {ratio:.2f} of <chrono>")
