"""A help file as readers of others unpack it."""
import subprocess
from html.parser import HTMLParser

CODE_PAGE = 'cp1252'


class Page(HTMLParser):
    """What a browser makes of a page: text, links, pictures, places."""

    def __init__(self, content):
        super().__init__()
        self.title = self.text = ''
        self.links, self.pictures, self.places = [], [], []
        self.inside = []
        self.feed(content.decode(CODE_PAGE))

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        self.inside.append(tag)
        if 'id' in attributes:
            self.places.append(attributes['id'])
        if tag == 'a':
            self.links.append(attributes['href'])
        if tag == 'img':
            self.pictures.append(attributes['src'])
            self.text += ' ' + attributes['alt']

    def handle_endtag(self, tag):
        self.inside.pop()

    def handle_data(self, data):
        if 'title' in self.inside:
            self.title += data
        else:
            self.text += data


class SiteMap(HTMLParser):
    """The entries of contents or index in their order: depth, name, page."""

    def __init__(self, content):
        super().__init__()
        self.depth, self.entries = 0, []
        self.feed(content.decode(CODE_PAGE))

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        if tag == 'ul':
            self.depth += 1
        elif tag == 'object':
            self.entries.append([self.depth, '', ''])
        elif tag == 'param' and attributes['name'] == 'Name':
            self.entries[-1][1] = attributes['value']
        elif tag == 'param' and attributes['name'] == 'Local':
            self.entries[-1][2] = attributes['value']

    def handle_endtag(self, tag):
        if tag == 'ul':
            self.depth -= 1


def unpacked(folder, command):
    folder.mkdir()
    subprocess.run(command, cwd=folder, check=True, capture_output=True)
    return {path.relative_to(folder).as_posix(): path.read_bytes()
            for path in folder.rglob('*') if path.is_file()}


class HelpFile:
    def __init__(self, path, folder):
        self.path = path
        self.files = unpacked(folder / 'chmlib', ['extract_chmLib', path, '.'])
        self.files_of_another_reader = unpacked(folder / '7z', ['7z', 'x', path])
        self.pages = {name: Page(content) for name, content in self.files.items() if name.endswith('.html')}

    def system(self):
        """The settings: their codes and contents."""
        data, place, entries = self.files['#SYSTEM'], 4, {}
        while place + 4 <= len(data):
            code, length = (int.from_bytes(data[place + at:place + at + 2], 'little') for at in (0, 2))
            entries[code] = data[place + 4:place + 4 + length]
            place += 4 + length
        return entries

    def text_setting(self, code):
        return self.system()[code].rstrip(b'\0').decode(CODE_PAGE)

    def contexts(self):
        """Numbers and pages, in the order of the file."""
        table, strings = self.files['#IVB'], self.files['#STRINGS']
        numbers = [int.from_bytes(table[at:at + 4], 'little') for at in range(4, len(table), 4)]
        assert int.from_bytes(table[:4], 'little') == len(table) - 4
        return [(number, strings[offset:strings.index(b'\0', offset)].decode(CODE_PAGE))
                for number, offset in zip(numbers[::2], numbers[1::2])]

    def contents(self):
        return SiteMap(self.files[self.text_setting(0)]).entries

    def index(self):
        return SiteMap(self.files[self.text_setting(1)]).entries
