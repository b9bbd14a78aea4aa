"""Run in the project's folder: every key has the text that its header quotes with it."""
import re

for folder, name in ("sysprops", "property_keys"), ("keys", "policy_keys"):
    header, source = (open(path).read() for path in (f"include/vlrcomn/{name}.h", f"source/{folder}/{name}.cpp"))
    told = re.findall(r'(\w+);\s*/\*\*< "(.*?)"', header)
    told += [pair[::-1] for pair in re.findall(r'/\*\*[\s*]*"([^"]*)"(?:(?!/\*\*).)*?string (\w+);', header, re.S)]
    made = re.findall(r'_INIT\s+(\w+)\s*=\s*L?"(.*?)";', source)
    assert len(made) > 60 and set(told) == set(made), set(told) ^ set(made)
