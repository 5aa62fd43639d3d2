"""Says which links within a site lead nowhere; status 1 when there is one.

    check_links.py FOLDER
"""

import sys
from html.parser import HTMLParser
from pathlib import Path
from urllib.parse import unquote, urlsplit


class Page(HTMLParser):
    """The links of a page, and the places in it that links may name."""

    def __init__(self, text):
        super().__init__()
        self.links, self.places = set(), {""}
        self.feed(text)

    def handle_starttag(self, tag, attrs):
        for name, value in attrs:
            if name == "id" or (name == "name" and tag == "a"):
                self.places.add(value)
            elif name in ("href", "src") and value:
                self.links.add(value)


def dead_links(pages, file):
    """The links of one page that lead to no file, or to no place in a page."""
    for link in sorted(pages[file].links):
        url = urlsplit(link)
        if url.scheme or url.netloc:
            continue
        target = (file.parent / unquote(url.path)).resolve() if url.path else file
        known = pages.get(target)
        if not target.is_file() or (known and unquote(url.fragment) not in known.places):
            yield link


def main(folder):
    """Prints the dead links, and what was looked at."""
    files = sorted(Path(folder).resolve().rglob("*.html"))
    pages = {file: Page(file.read_text("utf-8")) for file in files}
    dead = [f"{file}: {link}" for file in files for link in dead_links(pages, file)]
    count = sum(len(page.links) for page in pages.values())
    print(*dead, f"{count} links on {len(files)} pages, {len(dead)} dead", sep="\n")
    return bool(dead) or not files


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
