"""Reads what the packages hold, by the layouts of their formats; knows nothing of what wrote them."""
import struct
from typing import NamedTuple


class Resource(NamedTuple):
    kind: bytes
    number: int
    named: bool
    attributes: int
    data: bytes


def take(bytes_, layout, start):
    return struct.unpack_from(layout, bytes_, start)


def resources_of(file):
    """All resources of a macOS resource file."""
    data_start, map_start, data_size, map_size = take(file, '>4I', 0)
    assert data_start + data_size == map_start and map_start + map_size == len(file), 'the parts do not follow each other'
    assert not any(file[16:data_start]), 'something stands in the reserved part'
    assert file[map_start:map_start + 16] == file[:16], 'the header and its copy differ'
    types_offset, names_offset = take(file, '>HH', map_start + 24)
    types = map_start + types_offset
    assert types_offset == 28 and map_start + names_offset <= len(file)
    found = []
    for index in range(take(file, '>H', types)[0] + 1):
        kind, last, references = take(file, '>4sHH', types + 2 + 8 * index)
        for reference in range(last + 1):
            number, name, place = take(file, '>hHI', types + references + 12 * reference)
            data = data_start + (place & 0xFFFFFF)
            size = take(file, '>I', data)[0]
            assert data + 4 + size <= map_start, 'a resource reaches beyond the data'
            found.append(Resource(kind, number, name != 0xFFFF, place >> 24, file[data + 4:data + 4 + size]))
    return found


def macos_properties(resource):
    """[(key, data)] of a property resource for macOS."""
    version, count = take(resource, '>II', 0)
    assert version == 0
    place = 8
    properties = []
    for _ in range(count):
        vendor, key, number, size = take(resource, '>4s4sII', place)
        assert (vendor, number) == (b'8BIM', 0)
        data = resource[place + 16:place + 16 + size]
        assert len(data) == size
        place += 16 + size
        while place % 4:
            assert resource[place] == 0, 'the padding is not zero'
            place += 1
        properties.append((key.decode(), data))
    assert place == len(resource), 'something follows the last property'
    return properties


def windows_properties(resource):
    """[(key, data with its padding)] of a property resource for Windows."""
    mark, version, count = take(resource, '<HII', 0)
    assert (mark, version) == (1, 0)
    place = 10
    properties = []
    for _ in range(count):
        vendor, key, number, size = take(resource, '<4s4sII', place)
        assert (vendor[::-1], number, size % 4) == (b'8BIM', 0, 0)
        data = resource[place + 16:place + 16 + size]
        assert len(data) == size
        place += 16 + size
        properties.append((key[::-1].decode(), data))
    assert place == len(resource), 'something follows the last property'
    return properties


def pascal_string(data):
    assert data and len(data) == 1 + data[0]
    return data[1:].decode('ascii')


def padded_pascal_string(data):
    end = 1 + data[0]
    assert len(data) == (end + 3) // 4 * 4 and not any(data[end:])
    return data[1:end].decode('ascii')


def padded_text(data):
    text = data.rstrip(b'\0')
    assert len(data) == len(text) // 4 * 4 + 4 and 0 not in text, 'not one zero to three more than needed'
    return text.decode('ascii')
