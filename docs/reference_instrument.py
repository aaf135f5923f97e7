#!/usr/bin/env python3
"""A whole instrument on the link, in one file and with Python's own library: one channel, one panel.

    reference_instrument.py 5039             listens on this machine; rtpanel --link tcp://localhost:5039
    reference_instrument.py /dev/ttyUSB0     on a serial line; rtpanel --link serial:/dev/ttyUSB1

Put your converter into read_sample(). docs/link.md says what the bytes mean.
"""
import contextlib, itertools, math, os, random, select, socket, sys, termios, time, tty
from struct import pack, unpack_from

NAME, SERIAL_NUMBER, MODE, RATE = b"reference", b"0001", 0, 1000  # mode 0: single values
JOIN, HELLO, PACKET, MESSAGE, ACK, KEEPALIVE, REFUSE, GOODBYE = range(1, 9)
SAMPLES, CONTROL = 3, 39  # packet types
SYNC, TOKEN, BAUD = b"\xA5RTZ", random.randrange(1, 2**32), termios.B115200


def read_sample(n):
    """The n-th value of a capture, -32768 to 32767, and the digital lines, bits 0 to 3."""
    force = round(3800 * math.sin(math.pi * n / RATE) ** 2)
    return force, 1 if force > 1000 else 0


# CRC-32C, a byte at a time. On a microcontroller the table is 1 KiB, made at start or kept in flash.
TABLE = []
for entry in range(256):
    for _ in range(8):
        entry = entry >> 1 ^ (0x82F63B78 if entry & 1 else 0)
    TABLE.append(entry)


def crc(data, before=0):
    """The check of the data, behind data that has the check `before`."""
    register = before ^ 0xFFFFFFFF
    for byte in data:
        register = register >> 8 ^ TABLE[(register ^ byte) & 0xFF]
    return register ^ 0xFFFFFFFF


class Ended(Exception):
    """The connection ends, for a reason."""


class Panel:
    """The panel at the other end of a socket or a line, and the capture that it has asked for."""

    def __init__(self, handle, listener=None):
        self.handle, self.listener, self.input, self.refused = handle, listener, b"", 0
        os.set_blocking(handle, False)
        self.begin()

    def begin(self):
        self.joined, self.running, self.answer = False, False, b""
        self.sequence = self.expected = self.number = 0
        self.heard = self.sent = time.monotonic()

    def send(self, kind, payload=b"", may_be_left_out=False):
        head = pack("<4sBBHII", SYNC, 1, kind, 0, self.sequence, len(payload))
        self.sequence = self.sequence + 1 & 0xFFFFFFFF
        if may_be_left_out and not select.select([], [self.handle], [], 0)[1]:
            return  # its number is used up, so that the panel sees the hole
        frame = head + pack("<I", crc(head)) + payload + pack("<I", crc(payload, crc(head)))
        while frame:
            if not select.select([], [self.handle], [], 2)[1]:
                raise OSError("the panel does not read")
            frame = frame[os.write(self.handle, frame) :]
        self.sent = time.monotonic()

    def read_frame(self):
        """Works until one has come in. None: what has come in is no frame, or does not go on."""
        if not self.await_bytes(20):
            return None
        version, kind, sequence, n, check = unpack_from("<4xBB2xIII", self.input)
        if self.input[:4] != SYNC or crc(self.input[:16]) != check or version != 1 or n > 1024:
            return None
        if not self.await_bytes(24 + n):
            return None
        payload, last = self.input[20 : 20 + n], self.input[20 + n : 24 + n]
        if crc(payload, check) != int.from_bytes(last, "little"):
            return None
        self.input, self.heard = self.input[24 + n :], time.monotonic()
        return kind, sequence, payload

    def await_bytes(self, n):
        since = time.monotonic()
        while len(self.input) < n and time.monotonic() - since < 2:
            self.work()
            since = since if self.input else time.monotonic()
        return len(self.input) >= n

    def work(self):
        """What is due, within 10 ms."""
        ready = select.select([self.handle, self.listener or self.handle], [], [], 0.01)[0]
        if self.handle in ready:
            data = os.read(self.handle, 4096)
            if not data:
                raise OSError("closed by the panel")
            self.input += data
        if self.listener in ready:
            refuse(self.listener.accept()[0])
        if self.running:
            self.send_samples()
        silence = time.monotonic() - self.heard
        if self.joined and silence > 3 or self.listener and silence > 5:
            raise Ended(9)
        if self.joined and time.monotonic() - self.sent > 1:
            self.send(KEEPALIVE)

    def take(self, kind, sequence, payload):
        if kind == JOIN:
            self.take_join(sequence, payload)
        elif not self.joined and kind in (MESSAGE, KEEPALIVE):
            raise Ended(4)
        elif self.joined and sequence - self.expected & 0xFFFFFFFF < 2**31:  # not an old one
            self.expected = sequence + 1
            if kind == GOODBYE:
                raise Ended(0)
            if kind == MESSAGE:
                self.take_message(payload)

    def take_join(self, sequence, payload):
        if self.joined and self.listener:
            raise Ended(5)  # on a line it may come again
        self.begin()
        lowest, highest, role, length = unpack_from("<BBB9xB", payload.ljust(13, b"\0"))
        if lowest > 1 and highest >= lowest:
            raise Ended(1)  # version 1 is the one spoken here
        if lowest != 1 or highest < 1 or role > 1 or length > 64 or len(payload) < 13 + length:
            raise Ended(5)
        if role == 0:
            raise Ended(3)  # nobody views this instrument
        self.joined, self.expected = True, sequence + 1
        hello = pack("<BBBBHHII", 1, MODE, 1, 1, RATE, RATE, 0, TOKEN) + payload[8:12]
        self.send(HELLO, hello + b"".join(bytes([len(t)]) + t for t in (NAME, SERIAL_NUMBER)))

    def take_message(self, payload):
        number, image = int.from_bytes(payload[:4], "little"), payload[4:]
        if number == self.number and self.answer:
            return self.send(ACK, self.answer)  # once more: the first may be lost
        if number != self.number + 1 or not 1 <= len(image) <= 1000:
            raise Ended(5)
        milliseconds, continuous, rate = unpack_from("<HBH", image.ljust(9, b"\0"), 4)
        known = len(image) == 44 and image[0] == CONTROL and image[2] == 41 and image[3] in (2, 3)
        start = known and image[3] == 2 and any(image[4:11])
        result = 1 if not known else 4 if start and rate != RATE else 0
        self.number, self.answer = number, payload[:4] + bytes([result])
        self.send(ACK, self.answer)
        if result == 0 and image[3] == 2:  # else the pass output: switch it here
            self.taken, self.started = 0, time.monotonic()
            self.wanted = math.inf if continuous else milliseconds * RATE // 1000
            self.report(start)

    def report(self, running):
        self.running = running
        self.send(PACKET, pack("<iBBBB", CONTROL, 1, 0, 0, running) + bytes(37))

    def send_samples(self):
        """Those that are due: a block for each state of the digital lines."""
        due = min(int((time.monotonic() - self.started) * RATE), self.wanted, self.taken + 500)
        packet = pack("<ix", SAMPLES)
        samples = [read_sample(n) for n in range(self.taken, due)]
        for lines, block in itertools.groupby(samples, lambda sample: sample[1]):
            values = [value for value, _ in block]
            packet += pack(">BH", lines, len(values)) + pack(f"<{len(values)}h", *values)
        self.taken = due
        if samples:
            self.send(PACKET, packet, may_be_left_out=True)
        if self.taken >= self.wanted:
            self.report(False)

    def part(self, reason):
        if reason == 4 and time.monotonic() - self.refused < 1:
            return  # a line may be full of frames of a panel that has joined another
        self.refused = time.monotonic()
        if not self.joined:
            self.sequence = 0
        if reason != 0:  # the panel's own leave is not answered
            self.send(GOODBYE if self.joined else REFUSE, pack("<Hx", reason))
        self.joined = self.running = False

    def serve(self):
        """Until the panel, or the device, is gone."""
        while True:
            try:
                frame = self.read_frame()
                if frame:
                    self.take(*frame)
                elif not self.listener:
                    self.input = self.input[1:]  # on a line a byte is passed over
                elif self.joined:
                    raise Ended(10)
                else:
                    return  # it is no panel
            except Ended as end:
                self.part(end.args[0])
                if self.listener:
                    return


def refuse(second):
    """There is place for one panel."""
    with contextlib.suppress(OSError):
        Panel(second.fileno()).part(3)
        leave(second)


LEAVING = []


def leave(connection):
    """Ends the sending only: a socket closed with bytes unread would take the last frame back."""
    connection.shutdown(socket.SHUT_WR)
    LEAVING.append(connection)
    del LEAVING[:-8]


def open_line(path):
    handle = os.open(path, os.O_RDWR | os.O_NOCTTY | os.O_NONBLOCK)
    tty.setraw(handle)
    mode = termios.tcgetattr(handle)
    mode[4] = mode[5] = BAUD
    termios.tcsetattr(handle, termios.TCSANOW, mode)
    termios.tcflush(handle, termios.TCIOFLUSH)
    print("serving", path, flush=True)
    return open(handle, "rb+", 0)


def main(place):
    listener = socket.create_server(("127.0.0.1", int(place))) if place.isdigit() else None
    if listener:
        print("listening", listener.getsockname()[1], flush=True)
    while True:
        try:
            if listener:
                connection = listener.accept()[0]
                connection.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
                Panel(connection.fileno(), listener).serve()
                leave(connection)
            else:
                with open_line(place) as line:
                    Panel(line.fileno()).serve()
        except OSError as error:  # the panel or the device is gone
            print(error, flush=True)
            time.sleep(0.5)


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(sys.argv[1])
