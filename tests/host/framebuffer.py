#!/usr/bin/env python3
"""Works rtpanel on a bare framebuffer with a finger: framebuffer.py RTPANEL

The framebuffer is the window system's own over RFB, which sends the picture and takes touches and
keys. What is expected holds at any scale and for a screen of any height.
"""

import os
import random
import socket
import struct
import subprocess
import sys
import tempfile
import time

WIDTH, HEIGHT = 1000, 700
FRONT = bytes((38, 96, 164))  # border and caption of the window that has the keyboard
BACKGROUND = bytes((52, 64, 80))
# The status strip: left the instrument's state, beside it a file that failed.
QUIET, WAITS, BUSY = bytes((226, 230, 236)), bytes((255, 193, 7)), bytes((0, 122, 61))
ALARM = bytes((255, 221, 221))
START = 41, 87
FILE_DIALOG, KEYBOARD = (726, 433), (786, 459)
FIRST_ROW = 50  # of the recording in a capture
PLOT, LIST = bytes((192, 192, 192)), bytes((240, 240, 240))
ENTER, ESCAPE, DOWN = 0xFF0D, 0xFF1B, 0xFF54
PATIENCE_S = 30


class Display:
    """A connection to the display."""

    def __init__(self, port, panel):
        end = time.monotonic() + PATIENCE_S
        while True:
            try:
                self.socket = socket.create_connection(("127.0.0.1", port), PATIENCE_S)
                break
            except ConnectionRefusedError:
                if panel.poll() is not None or time.monotonic() > end:
                    raise
                time.sleep(0.05)
        self.read(12)
        self.socket.sendall(b"RFB 003.003\n")
        assert struct.unpack(">I", self.read(4)) == (1,), "no password is asked for"
        self.socket.sendall(b"\1")
        width, height, _, length = struct.unpack(">HH16sI", self.read(24))
        assert (width, height) == (WIDTH, HEIGHT)
        self.read(length)
        # 32 bits a pixel, least byte first: blue, green, red, nothing; sent as they are.
        self.socket.sendall(struct.pack(">4x4B3H3B3x", 32, 24, 0, 1, 255, 255, 255, 16, 8, 0))
        self.socket.sendall(struct.pack(">BxHi", 2, 1, 0))

    def read(self, count):
        data = bytearray()
        while len(data) < count:
            piece = self.socket.recv(count - len(data))
            assert piece, "the connection has ended"
            data += piece
        return data

    def take_rows(self):
        """The whole picture, as rows of three bytes a pixel."""
        self.socket.sendall(struct.pack(">BB4H", 3, 0, 0, 0, WIDTH, HEIGHT))
        rows = [bytearray(3 * WIDTH) for _ in range(HEIGHT)]
        assert self.read(1) == b"\0", "an update of the picture"
        for _ in range(struct.unpack(">xH", self.read(3))[0]):
            x, y, width, height, encoding = struct.unpack(">4Hi", self.read(12))
            assert encoding == 0
            for row in range(y, y + height):
                line = self.read(4 * width)
                for byte in range(3):
                    rows[row][3 * x + byte:3 * (x + width):3] = line[2 - byte::4]
        return rows

    def find_front(self):
        """Left, top, right and bottom of the front window, or None."""
        left, top, right, bottom = WIDTH, HEIGHT, 0, 0
        for y, row in enumerate(self.take_rows()):
            at = row.find(FRONT)
            if at < 0:
                continue
            left, right = min(left, at // 3), max(right, row.rfind(FRONT) // 3 + 1)
            top, bottom = min(top, y), y + 1
        return (left, top, right, bottom) if right else None

    def await_front(self, what, holds):
        """The front window as soon as a condition of it holds."""
        end = time.monotonic() + PATIENCE_S
        while True:
            front = self.find_front()
            if front and holds(front):
                return front
            assert time.monotonic() < end, f"waited in vain for {what}; in front: {front}"
            time.sleep(0.05)

    def await_pixel(self, what, x, y, *colours):
        """Until a pixel has one of some colours."""
        end = time.monotonic() + PATIENCE_S
        while True:
            row = self.take_rows()[round(y)]
            found = bytes(row[3 * round(x):][:3])
            if found in colours:
                return
            assert time.monotonic() < end, f"waited in vain for {what}; there: {tuple(found)}"
            time.sleep(0.05)

    def point(self, x, y, pressed):
        self.socket.sendall(struct.pack(">BBHH", 5, pressed, round(x), round(y)))

    def drag(self, x, y, dx, dy):
        self.point(x, y, 0)
        self.point(x, y, 1)
        for step in range(1, 6):
            self.point(x + dx * step / 5, y + dy * step / 5, 1)
        self.point(x + dx, y + dy, 0)

    def type(self, *keys):
        for key in keys:
            for pressed in (1, 0):
                self.socket.sendall(struct.pack(">BBxxI", 4, pressed, key))


class Panel:
    """The panel on its display. Places are in pixels of the design, from the corner of a window's
    client area."""

    def __init__(self, display):
        self.display = display
        self.screen = display.await_front("the screen", lambda front: front[2] - front[0] > 700)
        self.scale = (self.screen[2] - self.screen[0]) / 801

    def place(self, window, x, y):
        return window[0] + (3 + x) * self.scale, window[1] + (33 + y) * self.scale

    def tap(self, window, x, y):
        self.display.drag(*self.place(window, x, y), 0, 0)

    def await_window(self, what, width, height):
        """The front window of a size in pixels of the design, frame and caption included."""
        def fits(front):
            return all(abs(front[n + 2] - front[n] - size * self.scale) < 8 * self.scale
                       for n, size in ((0, width), (1, height)))
        return self.display.await_front(what, fits)

    def await_screen(self, after):
        self.display.await_front("the screen after " + after, lambda front: front == self.screen)

    def await_strip(self, what, x, *colours):
        """Until a part of the status strip has the colour of a state."""
        self.display.await_pixel(what, *self.place(self.screen, x, 496), *colours)


def drag_settings(panel):
    display, screen, scale = panel.display, panel.screen, panel.scale
    panel.tap(screen, 40, 422)
    settings = display.await_front("Settings", lambda front: front[2] < screen[2])

    caption = settings[0] + 60 * scale, settings[1] + 18 * scale
    moved = tuple(edge + by for edge, by in zip(settings, (-80, 60, -80, 60)))
    display.drag(*caption, -80, 60)
    display.await_front("Settings, dragged", lambda front: front == moved)
    display.drag(caption[0] - 80, caption[1] + 60, WIDTH - caption[0] + 79, HEIGHT - caption[1] - 61)
    cornered = display.await_front("Settings in the corner", lambda front: front[1] > HEIGHT / 2)
    assert WIDTH - cornered[0] >= 60 * scale and HEIGHT - cornered[1] >= 30 * scale, cornered
    display.drag(WIDTH - 20, HEIGHT - 10, settings[0] - cornered[0], settings[1] - cornered[1])
    display.await_front("Settings, back", lambda front: front == settings)

    panel.tap(settings, 190, 86)
    display.await_front("the number pad", lambda front: front[3] - front[1] > 400 * scale)
    display.type(*b"99999", ENTER)
    display.await_front("the message", lambda front: front[3] - front[1] < 300 * scale)
    display.type(ENTER)
    display.await_front("Settings again", lambda front: front == settings)
    display.type(ESCAPE)
    panel.await_screen("Settings")


def end_lists(panel):
    """The keys that end an open list leave the screen as it is."""
    row = panel.place(panel.screen, 628, 101)
    for key in (ESCAPE, ENTER):
        panel.tap(panel.screen, 537, 25)
        panel.display.await_pixel("a list that opens", *row, LIST)
        panel.display.type(DOWN, key)
        panel.display.await_pixel("a list that closes", *row, PLOT)
        panel.await_screen("its list")


def capture(panel):
    panel.tap(panel.screen, *START)
    panel.await_strip("a capture that has begun", 200, WAITS, BUSY)
    panel.await_strip("the end of the capture", 200, QUIET)


def export(panel, file):
    """Exports with nothing but a finger. What is written is what the recording has."""
    panel.tap(panel.screen, 443, 425)
    dialog = panel.await_window("the file dialog", *FILE_DIALOG)
    panel.tap(dialog, 289, 363)
    keyboard = panel.await_window("the keyboard", *KEYBOARD)
    for x in (598, 460, 321):  # o, u, t
        panel.tap(keyboard, x, 200)
    panel.tap(keyboard, 701, 385)
    dialog = panel.await_window("the file dialog again", *FILE_DIALOG)
    panel.tap(dialog, 558, 363)
    panel.await_screen("the export")

    with open(file, encoding="ascii", newline="") as table:
        lines = table.read().split("\r\n")
    # Row n of the recording has the force 10 n and the position -3; a capture begins at the level.
    expected = [f"{n / 100:.3f},-0.003" for n in range(FIRST_ROW, FIRST_ROW + 500)]
    assert lines[0] == "Force, Distance", lines[0]
    assert len(lines) == 501, f"{len(lines) - 1} rows in the table"
    assert lines[1:] == expected, next(pair for pair in zip(lines[1:], expected) if len(set(pair)) > 1)


def fail_to_load(panel, file):
    """A file that is cut short is told, and the screen goes on."""
    with open(file, "wb") as cut:
        cut.write(bytes((4, 0, 0, 0, 1, 1)))
    panel.tap(panel.screen, 41, 308)
    files = panel.await_window("the list of files", 573, 464)
    panel.tap(files, 243, 64)
    panel.tap(files, 118, 380)
    box = panel.await_window("the error box", 531, 335)
    panel.await_strip("what has failed", 700, ALARM)
    panel.tap(box, 264, 253)
    panel.await_screen("the error box")
    capture(panel)


def work(display, store):
    panel = Panel(display)
    rows = display.take_rows()
    assert rows[0][:3] == BACKGROUND and rows[-1][-3:] == BACKGROUND, "the display is filled"
    drag_settings(panel)
    end_lists(panel)
    capture(panel)
    export(panel, os.path.join(store, "out.csv"))
    fail_to_load(panel, os.path.join(store, "cut.rt3"))
    display.type(ESCAPE)


def find_port():
    """A free port, of those that the system gives to nobody by itself."""
    while True:
        port = random.randrange(10000, 30000)
        with socket.socket() as free:
            try:
                free.bind(("127.0.0.1", port))
                return port
            except OSError:
                continue


def main():
    port = find_port()
    with tempfile.TemporaryDirectory() as folder:
        recording = os.path.join(folder, "recording.csv")
        with open(recording, "w", encoding="ascii") as file:
            file.write("Force,Position\n" + "".join(f"{n},-1\n" for n in range(1000)))
        platform = f"vnc:size={WIDTH}x{HEIGHT}:port={port}"
        panel = subprocess.Popen(
            [sys.argv[1], "--settings", folder + "/settings.ini", "--data-folder", folder,
             "--sample-time", "1", "--trigger", str(FIRST_ROW * 10 / 50), "--value-rate", "1000",
             "--replay", recording, "--replay-rate", "500", "--replay-first-scale", "10",
             "--replay-second-scale", "3"],
            env={**os.environ, "QT_QPA_PLATFORM": platform})
        try:
            work(Display(port, panel), os.path.join(folder, "RealTimeFiles"))
            assert panel.wait(PATIENCE_S) == 0
        except ConnectionError as error:
            raise AssertionError("the panel has ended by itself") from error
        finally:
            panel.kill()
            panel.wait()


main()
