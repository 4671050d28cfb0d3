"""Where a page shows text, by what the bus tells of its elements."""

from bus import Box, shown_cells
from contrast import BORDER, measure

PADDED = {"push button", "text", "combo box", "page tab"}
SIGN = 40  # px: not wider, and it is a sign
TAB_ICON = 50  # px at the left
LINE = 24  # px: the first line of a text that has several


def inner(box):
    return Box(box.x + BORDER, box.y + BORDER, box.width - 2 * BORDER, box.height - 2 * BORDER)


def written(element):
    """The text that stands in the element, and where; None where there is none."""
    box = inner(element.box) if element.role in PADDED else element.box
    text = element.name
    if element.role == "check box":
        box = Box(box.x + box.width // 2, box.y, box.width // 2, box.height)  # its switch is at the left
        text = text[len(text) // 2 :]
    elif element.role == "combo box":
        box = Box(box.x, box.y, min(box.width * 3 // 5, 200), box.height)  # its arrow is at the right
    elif element.role == "text":
        content = element.accessible.queryText()
        content = content.getText(0, content.characterCount)
        lines = [line for line in content.splitlines() if line.strip()]
        text = lines[0] if lines else text  # else a hint, which is named like the field
        box = Box(box.x, box.y, box.width, min(box.height, LINE))
        if not lines and element.box.height > 2 * LINE:
            return None  # an empty log
    elif element.role == "push button":
        text = text if box.width > SIGN else text[:1]  # what is called "Close" shows a cross
    elif element.role == "page tab":
        box = Box(box.x + TAB_ICON, box.y, box.width - TAB_ICON, box.height)
        if box.width < TAB_ICON:
            return None  # folded: without its text
    elif element.role not in ("label", "table column header", "table cell"):
        return None
    elif element.has("focusable"):
        text = text.rpartition(": ")[2]  # a value: its name begins with its title
    return (text, box) if text.strip() else None


def visible(element):
    """Whether nothing that it stands in cuts it off."""
    for ancestor in element.ancestors():
        inside = element.box.within(ancestor.box)
        if ancestor.box.width > 0 and (inside.height < element.box.height or inside.width <= 0):
            return False
    return element.box.width > 0


def visible_texts(tree):
    for element in tree.everything():
        elements = [element] + (shown_cells(element) if element.role == "table" else [])
        for candidate in elements:
            if candidate.has("enabled") and visible(candidate) and (found := written(candidate)):
                yield found
