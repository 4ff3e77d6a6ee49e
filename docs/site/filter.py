"""filter.py HEADER: for Doxygen. A comment of our headers stands above all that it is about, up to the
next blank line or comment; Doxygen takes it for what follows alone, unless that is marked as a group."""

import pathlib
import re
import sys


def groups(lines):
    """The lines from a comment to the next one, or to a blank line."""
    group = []
    for line in lines:
        text = line.strip()
        begins = text.startswith("//") and group and not group[-1].strip().startswith("//")
        if begins or not text:
            yield group
            group = []
        group.append(line)
    yield group


def ends_member(line):
    """Whether a member of a class ends here: at one level of depth, with no body that goes on."""
    return re.match(r"^ {4,8}(\}|[^\s}].*[;}])\s*(//.*)?$", line)


def marked(group):
    first = next((i for i, line in enumerate(group) if not line.strip().startswith("//")), len(group))
    if first == 0:
        return group
    group = [re.sub(r"^( {4,8})// ", r"\1/// ", line) for line in group]
    ends = [i for i, line in enumerate(group) if i >= first and ends_member(line)]
    if len(ends) < 2 or re.match(r"\s*(struct|class|enum)\b", group[first]):
        return group
    return [*group[:first], "    ///@{\n", *group[first:ends[-1] + 1], "    ///@}\n", *group[ends[-1] + 1:]]


text = pathlib.Path(sys.argv[1]).read_text(encoding="utf-8")
text = re.sub(r"^template <>\nstruct std::.*?^\};\n", "", text, flags=re.M | re.S)  # Doxygen cannot place it
for each in groups(text.splitlines(keepends=True)):
    sys.stdout.writelines(marked(each))
