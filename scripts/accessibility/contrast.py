"""Pictures of the screen, and how well text stands out from what is behind it (relative luminance of sRGB)."""

import struct
import subprocess
from collections import Counter
from functools import lru_cache

from bus import Box

SCREEN = 1280, 800
ENOUGH = 4.5
BORDER = 4  # px around a text field's or a button's text
SHADE = 8  # colours that are closer than this in red, green and blue are one
BACKGROUND_SHARE = 1 / 8  # of the box: what fills as much is background, even when something else fills more
MOST_LETTERS = 20  # a text that is longer may be elided


class Picture:
    def __init__(self, pixels, width, height):
        self.pixels, self.width, self.height = pixels, width, height

    @classmethod
    def of_screen(cls):
        """As the compositor shows it: with the desktop, a grey one, behind the translucent window."""
        command = ["import", "-silent", "-window", "root", "-depth", "8", "bgra:-"]
        pixels = subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout
        width, height = SCREEN
        if len(pixels) != 4 * width * height:
            raise RuntimeError(f"the screen is not of {width} x {height} pixels")
        return cls(memoryview(pixels).cast("I"), width, height)

    def colours(self, box):
        counted = Counter()
        box = box.within(Box(0, 0, self.width, self.height))
        for y in range(box.y, box.bottom):
            counted.update(self.pixels[y * self.width + box.x : y * self.width + box.right])
        shades = Counter()
        for pixel, count in counted.items():
            shades[pixel & 0xF8F8F8] += count
        return shades


@lru_cache(maxsize=None)
def luminance(shade):
    def linear(byte):
        part = (byte + SHADE / 2) / 255
        return part / 12.92 if part <= 0.04045 else ((part + 0.055) / 1.055) ** 2.4

    red, green, blue = (linear(shade >> shift & 0xFF) for shift in (16, 8, 0))
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue


def contrast(first, second):
    darker, lighter = sorted((luminance(first), luminance(second)))
    return (lighter + 0.05) / (darker + 0.05)


def standing_out(shades, background, letters):
    """What as many pixels as there are letters reach: one pixel of another thing is no text."""
    seen = 0
    for ratio, count in sorted(((contrast(shade, background), n) for shade, n in shades.items()), reverse=True):
        seen += count
        if seen >= letters:
            return ratio
    return 1.0


def measure(picture, box, text):
    shades = picture.colours(box)
    if not shades:
        return 1.0
    total = sum(shades.values())
    (most_common, _), = shades.most_common(1)
    backgrounds = {shade for shade, count in shades.items() if count >= total * BACKGROUND_SHARE} | {most_common}
    letters = min(len("".join(text.split())), MOST_LETTERS)
    return min(standing_out(shades, background, letters) for background in backgrounds)


def check_measure():
    """The measure itself tells what can be read from what cannot."""

    def painted(letter, letters):
        pixels = [0x28283C] * 1600
        pixels[100 : 100 + letters] = [letter] * letters
        data = struct.pack("1600I", *pixels)
        return measure(Picture(memoryview(data).cast("I"), 80, 20), Box(0, 0, 80, 20), "abcd")

    assert painted(0x28283C, 4) == 1.0
    assert painted(0x46465A, 4) < ENOUGH
    assert painted(0xF0F0FA, 3) < ENOUGH  # fewer pixels than letters: something else
    assert painted(0xF0F0FA, 4) > 10
