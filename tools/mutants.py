"""The small changes that tools/mutate tries in C++ code: one operator, constant, condition or statement at a time.

A tokenizer is enough, as the code is formatted by a tool: an operator between two blanks is no part of a type."""

import re
from dataclasses import dataclass

TOKEN = re.compile(r"""
    (?P<skip> //[^\n]* | /\*.*?\*/ | ^[ ]*\#[^\n]* | \s+ )
  | (?P<text> (?:u8|u|U|L)?"(?:\\.|[^"\\\n])*" | (?:u8|u|U|L)?'(?:\\.|[^'\\\n])+' )
  | (?P<number> (?:0x[0-9a-fA-F']+ | [0-9][0-9']*(?:\.[0-9]+)?)[fuUlL]* )
  | (?P<name> [A-Za-z_][A-Za-z_0-9]* )
  | (?P<sign> <=>|<<=|>>=|->|::|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||\+=|-=|\*=|/=|\|=|&=|. )
""", re.VERBOSE | re.MULTILINE | re.DOTALL)

SIGNS = {
    "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"], "==": ["!="], "!=": ["=="],
    "&&": ["||"], "||": ["&&"], "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["*"], "|": ["&"], "&": ["|"],
    "+=": ["-="], "-=": ["+="], "|=": ["&="], "&=": ["|="],
}
TURNED = {"true": "false", "false": "true", "++": "--", "--": "++", "min": "max", "max": "min"}
# What stands for another: limits of kinds of statements that a change would only break.
NO_STATEMENT = set("""using namespace template class struct enum static constexpr const auto public private protected
    friend typedef case default if else for while do switch try catch extern inline virtual explicit return""".split())
OPENING, CLOSING = "([{", ")]}"


@dataclass(frozen=True)
class Token:
    kind: str
    text: str
    begin: int
    spaced: bool  # blanks on both sides

    @property
    def end(self):
        return self.begin + len(self.text)


@dataclass(frozen=True)
class Mutant:
    file: str
    kind: str
    begin: int
    end: int
    text: str


def tokens_of(source):
    found = []
    for match in TOKEN.finditer(source):
        if match.lastgroup != "skip":
            around = source[match.start() - 1:match.start()] + source[match.end():match.end() + 1]
            found.append(Token(match.lastgroup, match.group(), match.start(), len(around.split()) == 0))
    return found


def matching(tokens, at):
    """Where the bracket that opens at a token closes."""
    depth = 0
    for i in range(at, len(tokens)):
        if tokens[i].text in OPENING:
            depth += 1
        elif tokens[i].text in CLOSING:
            depth -= 1
            if depth == 0:
                return i
    return len(tokens) - 1


def left_out(tokens):
    """Tokens of what only the compiler reads: template heads and static assertions."""
    out = set()
    for i, token in enumerate(tokens[:-1]):
        if token.text == "static_assert":
            out.update(range(i, matching(tokens, i + 1)))
        elif token.text == "template":
            end = i
            while end + 1 < len(tokens) and tokens[end].text != ">":
                end += 1
            out.update(range(i, end + 1))
    return out


class Finder:
    def __init__(self, file, source, siblings):
        self.file = file
        self.source = source
        self.siblings = siblings
        self.tokens = tokens_of(source)
        self.found = []

    def all(self):
        out = left_out(self.tokens)
        for i, token in enumerate(self.tokens):
            if i in out:
                continue
            self.operators(i, token)
            self.constants(i, token)
            self.conditions(i, token)
            self.statements(i, token)
        return self.found

    def text(self, i):
        return self.tokens[i].text if 0 <= i < len(self.tokens) else ""

    def add(self, kind, begin, end, text):
        self.found.append(Mutant(self.file, kind, begin, end, text))

    def replace(self, kind, token, text):
        self.add(kind, token.begin, token.end, text)

    def operators(self, i, token):
        if self.text(i - 1) == "operator":
            return
        if token.spaced and token.kind == "sign":
            for other in SIGNS.get(token.text, []):
                self.replace("operator", token, other)
        if token.text == "!" and (self.text(i + 1) == "(" or self.tokens[i + 1].kind == "name"):
            self.replace("operator", token, "")
        if token.text in ("++", "--", "min", "max") and self.text(i + 1) != ">":
            self.replace("operator", token, TURNED[token.text])

    def constants(self, i, token):
        if token.kind == "number" and not token.text.startswith("0x"):
            digits = re.match(r"[0-9']+", token.text).group()
            value, rest = int(digits.replace("'", "")), token.text[len(digits):]
            for other in {value + 1, value - 1} if value else {1}:
                self.replace("constant", token, f"{other}{rest}")
        elif token.text in ("true", "false"):
            self.replace("constant", token, TURNED[token.text])
        elif re.match(r"k[A-Z]", token.text) and self.text(i + 1) not in ("=", "{", "[", "::", "(", ".") and \
                self.text(self.first_of_name(i) - 1) != "using":
            begin = self.tokens[self.first_of_name(i)].begin
            self.add("constant", begin, token.end, f"({self.source[begin:token.end]} + 1)")
        elif self.text(i + 1) == "::" and self.text(self.first_of_name(i) - 1) != "case":
            now = self.text(i + 2)
            for names in self.siblings.get(token.text, []):
                if now in names:
                    self.replace("constant", self.tokens[i + 2], names[(names.index(now) + 1) % len(names)])

    def first_of_name(self, i):
        """Where a name begins with all that it is qualified by."""
        while self.text(i - 1) == "::":
            i -= 2
        return i

    def conditions(self, i, token):
        if token.text != "if" or self.text(i + 1) != "(":
            return
        end = matching(self.tokens, i + 1)
        begin, behind = self.tokens[i + 1].end, self.tokens[end].begin
        if any(self.text(k) in ("=", ";") for k in range(i + 2, end)):
            return
        condition = self.source[begin:behind]
        self.add("condition", begin, behind, f"true || ({condition})")
        self.add("condition", begin, behind, f"false && ({condition})")

    def statements(self, i, token):
        """A call, an assignment or a jump that is left out."""
        if token.kind != "name" or token.text in NO_STATEMENT or self.text(i - 1) not in (";", "{", "}", ")", "else"):
            return
        end = i
        while end < len(self.tokens) and self.text(end) != ";":
            if self.text(end) in CLOSING:
                return
            end = matching(self.tokens, end) + 1 if self.text(end) in OPENING else end + 1
        if end < len(self.tokens) and not self.declares(i, end):
            self.add("statement", token.begin, self.tokens[end].begin, "")

    def declares(self, begin, end):
        """Two names beside each other begin a declaration, or so does a type with a template's arguments."""
        if self.text(begin) in ("throw", "break", "continue"):
            return False
        for i in range(begin, end):
            if self.text(i) in ("(", "=", "[", "+=", "-=", ".", "->"):
                return False
            if self.tokens[i + 1].kind == "name" and (self.tokens[i].kind == "name" or self.text(i) in (">", "*", "&")):
                return True
        return False


def siblings_in(headers):
    """The names in every scoped enumeration, by the enumeration's name, which several may have."""
    found = {}
    for header in headers:
        text = re.sub(r"//[^\n]*", "", header)
        for name, body in re.findall(r"enum class (\w+)[^{;]*\{([^}]*)\}", text):
            names = re.findall(r"(\w+)(?:\s*=[^,]*)?\s*(?:,|$)", body.strip())
            if len(names) > 1:
                found.setdefault(name, []).append(names)
    return found
