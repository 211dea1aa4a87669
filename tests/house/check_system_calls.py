#!/usr/bin/env python3
"""Checks that host/base alone calls the system and alone codes characters: no object of another room asks for such a function,
and no source of one includes a system's header or works on the bits of UTF-8. plugin/ has no room to link and codes its own text.
Prints which calls host/base makes, object by object.

usage: check_system_calls.py ROOT BUILD NM
"""
import pathlib
import re
import subprocess
import sys

BASE = "host/base"
ROOMS = ("cli", "desktop", "host", "lottie", "validator")

CALLS = set("""_exit _Exit alarm chdir chmod chown clock_gettime close creat dlclose dlerror dlopen dlsym dup dup2 dup3 execl execle execlp
    execv execve execvp fchmod fchown fcntl fdatasync flock fork fstat fsync getpid getppid getrlimit getrusage getxattr fgetxattr
    fsetxattr ioctl isatty kill link listxattr lstat mkdir mkostemp mkstemp mmap munmap nanosleep open openat pause pipe pipe2 poll
    popen posix_spawn posix_spawnp ppoll prctl pthread_sigmask raise read readlink readv recv rename renameat select send setitimer
    setpgid setrlimit setsid setxattr sigaction signal signalfd sigprocmask sleep socketpair stat symlink system tcgetattr tcsetattr umask
    unlink usleep vfork wait wait4 waitpid write writev""".split())
HEADER = re.compile(r"#\s*include\s*<((?:sys|linux|net|netinet)/[^>]*|unistd\.h|fcntl\.h|signal\.h|csignal|poll\.h|dlfcn\.h|termios\.h"
                    r"|spawn\.h|pthread\.h|sched\.h|windows\.h)>")
# The payload of a following byte, the bits that begin a character of several, the question whether a byte follows.
CODER = re.compile(r"&\s*0x3[fF]\b|0x[cCeEfF]0\s*\||&\s*0x[cC]0\b|wstring_convert|codecvt")
COMMENT_OR_TEXT = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:[^"\\\n]|\\.)*"', re.S)


def sources(root):
    for room in ROOMS:
        yield from (file for file in sorted((root / room).rglob("*")) if file.suffix in (".h", ".cpp", ".in", ".def"))


def faults_of_source(root, file):
    name = file.relative_to(root).as_posix()
    text = COMMENT_OR_TEXT.sub(lambda found: "\n" * found.group().count("\n"), file.read_text(encoding="utf-8"))
    is_base, is_public = name.startswith(BASE + "/"), "/include/" in name
    for number, line in enumerate(text.split("\n"), 1):
        if (header := HEADER.search(line)) and (is_public or not is_base):
            yield f"{name}:{number}: includes <{header.group(1)}>"
        if CODER.search(line) and name not in (BASE + "/src/unicode.cpp", BASE + "/include/base/unicode.h"):
            yield f"{name}:{number}: codes UTF-8"


def calls_of(root, build, nm):
    """The calls of each object of a room: {"host/base/src/files_posix.cpp": {"open", ...}}."""
    calls = {}
    for room in ROOMS:
        for file in sorted((build / room).rglob("*.o")):
            name = re.sub(r"CMakeFiles/[^/]*\.dir/", "", file.relative_to(build).as_posix()).removesuffix(".o")
            if not (root / name).exists():  # made while building, or left by a source that is gone
                continue
            listing = subprocess.run([nm, "-u", file], stdout=subprocess.PIPE, check=True, text=True).stdout
            asked = {line.split()[-1].partition("@")[0].removesuffix("64") for line in listing.splitlines() if line.strip()}
            calls[name] = asked & CALLS
    return calls


def main():
    root, build, nm = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3]
    faults = [fault for file in sources(root) for fault in faults_of_source(root, file)]
    calls = calls_of(root, build, nm)
    made = set()
    for name, asked in calls.items():
        if name.startswith(BASE + "/"):
            made |= asked
            print(f"{name}: {' '.join(sorted(asked)) or 'none'}")
        else:
            faults += [f"{name} calls {call}" for call in sorted(asked)]
    print(f"{sum(not name.startswith(BASE + '/') for name in calls)} objects of other rooms: none")
    for wanted in ("fork", "rename", "open", "signal", "isatty"):
        if wanted not in made:
            faults.append(f"{wanted} is not called in {BASE}: the objects were not understood")
    for fault in faults:
        print(f"{fault}: that belongs into {BASE}", file=sys.stderr)
    return 1 if faults or len(calls) < 100 else 0


if __name__ == "__main__":
    sys.exit(main())
