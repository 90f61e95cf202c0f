"""What the tool has to stand: visitors, strangers, and faults of all kinds."""

import asyncio
import contextlib
import os
import re
import signal
import socket
import time

from .accounts import BUSY_SECONDS
from .game import ARCHIVE, tell

REQUESTS_A_SECOND = 50
MOST_REQUESTS_AT_ONCE = 64
SILENT_CONNECTIONS = 20


class Strain:
    def __init__(self, game, restarts, requests):
        self.game, self.restarts, self.requests = game, restarts, requests

    def parts(self):
        return (self.visitors(), self.strangers(), self.lives(), self.server_faults(),
                self.other_faults(),
                *(self.silent_connection(number) for number in range(SILENT_CONNECTIONS)))

    # Load

    async def visitors(self):
        under_way = set()
        due = time.monotonic()
        while True:
            due = max(due + 1 / REQUESTS_A_SECOND, time.monotonic() - 1)
            await asyncio.sleep(due - time.monotonic())
            if len(under_way) < MOST_REQUESTS_AT_ONCE and self.game.life and self.game.life.ready:
                task = asyncio.create_task(self.requests.count(self.game.visit(), is_status))
                under_way.add(task)
                task.add_done_callback(under_way.discard)

    async def silent_connection(self, number):
        draw = self.game.draws(f"silent {number}")
        while True:
            with contextlib.suppress(OSError, asyncio.TimeoutError):
                reader, writer = await asyncio.open_connection("127.0.0.1", 80)
                try:
                    await asyncio.wait_for(reader.read(), draw.uniform(20, 300))
                finally:
                    writer.close()
            await asyncio.sleep(1)

    async def strangers(self):
        draw = self.game.draws("strangers")
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as udp:
            udp.setblocking(False)
            while True:
                await asyncio.sleep(draw.uniform(0.1, 0.9))
                junk = draw.randbytes(draw.randint(0, 1400))
                # Any datagram is a sign of life, also one that is junk.
                for port in [2348] if self.restarts.wanted else [2348, *tool_ports()]:
                    with contextlib.suppress(OSError):
                        udp.sendto(junk, ("127.0.0.1", port))
                await self.send_junk(draw, junk)

    async def send_junk(self, draw, junk):
        start = draw.choice((b"", b"GET /", b"GET / HTTP/1.1\r\n", b"PUT / HTTP/1.1\r\n\r\n",
                             b"POST /logon HTTP/1.1\r\nContent-Length: 999999\r\n\r\n",
                             b"GET /GETFILE/../../etc/passwd HTTP/1.1\r\n\r\n",
                             b"POST /logon HTTP/1.1\r\n\r\nUserName=a&UserName=b&PW=%zz"))
        with contextlib.suppress(OSError):
            _, writer = await asyncio.open_connection("127.0.0.1", 80)
            writer.write(start + junk)
            await asyncio.sleep(draw.uniform(0, 0.4))
            writer.close()

    # Faults

    async def lives(self):
        """Kills the tool after a short or a long life, and starts it again."""
        game, draw = self.game, self.game.draws("lives")
        while True:
            game.start_tool()
            self.restarts.tool_started()
            tell(f"the tool is started, life {len(game.lives)}")
            life = game.life
            until = time.time() + (draw.uniform(15, 150) if draw.random() < 0.5
                                   else draw.uniform(300, 1200))
            while time.time() < until and life.process.poll() is None:
                if not life.ready:
                    await self.look_whether_ready(life)
                await asyncio.sleep(0.1)
            if life.process.poll() is not None:
                life.end = time.time()
                game.find(f"the tool has ended by itself, exit code {life.process.poll()}")
            else:
                game.end_tool(signal.SIGKILL)
                tell("the tool is killed")
            await asyncio.sleep(draw.uniform(0.1, 10))

    async def look_whether_ready(self, life):
        with contextlib.suppress(OSError, asyncio.TimeoutError):
            if is_status(await self.game.visit()):
                life.ready = time.time()
        if not life.ready and time.time() > life.start + 2 * BUSY_SECONDS:
            life.ready = time.time()  # what it does not answer from now on is counted
            self.game.find("the web site does not answer after the tool's start")

    async def server_faults(self):
        draw = self.game.draws("server faults")
        faults = (self.kill_server, self.kill_server, self.kill_server_again, self.hang_server,
                  self.hang_server, self.pause_server)
        while True:
            await asyncio.sleep(draw.uniform(40, 200))  # some matches come to their end
            async with self.restarts.handling:
                await self.restarts.until_done()
                await asyncio.sleep(3)  # until it has its window, or it would be no one's
                if self.game.runs_server(self.restarts.process):
                    await draw.choice(faults)(draw)
                await self.restarts.until_done()

    async def kill_server(self, _draw):
        tell(f"server {self.restarts.process} is killed")
        self.restarts.want("ended")
        os.kill(self.restarts.process, signal.SIGKILL)

    async def kill_server_again(self, draw):
        for _ in range(draw.randint(2, 4)):
            await self.kill_server(draw)
            await self.restarts.until_done()
            await asyncio.sleep(draw.uniform(0, 2))

    async def hang_server(self, _draw):
        tell(f"server {self.restarts.process} hangs")
        self.restarts.want("hung")
        os.kill(self.restarts.process, signal.SIGSTOP)

    async def pause_server(self, draw):
        """For less than what calls for a restart."""
        process, seconds = self.restarts.process, draw.uniform(0.5, 8)
        tell(f"server {process} hangs for {seconds:.1f} s")
        os.kill(process, signal.SIGSTOP)
        await asyncio.sleep(seconds)
        with contextlib.suppress(ProcessLookupError):  # it was ended, which is a fault
            os.kill(process, signal.SIGCONT)

    async def other_faults(self):
        draw = self.game.draws("other faults")
        while True:
            await asyncio.sleep(draw.uniform(30, 120))
            await draw.choice((self.fill_disk, self.take_folder, self.restart_manager))(draw)

    async def fill_disk(self, draw):
        ballast = self.game.directory / "ballast"
        with self.game.obstacle():
            tell("the disk is full")
            try:
                with open(ballast, "wb", buffering=0) as file:
                    for size in (1 << 20, 1 << 12):
                        with contextlib.suppress(OSError):
                            while file.write(bytes(size)) == size:
                                pass
                await asyncio.sleep(draw.uniform(10, 60))
            finally:
                ballast.unlink()
        tell("the disk has room again")

    async def take_folder(self, draw):
        archive = self.game.directory / ARCHIVE
        away = archive.with_suffix(".away")
        with self.game.obstacle():
            tell("the folder of the replays is away")
            archive.rename(away)
            try:
                await asyncio.sleep(draw.uniform(10, 60))
            finally:
                away.rename(archive)
        tell("the folder of the replays is back")

    async def restart_manager(self, _draw):
        tell("the window manager is restarted")
        self.game.restart_manager()


def is_status(page):
    return b"Ghost Recon Dedicated Server Info" in page and page.rstrip().endswith(b"</html>")


def tool_ports():
    """Those from which the tool asks the server: all UDP ports in use here but the server's."""
    with open("/proc/net/udp", encoding="ascii") as table:
        ports = {int(port, 16) for port in re.findall(r"^ *\d+: \w+:(\w+)", table.read(), re.M)}
    return ports - {2348}
