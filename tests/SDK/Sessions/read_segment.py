"""Reads a session registry by its documented offsets and prints what is in it, a line for each thing."""

import mmap
import struct
import sys

SLOTS, RECORD = 20, 784


def text(offset, size):
    return memory[offset:offset + size].split(b"\0")[0].decode()


with open("/dev/shm" + sys.argv[1], "rb") as file:
    memory = mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)
print("size", len(memory))
print("counts", *struct.unpack_from("<II", memory, 0))
print("processes", *(pid for pid in struct.unpack_from("<20I", memory, 8) if pid))
for slot in range(SLOTS):
    start = 88 + slot * RECORD
    pid, session, observer, sharing, gateway = struct.unpack_from("<IIIBB", memory, start)
    if session:
        print("session", slot, pid, session, "observed" if observer else "alone", sharing, gateway,
              text(start + 14, 512), text(start + 526, 128), text(start + 654, 130))
