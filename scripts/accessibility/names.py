"""What every control owes to somebody who hears of it only: a name, a fitting role, and what that role can do."""

from collections import Counter

import pyatspi

# What a role has to offer: interfaces, one of some actions, states.
CONTROLS = {
    "push button": ({"Action"}, {"Press"}, set()),
    "check box": ({"Action"}, {"Toggle", "Press"}, set()),
    "slider": ({"Value"}, set(), set()),
    "combo box": ({"Action"}, {"ShowMenu", "Press"}, set()),
    "text": ({"Text"}, set(), set()),
    "table": ({"Table"}, set(), set()),
    "page tab": ({"Action"}, {"Press"}, {"selectable"}),
    "progress bar": ({"Value"}, set(), set()),
}
SHOWS_ONLY = {"progress bar"}
# A text that can be selected takes the focus, too. A table's cells are reached with its arrow keys.
TAKES_FOCUS = {"label"}


def is_control(element):
    return element.role in CONTROLS or (element.has("focusable") and element.has("enabled"))


def is_for_keyboard(element):
    return is_control(element) and element.has("enabled") and element.role not in SHOWS_ONLY


def purpose(element):
    """What a combo box is for: its name is only what is chosen."""
    for relation in element.accessible.getRelationSet():
        if relation.getRelationType() == pyatspi.RELATION_LABELLED_BY:
            return relation.getTarget(0).name
    return element.accessible.description


def missing(element):
    if not element.name.strip():
        yield "has no name"
    if element.role not in CONTROLS:
        if element.role not in TAKES_FOCUS:
            yield "takes the focus, but has no control's role"
        return
    interfaces, actions, states = CONTROLS[element.role]
    if not interfaces <= set(element.interfaces):
        yield f"offers only {element.interfaces}"
    elif actions and not actions & set(element.actions):
        yield f"has only the actions {element.actions}"
    if not states <= element.states:
        yield f"has only the states {sorted(element.states)}"
    if element.role == "combo box" and not purpose(element).strip():
        yield "does not tell what is chosen with it"
    if element.role == "table":
        grid = element.accessible.queryTable()
        headers = [grid.getColumnHeader(column) for column in range(grid.nColumns)]
        if not headers or not all(header is not None and header.name.strip() for header in headers):
            yield "has a column without a name"
    if element.role in ("slider", "progress bar"):
        value = element.accessible.queryValue()
        if not value.minimumValue <= value.currentValue <= value.maximumValue:
            yield "has a value outside its range"


def check_names(tree):
    for element in tree.everything():
        if is_control(element):
            for what in missing(element):
                yield f"{element} {what}"
        # A figure that is named like its title is never heard.
        labels = Counter(child.name for child in element.children if child.role == "label")
        for name, count in labels.items():
            if count > 1 or not name.strip():
                yield f'{count} labels beside each other are called "{name}"'
    tabs = [element for element in tree.everything() if element.role == "page tab"]
    if sum(tab.has("selected") for tab in tabs) != 1:
        yield "not one of the page tabs is the selected one"
