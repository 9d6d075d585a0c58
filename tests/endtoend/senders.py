#!/usr/bin/env python3
"""Send to the endpoint of an instance what the program itself does not.

usage: senders.py malformed ENDPOINT       no message in many ways; each connection must be closed without a reply
       senders.py held ENDPOINT            many connections that say nothing, renewed as they are closed, until ended
       senders.py endless ENDPOINT         one connection after the other that sends without end, until ended
       senders.py crowd ENDPOINT FOLDER    twenty at once send a message for each file of the folder
Exit code 1 when the endpoint did not do as it should.
"""

import os
import socket
import struct
import sys
import threading
import time


def connected(endpoint):
    one = socket.socket(socket.AF_UNIX)
    one.settimeout(60)
    one.connect(endpoint)
    return one


def message(path):
    return struct.pack("<II", 3, len(path) + 1) + path + b"\0"


def isDropped(one):
    """The other side closes the connection, and has said nothing."""
    try:
        return one.recv(1) == b""
    except ConnectionResetError:
        return True


def malformed(endpoint):
    name = b"/tmp/never.txt"
    good = message(name)
    bad = [b"GET / HTTP/1.1\r\nHost: none\r\n\r\n", b"\0" * 100, b"\xff" * 100, good[1:], struct.pack(">II", 3, 15) + name + b"\0",
           struct.pack("<II", 4, 15) + name + b"\0", struct.pack("<II", 3, 0), struct.pack("<II", 3, 2**31) + name,
           struct.pack("<II", 3, 2**32 - 1) + name, struct.pack("<II", 3, 14) + name, struct.pack("<II", 3, 17) + b"/\xff" + name + b"\0",
           struct.pack("<II", 3, 15) + b"/tmp\0never.txt\0"]
    for each in bad:
        with connected(endpoint) as one:
            one.sendall(each)
            if not isDropped(one):
                sys.exit(f"answered or kept: {each[:30]}")
    for size in range(len(good)):
        with connected(endpoint) as one:
            one.sendall(good[:size])


def held(endpoint):
    while True:
        everyone = [connected(endpoint) for _ in range(400)]
        time.sleep(2)
        for one in everyone:
            one.close()


def endless(endpoint):
    while True:
        with connected(endpoint) as one:
            try:
                one.sendall(struct.pack("<II", 3, 60000))
                while True:
                    one.sendall(b"x" * 65536)
            except OSError:
                pass


def crowd(endpoint, folder):
    paths = [os.path.join(folder, name).encode() for name in os.listdir(folder)]
    failures = []

    def sendAll():
        try:
            for path in paths:
                with connected(endpoint) as one:
                    one.sendall(message(path))
        except OSError as failure:
            failures.append(failure)

    threads = [threading.Thread(target=sendAll) for _ in range(20)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    if failures:
        sys.exit(f"{len(failures)} senders failed: {failures[0]}")


if __name__ == "__main__":
    {"malformed": malformed, "held": held, "endless": endless, "crowd": crowd}[sys.argv[1]](*sys.argv[2:])
