"""Which test programs execute which lines of the product, as gcov tells."""

import json
import os
import re
import shutil
import subprocess
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

# Tests that judge the tree, the installation or pictures rather than behaviour, and those that take long on purpose.
LEFT_OUT = re.compile(r"^(tst_sourcerules|tst_installation|tst_pictures|tst_twowriters|test_.*|fuzz_.*|campaign_.*)$")


def make_counter_folders(build, prefix):
    """What gcov would make at a program's end, when a test's own mkdir() no longer stands."""
    for folder in {notes.parent for notes in build.rglob("*.gcno")}:
        (prefix / folder.relative_to("/")).mkdir(parents=True, exist_ok=True)


def counters(data):
    """What a file of gcov's holds behind its head, where the largest count of the whole program stands."""
    return data.read_bytes()[32:]


class TestProgram:
    """A program of the suite: its folder, how it is started, and which other built programs and plug-ins it uses."""

    def __init__(self, name, folder, command, environment, uses):
        self.name = name
        self.folder = folder
        self.command = command
        self.environment = environment
        self.uses = uses
        self.seconds = 0.0
        self.passes = False


def test_programs(build):
    listed = json.loads(subprocess.run(["ctest", "--test-dir", str(build), "--show-only=json-v1"], stdout=subprocess.PIPE,
                                       text=True, check=True).stdout)
    statements = {name: (folder, rest) for name, folder, rest in re.findall(
        r"^build tests/(\w+): \S+ tests/(\w+)/[^\n]*?\|\| ([^\n]*)$", (build / "build.ninja").read_text(), re.MULTILINE)}
    programs = []
    for test in listed["tests"]:
        name = test["name"]
        if LEFT_OUT.match(name) or name not in statements or "command" not in test:
            continue
        variables = next((p["value"] for p in test["properties"] if p["name"] == "ENVIRONMENT"), [])
        uses = re.findall(r"\b(?:bin/lorva-[\w-]+|lib/lorva/plugins/libLORVAOS\.so)(?=\s|$)", statements[name][1])
        programs.append(TestProgram(name, statements[name][0], test["command"], dict(v.split("=", 1) for v in variables),
                                    [u for u in dict.fromkeys(uses) if (build / u).is_file()]))
    return programs


class Covering:
    """The table; kept under `folder`, where only what was built anew is asked again."""

    def __init__(self, source, build, folder):
        self.source = source
        self.build = build
        self.folder = folder
        self.programs = test_programs(build)
        self.known = {}  # file -> lines that gcov counts
        self.by_line = {}  # (file, line) -> programs
        self.by_file = {}  # file -> programs
        self._lines = {}

    def learn(self, run, workers):
        """Runs every program that was built anew. `run(program, prefix, seconds)` tells whether it passes."""
        self.folder.mkdir(parents=True, exist_ok=True)
        loading = self._loading_only(run)
        # The last ones alone would leave one worker idle.
        order = sorted(self.programs, key=lambda p: -self._last_seconds(p))
        with ThreadPoolExecutor(workers) as pool:
            list(pool.map(lambda p: self._learn_one(p, run, loading), order))
        loaded = self._counted([str(p) for p in self._prefix("loading").rglob("*.gcda")])
        for program in self.programs:
            told = json.loads(self._kept(program).read_text())
            program.seconds, program.passes = told["seconds"], told["passes"]
            if not program.passes:
                continue
            for name, (known, executed) in told["files"].items():
                # What runs when the library is loaded tells nothing: its constants count as lines without code.
                known, executed = (set(lines).difference(loaded.get(name, ((), ()))[1]) for lines in (known, executed))
                self.known.setdefault(name, set()).update(known)
                if executed:
                    self.by_file.setdefault(name, set()).add(program)
                for line in executed:
                    self.by_line.setdefault((name, line), set()).add(program)

    def programs_for(self, name, index):
        """The programs that execute the statement of a line; where it is none, as in a constant, all that use the file."""
        numbers = [n for n in self._statement(name, index) if n in self.known.get(name, ())]
        if numbers:
            return set().union(*(self.by_line.get((name, n), set()) for n in numbers))
        if name.endswith(".h"):
            return set().union(*(self.by_file.get(n, set()) for n in self._includers(name)))
        return self.by_file.get(name, set())

    def _statement(self, name, index):
        """The numbers, from 1, of the lines of the statement that has this line."""
        if name not in self._lines:
            self._lines[name] = (self.source / name).read_text(encoding="utf-8").split("\n")
        lines = self._lines[name]

        def ends(i):
            return not lines[i].strip() or re.search(r"[;{}:]\s*(//.*)?$", lines[i])

        first = last = index
        while first > 0 and not ends(first - 1):
            first -= 1
        while last + 1 < len(lines) and not ends(last):
            last += 1
        return range(first + 1, last + 2)

    def _includers(self, header):
        found, ahead = {header}, [header]
        while ahead:
            one = ahead.pop()
            for path in self.source.rglob("*"):
                if path.suffix not in (".cpp", ".h") or "tests" in path.parts:
                    continue
                name = str(path.relative_to(self.source))
                if name not in found and f'#include "{one}"' in path.read_text(encoding="utf-8"):
                    found.add(name)
                    if path.suffix == ".h":
                        ahead.append(name)
        return found

    def _kept(self, program):
        return self.folder / (program.name + ".json")

    def _last_seconds(self, program):
        kept = self._kept(program)
        return json.loads(kept.read_text())["seconds"] if kept.exists() else 0

    def _built(self, program):
        files = [program.command[0], self.build / "tests/lib/liblorva_tested.so"] + [self.build / u for u in program.uses]
        return max(os.path.getmtime(f) for f in files)

    def _prefix(self, name):
        return self.folder / "data" / name

    def _loading_only(self, run):
        """The counters of every object after a program that did nothing but load the product."""
        idle = next(p for p in self.programs if not p.uses)
        prefix = self._prefix("loading")
        shutil.rmtree(prefix, ignore_errors=True)
        run(TestProgram("loading", "", [idle.command[0], "-functions"], idle.environment, []), prefix, 60)
        found = {}
        for data in prefix.rglob("*.gcda"):
            found[str(data.relative_to(prefix))] = counters(data)
            data.with_suffix(".gcno").symlink_to(self._notes(data, prefix))
        return found

    @staticmethod
    def _notes(data, prefix):
        return (Path("/") / data.relative_to(prefix)).with_suffix(".gcno")

    def _learn_one(self, program, run, loading):
        kept = self._kept(program)
        if kept.exists() and kept.stat().st_mtime > self._built(program):
            return
        prefix = self._prefix(program.name)
        shutil.rmtree(prefix, ignore_errors=True)
        make_counter_folders(self.build, prefix)
        began = time.time()
        passes = run(program, prefix, 300) or run(program, prefix, 300)  # the first time the machine may have been too busy
        seconds = time.time() - began
        touched = []
        for data in prefix.rglob("*.gcda"):
            relative, notes = str(data.relative_to(prefix)), self._notes(data, prefix)
            if "/tests/" in relative or not notes.exists() or counters(data) == loading.get(relative):
                continue
            data.with_suffix(".gcno").symlink_to(notes)
            touched.append(str(data))
        kept.write_text(json.dumps({"seconds": seconds, "passes": passes, "files": self._counted(touched)}))
        shutil.rmtree(prefix, ignore_errors=True)

    def _counted(self, data):
        files = {}
        for first in range(0, len(data), 50):
            told = subprocess.run(["gcov", "--json-format", "--stdout"] + data[first:first + 50], stdout=subprocess.PIPE,
                                  stderr=subprocess.DEVNULL, text=True, check=True, cwd=self.folder).stdout
            for document in filter(None, told.split("\n")):
                for one in json.loads(document)["files"]:
                    if not one["file"].startswith(f"{self.source}/"):
                        continue
                    known, executed = files.setdefault(one["file"][len(str(self.source)) + 1:], (set(), set()))
                    known.update(line["line_number"] for line in one["lines"])
                    executed.update(line["line_number"] for line in one["lines"] if line["count"])
        return {name: (sorted(known), sorted(executed)) for name, (known, executed) in files.items()}
