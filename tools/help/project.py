"""The project files of the help compiler: settings and contexts, contents, index."""
from html import escape

import book
from page import CODE_PAGE, html_name

# The search finds words without umlauts alone, as the compiler takes an umlaut for the end of a word; the others
# stand in the index.
SETTINGS = '''[OPTIONS]
Compatibility=1.1 or later
Compiled file={output}
Contents file=contents.hhc
Index file=index.hhk
Default topic={start}
Default window=main
Title={title}
Language=0x0407 German (Germany)
Full-text search=Yes
Binary TOC=No
Binary Index=No

[WINDOWS]
main="{title}","contents.hhc","index.hhk","{start}","{start}",,,,,0x23520,,0x387e,,,,,,,,0

[FILES]
{files}

[ALIAS]
{aliases}

[MAP]
{map}
'''

SITE_MAP = '''<!DOCTYPE HTML PUBLIC "-//IETF//DTD HTML//EN">
<HTML>
<HEAD>
</HEAD>
<BODY>
{list}</BODY>
</HTML>
'''


def write(path, text):
    """Site maps have no character set of their own, so what the code page lacks cannot stand in them."""
    path.write_bytes(text.replace('\n', '\r\n').encode(CODE_PAGE))


def item(name, page=''):
    leads_to = f'<param name="Local" value="{html_name(page)}">' if page else ''
    return f'<LI><OBJECT type="text/sitemap"><param name="Name" value="{escape(name)}">{leads_to}</OBJECT>\n'


def contents(trees):
    def lines(entries):
        inside = ''.join(item(entry.title, entry.page) + lines(entry.children) for entry in entries)
        return f'<UL>\n{inside}</UL>\n' if entries else ''

    roots = [book.Entry(name, root.page, root.children) for name, root in trees.items()]
    return SITE_MAP.format(list=lines(roots))


def collated(word):
    """The place of a word in a German index."""
    return word.casefold().translate(str.maketrans({'ä': 'a', 'ö': 'o', 'ü': 'u'})), word


def index(docs, trees):
    """A word that stands for pages of both trees says which one."""
    found = {}
    for name, root in trees.items():
        for page in root.pages():
            for word in book.keywords(docs, page):
                found.setdefault(word, []).append((name, page))
    items = []
    for word, places in found.items():
        if len(places) != len({name for name, _ in places}):
            raise book.BookError(f'"{word}" stands in the index for {places}')
        for name, page in places:
            items.append((f'{word} ({name})' if len(places) > 1 else word, page))
    items.sort(key=lambda pair: collated(pair[0]))
    return SITE_MAP.format(list='<UL>\n' + ''.join(item(*pair) for pair in items) + '</UL>\n')


def settings(trees, contexts, pictures, title, output):
    pages = [page for root in trees.values() for page in root.pages()]
    # Contexts stand in the help file in the order of the pages; they are looked up in the order of their numbers.
    numbers = {page: number for number, page in contexts.items()}
    pages.sort(key=lambda page: numbers.get(page, 0))
    return SETTINGS.format(
        output=output,
        start=html_name(trees['English'].page),
        title=title,
        files='\n'.join([html_name(page) for page in pages] + ['help.css'] + sorted(pictures)),
        aliases='\n'.join(f'context_{number}={html_name(page)}' for number, page in sorted(contexts.items())),
        map='\n'.join(f'#define context_{number} {number}' for number in sorted(contexts)))
