"""coverage.py ROOT JSON: prints what gcovr counted, per folder of src/, and the lines that were never reached."""

import json
import sys
from collections import defaultdict
from pathlib import Path

OTHER_SYSTEM = "src/platform/windows"


def ranges(numbers, counted):
    """10-12, 20: one range goes on over lines without code."""
    found = []
    for number in numbers:
        if found and not any(found[-1][1] < line < number for line in counted):
            found[-1][1] = number
        else:
            found.append([number, number])
    return ", ".join(str(first) if first == last else f"{first}-{last}" for first, last in found)


def percent(part, whole):
    return f"{100 * part / whole:.1f} %" if whole else "-"


def row(name, figures):
    lines, reached, branches, taken = figures
    print(
        f"{name:<24}{lines:>8}{reached:>8}{percent(reached, lines):>9}"
        f"{branches:>10}{taken:>8}{percent(taken, branches):>9}"
    )


def figures_of(file):
    lines = [line for line in file["lines"] if not line["gcovr/noncode"]]
    branches = [branch for line in lines for branch in line["branches"]]
    return (
        len(lines),
        sum(line["count"] > 0 for line in lines),
        len(branches),
        sum(branch["count"] > 0 for branch in branches),
    )


def main(root, counted):
    files = sorted(json.loads(Path(counted).read_text())["files"], key=lambda file: file["file"])
    folders = defaultdict(lambda: (0, 0, 0, 0))
    for file in files:
        for name in (str(Path(file["file"]).parent), "total"):
            folders[name] = tuple(map(sum, zip(folders[name], figures_of(file))))
    print(f"{'folder':<24}{'lines':>8}{'reached':>8}{'':>9}{'branches':>10}{'taken':>8}")
    for name in sorted(folders, key=lambda name: (name == "total", name)):
        row(name, folders[name])

    print("\nLines that no test reaches:")
    for file in files:
        code = [line["line_number"] for line in file["lines"] if not line["gcovr/noncode"]]
        missed = [line["line_number"] for line in file["lines"] if not line["gcovr/noncode"] and line["count"] == 0]
        if missed:
            print(f"{file['file']}: {ranges(missed, code)}")

    seen = {file["file"] for file in files}
    silent = [
        path.relative_to(root).as_posix()
        for path in sorted(Path(root, "src").rglob("*.cpp"))
        if path.relative_to(root).as_posix() not in seen
    ]
    other = [path for path in silent if path.startswith(OTHER_SYSTEM)]
    print(f"\nNot compiled here ({len(other)} sources of Windows):\n" + "\n".join(other))
    rest = [path for path in silent if path not in other]
    if rest:
        print("\nWithout a line that could be counted:\n" + "\n".join(rest))


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2])
