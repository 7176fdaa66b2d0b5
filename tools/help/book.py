"""The pages of docs/ and their order, which the lists of the contents pages (README.md) give."""
import re
from dataclasses import dataclass, field
from pathlib import Path

from markdown_it import MarkdownIt

# Each tree of the contents and the page that begins it.
TREES = {'Deutsch': 'de/README.md', 'English': 'README.md'}

# The type library's context of a page leads to its German edition, as the help texts there are German;
# the English edition has a context of its own.
CONTEXTS_ABOVE = {'Deutsch': 0, 'English': 1000}


class BookError(Exception):
    """What is wrong with the documents, for whoever writes them."""


@dataclass
class Entry:
    """A line of the contents; a heading has no page."""
    title: str
    page: str = ''
    children: list['Entry'] = field(default_factory=list)

    def pages(self):
        if self.page:
            yield self.page
        for child in self.children:
            yield from child.pages()


def parser():
    return MarkdownIt('commonmark').enable('table')


def plain(inline):
    """The text of a line of Markdown, without its marks."""
    return ''.join(part.content for part in inline.children if part.type in ('text', 'code_inline', 'softbreak'))


def target(page, link):
    """The page that a link of this page leads to, and the place on it; outside docs/ the page is None."""
    path, _, place = link.partition('#')
    if not path:
        return page, place
    parts = []
    for part in (Path(page).parent / path).parts:
        if part == '..' and not parts:
            return None, place
        if part == '..':
            parts.pop()
        else:
            parts.append(part)
    return '/'.join(parts), place


def is_foreign(link):
    return re.match(r'[a-z]+:', link) is not None


def title(docs, page):
    match = re.search(r'^# (.+)$', (docs / page).read_text(encoding='utf-8'), re.M)
    if not match:
        raise BookError(f'{page} has no title')
    return plain(parser().parse(match[1])[1])


def contexts(docs, trees):
    """Context numbers and their pages, from the line of a page that tells its context."""
    found = {}
    for name, root in trees.items():
        for page in root.pages():
            text = (docs / page).read_text(encoding='utf-8')
            match = re.search(r'^(?:\| (?:Help context|Hilfekontext) \| (\d+) \||<!-- context: (\d+) -->)$', text, re.M)
            if not match:
                continue
            number = int(match[1] or match[2]) + CONTEXTS_ABOVE[name]
            if number in found:
                raise BookError(f'{page} and {found[number]} have the context {number}')
            found[number] = page
    return found


def keywords(docs, page):
    """What a page stands under in the index: its title, and the words of its line "<!-- index: ... -->"."""
    text = (docs / page).read_text(encoding='utf-8')
    words = [title(docs, page)]
    for line in re.findall(r'^<!-- index: (.+) -->$', text, re.M):
        words += [word.strip() for word in line.split(';')]
    return list(dict.fromkeys(words))


def contents(docs, page, above=()):
    """The entries that the lists of a contents page make, those of the contents pages in it included."""
    if page in above:
        raise BookError(f'{page} contains itself')
    root = Entry(title(docs, page), page)
    levels, heading, last, in_list = [root], root, root, 0
    tokens = parser().parse((docs / page).read_text(encoding='utf-8'))
    for before, token in zip([None] + tokens, tokens):
        if token.type == 'bullet_list_open':
            levels.append(heading if not in_list else last)
            in_list += 1
        elif token.type == 'bullet_list_close':
            levels.pop()
            in_list -= 1
        elif token.type == 'inline' and before.type == 'heading_open' and before.tag == 'h2':
            heading = Entry(plain(token))
            root.children.append(heading)
        elif token.type == 'inline' and in_list:
            entry = linked(docs, page, token, above)
            if entry:
                levels[-1].children.append(entry)
                last = entry
    root.children = [child for child in root.children if child.page or child.children]
    return root


def linked(docs, page, inline, above):
    """The entry of a line that begins with a link to another page of the book."""
    first = inline.children[0]
    if first.type != 'link_open' or is_foreign(first.attrGet('href')):
        return None
    leads_to, place = target(page, first.attrGet('href'))
    if leads_to is None or place or not leads_to.endswith('.md'):
        return None
    if not (docs / leads_to).is_file():
        raise BookError(f'{page} lists {leads_to}, which is not there')
    if leads_to.endswith('README.md') and leads_to not in TREES.values():
        return contents(docs, leads_to, (*above, page))
    return Entry(title(docs, leads_to), leads_to)


def trees(docs):
    """All trees by their names; every page of the book stands in one of them, once."""
    found = {name: contents(docs, page) for name, page in TREES.items()}
    listed = [page for root in found.values() for page in root.pages()]
    there = {path.relative_to(docs).as_posix() for path in docs.rglob('*.md')}
    for page in sorted(there - set(listed)):
        raise BookError(f'{page} is in no table of contents')
    for page in sorted(page for page in set(listed) if listed.count(page) > 1):
        raise BookError(f'{page} is in the contents {listed.count(page)} times')
    return found
