"""Builds one mutant and runs the tests that could notice it; used by tools/mutate."""

import contextlib
import hashlib
import json
import os
import re
import resource
import shlex
import shutil
import signal
import subprocess
import sys
import threading
import time

BUILD = "build/mutants"
# What only looks at files of the checkout, and what takes real servers, would notice nothing of these files.
NOT_RUN = {"document_tests", "directory_tests"}
ENVIRONMENT = {**os.environ, "CCACHE_DISABLE": "1", "KRX_SEQUENCES": os.environ.get("KRX_SEQUENCES", "2")}
MOST_MEMORY = 4 << 30


def run(command, **options):
    return subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          env=ENVIRONMENT, check=False, **options)


def must(command, **options):
    done = run(command, **options)
    if done.returncode:
        sys.exit(f"{done.stdout.decode(errors='replace')}\nfails: {command}")
    return done.stdout.decode(errors="replace")


class Results:
    """What has been tried, line by line, so that nothing is lost when a run is ended."""

    def __init__(self):
        os.makedirs(BUILD, exist_ok=True)
        self.file = f"{BUILD}/results"
        self.lock = threading.Lock()
        self.known, self.noticed_by = {}, {}
        if os.path.exists(self.file):
            for line in open(self.file):
                self.keep(json.loads(line))

    def keep(self, one):
        self.known[one["mutant"]] = one
        if "by" in one:
            tests = self.noticed_by.setdefault(one["file"], {})
            tests[one["by"]] = tests.get(one["by"], 0) + 1

    @staticmethod
    def name(mutant):
        with open(mutant.file, "rb") as file:
            content = hashlib.sha256(file.read()).hexdigest()[:16]
        return f"{mutant.file} {content} {mutant.begin} {mutant.end} {mutant.text}"

    def of(self, mutant):
        return self.known.get(self.name(mutant))

    def add(self, mutant, result):
        one = {"mutant": self.name(mutant), "file": mutant.file, "kind": mutant.kind, **result}
        with self.lock:
            self.keep(one)
            with open(self.file, "a") as file:
                file.write(json.dumps(one) + "\n")

    def witnesses(self, file):
        """The tests that have noticed changes of a file, the best first."""
        with self.lock:
            tests = self.noticed_by.get(file, {})
            return sorted(tests, key=tests.get, reverse=True)[:40]


class Program:
    """A test program: how it is linked, what of ours is in it, and how long it takes."""

    def __init__(self, name, file):
        self.name = name
        self.file = os.path.relpath(file, BUILD)
        line = must(["ninja", "-C", BUILD, "-t", "commands", "-s", self.file]).strip().split("\n")[-1]
        words = shlex.split(line)
        self.link = [word for word in words[words.index("&&") + 1:-1] if word != "&&"]
        listed = must(self.linked("/dev/null") + ["-Wl,-t"], cwd=BUILD)
        self.members = set(re.findall(r"\.a\((\S+?)\)", listed))

    def linked(self, output, mutant=None):
        command = list(self.link)
        command[command.index("-o") + 1] = output
        if mutant:  # what the library has under the same names is left there
            first = next(i for i, word in enumerate(command) if word.endswith(".a"))
            command.insert(first, mutant)
        return command

    def measure(self):
        """Runs it without a change."""
        before, start = resource.getrusage(resource.RUSAGE_CHILDREN), time.monotonic()
        must([os.path.join(BUILD, self.file), "--gtest_brief=1"])
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        self.processor = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
        self.lasted = time.monotonic() - start


class Workshop:
    def __init__(self, wanted):
        self.folder = os.path.abspath(f"{BUILD}/work")
        os.makedirs(self.folder, exist_ok=True)
        must(["tools/setup", "--build"])
        must(["cmake", "--preset", "mutants"])
        lines = [line.split() for line in open(f"{BUILD}/test-programs")]
        listed = {name: file for _, _, name, file in lines if (name in wanted if wanted else name not in NOT_RUN)}
        print("building", *listed, flush=True)
        must(["cmake", "--build", BUILD, "--target", *listed])
        commands = json.load(open(f"{BUILD}/compile_commands.json"))
        self.commands = {os.path.relpath(one["file"]): shlex.split(one["command"]) for one in commands}
        self.programs = []
        for name, file in listed.items():
            program = Program(name, file)
            program.measure()
            print(f"{name}: {program.lasted:.1f} s", flush=True)
            self.programs.append(program)
        self.programs.sort(key=lambda program: program.lasted)

    def compile(self, file, source, output, *more):
        """Compiles a source in the place of a file; whether that works."""
        words = self.commands[file]
        if more:  # with other options the precompiled headers are of no use
            at = next((i for i, word in enumerate(words) if word == "-include-pch"), 1)
            words = words[:at - 1] + words[at + 3:] if at > 1 else words
        taken, skip = [], False
        for word in words:
            if skip:
                skip = False
            elif word in ("-MT", "-MF", "-o", "-c"):
                skip = True
            elif word not in ("-MD", "-Werror") and not word.startswith("-g"):
                taken.append(word)
        return run([*taken, "-w", *more, "-c", source, "-o", output], cwd=BUILD).returncode == 0

    def try_out(self, mutant, witnesses):
        start = time.monotonic()
        place = f"{self.folder}/{threading.get_ident()}"
        os.makedirs(place, exist_ok=True)
        source, changed = f"{place}/{os.path.basename(mutant.file)}", f"{place}/mutant.o"
        text = open(mutant.file).read()
        with open(source, "w") as file:
            file.write(text[:mutant.begin] + mutant.text + text[mutant.end:])
        if not self.compile(mutant.file, source, changed):
            result = {"outcome": "refused"}
        else:
            result = self.ask_tests(mutant, changed, place, witnesses)
            if result["outcome"] == "unnoticed" and self.makes_same_code(mutant, source, text):
                result = {"outcome": "same"}
        return {**result, "seconds": round(time.monotonic() - start, 1)}

    def ask_tests(self, mutant, changed, place, witnesses):
        member = os.path.basename(mutant.file) + ".o"
        could = [program for program in self.programs if member in program.members]
        for chosen in ([":".join(witnesses)] if witnesses else []) + ["*"]:
            for program in could:
                binary = f"{place}/{program.name}"
                first = chosen != "*" or not witnesses
                if first and run(program.linked(binary, changed), cwd=BUILD).returncode:
                    return {"outcome": "refused"}
                by = self.failure(program, binary, chosen)
                if by:
                    return {"outcome": "noticed", "by": by}
        return {"outcome": "unnoticed"}

    @staticmethod
    def failure(program, binary, chosen):
        """The test that fails or never ends; None where all pass. Time is the processor's: the machine may be busy."""
        seconds = int(10 * program.processor) + 10
        place = os.path.dirname(binary)
        temporary = f"{place}/temporary"
        os.makedirs(temporary)

        def limits():
            resource.setrlimit(resource.RLIMIT_CPU, (seconds, seconds))
            resource.setrlimit(resource.RLIMIT_AS, (MOST_MEMORY, MOST_MEMORY))
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))

        with open(f"{place}/output", "wb") as output:
            # A session of its own, which ends with all processes that tests have begun.
            tests = subprocess.Popen([binary, f"--gtest_filter={chosen}", "--gtest_fail_fast"], stdin=subprocess.DEVNULL,
                                     stdout=output, stderr=subprocess.STDOUT, start_new_session=True,
                                     env={**ENVIRONMENT, "TMPDIR": temporary}, preexec_fn=limits)
            try:
                status = tests.wait(20 * program.lasted + 120)
            except subprocess.TimeoutExpired:
                status = None
            with contextlib.suppress(ProcessLookupError):
                os.killpg(tests.pid, signal.SIGKILL)
            tests.wait()
        shutil.rmtree(temporary, ignore_errors=True)
        with open(f"{place}/output", "rb") as output:
            return None if status == 0 else Workshop.failed(output.read())

    @staticmethod
    def failed(output):
        """The first test that failed, or the one in which the program ended."""
        begun = re.findall(rb"^\[  FAILED  \] ([^\s,]+)", output, re.MULTILINE)[:1] or \
            re.findall(rb"^\[ RUN      \] (\S+)", output, re.MULTILINE)[-1:]
        return begun[0].decode() if begun else "its beginning"

    def makes_same_code(self, mutant, source, text):
        """Whether an optimizing compiler makes the same of both: then there is nothing to notice."""
        made = []
        for content in (open(source).read(), text):
            with open(source, "w") as file:
                file.write(content)
            output = source + ".o"
            if not self.compile(mutant.file, source, output, "-O2"):
                return False
            with open(output, "rb") as file:
                made.append(file.read())
        return made[0] == made[1]
