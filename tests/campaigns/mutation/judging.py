"""Builds one mutant at a time and runs the tests that execute its line."""

import json
import os
import re
import shutil
import signal
import subprocess
import threading
from pathlib import Path

TESTED = "tests/lib/liblorva_tested.so"


def run(command, **options):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace", **options)


class Worker:
    """A place of its own for one mutant at a time: its object, its library and what its tests write."""

    # Programs and plug-ins lie in the build tree, where tests look for them: one mutant at a time.
    programs_lock = threading.Lock()

    def __init__(self, build, folder):
        self.build = build
        self.folder = folder
        self.counters = folder / "counters"
        self.commands = {}
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)

    def passes(self, program, prefix, seconds, libraries=None):
        """Whether a test program passes in that time. gcov's counters go below `prefix`."""
        return self.attempt(program, [], prefix, seconds, libraries) == ""

    def attempt(self, program, arguments, prefix, seconds, libraries):
        """Runs a test program up to its first failure: the function that failed, "?" where it is not told; empty when all
        passes."""
        environment = dict(os.environ, **program.environment)
        temporary = self.folder / f"tmp-{program.name}"
        temporary.mkdir(exist_ok=True)
        environment.update(TMPDIR=str(temporary), GCOV_PREFIX=str(prefix), GCOV_ERROR_FILE="/dev/null")
        if libraries:
            environment["LD_LIBRARY_PATH"] = str(libraries)
        process = subprocess.Popen(program.command + arguments, cwd=self.build / "tests", env=environment,
                                   stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                                   text=True, errors="replace", start_new_session=True)

        def end():
            try:
                os.killpg(process.pid, signal.SIGKILL)  # and what it may have left running
            except ProcessLookupError:
                pass

        timer = threading.Timer(seconds, end)
        timer.start()
        try:
            for line in process.stdout:
                failed = re.match(r"FAIL!\s+: \w+::(\w+)\(", line)
                if failed:
                    return failed.group(1)
                if line.startswith("Totals: "):
                    break
            return "" if process.wait() == 0 else "?"
        finally:
            timer.cancel()
            end()
            process.wait()
            process.stdout.close()
            shutil.rmtree(temporary, ignore_errors=True)

    def fails(self, program, libraries=None):
        """Whether it fails twice: once may be the machine's load."""
        limit = max(60.0, 20 * program.seconds)
        failed = self.attempt(program, [], self.counters, limit, libraries)
        if not failed:
            return False
        again = [] if failed in ("?", "initTestCase", "cleanupTestCase") else [failed]
        return self.attempt(program, again, self.counters, limit, libraries) != ""

    def command_of(self, output):
        if output not in self.commands:
            told = run(["ninja", "-C", str(self.build), "-t", "commands", "-s", output]).stdout
            self.commands[output] = told.strip().split("\n")[-1]
        return self.commands[output]

    def shell(self, command):
        return run(["bash", "-c", command], cwd=self.build).returncode == 0

    def link(self, output, objects, target):
        """Links what the build links, with these objects in place of, or before, the ones it takes."""
        command = self.command_of(output).replace(f"-o {output} ", f"-o {target} ")
        for original, changed in objects.items():
            if f" {original} " in command:
                command = command.replace(f" {original} ", f" {changed} ")
            else:
                command = command.replace(f"-o {target} ", f"-o {target} {changed} ")
        return self.shell(command)

    def judge(self, source, mutant, programs, changed_programs):
        """Outcome and the failing test of a mutant in a .cpp file. While that file exists, programs hold a mutant."""
        name, index, _, text = mutant
        changed = self.folder / Path(name).name
        lines = (source / name).read_text(encoding="utf-8").split("\n")
        lines[index] = text
        changed.write_text("\n".join(lines), encoding="utf-8")
        original_object = next((o for o in (f"CMakeFiles/{library}.dir/{name}.o" for library in ("lorva_core", "lorva_ui"))
                                if (self.build / o).exists()), None)
        if not original_object:
            return "no program", ""
        changed_object = self.folder / (changed.name + ".o")
        command = self.command_of(original_object).replace(original_object, str(changed_object)) \
            .replace(f"-c {source / name}", f"-iquote {(source / name).parent} -c {changed}")
        objects = {original_object: changed_object}
        libraries = self.folder / "lib"
        libraries.mkdir(exist_ok=True)
        if not self.shell(command) or not self.link(TESTED, objects, libraries / Path(TESTED).name):
            return "no program", ""
        for program in (p for p in programs if not p.uses):
            if self.fails(program, libraries):
                return "caught", program.name
        with Worker.programs_lock:
            changed_programs.touch()
            result = self.judge_in_programs([p for p in programs if p.uses], objects, libraries)
            changed_programs.unlink()
            return result

    def judge_in_programs(self, programs, objects, libraries):
        kept = {}
        try:
            for program in programs:
                for used in program.uses:
                    if used in kept:
                        continue
                    target = self.folder / Path(used).name
                    if not self.link(used, objects, target):
                        return "no program", ""
                    kept[used] = self.folder / (target.name + ".kept")
                    os.rename(self.build / used, kept[used])
                    os.rename(target, self.build / used)
                if self.fails(program, libraries):
                    return "caught", program.name
            return "survived", ""
        finally:
            for used, original in kept.items():
                os.rename(original, self.build / used)

    def judge_header(self, source, mutant, programs):
        """The same for a header: what includes it, tests as well, is built anew. No other worker may be at work."""
        name, index, line, text = mutant
        path = source / name
        original = path.read_text(encoding="utf-8")
        lines = original.split("\n")
        lines[index] = text
        path.write_text("\n".join(lines), encoding="utf-8")
        try:
            if not self.ninja([TESTED]):
                return "no program", ""
            for program in programs:
                if not self.ninja([f"tests/{program.name}"] + program.uses):
                    return "no program", ""
                if self.fails(program):
                    return "caught", program.name
            return "survived", ""
        finally:
            path.write_text(original, encoding="utf-8")

    def ninja(self, targets):
        return run(["ninja", "-C", str(self.build)] + targets).returncode == 0
