"""Turns a simple HTML page into a flat OpenDocument text, whose tables, lists and pictures
LibreOffice keeps as they are (its own HTML import loses borders and widths).

Known elements: p (class plain, caption, figure), b, i, u, span style="color:#rrggbb", ol type, ul,
li, table, tr, th, td (class c; colspan, rowspan), img. Tables may stand in cells.
"""
import base64
import html
import pathlib
from html.parser import HTMLParser

TEXT_WIDTH_CM = 17.0
PIXELS_PER_CM = 37.8

PARAGRAPHS = {
    "body": 'fo:text-indent="0.85cm" fo:text-align="justify" fo:margin-bottom="0.14cm"',
    "plain": 'fo:text-align="start"',
    "caption": 'fo:text-align="center" fo:margin-top="0.1cm" fo:margin-bottom="0.1cm" '
               'fo:keep-with-next="always"',
    "figure": 'fo:text-align="center" fo:line-height="100%" fo:margin-top="0.2cm"',
    "cell": 'fo:text-align="start"',
    "centre": 'fo:text-align="center"',
}
NAMESPACES = " ".join(f'xmlns:{short}="{uri}"' for short, uri in {
    "office": "urn:oasis:names:tc:opendocument:xmlns:office:1.0",
    "style": "urn:oasis:names:tc:opendocument:xmlns:style:1.0",
    "text": "urn:oasis:names:tc:opendocument:xmlns:text:1.0",
    "table": "urn:oasis:names:tc:opendocument:xmlns:table:1.0",
    "draw": "urn:oasis:names:tc:opendocument:xmlns:drawing:1.0",
    "fo": "urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0",
    "svg": "urn:oasis:names:tc:opendocument:xmlns:svg-compatible:1.0",
    "xlink": "http://www.w3.org/1999/xlink",
}.items())


class Node:
    def __init__(self, tag, attributes=()):
        self.tag, self.attributes, self.children = tag, dict(attributes), []

    def all(self, *tags):
        return [c for c in self.children if isinstance(c, Node) and c.tag in tags]


class Tree(HTMLParser):
    """The page as nested nodes and strings."""

    def __init__(self, text):
        super().__init__()
        self.root = Node("root")
        self.open = [self.root]
        self.feed(text)

    def handle_starttag(self, tag, attrs):
        node = Node(tag, attrs)
        self.open[-1].children.append(node)
        if tag not in ("img", "meta", "link", "br"):
            self.open.append(node)

    def handle_endtag(self, tag):
        while len(self.open) > 1 and self.open.pop().tag != tag:
            pass

    def handle_data(self, data):
        self.open[-1].children.append(data)


class FlatDocument:
    def __init__(self, page):
        self.folder = page.parent
        self.automatic = []
        self.count = 0
        root = Tree(page.read_text(encoding="utf-8")).root
        body = root.all("html")[0].all("body")[0]
        self.content = self.blocks(body, "body", TEXT_WIDTH_CM)

    def named(self, stem, family, inside, attributes=""):
        self.count += 1
        name = f"{stem}{self.count}"
        self.automatic.append(
            f'<style:style style:name="{name}" style:family="{family}" {attributes}>{inside}'
            "</style:style>")
        return name

    def inline(self, children):
        out = ""
        for child in children:
            if isinstance(child, str):
                out += html.escape(" ".join(child.split("\n")), quote=False)
            elif child.tag == "img":
                out += self.picture(child.attributes)
            elif child.tag in ("b", "i", "u", "span"):
                out += f'<text:span text:style-name="{self.span_style(child)}">' \
                       f"{self.inline(child.children)}</text:span>"
            else:
                raise ValueError(f"<{child.tag}> inside a paragraph")
        return out

    def span_style(self, node):
        properties = {
            "b": 'fo:font-weight="bold" style:font-weight-asian="bold"',
            "i": 'fo:font-style="italic" style:font-style-asian="italic"',
            "u": 'style:text-underline-style="solid" style:text-underline-width="auto"',
            "span": f'fo:color="{node.attributes.get("style", "")[6:]}"',
        }[node.tag]
        return self.named("T", "text", f"<style:text-properties {properties}/>")

    def picture(self, attributes):
        width = int(attributes["width"]) / PIXELS_PER_CM
        height = int(attributes["height"]) / PIXELS_PER_CM
        data = base64.b64encode((self.folder / attributes["src"]).read_bytes()).decode("ascii")
        return (f'<draw:frame text:anchor-type="as-char" svg:width="{width:.2f}cm" '
                f'svg:height="{height:.2f}cm"><draw:image><office:binary-data>{data}'
                "</office:binary-data></draw:image></draw:frame>")

    def blocks(self, node, style, width):
        """The block elements of a node; bare text between them becomes a paragraph."""
        out, bare = "", []

        def flush():
            nonlocal out, bare
            if any(not isinstance(b, str) or b.strip() for b in bare):
                trimmed = [b.strip("\n") if isinstance(b, str) else b for b in bare]
                out += f'<text:p text:style-name="{style}">{self.inline(trimmed)}</text:p>\n'
            bare = []

        for child in node.children:
            if isinstance(child, str) or child.tag in ("b", "i", "u", "span", "img"):
                bare.append(child)
                continue
            flush()
            if child.tag == "p":
                kind = child.attributes.get("class", style)
                out += f'<text:p text:style-name="{kind}">{self.inline(child.children)}</text:p>\n'
            elif child.tag in ("ol", "ul"):
                out += self.list(child, width)
            elif child.tag == "table":
                out += self.table(child, width)
            else:
                raise ValueError(f"<{child.tag}> between paragraphs")
        flush()
        return out

    def list(self, node, width, level=1, style=None):
        if style is None:
            style = self.list_style(node)
        out = f'<text:list text:style-name="{style}">' if level == 1 else "<text:list>"
        for item in node.all("li"):
            nested = item.all("ol", "ul")
            item.children = [c for c in item.children if c not in nested]
            out += f"<text:list-item>{self.blocks(item, 'plain', width)}"
            out += "".join(self.list(n, width, level + 1, style) for n in nested)
            out += "</text:list-item>"
        return out + "</text:list>\n"

    def list_style(self, node):
        self.count += 1
        levels, at = "", node
        for level in range(1, 10):
            indent = (f'<style:list-level-properties text:list-level-position-and-space-mode='
                      f'"label-alignment"><style:list-level-label-alignment '
                      f'text:label-followed-by="listtab" text:list-tab-stop-position='
                      f'"{0.85 + 0.75 * level:.2f}cm" fo:text-indent="-0.75cm" '
                      f'fo:margin-left="{0.85 + 0.75 * level:.2f}cm"/></style:list-level-properties>')
            if at is not None and at.tag == "ul":
                levels += (f'<text:list-level-style-bullet text:level="{level}" '
                           f'text:bullet-char="●">{indent}</text:list-level-style-bullet>')
            else:
                kind = at.attributes.get("type", "1") if at is not None else "1"
                levels += (f'<text:list-level-style-number text:level="{level}" '
                           f'style:num-suffix="." style:num-format="{kind}">{indent}'
                           "</text:list-level-style-number>")
            at = next((n for item in at.all("li") for n in item.all("ol", "ul")), None) \
                if at is not None else None
        self.automatic.append(f'<text:list-style style:name="L{self.count}">{levels}'
                              "</text:list-style>")
        return f"L{self.count}"

    def table(self, node, width):
        rows = node.all("tr")
        columns = sum(int(c.attributes.get("colspan", 1)) for c in rows[0].all("td", "th"))
        table = self.named("Tab", "table", f'<style:table-properties style:width="{width:.2f}cm" '
                           'table:align="center"/>')
        share = self.column_widths(node, columns, width)
        out = f'<table:table table:style-name="{table}">'
        for w in share:
            column = self.named("Col", "table-column",
                                f'<style:table-column-properties style:column-width="{w:.2f}cm"/>')
            out += f'<table:table-column table:style-name="{column}"/>'
        taken = {}  # column -> rows still covered by a cell above
        for row in rows:
            out += "<table:table-row>" + self.row(row, columns, share, taken) + "</table:table-row>"
        return out + "</table:table>\n"

    def column_widths(self, node, columns, width):
        """Shares by the longest text of each column, within bounds."""
        longest = [4.0] * columns
        for row in node.all("tr"):
            cells = row.all("td", "th")
            if len(cells) != columns:
                continue
            for i, cell in enumerate(cells):
                longest[i] = max(longest[i], min(22.0, text_length(cell)))
        return [width * l / sum(longest) for l in longest]

    def row(self, row, columns, share, taken):
        out, cells, column = "", row.all("td", "th"), 0
        while column < columns:
            if taken.get(column, 0) > 0:
                taken[column] -= 1
                out += "<table:covered-table-cell/>"
                column += 1
                continue
            cell = cells.pop(0)
            across = int(cell.attributes.get("colspan", 1))
            down = int(cell.attributes.get("rowspan", 1))
            out += self.cell(cell, across, down, sum(share[column:column + across]))
            out += "<table:covered-table-cell/>" * (across - 1)
            for i in range(across):
                taken[column + i] = down - 1
            column += across
        return out

    def cell(self, cell, across, down, width):
        shade = ' fo:background-color="#d9e2f3"' if cell.tag == "th" else ""
        style = self.named("Cell", "table-cell", '<style:table-cell-properties '
                           'fo:border="0.5pt solid #000000" fo:padding="0.08cm" '
                           f'style:vertical-align="middle"{shade}/>')
        if cell.tag == "th":
            bold = Node("b")
            bold.children, cell.children = cell.children, [bold]
        centred = cell.tag == "th" or cell.attributes.get("class") == "c"
        inside = self.blocks(cell, "centre" if centred else "cell", width - 0.3)
        return (f'<table:table-cell table:style-name="{style}" office:value-type="string" '
                f'table:number-columns-spanned="{across}" table:number-rows-spanned="{down}">'
                f"{inside}</table:table-cell>")

    def xml(self):
        styles = "".join(
            f'<style:style style:name="{name}" style:family="paragraph" '
            f'style:parent-style-name="Standard"><style:paragraph-properties {properties}/>'
            f'<style:text-properties {self.size(name)}/></style:style>'
            for name, properties in PARAGRAPHS.items())
        return (f'<?xml version="1.0" encoding="UTF-8"?>\n<office:document {NAMESPACES} '
                'office:version="1.2" office:mimetype="application/vnd.oasis.opendocument.text">'
                '<office:styles><style:default-style style:family="paragraph">'
                '<style:text-properties style:font-name="Times New Roman" fo:font-family='
                '"Times New Roman" style:font-family-asian="宋体" fo:font-size="12pt" '
                'style:font-size-asian="12pt" fo:language="en" fo:country="US" '
                'style:language-asian="zh" style:country-asian="CN"/></style:default-style>'
                '<style:style style:name="Standard" style:family="paragraph">'
                '<style:paragraph-properties fo:line-height="150%"/></style:style></office:styles>'
                f"<office:automatic-styles>{styles}{''.join(self.automatic)}"
                '<style:page-layout style:name="page"><style:page-layout-properties '
                'fo:page-width="21cm" fo:page-height="29.7cm" fo:margin="2cm"/>'
                "</style:page-layout></office:automatic-styles><office:master-styles>"
                '<style:master-page style:name="Standard" style:page-layout-name="page"/>'
                f"</office:master-styles><office:body><office:text>{self.content}"
                "</office:text></office:body></office:document>")

    @staticmethod
    def size(name):
        points = "12pt" if name in ("body", "plain", "figure") else "10.5pt"
        weight = ' fo:font-weight="bold" style:font-weight-asian="bold"' if name == "caption" else ""
        return f'fo:font-size="{points}" style:font-size-asian="{points}"{weight}'


def text_length(node):
    return sum(len(c.strip()) if isinstance(c, str) else text_length(c) for c in node.children)


def flat_document(page: pathlib.Path) -> str:
    return FlatDocument(page).xml()
