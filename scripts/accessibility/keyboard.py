"""The way of Tab: everything, once, in reading order, and back to where it began."""

import subprocess

import pyatspi
from bus import known_as, same, wait_for

LONGEST_WAY = 200


def has_focus(element):
    return element.accessible.getState().contains(pyatspi.STATE_FOCUSED)


class Keyboard:
    def __init__(self):
        self.focused = None
        pyatspi.Registry.registerEventListener(self.on_focus, "object:state-changed:focused")

    def on_focus(self, event):
        if event.detail1:
            self.focused = event.source

    def follow(self, act, known, before):
        """The known element that says, after the act, that it has the focus now; `before`, when no other one does.

        The one that had it before may say so again: a table does with every new reading.
        """

        def moved():
            now = known_as(self.focused, known)
            return None if now is before else now

        self.focused = None
        act()
        return wait_for(moved) or next((element for element in known if has_focus(element)), before)

    def way(self, key, start, known):
        """The elements that the key leads to, from the start to the start; and what is wrong with that."""
        start.accessible.queryComponent().grabFocus()
        if not wait_for(lambda: has_focus(start) or None):
            return [start], f"{start} does not take the focus"
        reached = [start]
        for _ in range(LONGEST_WAY):
            now = self.follow(lambda: subprocess.run(["xdotool", "key", key], check=True), known, reached[-1])
            if now is start:
                return reached, None
            if now in reached:
                return reached, f"{key} leads from {reached[-1]} to {now}"
            reached.append(now)
        return reached, f"{key} does not come back to {start}"


def follows(following, before):
    """Beside it to the right, or below it."""
    if following.y < before.bottom and before.y < following.bottom:
        return following.x > before.x
    return following.y > before.y


def group(element):
    if element.role == "page tab":
        return "sidebar"
    return "page" if any(ancestor.role == "layered pane" for ancestor in element.ancestors()) else "title bar"


def card(element):
    """The outermost frame of the page around it: a card is read to its end before the next one."""
    outermost = element
    for ancestor in element.ancestors():
        if ancestor.role == "layered pane":
            return outermost
        outermost = ancestor if ancestor.role == "frame" else outermost
    return element


def check_order(reached):
    groups = []
    for element in reached:
        if not groups or groups[-1] != group(element):
            groups.append(group(element))
    if groups not in (["sidebar", "page", "title bar"], ["sidebar", "title bar"]):
        yield f"Tab goes through {groups}"
    for before, following in zip(reached, reached[1:]):
        if group(before) == group(following):
            places = (card(following).box, card(before).box)
            if same(card(before).accessible, card(following).accessible):
                places = (following.box, before.box)
            if not follows(*places):
                yield f"Tab goes from {before} to {following}, which stands before it"


def check_way(keyboard, elements):
    """Complaints, and how many elements were reached."""
    start = next(element for element in elements if element.role == "page tab")
    reached, problem = keyboard.way("Tab", start, elements)
    if problem is not None:
        return [problem], len(reached)
    complaints = list(check_order(reached))
    complaints += [f"Tab does not reach {element}" for element in elements if element not in reached]
    backwards, problem = keyboard.way("shift+Tab", start, elements)
    if problem is None and backwards[1:] != reached[:0:-1]:
        problem = "Shift+Tab goes another way than Tab"
    return complaints + ([problem] if problem else []), len(reached)
