"""The window as assistive technology sees it: a tree of elements, read over the accessibility bus."""

import os
import time
from dataclasses import dataclass, field

import pyatspi
from gi.repository import Atspi, GLib

STARTED_WITHIN = 20  # seconds
ANSWERS_WITHIN = 10
ATTEMPTS = 5
REACTS_WITHIN = 2  # seconds


@dataclass
class Box:
    x: int
    y: int
    width: int
    height: int

    @property
    def right(self):
        return self.x + self.width

    @property
    def bottom(self):
        return self.y + self.height

    def within(self, other):
        x, y = max(self.x, other.x), max(self.y, other.y)
        return Box(x, y, min(self.right, other.right) - x, min(self.bottom, other.bottom) - y)


@dataclass
class Element:
    accessible: object
    parent: object
    role: str
    name: str
    states: set
    box: Box
    children: list = field(default_factory=list)

    def __str__(self):
        return f'{self.role} "{self.name}"'

    def has(self, *states):
        return all(state in self.states for state in states)

    def everything(self):
        yield self
        for child in self.children:
            yield from child.everything()

    def ancestors(self):
        parent = self.parent
        while parent is not None:
            yield parent
            parent = parent.parent

    @property
    def interfaces(self):
        return pyatspi.listInterfaces(self.accessible)

    @property
    def actions(self):
        if "Action" not in self.interfaces:
            return []
        action = self.accessible.queryAction()
        return [action.getName(i) for i in range(action.nActions)]

    def do(self, name):
        self.accessible.queryAction().doAction(self.actions.index(name))


def handle_events():
    while GLib.MainContext.default().iteration(False):
        pass


def wait_for(probe, seconds=REACTS_WITHIN):
    """What the probe answers, once that is something; None when time is up."""
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        handle_events()
        if (answer := probe()) is not None:
            return answer
        time.sleep(0.01)
    return None


def box_of(accessible):
    try:
        place = accessible.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    except NotImplementedError:
        return Box(0, 0, 0, 0)
    return Box(place.x, place.y, place.width, place.height)


def element(accessible, parent=None):
    states = {pyatspi.stateToString(state) for state in accessible.getState().getStates()}
    return Element(accessible, parent, accessible.getRoleName(), accessible.name, states, box_of(accessible))


def read_tree(accessible, parent=None):
    """Only what is showing; of a table itself, and of a combo box without its popup."""
    here = element(accessible, parent)
    if here.has("showing") and here.role not in ("table", "combo box"):
        for index in range(accessible.childCount):
            child = accessible.getChildAtIndex(index)
            if child is not None:
                here.children.append(read_tree(child, here))
    here.children = [child for child in here.children if child.has("showing")]
    return here


def shown_cells(table):
    """The column headers and the cells of the first row. The process table has other cells every second."""
    for _ in range(ATTEMPTS):
        try:
            return read_cells(table)
        except GLib.Error:
            continue
    return []


def read_cells(table):
    grid = table.accessible.queryTable()
    found = []
    for column in range(grid.nColumns):
        for accessible in (grid.getColumnHeader(column), grid.getAccessibleAt(0, column) if grid.nRows else None):
            if accessible is not None:
                found.append(element(accessible, table))
    return found


def connect():
    """Wakes the bus: a program that starts before it says nothing. Patient, since the machine may have other work."""
    Atspi.set_timeout(ANSWERS_WITHIN * 1000, STARTED_WITHIN * 1000)
    desktop = pyatspi.Registry.getDesktop(0)
    desktop.setCacheMask(Atspi.Cache.NONE)
    return desktop


def find_window(desktop, process):
    def probe():
        for application in desktop:
            if application is not None and application.get_process_id() == process.pid:
                application.setCacheMask(Atspi.Cache.NONE)
                for window in application:
                    if window is not None and window.getState().contains(pyatspi.STATE_SHOWING):
                        return window
        return None

    return wait_for(probe, STARTED_WITHIN)


def same(first, second):
    return first.path == second.path


def known_as(accessible, known):
    """The known element that it is, or is a part of (a table's cell has the table's focus); None when it is gone."""
    try:
        while accessible is not None:
            for candidate in known:
                if same(candidate.accessible, accessible):
                    return candidate
            accessible = accessible.parent
    except GLib.Error:
        pass
    return None
