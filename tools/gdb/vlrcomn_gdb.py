"""Shows the handles, SE locks and lists of libvlrcomn in gdb.

Load it with `source /usr/share/vlrcomn/vlrcomn_gdb.py` (in the source tree: tools/gdb/vlrcomn_gdb.py), by
hand or in ~/.gdbinit. The library needs debugging information for handles and locks. Then:

    (gdb) print stop            an oruHandle: event, set
    (gdb) print *lock           an orSELock: SE lock, held shared 2 times, 1 waiting writer
    (gdb) print list            an orSLL, orSLL2 or LinkedListHeader with the addresses of its items

`print/r` shows the bare structure. Nothing is called in the program, so core files do as well.
"""

import gdb
import gdb.printing

LONGEST_WALK = 100000  # a ruined chain may be a ring
TRANSITIONS = {1: "created", 2: "granted exclusively", 3: "downgraded", 4: "released",
               5: "handed to a writer", 6: "granted by the notify form"}


def number(value):
    """An integer, also where std::atomic wraps it."""
    value = value.cast(value.type.unqualified().strip_typedefs())
    if value.type.code == gdb.TYPE_CODE_STRUCT:
        value = value.address.cast(gdb.lookup_type("int").pointer()).dereference()
    return int(value)


def record_at(address, name):
    """What a void pointer points to, as the named structure of the library."""
    return address.cast(gdb.lookup_type(name).pointer()).dereference()


def chain(first, end=0):
    """The addresses of the items from `first` on, by their `next` words, up to `end`."""
    item, walked = first, 0
    while int(item) not in (0, end) and walked < LONGEST_WALK:
        yield item
        item = item["next"]
        walked += 1


def plural(count, word):
    return f"{count} {word}" + ("" if count == 1 else "s")


class HandlePrinter:
    """An oruHandle, or the record behind one."""

    def __init__(self, record, address):
        self.record, self.address = record, address

    def to_string(self):
        if self.address == 0:
            return "null handle"
        if self.address == (1 << 8 * gdb.lookup_type("void").pointer().sizeof) - 1:
            return "invalid handle"
        try:
            what = self.describe()
        except gdb.MemoryError:
            what = "no readable record"
        return f"{self.address:#x} {what}"

    def describe(self):
        kind = int(self.record["nType"])
        signalled = number(self.record["bSignalled"]) == 1
        if number(self.record["nRefCount"]) == 0:
            return "closed"
        if kind == 0:
            file = record_at(self.record["pData"], "velora_com::qel::sync::FileRecord")
            path = bytes(int(file["path"][i]) & 0xFF for i in range(file["path"].type.sizeof)).split(b"\0")[0]
            return (f"file {int(file['descriptor'])} \"{path.decode(errors='replace')}\"" +
                    (", deleted on close" if int(file["delete_on_close"]) == 1 else ""))
        if kind == 1:
            return "event, " + ("set" if signalled else "reset")
        if kind == 2:
            return "thread, " + ("ended" if signalled else "running")
        if kind == 3:
            if signalled:
                return "mutex, free"
            mutex = record_at(self.record["pData"], "velora_com::qel::sync::MutexRecord")
            return f"mutex, owned by thread {int(mutex['owner']):#x}"
        return f"object of the unknown kind {kind}"


class LockPrinter:
    """An orSELock."""

    def __init__(self, lock):
        self.lock = lock

    def to_string(self):
        owner, count = int(self.lock["owner"]), number(self.lock["count"])
        nobody = (1 << 8 * self.lock["owner"].type.sizeof) - 1
        if count == 0:
            state = "free"
        elif owner == nobody:
            state = "held shared " + plural(count, "time")
        else:
            state = f"owned by the thread of event {owner:#x} " + plural(count, "time")
        parts = [state]
        for field, word in (("writers", "waiting writer"), ("shared_waiters", "waiting reader"),
                            ("notifications", "notification")):
            waiting = sum(1 for _ in chain(self.lock[field]))
            if waiting:
                parts.append(plural(waiting, word))
        if int(self.lock["spin"]["word"]) != 0:
            parts.append("spin word taken: this may be changing")
        last = int(self.lock["last_transition"])
        return "SE lock, " + ", ".join(parts) + f" (last {TRANSITIONS.get(last, last)})"


class ListPrinter:
    """A list, as the addresses of its items; under its lock, if it has one."""

    def __init__(self, name, items, lock=None):
        self.name, self.items, self.lock = name, list(items), lock

    def to_string(self):
        text = f"{self.name} of {plural(len(self.items), 'item')}"
        if self.lock is None:
            return text
        if int(self.lock) == 0:
            return text + ", no lock"
        if not has_record("orSELock"):
            return text
        return f"{text}, {LockPrinter(self.lock.dereference()).to_string()}"

    def children(self):
        return ((f"[{i}]", item) for i, item in enumerate(self.items))

    def display_hint(self):
        return "array"


def has_record(name):
    """Whether the library's debugging information tells what is in the structure."""
    try:
        return bool(gdb.lookup_type(name).fields())
    except gdb.error:
        return False


def find_printer(value):
    kind = value.type.strip_typedefs().unqualified()
    if kind.code == gdb.TYPE_CODE_PTR and kind.target().unqualified().name == "_oruHandleObject_t":
        if not has_record("_oruHandleObject_t"):
            return None
        return HandlePrinter(record_at(value, "_oruHandleObject_t"), int(value))
    if kind.code != gdb.TYPE_CODE_STRUCT:
        return None
    name = kind.name
    if name == "_oruHandleObject_t" and value.address is not None:
        return HandlePrinter(value, int(value.address))
    if name == "orSELock" and has_record(name):
        return LockPrinter(value)
    if name == "LinkedListHeader":
        return ListPrinter("list", chain(value["head"]))
    if name == "orSLL":
        return ListPrinter("locked stack", chain(value["first"]), value["lock"])
    if name == "orSLL2" and value.address is not None:
        back = int(value["tail"].address)
        return ListPrinter("locked list", chain(value["head"]["next"], back), value["lock"])
    return None


find_printer.name = "vlrcomn"
find_printer.enabled = True
gdb.printing.register_pretty_printer(None, find_printer, replace=True)
