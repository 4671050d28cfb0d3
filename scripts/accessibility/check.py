"""check.py PROGRAM: starts the program, goes through its pages over the accessibility bus, and writes what it finds to
descriptor 3. Exits with 2 when it found something wrong.
"""

import os
import random
import re
import subprocess
import sys
import time

import pyatspi
from bus import connect, find_window, read_tree, wait_for
from contrast import ENOUGH, Picture, check_measure, measure
from keyboard import Keyboard, check_way
from names import check_names, is_control, is_for_keyboard
from texts import visible_texts

PAGES = ["Dashboard", "Cleaner", "Startup", "Proc Watch", "PC Config", "Network", "Settings", "Logs"]
ACCENTS = int(os.environ.get("VELTRA_ACCENTS", "20"))
SEED = 20261121
ENTRANCE = 0.4  # seconds: a page comes in, and its first figures with it
REPAINT = 0.05
ATTEMPTS = 2  # what is really wrong is wrong again
CLOSED_WITHIN = 10
BADGE = "VPO"
ASIDE = 1279, 799  # where the mouse touches nothing


def smallest_contrast(texts):
    for _ in range(ATTEMPTS):
        time.sleep(REPAINT)
        picture = Picture.of_screen()
        found = min((measure(picture, box, text), text) for text, box in texts)
        if found[0] >= ENOUGH:
            break
        time.sleep(ENTRANCE)
    return found


def is_page_bar(element):
    return element.role == "scroll bar" and element.box.height > element.box.width


def scroll(bar, end):
    value = bar.accessible.queryValue()
    value.currentValue = getattr(value, end)
    time.sleep(REPAINT)


class Check:
    def __init__(self, window):
        self.window = window
        self.keyboard = Keyboard()
        self.complaints = []
        self.table = []
        settings = {e.name: e for e in self.open("Settings").everything() if is_control(e)}
        self.accent = [settings[name].accessible.queryValue() for name in ("Hue", "Saturation", "Brightness")]
        self.initial = [value.currentValue for value in self.accent]
        self.switches = [settings["Enable particles"], settings["Auto color shift animation"]]

    def open(self, name):
        def tab():
            return next((e for e in read_tree(self.window).everything() if (e.role, e.name) == ("page tab", name)), None)

        (wait_for(tab) or sys.exit(f"there is no page tab '{name}'")).do("Press")
        wait_for(lambda: True if tab().has("selected") else None)
        time.sleep(ENTRANCE)
        return read_tree(self.window)

    def set_accent(self, wanted, mark):
        """Waits until the mark, which is painted in the accent, shows it: no picture is of the accent before."""
        before = Picture.of_screen().colours(mark)
        for value, number in zip(self.accent, wanted):
            value.currentValue = number
        if not wait_for(lambda: Picture.of_screen().colours(mark) != before or None):
            self.complaints.append(f"Settings: the accent {wanted} does not arrive over the bus")

    def switch_ornaments(self):
        """The colour stands still then, and no dot is taken for a letter."""
        for switch in self.switches:
            switch.do(next(action for action in switch.actions if action in ("Toggle", "Press")))
        time.sleep(REPAINT)

    def page(self, name, accents):
        tree = self.open(name)
        complaints = list(check_names(tree))
        controls = [element for element in tree.everything() if is_control(element)]
        for_keyboard = [element for element in controls if is_for_keyboard(element)]
        for _ in range(ATTEMPTS):  # on a busy machine a key may overtake the news of the one before
            wrong, reached = check_way(self.keyboard, for_keyboard)
            if not wrong:
                break
        complaints += wrong
        self.complaints += [f"{name}: {complaint}" for complaint in complaints]
        self.add(name, len(controls), f"{reached} of {len(for_keyboard)}", self.contrast(accents))

    def add(self, name, controls, reached, worst):
        ratio, text, accent = worst
        self.table.append((name, controls, reached, f"{ratio:.2f}", text[:40]))
        if ratio < ENOUGH:
            self.complaints.append(f'{name}: the contrast of "{text}" is {ratio:.2f} with {accent}')

    def sidebar(self, accents):
        """Its buttons have a text only while it is unfolded, under the mouse."""
        badge = next(e for e in read_tree(self.window).everything() if e.role == "label" and e.name == BADGE)
        point_at(badge.box.x + badge.box.width // 2, badge.box.y + badge.box.height // 2)
        time.sleep(ENTRANCE)
        texts = [text for text, _ in visible_texts(read_tree(self.window))]
        if not set(PAGES) <= set(texts):
            self.complaints.append("Sidebar: it does not unfold under the mouse")
        self.add("Sidebar", len(PAGES), "", self.contrast_of_view(accents))
        point_at(*ASIDE)

    def contrast(self, accents):
        """The smallest one on the page, of what, and with which accent. A page that scrolls is looked at at both ends."""
        bars = [e for e in read_tree(self.window).everything() if is_page_bar(e)]
        for bar in bars:
            scroll(bar, "minimumValue")  # Tab has scrolled to what it reached
        found = [self.contrast_of_view(accents)]
        for bar in bars:
            scroll(bar, "maximumValue")
            found.append(self.contrast_of_view(accents))
        return min(found)

    def contrast_of_view(self, accents):
        tree = read_tree(self.window)
        texts = list(visible_texts(tree))
        mark = next(e.box for e in tree.everything() if e.role == "page tab" and e.has("selected"))
        found = [(*smallest_contrast(texts), "the initial accent")]
        self.switch_ornaments()
        for accent in accents:
            self.set_accent(accent, mark)
            found.append((*smallest_contrast(texts), f"the accent {accent}"))
        self.set_accent(self.initial, mark)
        self.switch_ornaments()
        return min(found)

    def report(self, out):
        columns = [("page", "controls", "by Tab", "contrast", "of")] + self.table
        for page, controls, reached, ratio, text in columns:
            print(f"{page:<12}{controls:>9}{reached:>12}{ratio:>10}  {text}", file=out)
        for complaint in self.complaints:
            print(f"WRONG {complaint}", file=out)


def random_accents(check):
    chosen = random.Random(SEED)
    return [
        [chosen.randint(int(value.minimumValue), int(value.maximumValue)) for value in check.accent]
        for _ in range(ACCENTS)
    ]


def point_at(x, y):
    subprocess.run(["xdotool", "mousemove", str(x), str(y)], check=True)


def take_focus(title):
    """There is no window manager that would give it."""
    point_at(*ASIDE)
    search = ["xdotool", "search", "--sync", "--onlyvisible", "--name", f"^{re.escape(title)}$"]
    found = subprocess.run(search, check=True, timeout=20, stdout=subprocess.PIPE, text=True).stdout.split()
    subprocess.run(["xdotool", "windowfocus", "--sync", found[0]], check=True, timeout=20)


def close(window, process):
    closing = next(e for e in read_tree(window).everything() if (e.role, e.name) == ("push button", "Close"))
    closing.do("Press")
    return process.wait(CLOSED_WITHIN)


def main(program):
    check_measure()
    desktop = connect()
    process = subprocess.Popen([program])
    try:
        window = find_window(desktop, process)
        if window is None:
            sys.exit("the window does not appear on the accessibility bus")
        take_focus(window.name)
        check = Check(window)
        accents = random_accents(check)
        for name in PAGES:
            check.page(name, accents)
        check.sidebar(accents)
        if (code := close(window, process)) != 0:
            check.complaints.append(f"the program ended with {code}")
        with os.fdopen(3, "w") as out:
            check.report(out)
        return 2 if check.complaints else 0
    finally:
        process.kill()


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
