#!/usr/bin/env python3
"""A whole instrument on the link, in one file and with Python's own library: one channel, one panel.

    reference_instrument.py 5039             listens on this machine; rtpanel --link tcp://localhost:5039
    reference_instrument.py /dev/ttyUSB0     on a serial line; rtpanel --link serial:/dev/ttyUSB1

Put your converter into read_sample(). docs/link.md says what the bytes mean.
"""
import math, os, random, select, signal, socket, struct, sys, termios, threading, time, tty

NAME, SERIAL_NUMBER, MODE, RATE = "reference", "0001", 0, 1000  # mode 0: single values
BAUD = termios.B115200
JOIN, HELLO, PACKET, MESSAGE, ACK, KEEPALIVE, REFUSE, GOODBYE = range(1, 9)
SAMPLES, CONTROL = 3, 39  # packet types
SYNC, MAX_QUEUED, TOKEN = b"\xA5RTZ", 65536, random.randrange(1, 2**32)


def read_sample(n):
    """The n-th value of a capture, -32768 to 32767, and the digital lines, bits 0 to 3."""
    force = round(3800 * math.sin(math.pi * n / RATE) ** 2)
    return force, 1 if force > 1000 else 0


# CRC-32C, a byte at a time. On a microcontroller the table is 1 KiB, made at start or kept in flash.
TABLE = []
for n in range(256):
    for _ in range(8):
        n = n >> 1 ^ (0x82F63B78 if n & 1 else 0)
    TABLE.append(n)


def crc(data, register=0xFFFFFFFF):
    """The register behind the data; the check is its complement."""
    for byte in data:
        register = register >> 8 ^ TABLE[(register ^ byte) & 0xFF]
    return register


class Ended(Exception):
    """The connection ends: reason, and the kind of frame that says so; kind 0: without a word."""


class Link:
    """One connection. Frames are read from `fd` and written to it, never waiting."""

    def __init__(self, fd, line):
        self.fd, self.line = fd, line
        os.set_blocking(fd, False)
        self.inp, self.out = bytearray(), bytearray()
        self.since = self.progress = time.monotonic()
        self.refused = self.since - 2
        self.good = False  # whether a frame has ever come
        self.leave()

    def leave(self):
        self.joined, self.sequence, self.expected, self.taken, self.answer = False, 0, None, 0, b""
        self.heard = self.sent = time.monotonic()

    def send(self, kind, payload=b""):
        head = struct.pack("<4sBBHII", SYNC, 1, kind, 0, self.sequence, len(payload))
        self.sequence = self.sequence + 1 & 0xFFFFFFFF
        if kind == PACKET and len(self.out) > MAX_QUEUED:
            return  # left out; its number is used up, so that the panel sees the hole
        check = crc(head)
        self.out += head + struct.pack("<I", check ^ 0xFFFFFFFF) + payload
        self.out += struct.pack("<I", crc(payload, check) ^ 0xFFFFFFFF)
        self.sent = time.monotonic()

    def part(self, kind, reason, text=""):
        text = text.encode()[:200]
        if kind == REFUSE:
            self.sequence = 0
        self.send(kind, struct.pack("<HB", reason, len(text)) + text)

    def write(self):
        if self.out:
            try:
                del self.out[: os.write(self.fd, self.out)]
            except BlockingIOError:
                pass

    def read(self):
        try:
            data = os.read(self.fd, 4096)
        except BlockingIOError:
            return
        if not data:
            raise OSError("closed by the panel")
        if not self.inp:
            self.progress = time.monotonic()
        self.inp += data

    def reject(self, reason):
        """The buffer does not begin with a frame: fatal on a stream, a byte to drop on a line."""
        if not self.line:
            raise Ended(reason, (GOODBYE if self.joined else REFUSE) if self.good else 0)
        del self.inp[0]
        self.progress = time.monotonic()

    def frames(self):
        if self.inp and time.monotonic() - self.progress > 2:
            self.reject(9)
        while self.inp:
            head, start = self.inp[:20], self.inp[:4]
            if start != SYNC[: len(start)]:
                self.reject(10)
                continue
            if len(head) < 20:
                return
            _, version, kind, _, sequence, n, check = struct.unpack("<4sBBHIII", head)
            register = crc(head[:16])
            if register ^ 0xFFFFFFFF != check:
                self.reject(10)
            elif version != 1 or n > 1024:
                self.reject(5)
            elif len(self.inp) < 24 + n:
                return
            elif crc(self.inp[20 : 20 + n], register) ^ 0xFFFFFFFF != struct.unpack_from(
                "<I", self.inp, 20 + n
            )[0]:
                self.reject(10)
            else:
                payload = bytes(self.inp[20 : 20 + n])
                del self.inp[: 24 + n]
                self.good, self.heard, self.progress = True, time.monotonic(), time.monotonic()
                yield kind, sequence, payload


class Instrument:
    def __init__(self):
        self.running = False

    def take(self, link, kind, sequence, payload):
        """A frame from the panel."""
        if kind == JOIN:
            return self.join(link, sequence, payload)
        if not link.joined:
            if kind in (MESSAGE, KEEPALIVE) and not link.line:
                raise Ended(4, REFUSE)
            if kind in (MESSAGE, KEEPALIVE) and time.monotonic() - link.refused > 1:
                link.refused = time.monotonic()
                link.part(REFUSE, 4)
            return
        if sequence - link.expected & 0xFFFFFFFF >= 2**31:
            return  # an old one
        link.expected = sequence + 1
        if kind == GOODBYE:
            raise Ended(0, 0)
        if kind == MESSAGE:
            if not 5 <= len(payload) <= 1004:
                raise Ended(5, GOODBYE)
            number = struct.unpack_from("<I", payload)[0]
            if number != link.taken:
                if number != link.taken + 1:
                    raise Ended(5, GOODBYE)
                link.taken = number
                link.answer = payload[:4] + bytes([self.judge(payload[4:])])
                link.send(ACK, link.answer)
                if link.answer[4] == 0:
                    self.execute(link, payload[4:])
            else:
                link.send(ACK, link.answer)  # once more: the first may be lost

    def join(self, link, sequence, payload):
        if link.joined and not link.line:
            raise Ended(5, GOODBYE)
        self.running = False
        link.leave()
        if len(payload) < 2 or not 1 <= payload[0] <= payload[1]:
            raise Ended(5, REFUSE)
        if payload[0] > 1:
            raise Ended(1, REFUSE)
        if len(payload) < 13 or payload[2] > 1 or len(payload) < 13 + payload[12] or payload[12] > 64:
            raise Ended(5, REFUSE)
        if payload[2] == 0:
            raise Ended(3, REFUSE)  # nobody views this instrument
        link.joined, link.expected = True, sequence + 1
        texts = b"".join(bytes([len(t)]) + t.encode() for t in (NAME, SERIAL_NUMBER))
        link.send(HELLO, struct.pack("<BBBBHHI", 1, MODE, 1, 1, RATE, RATE, 0)
                  + struct.pack("<I", TOKEN) + payload[8:12] + texts)  # fmt: skip

    def judge(self, image):
        """The answer to a message image: 0 taken, 1 not understood, 4 cannot be done."""
        if len(image) != 44 or image[0] != CONTROL or image[2] != 41 or image[3] not in (2, 3):
            return 1
        stop = image[3] == 2 and not any(image[4:11])
        return 0 if stop or image[3] == 3 or struct.unpack_from("<H", image, 7)[0] == RATE else 4

    def execute(self, link, image):
        if image[3] == 3:
            return  # pass output: switch it here
        milliseconds, continuous = struct.unpack_from("<HB", image, 4)
        if not any(image[4:11]):
            self.running = False
        else:
            self.running, self.begin, self.count = True, time.monotonic(), 0
            self.wanted = float("inf") if continuous else milliseconds * RATE // 1000
        self.report(link, self.running)

    def report(self, link, running):
        link.send(PACKET, struct.pack("<iBBBB", CONTROL, 1, 0, 0, running) + bytes(37))

    def sample(self, link):
        """Sends the values that are due: a block ends where the digital lines change."""
        due = min(int((time.monotonic() - self.begin) * RATE), self.wanted)
        due = min(due, self.count + 1000)
        blocks, values, lines = bytearray(1), [], 0
        while self.count < due or values:
            value, now = read_sample(self.count) if self.count < due else (0, None)
            if values and now != lines:
                blocks += struct.pack(">BH", lines, len(values))
                blocks += struct.pack(f"<{len(values)}h", *values)
                values = []
            if now is not None:
                values.append(value)
                lines = now
                self.count += 1
        if len(blocks) > 1:
            link.send(PACKET, struct.pack("<i", SAMPLES) + blocks)
        if self.count >= self.wanted:
            self.running = False
            self.report(link, False)

    def turn(self, link):
        """What one connection needs every 10 ms."""
        now = time.monotonic()
        try:
            for frame in link.frames():
                self.take(link, *frame)
            if self.running:
                self.sample(link)
            if link.joined and now - link.heard > 3:
                raise Ended(9, GOODBYE)
            if not link.joined and not link.line and now - link.since > 5:
                raise Ended(9, REFUSE)
            if link.joined and now - link.sent > 1:
                link.send(KEEPALIVE)
        except Ended as end:
            reason, kind = end.args
            self.running = False
            if kind:
                link.part(kind, reason)
            link.joined = False
            if not link.line:
                raise OSError(f"ended, reason {reason}")
        link.write()


def open_line(path):
    fd = os.open(path, os.O_RDWR | os.O_NOCTTY | os.O_NONBLOCK)
    tty.setraw(fd)
    mode = termios.tcgetattr(fd)
    mode[4] = mode[5] = BAUD
    termios.tcsetattr(fd, termios.TCSANOW, mode)
    termios.tcflush(fd, termios.TCIOFLUSH)
    print("serving", path, flush=True)
    return Link(fd, line=True)


def close_gently(panel, rest):
    """A socket closed with bytes unread would take the last frame back."""
    try:
        panel.settimeout(1)
        panel.sendall(rest)
        panel.shutdown(socket.SHUT_WR)
        while panel.recv(4096):
            pass
    except OSError:
        pass
    panel.close()


def refuse(panel):
    """A second panel: this instrument takes one."""
    last = Link(panel.fileno(), line=False)
    last.part(REFUSE, 3)
    close_gently(panel, last.out)


def main(place):
    instrument, listener, panel, link = Instrument(), None, None, None
    if place.isdigit():
        listener = socket.create_server(("127.0.0.1", int(place)))
        print("listening", listener.getsockname()[1], flush=True)
    while True:
        try:
            if link is None and listener is None:
                link = open_line(place)
            watched = [end for end in (listener, link and link.fd) if end is not None]
            readable = select.select(watched, [], [], 0.01)[0]
            if listener in readable:
                newcomer = listener.accept()[0]
                newcomer.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
                if link is None:
                    panel, link = newcomer, Link(newcomer.fileno(), line=False)
                elif threading.active_count() < 8:
                    threading.Thread(target=refuse, args=(newcomer,), daemon=True).start()
                else:
                    newcomer.close()
            if link and link.fd in readable:
                link.read()
            if link:
                instrument.turn(link)
        except OSError as error:  # the panel or the device is gone
            print(error, flush=True)
            instrument.running = False
            if panel:
                threading.Thread(target=close_gently, args=(panel, link.out), daemon=True).start()
            elif link:
                os.close(link.fd)
            else:
                time.sleep(0.5)  # until the device is back
            panel, link = None, None
        except KeyboardInterrupt:
            if link and link.joined:
                link.part(GOODBYE, 8)
                link.write()
            return


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    signal.signal(signal.SIGTERM, signal.default_int_handler)
    main(sys.argv[1])
