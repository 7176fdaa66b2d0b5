"""Builds the tests with the changes of tools/mutate in them, and runs those that could notice one."""

import contextlib
import json
import os
import re
import resource
import shlex
import shutil
import signal
import subprocess
import sys
import time

from mutant_switches import Switches
from mutation_results import FOLDER, Reached, digest, digest_of

# What only looks at files of the checkout would notice nothing of these files. Real servers, what measures time, and the
# simulated power failures, which take longer than all others together, are left alone.
NOT_RUN = {"document_tests"}
NOT_ASKED = "*Slapd*:String.ReplacingGrowsWithTheText:StoreCrashTest.*"
ENVIRONMENT = {**os.environ, "CCACHE_DISABLE": "1", "KRX_SEQUENCES": os.environ.get("KRX_SEQUENCES", "2")}
MOST_MEMORY = 2 << 30
FIRST_MILLISECONDS = 300  # of tests of a program that are run before all that could notice a change
STUCK_SECONDS = 60  # without any work of the processor
PRECOMPILED = re.compile(r"^-Xclang (-include|\S*/cmake_pch)|^-include|^\S*/cmake_pch")
SWITCHING = ["tools/mutants.py", "tools/mutant_switches.py", "tests/mutants/Switches.h"]


def run(command, **options):
    return subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          env=ENVIRONMENT, check=False, **options)


def must(command, **options):
    done = run(command, **options)
    if done.returncode:
        sys.exit(f"{done.stdout.decode(errors='replace')}\nfails: {command}")
    return done.stdout.decode(errors="replace")


def write(file, text):
    with open(file, "w") as out:
        out.write(text)


class Program:
    """A test program: how it is linked, and what of ours is in it."""

    def __init__(self, name, file):
        self.name = name
        self.file = os.path.relpath(file, FOLDER)
        line = must(["ninja", "-C", FOLDER, "-t", "commands", "-s", self.file]).strip().split("\n")[-1]
        words = shlex.split(line)
        self.link = [word for word in words[words.index("&&") + 1:-1] if word != "&&"]
        listed = must([*self.linked("/dev/null", []), "-Wl,-t"], cwd=FOLDER)
        self.members = set(re.findall(r"\.a\((\S+?)\)", listed))

    def linked(self, output, objects):
        """What the libraries have under the same names as these objects is left there."""
        command = list(self.link)
        command[command.index("-o") + 1] = output
        first = next(i for i, word in enumerate(command) if word.endswith(".a"))
        return command[:first] + objects + command[first:]

    def has(self, file):
        return os.path.basename(file) + ".o" in self.members


class Workshop:
    def __init__(self, programs, found, drawn):
        """`found`: the changes by file; `drawn`: the numbers of those that will be tried."""
        self.folder = os.path.abspath(f"{FOLDER}/work")
        os.makedirs(f"{self.folder}/one", exist_ok=True)
        self.found, self.alone, self.optimized = found, {}, {}
        self.build(programs)
        self.switched = {file: self.switch(file, drawn[file]) for file in found}
        self.recorder = f"{self.folder}/Recorder.o"
        must(["clang++", "-std=c++20", "-Itests", "-c", "tests/mutants/Recorder.cpp", "-o", self.recorder])
        self.reached = {program.name: self.prepare(program) for program in self.programs}

    def build(self, wanted):
        must(["tools/setup", "--build"])
        must(["cmake", "--preset", "mutants"])
        lines = [line.split() for line in open(f"{FOLDER}/test-programs")]
        listed = {name: file for _, _, name, file in lines if (name in wanted if wanted else name not in NOT_RUN)}
        print("building", *listed, flush=True)
        must(["cmake", "--build", FOLDER, "--target", *listed])
        commands = json.load(open(f"{FOLDER}/compile_commands.json"))
        self.commands = {os.path.relpath(one["file"]): shlex.split(one["command"]) for one in commands}
        self.programs = [Program(name, file) for name, file in listed.items()]

    # -- compiling

    def compile(self, file, source, output, *more):
        """Compiles a source in the place of a file; what the compiler says, and whether that worked."""
        words = self.commands[file]
        if "-O2" in more:  # the precompiled headers are of no use
            words = [word for i, word in enumerate(words) if not PRECOMPILED.search(" ".join(words[i:i + 2]))]
        taken, skip = [], False
        for word in words:
            if skip:
                skip = False
            elif word in ("-MT", "-MF", "-o", "-c"):
                skip = True
            elif word not in ("-MD", "-Werror") and not word.startswith("-g"):
                taken.append(word)
        done = run([*taken, "-w", "-fno-caret-diagnostics", "-ferror-limit=0", *more, "-c", source, "-o", output],
                   cwd=FOLDER)
        return done.stdout.decode(errors="replace"), done.returncode == 0

    def switch(self, file, wanted):
        """The object of a file with all its changes, compiled until the compiler takes it."""
        name = file.replace("/", "-")
        source, output, notes = (f"{self.folder}/{name}{end}" for end in ("", ".o", ".json"))
        text = open(file).read()
        usual = self.commands[file]
        state = digest(text, str(sorted(wanted)), digest_of(*SWITCHING), digest_of(f"{FOLDER}/{usual[usual.index('-o') + 1]}"))
        if os.path.exists(notes) and (known := json.load(open(notes)))["state"] == state:
            self.alone[file] = set(known["alone"])
            return output
        switches = Switches(file, text, self.found[file], wanted)
        more = ["-Wno-c++11-narrowing", f"-I{os.getcwd()}/tests"]
        while True:
            content, places = switches.write()
            write(source, content)
            said, fine = self.compile(file, source, output, *more)
            if fine:
                break
            switches.give_up(content, places, complaints(said, source))
        alone = switches.alone | {i for i, one in enumerate(switches.found) if switches.unswitchable(one)}
        write(notes, json.dumps({"state": state, "alone": sorted(alone)}))
        self.alone[file] = alone
        print(f"{file}: {len(wanted)} changes, {len(alone & wanted)} of them are compiled alone", flush=True)
        return output

    def prepare(self, program):
        """Links a program with all switches, and has it write down what its tests reach."""
        objects = [object_file for file, object_file in self.switched.items() if program.has(file)]
        binary, record = f"{self.folder}/{program.name}", f"{self.folder}/{program.name}.reached"
        must([*program.linked(binary, [*objects, self.recorder])], cwd=FOLDER)
        state = digest_of(binary)
        if not os.path.exists(record + ".of") or open(record + ".of").read() != state:
            begun = time.monotonic()
            done = Trial(self.folder, binary, record=record).run(f"-{NOT_ASKED}", 3600)
            if done:
                sys.exit(f"{program.name} fails without a change: {done}")
            write(record + ".of", state)
            print(f"{program.name}: {time.monotonic() - begun:.1f} s", flush=True)
        return Reached(record)

    # -- trying

    def try_out(self, mutant, number, witnesses, all_tests):
        begun = time.monotonic()
        if number in self.alone[mutant.file]:
            result = self.try_alone(mutant, witnesses, all_tests)
        else:
            result = self.ask_tests(mutant.file, number, witnesses, None, all_tests)
        return {**result, "seconds": round(time.monotonic() - begun, 1)}

    def changed(self, mutant):
        text = open(mutant.file).read()
        return text[:mutant.begin] + mutant.text + text[mutant.end:]

    def try_alone(self, mutant, witnesses, all_tests):
        source, output = f"{self.folder}/one/{os.path.basename(mutant.file)}", f"{self.folder}/one/mutant.o"
        write(source, self.changed(mutant))
        if not self.compile(mutant.file, source, output)[1]:
            return {"outcome": "refused"}
        return self.ask_tests(mutant.file, None, witnesses, output, all_tests)

    def ask_tests(self, file, number, witnesses, changed, all_tests):
        """Runs the tests that reach a change: those that cost little, the best first, and then all where that is wanted."""
        plans = []
        for program in (program for program in self.programs if program.has(file)):
            reached = self.reached[program.name]
            tests = sorted(reached.covering(file, number),
                           key=lambda test: (-min(witnesses.get(test, 0), 5), reached.milliseconds[test]))
            if tests:
                plans.append((program, tests, reached.milliseconds))
        plans.sort(key=lambda plan: (-sum(witnesses.get(test, 0) for test in plan[1]), sum(map(plan[2].get, plan[1]))))
        rest, linked = [], set()
        for program, tests, milliseconds in plans:
            first, spent = [], 0
            while tests and spent + milliseconds[tests[0]] <= FIRST_MILLISECONDS:
                spent += milliseconds[tests[0]]
                first.append(tests.pop(0))
            if tests:
                rest.append((program, tests, milliseconds))
            if first and (result := self.noticed(program, first, spent, file, number, changed, linked)):
                return result
        for program, tests, milliseconds in rest if all_tests else []:
            if result := self.noticed(program, tests, sum(map(milliseconds.get, tests)), file, number, changed, linked):
                return result
        return {"outcome": "unnoticed", "reached": bool(plans), "all": all_tests or not rest}

    def noticed(self, program, tests, milliseconds, file, number, changed, linked):
        binary, mutant = f"{self.folder}/{program.name}", f"{file}:{number}"
        if changed:
            binary, mutant = f"{self.folder}/one/{program.name}", None
            if program.name not in linked and run(program.linked(binary, [changed]), cwd=FOLDER).returncode:
                return {"outcome": "refused"}
            linked.add(program.name)
        by = Trial(self.folder, binary, mutant=mutant).run(":".join(tests), 2 + milliseconds // 100)
        return {"outcome": "noticed", **by} if by else None

    def makes_same_code(self, mutant):
        """Whether an optimizing compiler makes the same of both: then there is nothing to notice."""
        if mutant.file not in self.optimized:
            self.optimized[mutant.file] = self.optimize(mutant.file, open(mutant.file).read())
        return self.optimize(mutant.file, self.changed(mutant)) == self.optimized[mutant.file]

    def optimize(self, file, text):
        source, output = f"{self.folder}/one/{os.path.basename(file)}", f"{self.folder}/one/code.o"
        write(source, text)
        return digest_of(output) if self.compile(file, source, output, "-O2")[1] else None


def complaints(said, source):
    """What the compiler says of a source: line, column and message of each error, or of the place that led to it."""
    found, open_one = [], None
    for line, column, kind, message in re.findall(rf"^(?:{re.escape(source)}:(\d+):(\d+)|[^:\n]+:\d+:\d+): "
                                                  r"(?:fatal )?(error|note): (.*)$", said, re.MULTILINE):
        if kind == "error":
            open_one = None if line else message
            if line:
                found.append((int(line), int(column), message))
        elif open_one and line:
            found.append((int(line), int(column), open_one))
            open_one = None
        elif found and line and "declared here" in message:
            found[-1] = (*found[-1][:2], found[-1][2] + " " + message)
    return found


class Trial:
    """One run of a test program, with a change switched on or writing down what is reached."""

    def __init__(self, folder, binary, mutant=None, record=None):
        self.place, self.binary = f"{folder}/one", binary
        self.environment = {**ENVIRONMENT, "TMPDIR": f"{self.place}/temporary"}
        if mutant:
            self.environment["KRX_MUTANT"] = mutant
        if record:
            self.environment["KRX_RECORD"] = record

    def run(self, chosen, seconds):
        """How the tests fail, and which: None where all pass. Time is the processor's, as the machine may be busy."""
        shutil.rmtree(f"{self.place}/temporary", ignore_errors=True)
        os.makedirs(f"{self.place}/temporary")
        write(f"{self.place}/flags", f"--gtest_filter={chosen}\n--gtest_fail_fast\n")

        def limits():
            resource.setrlimit(resource.RLIMIT_CPU, (seconds, seconds))
            resource.setrlimit(resource.RLIMIT_AS, (MOST_MEMORY, MOST_MEMORY))
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))

        with open(f"{self.place}/output", "wb") as output:
            # A session of its own, which ends with all processes that tests have begun.
            tests = subprocess.Popen([self.binary, f"--gtest_flagfile={self.place}/flags"], stdin=subprocess.DEVNULL,
                                     stdout=output, stderr=subprocess.STDOUT, start_new_session=True,
                                     env=self.environment, preexec_fn=limits)
            status = self.wait(tests)
            with contextlib.suppress(ProcessLookupError):
                os.killpg(tests.pid, signal.SIGKILL)
            tests.wait()
        if status == 0:
            return None
        how = "time" if status in (None, -signal.SIGXCPU) else "crash" if status < 0 else "test"
        with open(f"{self.place}/output", "rb") as output:
            return {"how": how, "by": self.failed(output.read())}

    @staticmethod
    def wait(tests):
        """The status; None for a program that waits for ever."""
        worked, since = None, time.monotonic()
        while True:
            with contextlib.suppress(subprocess.TimeoutExpired):
                return tests.wait(2)
            with open(f"/proc/{tests.pid}/stat") as file:
                fields = file.read().rpartition(")")[2].split()
            if fields[11:13] != worked or fields[0] == "R":
                worked, since = fields[11:13], time.monotonic()
            elif time.monotonic() > since + STUCK_SECONDS:
                return None

    @staticmethod
    def failed(output):
        """The first test that failed, or the one in which the program ended."""
        begun = re.findall(rb"^\[  FAILED  \] ([^\s,]+)", output, re.MULTILINE)[:1] or \
            re.findall(rb"^\[ RUN      \] (\S+)", output, re.MULTILINE)[-1:]
        return begun[0].decode() if begun else "its beginning"
