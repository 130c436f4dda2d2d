"""Tables of figures, readable in a terminal and in Markdown."""


def number(value):
    """Three digits are as much as any figure here is good for."""
    if value >= 100:
        return f"{value:,.0f}"
    if value >= 10:
        return f"{value:.1f}"
    return f"{value:.2f}"


def ratio(ours, theirs):
    return f"{ours / theirs:.2f}" if theirs else "-"


def show(head, rows):
    lines = [head, *rows]
    widths = [max(len(str(line[column])) for line in lines) for column in range(len(head))]

    def text(line):
        first = str(line[0]).ljust(widths[0])
        others = [str(cell).rjust(width) for cell, width in zip(line[1:], widths[1:])]
        return "| " + " | ".join([first, *others]) + " |"

    print(text(head))
    print("|" + "|".join("-" * (width + 2 - bool(i)) + ":" * bool(i) for i, width in enumerate(widths)) + "|")
    for row in rows:
        print(text(row))
    print(flush=True)


HEAD = ("figure", "VelqMonitor", "yardstick", "its figure", "ratio", "target")


def row(figure, ours, yardstick, theirs, target=""):
    """One figure beside one yardstick."""
    return (figure, number(ours), yardstick, number(theirs), ratio(ours, theirs), target)


def beside(figure, ours, yardsticks, target):
    """One figure beside several yardsticks, with a target of its own, told once."""
    rows = [row(figure, ours, name, theirs) for name, theirs in yardsticks.items()]
    return [(*rows[0][:-1], target), *rows[1:]]
