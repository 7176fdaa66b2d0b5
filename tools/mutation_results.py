"""What tools/mutate has tried, and which tests reach what; kept under build/mutants."""

import hashlib
import json
import os

FOLDER = "build/mutants"


def digest(*contents):
    made = hashlib.sha256()
    for content in contents:
        made.update(content if isinstance(content, bytes) else content.encode())
        made.update(b"\0")
    return made.hexdigest()[:16]


def digest_of(*files):
    return digest(*(open(file, "rb").read() for file in files))


class Results:
    """What has been tried, line by line, so that nothing is lost when a run is ended. A change is known by its text and
    by that of the file, so a later trial of the same replaces the earlier."""

    def __init__(self):
        os.makedirs(FOLDER, exist_ok=True)
        self.file = f"{FOLDER}/results"
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
        return f"{mutant.file} {digest_of(mutant.file)} {mutant.begin} {mutant.end} {mutant.text}"

    def of(self, mutant):
        return self.known.get(self.name(mutant))

    def add(self, mutant, result):
        one = {"mutant": self.name(mutant), "file": mutant.file, "kind": mutant.kind, **result}
        self.keep(one)
        with open(self.file, "a") as file:
            file.write(json.dumps(one) + "\n")

    def witnesses(self, file):
        """How many changes of a file each test has noticed."""
        return self.noticed_by.get(file, {})


class Reached:
    """Which changes each test of a program reaches, as the program has written it down."""

    def __init__(self, file):
        self.milliseconds, self.tests, self.at_start = {}, {}, set()
        for line in open(file):
            test, milliseconds, *files = line.rstrip("\n").split("\t")
            points = {(name, int(number)) for name, *numbers in (one.split(" ") for one in files) for number in numbers}
            if test:
                self.milliseconds[test] = int(milliseconds)
                self.tests[test] = points
            else:
                self.at_start = points

    def covering(self, file, number):
        """The tests that reach a change; of what is reached before any test, those that reach the file's code."""
        if number is not None and (file, number) not in self.at_start:
            return {test for test, points in self.tests.items() if (file, number) in points}
        return {test for test, points in self.tests.items() if any(name == file for name, _ in points)} or \
            set(self.tests)
