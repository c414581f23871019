"""What a process of Wine takes, as the system beneath it counts."""

import pathlib

PROCESSES = pathlib.Path("/proc")


def _children(process):
    for thread in (PROCESSES / str(process) / "task").iterdir():
        yield from map(int, (thread / "children").read_text().split())


def find(process, program):
    """The number of the process of that program, which the given one or one of its children started."""
    arguments = (PROCESSES / str(process) / "cmdline").read_bytes().split(b"\0")
    if arguments[0].endswith(program.encode()):
        return process
    return next(filter(None, (find(child, program) for child in _children(process))), None)


def _figure(status, name):
    return next(int(line.split()[1]) for line in status.read_text().splitlines() if line.startswith(name + ":"))


def memory(process):
    """Bytes of its own that it has touched."""
    return _figure(PROCESSES / str(process) / "status", "RssAnon") * 1024


def turns(process):
    """How often a thread of it but the first was given a core."""
    return sum(_figure(thread / "status", "voluntary_ctxt_switches") +
               _figure(thread / "status", "nonvoluntary_ctxt_switches")
               for thread in (PROCESSES / str(process) / "task").iterdir() if thread.name != str(process))
