"""The faults that scripts/mutants plants: small changes of one line of C++, found without a parser. They rely on
clang-format's blanks: a comparison stands between two of them, a template's bracket does not."""
import re

# What is looked for, and what stands there instead; one place of one line makes one fault.
TURNED = [
    (r"(?<= )<(?= )", "<="), (r"(?<= )<=(?= )", "<"), (r"(?<= )>(?= )", ">="), (r"(?<= )>=(?= )", ">"),
    (r"(?<= )==(?= )", "!="), (r"(?<= )!=(?= )", "=="),
    (r"(?<= )&&(?= )", "||"), (r"(?<= )\|\|(?= )", "&&"),
    (r"!(?=[\w(:*])", ""),
]
MOVED = [
    (r"(?<= )\+ 1\b(?!\.)", ""), (r"(?<= )- 1\b(?!\.)", ""),
    (r"(?<![\w.'])(?:0x[0-9a-fA-F]+|[0-9]+)(?=[uUlL]*\b)(?![\w.']*')",
     lambda m: str(int(m[0], 8 if re.match("0[0-7]+$", m[0]) else 0) + 1)),
    (r"\btrue\b", "false"), (r"\bfalse\b", "true"),
]
SIGNED = [
    (r"(?<= )\+(?= )", "-"), (r"(?<=[\w)\]] )-(?= )", "+"), (r"(?<= )\+=(?= )", "-="), (r"(?<= )-=(?= )", "+="),
    (r"\+\+", "--"), (r"(?<![-\w])--", "++"), (r"(?<=[(=,?:] )-(?=[\w(])|(?<=return )-(?=\w)|(?<=\()-(?=\w)", ""),
    (r"(?<= )<<(?= )", ">>"), (r"(?<= )>>(?= )", "<<"), (r"(?<=[\w)] )&(?= )", "|"), (r"(?<=[\w)] )\|(?= )", "&"),
]
# A whole line that calls something, assigns something or jumps, left out.
LEFT_OUT = [
    (r"^( +)(?!return\b|throw\b|delete\b)(?:[\w:]+(?:\.|->|::))*[\w:]+\(.*\);$", r"\1;"),
    (r"^( +)[\w.\->\[\]*]+ [-+|&]?= .*;$", r"\1;"),
    (r"^( +)(?:break|continue);$", r"\1;"),
]
LITERAL = re.compile(r'''(?:u8|L)?R?"(?:\\.|[^"\\])*"|L?'(?:\\.|[^'\\])+'|//.*''')
NO_CODE = ("#", "//", "static_assert", "using ", "template", "namespace ", "friend ")


def hidden(line):
    """The line without its comment, its literals made unrecognisable."""
    return LITERAL.sub(lambda m: "" if m[0].startswith("//") else "`" * len(m[0]), line).rstrip()


def faults(text):
    """(line number from 0, line, faulty line) of every fault that can be planted into a source file."""
    starts_here = False  # else the line goes on with a statement
    text = re.sub(r"/\*.*?\*/", lambda m: re.sub(r"[^\n]", " ", m[0]), text, flags=re.S)
    for number, line in enumerate(text.split("\n")):
        if not line.strip() or line.strip().startswith(NO_CODE):
            continue
        code = hidden(line)
        if ".reserve(" in code:  # only saves time
            continue
        for pattern, instead in TURNED + MOVED + SIGNED:
            for match in re.finditer(pattern, code):
                new = instead(match) if callable(instead) else instead
                yield number, line, line[:match.start()] + new + line[match.end():]
        for pattern, instead in LEFT_OUT if starts_here else []:
            match = re.match(pattern, code)
            if match:
                yield number, line, match.expand(instead)
        starts_here = code.endswith((";", "{", "}", ":"))
