"""What has to be so in the help file. Each check is given the checkout and the file."""
import re

from chm.chm import CHMFile

EDITIONS = (('de', 0), ('en', 1000))


def description(root):
    return (root / 'src/automation/KRXDialogs.idl').read_text(encoding='utf-8')


def members(root):
    """Help contexts and names of the members of the interface."""
    found = re.findall(r'helpcontext\((\d+)\)[^\]]*?\]\s*HRESULT (\w+)\(', description(root))
    assert len({name for _, name in found}) == 20, found
    return {int(number): name for number, name in found}


def markdown_pages(root):
    """Pages of the book with their names in the help file."""
    docs = root / 'docs'
    paths = sorted(path.relative_to(docs).as_posix() for path in docs.rglob('*.md'))
    return {path.replace('/', '-').replace('.md', '.html'): (docs / path).read_text(encoding='utf-8')
            for path in paths}


def two_readers_find_the_same(_, file):
    assert file.files == file.files_of_another_reader


def has_the_name_that_the_type_library_gives(root, file):
    assert f'helpfile("{file.path.name}")' in description(root)


def has_each_page_with_its_title(root, file):
    pages = markdown_pages(root)
    assert set(file.pages) == set(pages)
    for name, text in pages.items():
        title = re.search(r'^# (.+)$', text, re.M)[1].replace('`', '')
        assert file.pages[name].title == title, name


def has_every_word_with_umlauts(root, file):
    word = re.compile(r'\w*[\u0080-\uffff]\w*')
    count = 0
    for name, text in markdown_pages(root).items():
        visible = re.sub(r'<!--.*?-->|\]\([^)]*\)', '', text, flags=re.S)
        wanted = set(word.findall(visible))
        assert wanted <= set(word.findall(file.pages[name].text)), (name, wanted - set(word.findall(file.pages[name].text)))
        count += len(wanted)
    assert count > 200, count


def links_lead_to_pages_and_places(_, file):
    count = 0
    for name, page in file.pages.items():
        assert all(picture in file.files for picture in page.pictures), name
        for link in page.links:
            target, _, place = link.partition('#')
            assert target == '' or target in file.pages, (name, link)
            assert not place or place in file.pages[target or name].places, (name, link)
            count += 1
    assert count > 200, count


def contents_hold_each_page_once_in_two_trees(_, file):
    entries = file.contents()
    assert [name for depth, name, _ in entries if depth == 1] == ['Deutsch', 'English']
    assert sorted(page for _, _, page in entries if page) == sorted(file.pages)
    tree = ''
    for depth, name, page in entries:
        tree = name if depth == 1 else tree
        assert not page or ('de-' in page) == (tree == 'Deutsch'), page
        assert depth == 1 or not page or name == file.pages[page].title, name


def index_leads_to_every_member_in_both_languages(root, file):
    entries = {name: page for _, name, page in file.index()}
    assert len(entries) == len(file.index()), 'a word stands twice'
    assert set(entries.values()) <= set(file.pages)
    for name in members(root).values():
        assert entries[f'{name} (Deutsch)'] == f'reference-de-{name}.html'
        assert entries[f'{name} (English)'] == f'reference-en-{name}.html'
    assert entries['Schaltflächen: Höhe'] == 'reference-de-ButtonMinHeight.html'
    assert entries['Passwort: ändern'] == 'reference-de-KRChangePassword.html'


def index_is_sorted_as_german_words_are(_, file):
    words = [name for _, name, _ in file.index()]
    assert words == sorted(words, key=lambda word: (word.casefold().translate(str.maketrans('äöü', 'aou')), word))


def contexts_lead_to_the_pages_of_the_members(root, file):
    expected = {}
    for edition, above in EDITIONS:
        prefix = 'de-' if edition == 'de' else ''
        expected[1 + above] = f'{prefix}README.html'
        expected[2 + above] = f'reference-{edition}-README.html'
        expected[3 + above] = f'reference-{edition}-KRMsgBoxResult.html'
        for number, name in members(root).items():
            expected[number + above] = f'reference-{edition}-{name}.html'
    assert file.contexts() == sorted(expected.items()), file.contexts()


def every_context_of_the_type_library_has_a_page(root, file):
    numbers = {int(number) for number in re.findall(r'helpcontext\((\d+)\)', description(root))}
    assert len(numbers) == 23 and numbers <= dict(file.contexts()).keys(), numbers


def tells_title_version_language_and_first_page(root, file):
    version = re.search(r'^project\(\S+ VERSION ([\d.]+)', (root / 'CMakeLists.txt').read_text(), re.M)[1]
    assert file.text_setting(3) == f'KRXDialogs {version}'
    assert file.text_setting(2) == 'README.html'
    german = 0x407
    assert int.from_bytes(file.system()[4][:4], 'little') == german


def every_file_is_found_by_its_name(_, file):
    reader = CHMFile()
    assert reader.LoadCHM(str(file.path).encode())
    for name, content in file.files.items():
        status, place = reader.ResolveObject(b'/' + name.encode())
        assert status == 0, name
        assert content == (reader.RetrieveObject(place)[1] if content else b''), name
    reader.CloseCHM()


def words_are_found_by_the_search(_, file):
    reader = CHMFile()
    assert reader.LoadCHM(str(file.path).encode())
    for word, page in ((b'twips', b'reference-en-ButtonMinHeight.html'), (b'passwort', b'reference-de-KRUserLogOn.html')):
        _, found = reader.Search(word)
        assert page in found.values(), (word, found)
    reader.CloseCHM()


def nothing_tells_where_it_was_made(root, file):
    for name, content in file.files.items():
        assert str(root).encode() not in content, name


CHECKS = (
    two_readers_find_the_same,
    has_the_name_that_the_type_library_gives,
    has_each_page_with_its_title,
    has_every_word_with_umlauts,
    links_lead_to_pages_and_places,
    contents_hold_each_page_once_in_two_trees,
    index_leads_to_every_member_in_both_languages,
    index_is_sorted_as_german_words_are,
    contexts_lead_to_the_pages_of_the_members,
    every_context_of_the_type_library_has_a_page,
    tells_title_version_language_and_first_page,
    every_file_is_found_by_its_name,
    words_are_found_by_the_search,
    nothing_tells_where_it_was_made,
)
