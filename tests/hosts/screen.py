"""A host's windows on a screen without a window manager: screen.py close WINDOW | pixels X Y WIDTH HEIGHT.

`close` asks a window to close as its frame's button would; `pixels` prints a line of hexadecimal
digits for each row of the screen there, three bytes a pixel.
"""

import ctypes
import sys

X = ctypes.CDLL("libX11.so.6")
X.XOpenDisplay.restype = ctypes.c_void_p
X.XInternAtom.restype = ctypes.c_ulong
X.XDefaultRootWindow.restype = ctypes.c_ulong
X.XGetImage.restype = ctypes.c_void_p
X.XGetPixel.restype = ctypes.c_ulong
CLIENT_MESSAGE, LONGS, Z_PIXMAP, ALL_PLANES = 33, 32, 2, ctypes.c_ulong(-1)


class ClientMessage(ctypes.Structure):
    _fields_ = [
        ("type", ctypes.c_int),
        ("serial", ctypes.c_ulong),
        ("is_sent", ctypes.c_int),
        ("display", ctypes.c_void_p),
        ("window", ctypes.c_ulong),
        ("kind", ctypes.c_ulong),
        ("format", ctypes.c_int),
        ("data", ctypes.c_long * 5),
        ("rest", ctypes.c_long * 24),
    ]


def atom(name):
    return X.XInternAtom(display, name, 0)


def close(window):
    message = ClientMessage(type=CLIENT_MESSAGE, window=window, kind=atom(b"WM_PROTOCOLS"), format=LONGS)
    message.data[0] = atom(b"WM_DELETE_WINDOW")
    X.XSendEvent(display, ctypes.c_ulong(window), 0, ctypes.c_long(0), ctypes.byref(message))
    X.XSync(display, 0)


def pixels(x, y, width, height):
    root = ctypes.c_ulong(X.XDefaultRootWindow(display))
    image = ctypes.c_void_p(X.XGetImage(display, root, x, y, width, height, ALL_PLANES, Z_PIXMAP))
    for row in range(height):
        print("".join(f"{X.XGetPixel(image, column, row) & 0xFFFFFF:06x}" for column in range(width)))


display = ctypes.c_void_p(X.XOpenDisplay(None))
{"close": close, "pixels": pixels}[sys.argv[1]](*map(int, sys.argv[2:]))
