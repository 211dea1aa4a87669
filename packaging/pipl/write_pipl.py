#!/usr/bin/env python3
"""Writes the property resource from which the application learns, without running the plug-in, what the plug-in is and which
function to enter: for macOS a resource file that holds it, for Windows its bytes."""
import argparse
import struct
import sys
from pathlib import Path

RESOURCE_ID = 16000
MAX_NAME = 47
MAX_PASCAL_STRING = 255


def code(text):
    """Four characters as they stand in a macOS resource."""
    if len(text) != 4 or not text.isascii():
        raise ValueError(f'"{text}" is not a code of four ASCII characters')
    return text.encode('ascii')


def pascal_string(text):
    if not text.isascii():
        raise ValueError(f'"{text}" is not all ASCII')
    if len(text) > MAX_PASCAL_STRING:
        raise ValueError(f'"{text}" has more than {MAX_PASCAL_STRING} characters')
    return bytes([len(text)]) + text.encode('ascii')


def plugin_name(text):
    if not 0 < len(text) <= MAX_NAME:
        raise ValueError(f'the name "{text}" does not have 1 to {MAX_NAME} characters')
    return pascal_string(text)


def padded(data):
    return data + bytes(-len(data) % 4)


def macos_properties(kind, name, category, entry_point):
    properties = [
        ('kind', code(kind)),
        ('name', plugin_name(name)),
        ('catg', pascal_string(category)),
        ('ma64', pascal_string(entry_point)),
        ('mi64', pascal_string(entry_point)),
    ]
    resource = struct.pack('>II', 0, len(properties))
    for key, data in properties:
        # The length leaves the padding out.
        resource += code('8BIM') + code(key) + struct.pack('>II', 0, len(data)) + padded(data)
    return resource


def windows_properties(kind, name, category, entry_point):
    properties = [
        ('kind', code(kind)[::-1]),
        ('name', plugin_name(name)),
        ('catg', pascal_string(category)),
        ('8664', pascal_string(entry_point)[1:] + b'\0'),
    ]
    resource = struct.pack('<HII', 1, 0, len(properties))
    for key, data in properties:
        # The length takes the padding in.
        resource += code('8BIM')[::-1] + code(key)[::-1] + struct.pack('<II', 0, len(padded(data))) + padded(data)
    return resource


def resource_file(resource):
    """A resource file of macOS with one resource of type PiPL."""
    data = struct.pack('>I', len(resource)) + resource
    data_start = 256
    map_size = 50
    header = struct.pack('>IIII', data_start, data_start + len(data), len(data), map_size)
    types_start = 28
    resource_map = header + bytes(8)
    resource_map += struct.pack('>HH', types_start, map_size)          # where types start, and names, of which there are none
    resource_map += struct.pack('>H4sHH', 0, code('PiPL'), 0, 10)      # types less one; type; resources less one; their start
    resource_map += struct.pack('>hHII', RESOURCE_ID, 0xFFFF, 0, 0)    # no name; attributes and place in the data; handle
    return header.ljust(data_start, b'\0') + data + resource_map


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument('system', choices=['macos', 'windows'])
    for option in ('kind', 'name', 'category', 'entry-point'):
        parser.add_argument(f'--{option}', required=True)
    parser.add_argument('--output', type=Path, required=True)
    wanted = parser.parse_args()
    description = (wanted.kind, wanted.name, wanted.category, wanted.entry_point)
    try:
        if wanted.system == 'macos':
            content = resource_file(macos_properties(*description))
        else:
            content = windows_properties(*description)
    except ValueError as problem:
        sys.exit(f'write_pipl.py: {problem}')
    wanted.output.write_bytes(content)


if __name__ == '__main__':
    main()
