"""Makes the project of the help file out of docs/: pages, contents, index and contexts.

usage: make_project.py DOCS FOLDER TITLE OUTPUT
"""
import shutil
import sys
from pathlib import Path

import book
import page
import project


def make(docs, folder, title, output):
    trees = book.trees(docs)
    pages = [name for root in trees.values() for name in root.pages()]
    pictures = set()
    for name in pages:
        file = folder / page.html_name(name)
        text, shown = page.to_html(docs, name)
        file.write_bytes(text)
        pictures |= shown
    for picture in pictures:
        (folder / picture).parent.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(docs / picture, folder / picture)
    shutil.copyfile(Path(__file__).parent / 'help.css', folder / 'help.css')
    contexts = book.contexts(docs, trees)
    project.write(folder / 'help.hhp', project.settings(trees, contexts, pictures, title, output))
    project.write(folder / 'contents.hhc', project.contents(trees))
    project.write(folder / 'index.hhk', project.index(docs, trees))


if __name__ == '__main__':
    try:
        make(Path(sys.argv[1]), Path(sys.argv[2]), *sys.argv[3:5])
    except book.BookError as error:
        sys.exit(f'docs: {error}')
