#!/usr/bin/env python3
"""Measure the editor against two others and a bare window, and write the table.

usage: run.py --build FOLDER --table FILE
              [--only start,session,open,save,keys,lines,search,hex,languages,macros,explorer,project,results,files,spelling,print,handover,properties,
              journals]
              [--runs N] [--without-others] [--quick]

How each figure is taken, for every program the same way: Watch (see its text) starts the program on a private virtual
display of 1280 by 800 with a window manager, looks at the screen from outside and ends the program again.

  start  nothing on the command line; from exec until the window came up, and until the picture stood as it stood in the
         end but for a thousandth of the window. The programs take turns; the median and the range of all runs.
  session
         a start that restores 20 files of 10 KB, in turn with one that restores a single file and one that restores none;
         from exec until the picture stood. The single file says what loading a file takes.
  handover
         a second start with a file while the editor runs: from exec until that process was gone. It waits a second by its
         own choice.
  open   the file on the command line, Ctrl+End pressed from when the window has the keyboard on; from exec until the last
         line stood on the screen. For the long line there is no key: from exec until the picture stood. Memory is the
         most the program held, over the size of the file. A peer that takes more than a minute is given up.
  save   a character is typed at the end of the open file and Ctrl+S pressed; from the key until the file was written and
         no thread of the program was at work or waited for the disk. Against it: cp of the same file to a new name and
         fsync of the copy. They take turns.
  keys   key to pixel: the file on the command line, the caret in the middle of the first page, then twenty letters typed and
         deleted again, and so on; from the press of each key until the line with the caret had changed on the screen. The
         median and the 99th percentile of 200 keys of each round; the programs take turns. The C file is coloured by each
         program that can.
  lines  a million lines of 20 to 90 letters: from the command until they stand sorted in the control, against sort of the
         same file with LC_ALL=C, in turn; and until their trailing blanks are gone, of half of them and of all. From
         inside, by EditorBench.
  search all matches of a word with the list of them against grep -o and wc -l over the same file, of a tenth of it and of
         all; a million matches replaced against sed; and a step of the caret with all that is told of it in 1 GB against
         an empty text. From inside, by EditorBench, editor and yardstick in turn.
  hex    the byte view over 1 GB beside cp, cp with fsync, grep and a bare search by blocks; the next page from the key
         until it is painted; a million matches; memory. From inside, by HexBench.
  languages
         the definitions at the start; the first picture, a key and a step to the middle in coloured text, each next to
         the same without colours. From inside, by LanguageBench.
  macros a macro of fifty steps played a thousand and ten thousand times. From inside, by MacroBench.
  explorer
         a folder of 100,000 files shown and scrolled to its end, beside ls -lU of the same folder; sorted by date; a node
         of 1,000 folders opened. From inside, by ExplorerBench.
  project
         a project of 200 documents of 10 KB, beside the same files opened one by one. From inside, by ProjectBench.
  files   a text searched in 75,000 files of 1.2 GB, beside grep and, where it is installed, ripgrep; a word replaced in
          10,000 files, beside sed. From inside, by FilesSearchBench.
  print  100,000 lines of source into a PDF file, beside the same by the library's own printer; how long until the pages are
         counted, and the longest time without a look at Cancel. From inside, by PrintBench.
  results
         a million matches in 100,000 files added to the results of a search with the event loop between portions; all
         opened, closed, checked, removed and cleared. From inside, by ResultsBench.
  spelling
         the first mistake, at the end of 1 MB of text of as many different words as can be, from when the dictionary is
         loaded; loading it; the suggestions for a word. From inside, by SpellingBench.
  journals
         a thousand keys passed on to the journal of unsaved changes; the longest that one takes in ten minutes of typing
         into 1 GB; the recovery of 100 MB with ten thousand edits. From inside, by JournalBench.
  properties
         the settings dialog, from the command until it is painted: when it is made, and again. From inside, by
         PropertiesBench.

Every program has a home folder of its own that is kept between its runs; the first start, which makes its settings, is
not counted. The files are written just before, so they are in the page cache. They lie under $TMPDIR (else /var/tmp) and
are removed at the end. Exit code 1 when the editor itself failed somewhere. The source is text of lines of 20 to 90 characters in a file ".txt", so no one colours it.
"""

import argparse
import json
import os
import platform
import random
import shutil
import statistics
import string
import subprocess
import sys
import tempfile
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
MEGA, GIGA = 1_000_000, 1_000_000_000
OWN = "Quillmark"


class Program:
    """One program that is measured: its name in the table, its command, and its own home folder."""

    def __init__(self, name, command, home):
        self.name, self.command, self.home = name, command, home
        for folder in ("config", "data", "cache", "run"):
            Path(home, folder).mkdir(parents=True, mode=0o700)

    def environment(self):
        own = {"HOME": self.home, "XDG_CONFIG_HOME": f"{self.home}/config", "XDG_DATA_HOME": f"{self.home}/data",
               "XDG_CACHE_HOME": f"{self.home}/cache", "XDG_RUNTIME_DIR": f"{self.home}/run", "NO_AT_BRIDGE": "1",
               "GIO_USE_VFS": "local", "QT_QPA_PLATFORM": "xcb"}
        kept = {key: value for key, value in os.environ.items() if not key.startswith(("XDG_", "QT_", "DBUS_"))}
        return {**kept, **own}


class Bench:
    def __init__(self, build, scratch, runs):
        self.watch, self.scratch, self.runs = str(build / "bench" / "Watch"), scratch, runs
        self.lines, self.ownFailed = [], False

    def measure(self, program, *arguments, options=()):
        """The figures of one run, or None when the program did not get there."""
        done = subprocess.run([self.watch, *options, *program.command, *arguments], env=program.environment(),
                              capture_output=True, text=True, check=False)
        if done.returncode:
            sys.exit(done.stderr or f"Watch ended with {done.returncode}")
        figures = json.loads(done.stdout)
        return figures if figures["good"] else None

    def rounds(self, programs, count, *arguments, options=()):
        """Runs of all programs in turn: {name: [figures]}; a program that fails is not started again."""
        taken = {program.name: [] for program in programs}
        for _ in range(count):
            for program in programs:
                if None not in taken[program.name]:
                    taken[program.name].append(self.measure(program, *arguments, options=options))
        self.ownFailed |= None in taken.get(OWN, ())
        return taken

    def say(self, *lines):
        for line in lines:
            print(line, flush=True)
        self.lines += lines


def spread(values, unit=1.0, digits=0):
    """Median and range, as text."""
    values = sorted(value / unit for value in values)
    return f"{statistics.median(values):.{digits}f} ({values[0]:.{digits}f}–{values[-1]:.{digits}f})"


def writeSource(path, size):
    """Lines like those of a program, and a last page that looks like no other."""
    block, number = [], 0
    while sum(map(len, block)) < MEGA:
        depth = number * 7 % 5
        block.append(f"{'    ' * depth}value{number % 89} = compute(input[{number}], {number * 31 % 1009});"
                     f"{'  // ' + 'as measured ' * (number % 4) if number % 3 == 0 else ''}\n")
        number += 1
    text = "".join(block).encode()
    last = b"".join(b"%03d %s\n" % (line, b"M" * 72) for line in range(60))
    with open(path, "wb") as file:
        while file.tell() + len(text) + len(last) < size:
            file.write(text)
        rest = size - file.tell() - len(last)
        file.write(text[:rest - 1] + b"\n" + last)


def writeLine(path, size):
    piece = b"".join(b"%07d," % number for number in range(MEGA // 8))
    with open(path, "wb") as file:
        for _ in range(size // len(piece)):
            file.write(piece)
        file.write(b"end\n")


def benchStart(bench, programs):
    bench.rounds(programs, 1)
    taken = bench.rounds(programs, bench.runs)
    bench.say("", f"Start, {bench.runs} runs in turn: milliseconds from exec, median (range)", "",
              "| | window came up | picture stood | peak memory, MB |", "|---|---|---|---|")
    for name, runs in taken.items():
        if None in runs:
            bench.say(f"| {name} | did not come up | | |")
            continue
        bench.say(f"| {name} | {spread([run['mapped'] for run in runs])} | {spread([run['shown'] for run in runs])} "
                  f"| {statistics.median(run['peak'] for run in runs) / 1024:.0f} |")


def withSession(build, home, files):
    """The editor with a home of its own, in which it restores these files."""
    program = Program(f"{len(files)} files", [str(build / "bin" / "quillmark")], home)
    settings = [str(build / "bin" / "quillmark-reg"), "add", "HKCU/Software/Quillmark/general", "--name", "LoadLastFiles",
                "--data", "1"]
    subprocess.run(settings, env=program.environment(), check=True, stdout=subprocess.DEVNULL)
    folder = Path(home, "data", "quillmark")
    folder.mkdir(parents=True, exist_ok=True)
    Path(folder, "lastopen.idx").write_bytes(b"".join(
        line.encode() + b"\r\n" for line in ["<FILE>", *(f"{file}\tTrue\tFalse\t0\t0\t0\t9000\t6000" for file in files)]))
    return program


def benchSession(bench, build, quick):
    files = [f"{bench.scratch}/session {number}.txt" for number in range(20)]
    for file in files:
        writeSource(file, 10_000)
    programs = [withSession(build, f"{bench.scratch}/home{count}", files[:count]) for count in (0, 1, 20)]
    bench.rounds(programs, 1)
    taken = bench.rounds(programs, 1 if quick else bench.runs)
    bench.ownFailed |= any(None in runs for runs in taken.values())
    if bench.ownFailed:
        bench.say("", "Session: did not come up")
        return
    none, one, _ = (statistics.median(run["shown"] for run in taken[program.name]) for program in programs)
    goal = 1.5 * (none + max(0, one - none) * len(files))
    bench.say("", "Start with a session: milliseconds from exec until the picture stood, median (range)", "",
              "| files | picture stood | at most |", "|---|---|---|")
    for program in programs:
        shown = spread([run["shown"] for run in taken[program.name]])
        bench.say(f"| {program.name.split()[0]} | {shown} | {f'{goal:.0f}' if program is programs[-1] else ''} |")


HAND_OVER_GOAL = 1200


def waitUntil(condition, seconds):
    limit = time.monotonic() + seconds
    while not condition() and time.monotonic() < limit:
        time.sleep(0.01)
    return condition()


def timeHandOver(program, path):
    """Milliseconds until a second start with the file was gone; None when it failed."""
    begun = time.monotonic()
    run = subprocess.run([*program.command, path], env=program.environment(), check=False, timeout=60)
    return (time.monotonic() - begun) * 1000 if run.returncode == 0 else None


def benchHandOver(bench, program):
    path = Path(bench.scratch, "handed.txt")
    writeSource(path, 10_000)
    first = subprocess.Popen(program.command, env=program.environment())
    try:
        there = waitUntil(Path(program.home, "run", "QuillmarkOpen").exists, 60)
        taken = [timeHandOver(program, str(path)) for _ in range(bench.runs)] if there else [None]
    finally:
        first.terminate()
        first.wait()
    if None in taken:
        bench.ownFailed = True
        bench.say("", "Hand-over: a second start failed")
        return
    bench.say("", f"A second start hands over its file, {bench.runs} runs: milliseconds from exec until it was gone, median "
              "(range)", "", "| | gone | at most |", "|---|---|---|",
              f"| second start hands over | {spread(taken)} | {HAND_OVER_GOAL} |")


def benchOpen(bench, programs, quick):
    files = [("100 MB of source", "source.txt", 100 * MEGA, writeSource, ["--end"], 5),
             ("1 GB of source", "large.txt", GIGA, writeSource, ["--end"], 3),
             ("one line of 100 MB", "line.txt", 100 * MEGA, writeLine, [], 3)]
    bench.say("", "Opening: seconds from exec until the last line stood on the screen, median (range); most memory held",
              "", "| | file | shown, s | memory / file |", "|---|---|---|---|")
    for title, name, size, write, options, count in files:
        path = Path(bench.scratch, name)
        write(path, size)
        taken = bench.rounds(programs, 1 if quick else count, str(path), options=[*options, "--timeout", "60"])
        for program, runs in taken.items():
            if None in runs:
                bench.say(f"| {program} | {title} | given up after a minute | |")
                continue
            memory = statistics.median(run["peak"] for run in runs) * 1024 / size
            bench.say(f"| {program} | {title} | {spread([run['shown'] for run in runs], 1000, 2)} | {memory:.2f} |")
        path.unlink()


def copyAndSync(source, target):
    """Milliseconds of cp and fsync."""
    begun = time.monotonic()
    subprocess.run(["cp", source, target], check=True)
    handle = os.open(target, os.O_RDONLY)
    os.fsync(handle)
    os.close(handle)
    taken = (time.monotonic() - begun) * 1000
    os.unlink(target)
    return taken


def benchSave(bench, programs, quick):
    path, copy = Path(bench.scratch, "save.txt"), Path(bench.scratch, "copy.txt")
    writeSource(path, GIGA)
    os.sync()
    copies, saves = [], {program.name: [] for program in programs}
    for _ in range(1 if quick else 3):
        copies.append(copyAndSync(path, copy))
        for program in programs:
            if None not in saves[program.name]:
                saves[program.name].append(
                    bench.measure(program, str(path), options=["--end", "--save", str(path), "--timeout", "120"]))
            os.sync()
    path.unlink()
    bench.ownFailed |= None in saves[OWN]
    base = statistics.median(copies)
    bench.say("", "Saving 1 GB: seconds, median (range)", "", "| | s | against cp |", "|---|---|---|",
              f"| cp and fsync | {spread(copies, 1000, 2)} | 1 |")
    for name, runs in saves.items():
        if None in runs:
            bench.say(f"| {name} | not saved within two minutes | |")
            continue
        values = [run["saved"] for run in runs]
        bench.say(f"| {name} | {spread(values, 1000, 2)} | {statistics.median(values) / base:.2f} |")


def writeCode(path, size):
    """Functions in C, of about this many bytes."""
    with open(path, "w", encoding="ascii") as file:
        number = 0
        while file.tell() < size:
            file.write(f"/* The {number}th of many. */\nstatic int function{number}(const char *name, int count)\n{{\n"
                       f"    int sum = {number * 31 % 1009};\n    for (int index = 0; index < count; ++index) {{\n"
                       f"        if (name[index] == 'x')  // counted\n            sum += index * 0x{number:x};\n"
                       f"        else\n            printf(\"%d: %s\\n\", sum, name);\n    }}\n    return sum;\n}}\n\n")
            number += 1


def percentile(values, part):
    """The value that this part of all values does not exceed."""
    values = sorted(values)
    return values[min(len(values) - 1, round(part * len(values)))]


def benchKeys(bench, programs, bare, quick):
    files = [("empty text", None, None, 0), ("100 KB of C, coloured", "code.c", writeCode, MEGA // 10),
             ("100 MB of text", "source.txt", writeSource, 100 * MEGA)]
    bench.say("", "Key to pixel: milliseconds from the press until the line had changed, of 200 keys a round: median (range of "
              "the rounds) and 99th percentile (range)", "", "| | text | median | 99 % |", "|---|---|---|---|")
    for title, name, write, size in files:
        arguments = []
        if name:
            write(Path(bench.scratch, name), size)
            arguments = [str(Path(bench.scratch, name))]
        measured = programs if name else [*programs, bare]
        taken = bench.rounds(measured, 1 if quick else 3, *arguments, options=["--keys", "200", "--timeout", "120"])
        for program, runs in taken.items():
            if None in runs:
                bench.say(f"| {program} | {title} | not measured | |")
                continue
            bench.say(f"| {program} | {title} | {spread([statistics.median(run['keys']) for run in runs], 1, 1)} "
                      f"| {spread([percentile(run['keys'], 0.99) for run in runs], 1, 1)} |")
        for path in arguments:
            os.unlink(path)


def writeUnordered(path):
    chosen = random.Random(1)
    letters = string.ascii_letters + string.digits
    with open(path, "w", encoding="ascii") as file:
        for _ in range(MEGA):
            file.write("".join(chosen.choices(letters, k=chosen.randint(20, 90))) + "  \n")


MILLISECONDS = {"ns": 1e-6, "us": 1e-3, "ms": 1, "s": 1000}


def timeInside(program, name, **environment):
    """Milliseconds of one benchmark of EditorBench."""
    run = subprocess.run([program, f"--benchmark_filter=^{name}(/|$)", "--benchmark_format=json"], check=True,
                         capture_output=True, env={**os.environ, "QT_QPA_PLATFORM": "offscreen", **environment})
    rows = json.loads(run.stdout)["benchmarks"]
    if len(rows) != 1:
        sys.exit(f"{len(rows)} benchmarks are named {name}")
    return rows[0]["real_time"] * MILLISECONDS[rows[0]["time_unit"]]


def timeOfSort(source, target):
    begun = time.monotonic()
    subprocess.run(["sort", "-o", target, source], check=True, env={**os.environ, "LC_ALL": "C"})
    return (time.monotonic() - begun) * 1000


def benchLines(bench, inside, quick):
    source, target = Path(bench.scratch, "unordered.txt"), Path(bench.scratch, "ordered.txt")
    writeUnordered(source)
    plain, own, half, trims = [], [], [], []
    for _ in range(1 if quick else 5):
        plain.append(timeOfSort(source, target))
        own.append(timeInside(inside, "sortLines/1000000", QUILLMARK_LINES=str(source)))
        half.append(timeInside(inside, "trimLines/500000"))
        trims.append(timeInside(inside, "trimLines/1000000", QUILLMARK_LINES=str(source)))
    for path in (source, target):
        path.unlink()
    base = statistics.median(plain)
    bench.say("", "A million lines: seconds, median (range)", "", "| | s | against sort |", "|---|---|---|",
              f"| sort with LC_ALL=C | {spread(plain, 1000, 2)} | 1 |",
              f"| {OWN}: sort ascending | {spread(own, 1000, 2)} | {statistics.median(own) / base:.2f} |",
              f"| {OWN}: trim | {spread(trims, 1000, 2)} | |",
              f"| {OWN}: trim of half as many | {spread(half, 1000, 2)} | |")


# What is measured, by the name of its benchmark, and the benchmark to hold it against.
SEARCHES = [("all matches in 200 MB, with their list", "findAll/lines_200MB", "grep/lines_200MB", "grep -o and wc -l"),
            ("all matches in 20 MB, with their list", "findAll/lines_20MB", "findAll/lines_200MB", "200 MB"),
            ("a million matches replaced", "replaceAll/lines_60MB", "sed/lines_60MB", "sed"),
            ("a million matches replaced in one line", "replaceAll/one_line_60MB", "sed/lines_60MB", "sed"),
            ("a step of the caret in 1 GB", "step/lines_1GB", "step/empty", "an empty text")]


def benchSearch(bench, inside, quick):
    names = list(dict.fromkeys(name for _, own, base, _ in SEARCHES for name in (own, base)))
    taken = {name: [] for name in names}
    for _ in range(1 if quick else 5):
        for name in names:
            taken[name].append(timeInside(inside, name, LC_ALL="C"))
    bench.say("", "Searching: milliseconds, median (range)", "", "| | ms | against | ms | times |", "|---|---|---|---|---|")
    for title, own, base, against in SEARCHES:
        ratio = statistics.median(taken[own]) / statistics.median(taken[base])
        bench.say(f"| {OWN}: {title} | {spread(taken[own], 1, 3 if 'step' in own else 0)} | {against} "
                  f"| {spread(taken[base], 1, 3 if 'step' in base else 0)} | {ratio:.2f} |")


def benchHex(bench, inside):
    run = subprocess.run([inside, "--benchmark_format=json"], check=True, capture_output=True,
                         env={**os.environ, "QT_QPA_PLATFORM": "offscreen"})
    rows = [row for row in json.loads(run.stdout)["benchmarks"] if row.get("run_type") == "iteration"]
    bench.ownFailed |= any(row.get("error_occurred") for row in rows)
    bench.say("", "The byte view: milliseconds", "", "| | ms |", "|---|---|",
              *(f"| {row['name'].removesuffix('/real_time')} | {row['real_time']:.2f} |" for row in rows
                if "more_MB" not in row and "own_ms" not in row))
    for row in rows:
        if "own_ms" in row:
            bench.say("", f"{row['name'].partition('/')[0]}: {row['own_ms']:.0f} ms against {row['yardstick_ms']:.0f}, "
                          f"{row['own_ms'] / row['yardstick_ms']:.2f} times.")
        if "more_MB" in row:
            bench.say("", f"A file of 2 GB holds {row['more_MB']:.1f} MB more than one of a page.")


# The most that a figure may be: milliseconds, and those of another row, where one is named, so many times.
LANGUAGE_GOALS = {"loadDefinitions": (10,),
                  "firstPicture/MB:10/coloured:1": (50, ("firstPicture/MB:10/coloured:0", 1)),
                  "typeKey/MB:50/coloured:1": (16,),
                  "typeKeyAndRest/MB:50/coloured:1": (50,),
                  "jumpToMiddle/MB:50/coloured:1": (50,)}
MACRO_GOALS = {"play a macro of 50 steps so many times/1000": (500,),
               "play a macro of 50 steps so many times/10000": (5_000,)}
# What ls takes for the same folder counts twice.
EXPLORER_GOALS = {"showAndScrollToTheEnd": (0, ("listWithLs", 2)), "sortByDate": (500,), "openNode": (20,)}
# The files opened one by one count one and a half times.
PROJECT_GOALS = {"openProject": (0, ("openOneByOne", 1.5))}
# What grep takes for the same files; ripgrep is not installed everywhere.
FILES_GOALS = {name: (0, (name + "WithGrep", 1))
               for name in ("literal", "ignoringCase", "wholeWord", "expression", "rareWord")}
# The library's printer counts no pages and shows no progress.
PRINT_GOALS = {"printLines": (0, ("printLinesByTheLibrary", 1.5))}
RESULTS_GOALS = {"expandAll": (300,), "collapseAll": (100,), "checkAll": (100,), "uncheckAll": (100,),
                 "removeAll": (100,), "removeHalf": (100,), "clear": (100,)}

SPELLING_GOALS = {"first mistake at the end of 1 MB": (200,)}
JOURNAL_GOALS = {"thousandKeys": (1,), "tenMinutesInto1GB": (10,), "recoveryOf100MB": (1000,)}
PROPERTIES_GOALS = {"openForTheFirstTime": (60,), "openAgain": (60,)}


def benchGoals(bench, inside, title, goals):
    """The figures of a program that measures from inside, next to the most that they may be."""
    run = subprocess.run([inside, "--benchmark_format=json"], check=True, capture_output=True,
                         env={**os.environ, "QT_QPA_PLATFORM": "offscreen"})
    rows = [row for row in json.loads(run.stdout)["benchmarks"] if row.get("run_type") == "iteration"]
    bench.ownFailed |= any(row.get("error_occurred") for row in rows)
    taken = {row["name"].split("/iterations:")[0].removesuffix("/real_time"): row["real_time"] for row in rows}
    if missing := goals.keys() - taken.keys():
        sys.exit(f"Not measured: {', '.join(missing)}")
    bench.say("", f"{title}: milliseconds", "", "| | ms | goal |", "|---|---|---|")
    for name, own in taken.items():
        verdict = ""
        if name in goals:
            allowed, *besides = goals[name]
            most = allowed + sum(taken[beside] * times for beside, times in besides)
            verdict = f"{most:.0f}, {'met' if own <= most else 'missed'}"
        bench.say(f"| {name} | {own:.2f} | {verdict} |")


def processor():
    for line in Path("/proc/cpuinfo").read_text(encoding="utf-8").splitlines():
        if line.startswith("model name"):
            return line.partition(":")[2].strip()
    return platform.machine()


def parse():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", type=Path, required=True)
    parser.add_argument("--table", type=Path, required=True)
    parser.add_argument("--only", default="start,session,open,save,keys,lines,search,hex,languages,macros,explorer,project,results,files,spelling,print,handover,properties,journals")
    parser.add_argument("--runs", type=int, default=15, help="of each program, for the start")
    parser.add_argument("--without-others", action="store_true")
    parser.add_argument("--quick", action="store_true", help="each large file once")
    return parser.parse_args()


def main():
    if "--inside" not in sys.argv:
        os.execv(ROOT / "scripts" / "with-display",
                 ["with-display", "--wm", sys.executable, __file__, "--inside", *sys.argv[1:]])
    sys.argv.remove("--inside")
    wanted = parse()
    build, scratch = wanted.build.resolve(), tempfile.mkdtemp(dir=os.environ.get("TMPDIR", "/var/tmp"))
    try:
        bench = Bench(build, scratch, wanted.runs)
        own = Program(OWN, [str(build / "bin" / "quillmark")], f"{scratch}/own")
        bare = Program("bare Qt window", [str(build / "bench" / "BareWindow")], f"{scratch}/bare")
        others = [] if wanted.without_others else [Program("SciTE", ["scite"], f"{scratch}/scite"),
                                                   Program("Geany", ["geany", "-i"], f"{scratch}/geany")]
        bench.say(f"Measured {time.strftime('%Y-%m-%d %H:%M')} on {os.cpu_count()} cores, {processor()}; load before: "
                  f"{os.getloadavg()[0]:.1f}")
        if "start" in wanted.only:
            benchStart(bench, [own, *others, bare])
        if "session" in wanted.only:
            benchSession(bench, build, wanted.quick)
        if "handover" in wanted.only:
            benchHandOver(bench, own)
        if "open" in wanted.only:
            benchOpen(bench, [own, *others], wanted.quick)
        if "save" in wanted.only:
            benchSave(bench, [own], wanted.quick)
        if "keys" in wanted.only:
            benchKeys(bench, [own, *others], bare, wanted.quick)
        if "lines" in wanted.only:
            benchLines(bench, str(build / "bench" / "EditorBench"), wanted.quick)
        if "search" in wanted.only:
            benchSearch(bench, str(build / "bench" / "EditorBench"), wanted.quick)
        if "hex" in wanted.only:
            benchHex(bench, str(build / "bench" / "HexBench"))
        if "languages" in wanted.only:
            benchGoals(bench, str(build / "bench" / "LanguageBench"), "Languages", LANGUAGE_GOALS)
        if "macros" in wanted.only:
            benchGoals(bench, str(build / "bench" / "MacroBench"), "Macros", MACRO_GOALS)
        if "explorer" in wanted.only:
            benchGoals(bench, str(build / "bench" / "ExplorerBench"), "File explorer", EXPLORER_GOALS)
        if "project" in wanted.only:
            benchGoals(bench, str(build / "bench" / "ProjectBench"), "Projects", PROJECT_GOALS)
        if "files" in wanted.only:
            benchGoals(bench, str(build / "bench" / "FilesSearchBench"), "Search across files", FILES_GOALS)
        if "print" in wanted.only:
            benchGoals(bench, str(build / "bench" / "PrintBench"), "Printing", PRINT_GOALS)
        if "results" in wanted.only:
            benchGoals(bench, str(build / "bench" / "ResultsBench"), "Search results", RESULTS_GOALS)
        if "spelling" in wanted.only:
            benchGoals(bench, str(build / "bench" / "SpellingBench"), "Spelling", SPELLING_GOALS)
        if "properties" in wanted.only:
            benchGoals(bench, str(build / "bench" / "PropertiesBench"), "Settings dialog", PROPERTIES_GOALS)
        if "journals" in wanted.only:
            benchGoals(bench, str(build / "bench" / "JournalBench"), "Journals of unsaved changes", JOURNAL_GOALS)
        wanted.table.parent.mkdir(parents=True, exist_ok=True)
        wanted.table.write_text("\n".join(bench.lines) + "\n", encoding="utf-8")
    finally:
        shutil.rmtree(scratch, ignore_errors=True)
    if bench.ownFailed:
        sys.exit("The editor itself did not get through every measurement.")


if __name__ == "__main__":
    main()
