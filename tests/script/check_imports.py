#!/usr/bin/env python3
"""Checks that the script engine's archive takes nothing from the system that reaches a process, the network, a file or the
environment: each object's undefined symbols are held against the short lists below.

usage: check_imports.py NM ARCHIVE
"""
import collections
import re
import subprocess
import sys

ENGINE = "duktape.cpp"
# The only one that may touch a file, through the room of system calls: what the dialog remembers.
SETTINGS = "settings.cpp"

ARITHMETIC = """acos asin atan atan2 cbrt ceil cos exp floor fmod log log10 log2 pow round sin sincos sqrt tan trunc lround""".split()
TEXT_AND_MEMORY = """__errno_location __isoc99_sscanf __isoc23_sscanf abort bcmp free malloc memchr memcmp memcpy memmove memset realloc
    snprintf sprintf strcmp strlen strncmp vsnprintf""".split()
# The time of day and its zone; strftime and strptime work on texts.
CLOCK = "clock difftime gettimeofday gmtime_r localtime_r mktime strftime strptime".split()
LAST_WORDS = "fprintf fputc fwrite stderr".split()  # on a damaged heap, before the process ends

ALLOWED = collections.defaultdict(set)
ALLOWED[ENGINE] = {"host_script_must_end", "host_script_must_end_after", "host_script_stack_is_short"}
ALLOWED["heap.cpp"] = set(LAST_WORDS)
FOR_ALL = {*ARITHMETIC, *TEXT_AND_MEMORY, *CLOCK, "_GLOBAL_OFFSET_TABLE_", "__dso_handle", "__libc_single_threaded", "__stack_chk_fail",
           "__tls_get_addr"}

# Other rooms' and the engine's own functions, exceptions, and what sanitizers and the measuring of coverage put in.
HARMLESS = re.compile(r"_Unwind_|__cxa_|__gxx_personality|__asan_|__ubsan_|__sanitizer_|__gcov_|__sancov_|__start___sancov_|__stop___sancov_|duk_|_Z")
# What of the C++ library opens files, starts threads or asks devices.
HARMFUL = re.compile(r"_ZN4host4base.*(file|File|Module|Child|folder)|_Z.*(10filesystem|basic_filebuf|basic_[io]?fstream|St6thread|random_device)")
FILE_NAMES = re.compile(r"_Z.*10filesystem|_ZN4host4base.*(file|File)")


def undefined(nm, archive):
    """The undefined symbols of each object: {"heap.cpp": {...}}."""
    listing = subprocess.run([nm, "-u", archive], stdout=subprocess.PIPE, check=True, text=True).stdout
    symbols, member = {}, None
    for line in listing.splitlines():
        if head := re.fullmatch(r"(\S+)\.o(?:bj)?:", line):
            member = symbols.setdefault(head.group(1), set())
        elif line.strip():
            kind, name = line.split()
            if kind in "Uwv":
                member.add(name.partition("@")[0])
    return symbols


def is_allowed(member, symbol):
    if HARMFUL.match(symbol):
        return member == SETTINGS and FILE_NAMES.match(symbol) is not None
    return symbol in FOR_ALL or symbol in ALLOWED[member] or HARMLESS.match(symbol) is not None


def main():
    nm, archive = sys.argv[1:]
    symbols = undefined(nm, archive)
    for expected, symbol in ((ENGINE, "host_script_must_end"), ("clock.cpp", "_ZN4host4base14processor_timeEv"), ("engine.cpp", "_Unwind_Resume")):
        if symbol not in symbols.get(expected, ()):
            sys.exit(f"{archive}: {expected} does not use {symbol}: the listing was not understood")
    found = [f"{member} uses {symbol}" for member in sorted(symbols) for symbol in sorted(symbols[member])
             if not is_allowed(member, symbol)]
    for line in found:
        print(line, file=sys.stderr)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
