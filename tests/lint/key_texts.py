#!/usr/bin/env python3
"""The text that a header quotes for a key constant is the text that the constant holds."""
import re
import sys
from pathlib import Path

PAIRS = [("policy_keys.h", "agent/policy_keys.cpp"), ("property_keys.h", "sysprops/property_keys.cpp")]
QUOTED_BEFORE = r'/\*\*[\s*]*(".*?")(?:(?!\*/).)*\*/\s*extern VLRCOMN_API const std::w?string (\w+);'
QUOTED_BEHIND = r'extern VLRCOMN_API const std::w?string (\w+); */\*\*< (".*?") \*/'
DEFINITION = r'VLRCOMN_EARLY_INIT\s+(\w+)\s*=\s*L?(".*?");'

bad = []
for header, source in PAIRS:
    declared = Path("include/vlrcomn", header).read_text()
    quoted = {(name, text) for text, name in re.findall(QUOTED_BEFORE, declared, re.S)}
    quoted.update(re.findall(QUOTED_BEHIND, declared))
    held = set(re.findall(DEFINITION, Path("source", source).read_text()))
    bad += [f"{header}: {name} {'holds' if (name, text) in held else 'is said to hold'} {text}"
            for name, text in sorted(quoted ^ held)]
    assert len(held) > 60, "definitions are written otherwise now"
sys.exit("\n".join(bad) or 0)
