"""A loopback of one's own: the program's control port is there once for each."""
import ctypes
import fcntl
import os
import pathlib
import socket
import struct
import subprocess
import sys

CLONE_NEWUSER = 0x10000000
CLONE_NEWNET = 0x40000000
SIOCSIFFLAGS = 0x8914
IFF_UP = 1


def enter():
    """Moves this process, and those that it starts later, into a network of their
    own. OSError where the system does not let us."""
    user, group = os.getuid(), os.getgid()
    libc = ctypes.CDLL(None, use_errno=True)
    if libc.unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0:
        raise OSError(ctypes.get_errno(), 'unshare')
    own = pathlib.Path('/proc/self')
    (own / 'setgroups').write_text('deny', 'ascii')
    (own / 'uid_map').write_text(f'{user} {user} 1', 'ascii')
    (own / 'gid_map').write_text(f'{group} {group} 1', 'ascii')
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as any_socket:
        fcntl.ioctl(any_socket, SIOCSIFFLAGS, struct.pack('16sH14x', b'lo', IFF_UP))


def is_possible():
    return subprocess.run([sys.executable, __file__], stderr=subprocess.DEVNULL,
                          check=False).returncode == 0


if __name__ == '__main__':
    enter()
