#!/usr/bin/env -S python3 -B
"""What tools/pictures does with the pictures that were taken.

usage: pictures_taken.py sums             prints "SUM NAME" of the approved pictures
       pictures_taken.py compare FOLDER   prints what is not as approved, fails when there is any, and shows it in
                                          FOLDER/index.html: before, after, difference
       pictures_taken.py approve FOLDER   approves what `compare` found
FOLDER has a folder for each resolution, with its file taken.txt and the pictures that were not known by their sum."""

import html
import os
import sys
from dataclasses import dataclass

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from pictures import Difference, differences, load, marked, names_in, read_ppm, save, to_png  # noqa: E402

APPROVED = os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "tests/pictures/approved")
# Of each so many approved pictures one is not told by its sum, but compared pixel by pixel although it is the same: the
# way that a difference takes is gone in every run.
WITHHELD = 50

# Findings that are printed; the page has all.
TOLD = 20

STALE, NEW, OTHER = "is shown no more", "is not approved", "differs"
UNNOTICED, UNMADE = "is not noticed", "was not made"

# Scenes with a mistake in them, MISTAKE-SCENE, which every run has to notice.
MISTAKES = ["moved-log-on", "coloured-log-on", "lost-users"]


@dataclass(frozen=True)
class Finding:
    name: str
    kind: str
    difference: Difference = None

    def __str__(self):
        return f"{self.name} {self.kind}" + (f": {self.difference}" if self.difference else "")


def sums(approved):
    for at, name in enumerate(sorted(names_in(approved, ".png"))):
        if at % WITHHELD:
            yield f"{load(approved, name).sum()} {name}"


def outcomes(folder):
    """What became of each picture, by its name, and the folder that it is in if it was kept."""
    found = {}
    for resolution in sorted(os.listdir(folder)):
        path = os.path.join(folder, resolution, "taken.txt")
        if os.path.exists(path):
            with open(path, encoding="utf-8") as lines:
                found |= {name: (outcome, os.path.dirname(path)) for name, outcome in map(str.split, lines)}
    return found


def taken_picture(folder, name):
    with open(os.path.join(folder, name + ".ppm"), "rb") as file:
        return read_ppm(file.read())


def examine(approved, folder):
    """Findings, and how many pictures were the approved ones to the bit and within the tolerance."""
    taken, known = outcomes(folder), names_in(approved, ".png")
    mistakes = {name: taken.pop(name) for name in list(taken) if name.split("/")[0] in MISTAKES}
    findings = [Finding(name, STALE) for name in sorted(known - set(taken))] + list(unnoticed(approved, mistakes))
    same = near = 0
    for name, (outcome, place) in sorted(taken.items()):
        if name not in known:
            findings.append(Finding(name, NEW))
        elif outcome == "same":
            same += 1
        elif outcome == "other":
            before, after = load(approved, name), taken_picture(place, name)
            difference = differences(before, after)
            if difference:
                findings.append(Finding(name, OTHER, difference))
            same, near = same + (before == after), near + (before != after and not difference)
    return findings, same, near


def unnoticed(approved, mistakes):
    """Findings of what was spoiled and passes for approved, or was not spoiled at all."""
    made = {name.split("/")[0] for name in mistakes}
    yield from (Finding(mistake, UNMADE) for mistake in MISTAKES if mistake not in made)
    for name, (outcome, place) in mistakes.items():
        scene = name.split("-", 1)[1]
        if outcome == "same" or scene in names_in(approved, ".png") and not differences(
                load(approved, scene), taken_picture(place, name)):
            yield Finding(name, UNNOTICED)


def show(approved, folder, findings):
    """The page, with copies of all that it shows."""
    taken, rows = outcomes(folder), []
    for finding in findings:
        outcome, place = taken.get(finding.name, ("", ""))
        before = finding.kind in (STALE, OTHER) and load(approved, finding.name)
        after = outcome == "other" and taken_picture(place, finding.name)
        parts = {"before": before, "after": after}
        if finding.difference and finding.difference.places:
            parts["difference"] = marked(after, finding.difference.places)
        images = ""
        for part, picture in parts.items():
            file = f"shown/{finding.name}/{part}.png"
            if picture:
                save(folder, file, to_png(picture))
            images += f'<td>{f"<img src={html.escape(file)!r}>" if picture else "none"}</td>'
        rows.append(f"<tr><th colspan=3>{html.escape(str(finding))}</th></tr><tr>{images}</tr>")
    page = ("<!DOCTYPE html><meta charset=utf-8><title>Pictures</title><style>body{font-family:sans-serif}"
            "th{text-align:left;padding-top:1.5em}td{vertical-align:top;padding-right:1em;background:#888}</style>"
            f"<h1>{len(findings)} pictures are not as approved</h1><p>Before, after, difference</p>"
            f"<table>{''.join(rows)}</table>\n")
    save(folder, "index.html", page.encode())


def compare(approved, folder):
    findings, same, near = examine(approved, folder)
    for finding in findings[:TOLD]:
        print(finding)
    if len(findings) > TOLD:
        print(f"and {len(findings) - TOLD} more")
    show(approved, folder, findings)
    print(f"   {same} pictures to the bit as approved, {near} within the tolerance, {len(findings)} findings")
    if not same + near + len(findings):
        print("nothing was compared")
        return 1
    return 1 if findings else 0


def approve(approved, folder):
    taken = outcomes(folder)
    for finding in examine(approved, folder)[0]:
        path = os.path.join(approved, finding.name + ".png")
        if finding.kind == STALE:
            os.remove(path)
        elif finding.kind in (NEW, OTHER) and taken[finding.name][0] == "other":
            save(approved, finding.name + ".png", to_png(taken_picture(taken[finding.name][1], finding.name)))
    return 0


def main(arguments):
    approved = os.environ.get("KRX_APPROVED", APPROVED)
    if arguments == ["sums"]:
        print(*sums(approved), sep="\n")
        return 0
    if len(arguments) == 2 and arguments[0] in ("compare", "approve"):
        return {"compare": compare, "approve": approve}[arguments[0]](approved, arguments[1])
    print(__doc__, file=sys.stderr)
    return 2


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
