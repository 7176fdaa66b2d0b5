"""Puts all small changes of a file into it at once, each behind a switch, so that it is compiled and linked once and a
change costs nothing but the tests; used by tools/mutate."""

import bisect
import re
from dataclasses import dataclass, field

import mutants
from mutants import CLOSING, OPENING

# How tightly operators hold what stands beside them.
TIGHT = {"*": 10, "/": 10, "%": 10, "+": 9, "-": 9, "<<": 8, ">>": 8, "<=>": 7, "<": 6, "<=": 6, ">": 6, ">=": 6,
         "==": 5, "!=": 5, "&": 4, "^": 3, "|": 2, "&&": 1, "||": 0}
ENDS = {"?", ":", "=", "+=", "-=", "*=", "/=", "|=", "&=", ",", ";", "return", "throw", "else", "case", "do"}

HEAD = """#include "mutants/Switches.h"
static bool krx_reached[{count}];
static int krx_chosen = -1;
static const krx::mutants::File krx_file("{file}", {count}, krx_reached, &krx_chosen);
[[maybe_unused, gnu::always_inline]] static bool krx_on(int n) {{ return krx_reached[n] = true, krx_chosen == n; }}
[[maybe_unused, gnu::always_inline]] static constexpr bool krx_on_here(int n) {{
  return __builtin_is_constant_evaluated() ? false : (krx_reached[n] = true, krx_chosen == n);
}}
"""


@dataclass
class Edit:
    """What stands around a piece of the source while a change can be switched on."""
    number: int
    begin: int
    end: int
    before: str
    after: str
    inner: list = field(default_factory=list)


@dataclass
class Constexpr:
    """What the compiler may work out: no switch works there, unless a variable becomes a constant of the run."""
    at: int
    begin: int
    end: int
    name: str  # of a variable


class Switches:
    def __init__(self, file, source, found, wanted):
        self.file, self.source, self.found = file, source, found
        self.tokens = mutants.tokens_of(source)
        self.begins = [token.begin for token in self.tokens]
        self.partner, self.parent = self.brackets()
        self.constants = list(self.find_constexpr())
        self.kept = set()  # names of variables that stay as they are
        # Numbers of changes that cannot be switched.
        self.alone = {i for i, one in enumerate(found) if i not in wanted or self.named_while_compiling(one)}

    def brackets(self):
        partner, parent, open_ones = {}, [], []
        for i, token in enumerate(self.tokens):
            if token.text in CLOSING and open_ones:
                partner[i] = open_ones.pop()
                partner[partner[i]] = i
            parent.append(open_ones[-1] if open_ones else None)
            if token.text in OPENING:
                open_ones.append(i)
        return partner, parent

    def text(self, i):
        return self.tokens[i].text if 0 <= i < len(self.tokens) else ""

    def find_constexpr(self):
        for i, token in enumerate(self.tokens):
            if token.text not in ("constexpr", "consteval") or self.text(i - 1) == "if":
                continue
            end = i
            while end < len(self.tokens) and self.text(end) not in ("=", "{", "(", ";"):
                end += 1
            function = self.text(end) == "("
            while end < len(self.tokens) and self.text(end) != ";" and not (function and self.text(end) == "{"):
                end = self.partner.get(end, end) + 1 if self.text(end) in OPENING else end + 1
            end = self.partner.get(end, end)
            name = "" if function else next((self.text(k - 1) for k in range(i, end) if self.text(k) in ("=", "{", "[")),
                                            "")
            yield Constexpr(token.begin, token.begin, self.tokens[min(end, len(self.tokens) - 1)].end, name)

    def named_while_compiling(self, mutant):
        """Labels of cases, arguments of templates, and arrays, which forget their length."""
        i = bisect.bisect_left(self.begins, mutant.begin)
        behind = bisect.bisect_left(self.begins, mutant.end)
        while self.text(i - 1) == "::":
            i -= 2
        argument = i and (self.text(i - 1) == "<" and not self.tokens[i - 1].spaced or
                          self.text(behind) == ">" and not self.tokens[behind].spaced)
        array = re.search(rf"\b{re.escape(self.text(behind - 1))}\[\] = ", self.source)
        return mutant.kind == "constant" and (self.text(i - 1) == "case" or argument or array)

    def unswitchable(self, mutant):
        """Whether the compiler may have worked it out before a switch is asked."""
        return any(one.begin <= mutant.begin < one.end and (not one.name or one.name in self.kept)
                   for one in self.constants)

    # -- where an expression begins and ends, by numbers of tokens

    def operand_begin(self, i, limit):
        while i > 0:
            before = self.tokens[i - 1]
            if before.text in ENDS or before.text in OPENING:
                break
            if before.spaced and TIGHT.get(before.text, 99) < limit:
                break
            if before.text == "}" and not re.match(r"\w|>", self.text(self.partner.get(i - 1, 0) - 1)):
                break
            i = self.partner.get(i - 1, i - 1) if before.text in CLOSING else i - 1
        return i

    def operand_end(self, i, limit):
        """Behind the last token."""
        while i < len(self.tokens):
            token = self.tokens[i]
            if token.text in ENDS or token.text in CLOSING:
                break
            if token.spaced and TIGHT.get(token.text, 99) <= limit:
                break
            i = self.partner.get(i, i) + 1 if token.text in OPENING else i + 1
        return i

    def chain_end(self, i):
        """Behind a name with its calls, members and indices."""
        while self.text(i) in ("*", "-", "!"):
            i += 1
        while i < len(self.tokens):
            if self.text(i) in OPENING:
                i = self.partner.get(i, i) + 1
            else:
                i += 1
            if self.text(i) in ("::", ".", "->"):
                i += 1
            elif self.text(i) not in ("(", "[") and not (self.text(i) == "{" and self.text(i - 1)[:1].isupper()):
                return i
        return i

    def chain_begin(self, i):
        """Where the chain begins that ends with a token."""
        while i > 0:
            while self.text(i) in CLOSING:
                i = self.partner.get(i, i) - 1
            if self.text(i - 1) not in ("::", ".", "->"):
                return i
            i -= 2
        return i

    def scope(self, mutant):
        """The tokens of the expression that a change of one token turns into another: first, and behind the last."""
        i = bisect.bisect_left(self.begins, mutant.begin)
        token = self.tokens[i]
        if mutant.kind == "constant":
            return i, bisect.bisect_left(self.begins, mutant.end)
        if token.text == "!":
            return i, self.chain_end(i + 1)
        if token.text in ("min", "max"):
            begin = i
            while self.text(begin - 1) == "::" and re.match(r"\w", self.text(begin - 2)):
                begin -= 2
            return begin, self.chain_end(i)
        if token.text in ("++", "--"):
            prefix = re.match(r"\w", self.text(i + 1)) or self.text(i + 1) in ("(", "*")
            return (i, self.chain_end(i + 1)) if prefix else (self.chain_begin(i - 1), i + 1)
        limit = TIGHT.get(token.text, -1)
        return self.operand_begin(i, limit), self.operand_end(i + 1, limit)

    def raw(self, begin, end):
        """Source without its comments."""
        return re.sub(r"//[^\n]*|/\*.*?\*/", "", self.source[begin:end], flags=re.DOTALL)

    def edit(self, number, mutant):
        on = f"krx_on{'_here' if self.unswitchable(mutant) else ''}({number})"
        begin, end = mutant.begin, mutant.end
        if mutant.kind == "condition":
            return Edit(number, begin, end, f"{on} || (" if mutant.text.startswith("true") else f"!{on} && (", ")")
        if mutant.kind == "statement":
            parent = self.parent[bisect.bisect_left(self.begins, begin)]
            if parent is not None and self.text(parent) == "(":  # of a loop's head
                return Edit(number, begin, end, f"{on} || (", ")")
            return Edit(number, begin, self.source.index(";", end) + 1, f"{{ if (!{on}) ", " }")
        first, behind = self.scope(mutant)
        if behind <= first:
            return None
        begin, end = self.tokens[first].begin, self.tokens[behind - 1].end
        if not begin <= mutant.begin < mutant.end <= end:
            return None
        changed = self.raw(begin, mutant.begin) + mutant.text + self.raw(mutant.end, end)
        if self.tokens[bisect.bisect_left(self.begins, mutant.begin)].text == "!":
            changed = f"static_cast<bool>({changed})"
        return Edit(number, begin, end, f"({on} ? ({changed}) : (", "))")

    def edits(self):
        """All that can be switched, the outer with those inside them."""
        wanted = []
        for number, mutant in enumerate(self.found):
            made = None if number in self.alone else self.edit(number, mutant)
            if made:
                wanted.append(made)
            else:
                self.alone.add(number)
        outer, stack = [], []
        for one in sorted(wanted, key=lambda edit: (edit.begin, -edit.end)):
            while stack and stack[-1].end <= one.begin:
                stack.pop()
            if stack and stack[-1].end < one.end:
                self.alone.add(one.number)
                continue
            (stack[-1].inner if stack else outer).append(one)
            stack.append(one)
        return outer

    def write(self):
        """The source with all switches, and where each change stands in it, as (begin, end, number)."""
        out, places, length = [], [], 0
        taken = {one.at: one for one in self.constants if one.name and one.name not in self.kept}

        def put(text):
            nonlocal length
            out.append(text)
            length += len(text)

        def plain(begin, end):
            at = begin
            for place in sorted(taken):
                if begin <= place < end:
                    put(self.source[at:place])
                    put("const")
                    at = place + len("constexpr")
            put(self.source[at:end])

        def piece(begin, end, inner):
            for one in inner:
                plain(begin, one.begin)
                start = length
                put(one.before)
                piece(one.begin, one.end, one.inner)
                put(one.after)
                places.append((start, length, one.number))
                begin = one.end
            plain(begin, end)

        edits = self.edits()
        put(HEAD.format(file=self.file, count=max(1, len(self.found))))
        piece(0, len(self.source), edits)
        return "".join(out), places

    # -- what the compiler does not take

    def give_up(self, source, places, complaints):
        """Takes out what the compiler complains of, by (line, column, message); whether there was anything."""
        lines = [0]
        for line in source.split("\n"):
            lines.append(lines[-1] + len(line.encode()) + 1)
        encoded = source.encode()
        before = len(self.alone), len(self.kept)
        for line, column, message in complaints:
            at = len(encoded[:lines[line - 1] + column - 1].decode(errors="replace"))
            around = [place for place in places if place[0] <= at < place[1]]
            if around:
                self.alone.add(min(around, key=lambda place: place[1] - place[0])[2])
            else:
                self.keep(set(re.findall(r"'(\w+)'", message)))
        if before == (len(self.alone), len(self.kept)):
            self.kept |= {one.name for one in self.constants}
        if before == (len(self.alone), len(self.kept)):
            self.alone |= {i for i, one in enumerate(self.found) if one.kind == "statement"}
        if before == (len(self.alone), len(self.kept)):
            self.alone = set(range(len(self.found)))
        return before != (len(self.alone), len(self.kept))

    def keep(self, names):
        """Variables that the compiler wants to know: they stay, and changes of plain constants wait for their turn."""
        self.kept |= names & {one.name for one in self.constants}
        for name in names:
            for match in re.finditer(rf"\bconst [^;(){{}}=]*\b{name}\b\s*[={{]", self.source):
                end = self.source.index(";", match.end())
                self.alone |= {i for i, one in enumerate(self.found) if match.end() <= one.begin < end}
