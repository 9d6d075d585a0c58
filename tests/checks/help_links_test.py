"""The pages of the help: each link, picture and style sheet is there, with its anchor, and the first page leads to each."""

import tempfile
import unittest
from html.parser import HTMLParser
from pathlib import Path
from urllib.parse import unquote, urlsplit

HELP = Path(__file__).resolve().parents[2] / "help"


class Page(HTMLParser):
    """What a page refers to, and what can be referred to in it."""

    def __init__(self, path):
        super().__init__()
        self.references, self.anchors = [], set()
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attributes):
        given = dict(attributes)
        self.references += [given[name] for name in ("href", "src") if name in given]
        self.anchors |= {given["id"]} if "id" in given else set()


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


def faults(folder):
    pages = {path: Page(path) for path in sorted(folder.resolve().glob("*.html"))}
    found = [fault(path, reference, pages) for path, page in pages.items() for reference in page.references]
    first = folder.resolve() / "main.html"
    named = {first} | {first.parent / urlsplit(reference).path for reference in pages[first].references}
    found += [f"{path.name}: main.html does not lead here" for path in pages if path not in named]
    return [each for each in found if each]


class HelpLinks(unittest.TestCase):
    def test_every_reference_of_the_help_leads_somewhere(self):
        self.assertEqual(faults(HELP), [])

    def test_what_leads_nowhere_is_found(self):
        with tempfile.TemporaryDirectory() as name:
            folder = Path(name)
            (folder / "main.html").write_text('<a href="gone.html"></a><a href="#here"></a><p id="here"></p>'
                                              '<img src="gone.svg"><a href="a.html#gone"></a><a href="https://a/"></a>')
            (folder / "a.html").write_text('<a href="main.html#here"></a>')
            (folder / "b.html").write_text("")
            self.assertEqual(faults(folder), [
                "main.html: gone.html is not there", "main.html: gone.svg is not there",
                "main.html: a.html#gone has no such anchor", "main.html: https://a/ leads out of the help",
                "b.html: main.html does not lead here"])


if __name__ == "__main__":
    unittest.main()
