#!/usr/bin/env python3
"""Finishes the site that Doxygen has made: site.py FOLDER

Each page gets the contents, in the order in which one reads; the search gets its index; pages that nothing leads to
go. Then each link has to lead to a file that is there, and to a place in it: a dead one fails. Links to other sites
are not followed.
"""
import html, json, re, sys
from html.parser import HTMLParser
from pathlib import Path
from urllib.parse import unquote, urlsplit

# What is not named here comes behind, by name.
PAGES = ["index", "md_docs_cookbook", "md_docs_format", "md_docs_pitfalls", "md_docs_zones", "md_docs_moving",
         "md_docs_beside", "md_docs_guarantees", "md_docs_platforms", "md_docs_performance", "md_CHANGELOG"]
CLASSES = ["ka_date", "ka_time", "ka_time_and_date", "ka_time_period", "ka_time_zone", "ka_calendar_date",
           "ka_time_zone_rule", "ka_simple_time_zone_rule", "ka_stopwatch", "ka_wint", "ka_time_varnel_error"]
# What readers look for, and have to find.
SOUGHT = ["strftime", "iso", "time_t"]
HEADERS = ["time_varnel", "date", "time_of_day", "timedate", "tperiod", "zone", "zone_rule", "calendar"]
SECTION = {"h1", "h2", "h3", "h4"}


class Page(HTMLParser):
    """The links and places of a page, and its text by section: [title, place, text]."""

    def __init__(self, text):
        super().__init__()
        self.links, self.places, self.sections = [], {""}, [["", "", ""]]
        self.title = html.unescape(re.search("<title>(?:[^<:]*: )?([^<]*)</title>", text)[1])
        self.title = re.sub(r" (Class|Struct|File) (Template )?Reference$", "", self.title)
        self.in_heading, self.skipped = False, True  # until the page proper
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        self.links += [values[name] or "" for name in ("href", "src") if name in values]
        place = values.get("id") or values.get("name") if tag == "a" or "id" in values else None
        if place:
            self.places.add(place)
        self.skipped &= tag != "main"
        if tag in SECTION:
            self.sections.append(["", "", ""])
            self.in_heading = True
        if tag == "a" and place and not self.sections[-1][1]:
            self.sections[-1][1] = place
        elif tag == "a" and re.fullmatch("a[0-9a-f]{32}", place or ""):
            self.sections.append(["", place, ""])

    def handle_endtag(self, tag):
        self.in_heading &= tag not in SECTION

    def handle_data(self, text):
        if self.skipped:
            return
        self.sections[-1][0 if self.in_heading else 2] += text


def ordered(names, order):
    return sorted(names, key=lambda name: (order.index(name) if name in order else len(order), name))


def contents(root, pages):
    def group(title, prefix, suffix, order):
        names = {path.stem[len(prefix):len(path.stem) - len(suffix)] for path in pages
                 if path.stem.startswith(prefix) and path.stem.endswith(suffix)}
        named = {name.replace("__", "_"): name for name in names if "-members" not in name}
        links = [(f"{prefix}{named[name]}{suffix}.html", f"time/{name}.h" if suffix else name)
                 for name in ordered(named, order)]
        return f"<h2>{title}</h2>" + listed(links)

    def listed(links):
        return "<ul>" + "".join(f'<li><a href="{link}">{html.escape(text)}</a></li>' for link, text in links) + "</ul>"

    manual = ordered({path.stem for path in pages if path.stem == "index" or path.stem.startswith("md_")}, PAGES)
    first = [(f"{stem}.html", "Start here" if stem == "index" else pages[root / f"{stem}.html"].title)
             for stem in manual]
    return ("<details><summary>Contents</summary>" + listed(first) + group("Classes", "class", "", CLASSES)
            + group("Headers", "", "_8h", HEADERS) + "</details>")


def reachable(root, pages):
    found, ahead = set(), [root / "index.html"]
    while ahead:
        path = ahead.pop()
        if path in found or path not in pages:
            continue
        found.add(path)
        ahead += [(root / unquote(urlsplit(link).path)).resolve() for link in pages[path].links if link]
    return found


def search_index(pages):
    sections = []
    for path, page in sorted(pages.items()):
        for title, place, text in page.sections:
            text = " ".join(text.lower().split())
            if text:
                link = path.name + (f"#{place}" if place else "")
                sections.append({"title": title.strip("\u25c6\u00a0 ") or page.title, "page": page.title, "link": link, "text": text})
    return "const sections = " + json.dumps(sections, ensure_ascii=False, separators=(",", ":")) + ";\n"


def dead_links(root, pages):
    for path, page in pages.items():
        for link in page.links:
            target = urlsplit(link)
            if target.scheme:
                continue
            file = (path.parent / unquote(target.path)).resolve() if target.path else path
            if not file.is_file() or (file in pages and unquote(target.fragment) not in pages[file].places):
                yield f"{path.relative_to(root)}: {link}"


def read(root):
    return {path: Page(path.read_text()) for path in root.glob("*.html")}


def main(folder):
    root = Path(folder).resolve()
    nav = contents(root, read(root))
    for path in root.glob("*.html"):
        text = path.read_text().replace('<nav id="site-contents"></nav>', f'<nav id="site-contents">{nav}</nav>')
        path.write_text(text.replace(f'<li><a href="{path.name}">', f'<li><a class="here" href="{path.name}">'))
    pages = read(root)
    for path in pages.keys() - reachable(root, pages):
        path.unlink()
    pages = read(root)
    (root / "index.js").write_text(search_index(pages))
    dead = sorted(set(dead_links(root, pages)))
    texts = [f"{section[0]} {section[2]}".lower() for page in pages.values() for section in page.sections]
    dead += [f"the search does not find {word}" for word in SOUGHT
             if not any(re.search(rf"\b{word}\b", text) for text in texts)]
    print(f"{sum(len(page.links) for page in pages.values())} links in {len(pages)} pages, {len(dead)} dead")
    sys.exit("\n".join(dead) if dead else 0)


main(sys.argv[1])
