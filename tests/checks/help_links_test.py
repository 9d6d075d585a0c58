"""The pages of the help: each link, picture and style sheet is there, with its anchor; links lead from the first page to
each; and each command of the menus is described, by its caption, on the page of its menu."""

import re
import tempfile
import unittest
from html.parser import HTMLParser
from pathlib import Path
from urllib.parse import unquote, urlsplit

ROOT = Path(__file__).resolve().parents[2]
HELP = ROOT / "help"
COMMANDS = ROOT / "src/shell/commands/CommandTable.cpp"

MENU_PAGES = {
    "mnuFile": "file.html", "mnuEdit": "edit.html", "mnuSearch": "find.html", "mnuLanguages": "languages.html",
    "mnuFavorites": "project.html", "mnuTools": "tools.html", "mnuView": "view.html", "mnuMacro": "macro.html",
    "mnuWindow": "window.html", "mnuHelp": "about.html",
}

# A row of the table: a menu, a mark or an entry, with the names of its parent and its own, and its caption.
ROW = re.compile(r'(?:menu\(|mark\(|\{)"(\w*)", "(\w+)", "([^"]*)"([^\n]*(?:\n {5,}[^\n]*)?)')
HIDDEN = "false, false}"


class Page(HTMLParser):
    """What a page refers to, what can be referred to in it, and what the first column of its tables lists."""

    def __init__(self, path):
        super().__init__()
        self.references, self.anchors, self.listed = [], [], set()
        self._column, self._open, self._text = 0, [], ""
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attributes):
        given = dict(attributes)
        self.references += [given[name] for name in ("href", "src") if name in given]
        self.anchors += [given["id"]] if "id" in given else []
        if tag == "tr":
            self._column = 0
        if tag == "td":
            self._column, self._text = self._column + 1, ""
        self._open.append(tag)

    def handle_data(self, data):
        if "kbd" not in self._open:
            self._text += data

    def handle_endtag(self, tag):
        while self._open and self._open.pop() != tag:
            pass
        if tag == "td" and self._column == 1:
            self.listed |= {" ".join(part.split()) for part in self._text.split(",")}


def pagesOf(folder):
    return {path: Page(path) for path in sorted(folder.resolve().glob("*.html"))}


def fault(path, reference, pages):
    """What is wrong with a reference in the page of this path; nothing when it is good."""
    link = urlsplit(reference)
    if link.scheme:
        return f"{path.name}: {reference} leads out of the help"
    target = (path.parent / unquote(link.path)).resolve() if link.path else path
    if not target.is_file():
        return f"{path.name}: {reference} is not there"
    if link.fragment and (target not in pages or link.fragment not in pages[target].anchors):
        return f"{path.name}: {reference} has no such anchor"
    return None


def reachedFrom(first, pages):
    """The pages to which links lead, directly or by way of others."""
    reached, todo = set(), [first]
    while todo:
        path = todo.pop()
        if path not in pages or path in reached:
            continue
        reached.add(path)
        todo += [(path.parent / unquote(urlsplit(each).path)).resolve() for each in pages[path].references]
    return reached


def faults(folder):
    pages = pagesOf(folder)
    found = [fault(path, reference, pages) for path, page in pages.items() for reference in page.references]
    found += [f"{path.name}: #{anchor} stands twice" for path, page in pages.items()
              for anchor in sorted({each for each in page.anchors if page.anchors.count(each) > 1})]
    reached = reachedFrom(folder.resolve() / "main.html", pages)
    found += [f"{path.name}: main.html does not lead here" for path in pages if path not in reached]
    return [each for each in found if each]


def commandsOf(table):
    """The visible commands of a table: menu of the bar, and caption without mnemonic and dots."""
    parents, commands = {}, []
    for parent, name, caption, rest in ROW.findall(table):
        if HIDDEN in rest:
            continue
        parents[name] = parents.get(parent, name) if parent else name
        if parent:
            commands.append((parents[name], caption.replace("&", "").rstrip(". ")))
    return commands


def undescribed(folder, table):
    pages = {path.name: page for path, page in pagesOf(folder).items()}
    return [f"{MENU_PAGES.get(menu, menu)}: {caption} is not described" for menu, caption in commandsOf(table)
            if menu not in MENU_PAGES or MENU_PAGES[menu] not in pages
            or caption.rstrip(".") not in {each.rstrip(".") for each in pages[MENU_PAGES[menu]].listed}]


class HelpLinks(unittest.TestCase):
    def test_every_reference_of_the_help_leads_somewhere(self):
        self.assertEqual(faults(HELP), [])

    def test_what_leads_nowhere_is_found(self):
        with tempfile.TemporaryDirectory() as name:
            folder = Path(name)
            (folder / "main.html").write_text('<a href="gone.html"></a><a href="#here"></a><p id="here"></p>'
                                              '<img src="gone.svg"><a href="a.html#gone"></a><a href="https://a/"></a>')
            (folder / "a.html").write_text('<a href="main.html#here"></a><a href="c.html"></a>')
            (folder / "b.html").write_text('<a href="d.html"></a>')
            (folder / "c.html").write_text('<p id="x"></p><p id="x"></p>')
            (folder / "d.html").write_text('<a href="b.html"></a>')
            self.assertEqual(faults(folder), [
                "main.html: gone.html is not there", "main.html: gone.svg is not there",
                "main.html: a.html#gone has no such anchor", "main.html: https://a/ leads out of the help",
                "c.html: #x stands twice", "b.html: main.html does not lead here",
                "d.html: main.html does not lead here"])


class HelpOfCommands(unittest.TestCase):
    def test_every_command_is_described_on_the_page_of_its_menu(self):
        table = COMMANDS.read_text(encoding="utf-8")
        self.assertEqual({menu for menu, _ in commandsOf(table)}, set(MENU_PAGES))
        # One for each row with a caption, but for the menus of the bar and what is hidden.
        rows = re.findall(r'^    (?:menu\(|mark\(|\{)"\w+"', table, re.MULTILINE)
        self.assertEqual(len(commandsOf(table)), len(rows) - table.count(HIDDEN))
        self.assertEqual(undescribed(HELP, table), [])

    def test_what_is_not_described_is_found(self):
        table = ('    menu("", "mnuFile", "&File"),\n'
                 '    {"mnuFile", "mnuOpen", "&Open...", "Ctrl+O", "", on(&A::Open)},\n'
                 '    menu("mnuFile", "mnuSub", "Sub"),\n'
                 '    {"mnuSub", "mnuDeep", "Deep", "", "", on(&A::Deep)},\n'
                 '    {"mnuSub", "mnuGone", "Gone", "", "",\n     on(&A::Gone)},\n'
                 '    {"mnuFile", "mnuHidden", "Hidden", "", "", on(&A::Hidden), Always, false, false},\n'
                 '    gap("mnuFile", "mnuSep"),\n'
                 '    menu("", "mnuNew", "New"),\n'
                 '    mark("mnuNew", "mnuAlso", "Also", "", on(&A::Also)),\n')
        with tempfile.TemporaryDirectory() as name:
            folder = Path(name)
            (folder / "file.html").write_text("<p>Gone</p><table><tr><td>Open, <kbd>Gone</kbd></td><td>Gone</td></tr>"
                                              "<tr><td>Sub,\nDeep</td></tr></table>")
            self.assertEqual(undescribed(folder, table), ["file.html: Gone is not described",
                                                          "mnuNew: Also is not described"])


if __name__ == "__main__":
    unittest.main()
