"""A page of the book as HTML for the help viewer."""
import re
from html import escape

import book

# The viewer's contents, index and search know single-byte texts alone; what this code page lacks is written
# as a character reference.
CODE_PAGE = 'windows-1252'

FRAME = '''<!DOCTYPE html PUBLIC "-//W3C//DTD HTML 4.01//EN" "http://www.w3.org/TR/html4/strict.dtd">
<html lang="{language}">
<head>
<meta http-equiv="Content-Type" content="text/html; charset={code_page}">
<title>{title}</title>
<link rel="stylesheet" type="text/css" href="help.css">
</head>
<body>
{body}</body>
</html>
'''


def html_name(page):
    """All pages lie in one folder: the compiler and old viewers know no way up."""
    return page[:-len('.md')].replace('/', '-') + '.html'


def anchors(tokens):
    """The places of a page, named as its readers on the web know them."""
    taken = {}
    for before, token in zip(tokens, tokens[1:]):
        if before.type == 'heading_open':
            name = re.sub(r'[^\w\- ]', '', book.plain(token).lower()).replace(' ', '-')
            count = taken[name] = taken.get(name, -1) + 1
            before.attrSet('id', f'{name}-{count}' if count else name)
            yield before.attrGet('id')


def relink(page, inline, pictures):
    """Leads links to the pages made here; what lies outside the book stays as text."""
    opened = []
    for part in inline.children:
        if part.type == 'image':
            part.attrSet('src', book.target(page, part.attrGet('src'))[0])
            pictures.add(part.attrGet('src'))
        elif part.type == 'link_open':
            link = part.attrGet('href')
            leads_to, place = book.target(page, link)
            inside = book.is_foreign(link) or (leads_to or '').endswith('.md')
            if inside and not book.is_foreign(link):
                file = '' if leads_to == page else html_name(leads_to)
                part.attrSet('href', file + ('#' + place if place else ''))
            opened.append(inside)
            part.hidden = not inside
            if not inside:
                part.type = part.tag = ''
        elif part.type == 'link_close' and not opened.pop():
            part.type = part.tag = ''
    inline.children = [part for part in inline.children if part.type]


def to_html(docs, page):
    """The page's bytes and the pictures on it."""
    markdown = book.parser()
    tokens = markdown.parse((docs / page).read_text(encoding='utf-8'))
    pictures = set()
    list(anchors(tokens))
    for token in tokens:
        if token.type == 'inline':
            relink(page, token, pictures)
    text = FRAME.format(
        language='de' if '/de/' in '/' + page else 'en',
        code_page=CODE_PAGE,
        title=escape(book.title(docs, page)),
        body=markdown.renderer.render(tokens, markdown.options, {}))
    return text.encode(CODE_PAGE, 'xmlcharrefreplace'), pictures
