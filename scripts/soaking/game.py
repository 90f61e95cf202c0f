"""The tool in a game directory of its own, on a small disk, with the simulated game server."""

import asyncio
import collections
import contextlib
import os
import pathlib
import random
import shutil
import signal
import subprocess
import time
import urllib.parse
import xml.sax.saxutils

ARCHIVE = "Archive"
MOST_REPLAYS = 20
MATCH_SECONDS = (49, 58)  # longer than from one look at the page to the next
ANSWER_SECONDS = 20


def tell(text):
    print(time.strftime("%H:%M:%S"), text, flush=True)


def numbers(path):
    """The first number of each line "name: number"."""
    lines = (line.split() for line in pathlib.Path(path).read_text().splitlines())
    return {words[0].rstrip(":"): int(words[1]) for words in lines
            if len(words) > 1 and words[1].isdigit()}


async def ask(request):
    """The whole answer of the web site, which closes the connection behind it."""
    async def exchange():
        reader, writer = await asyncio.open_connection("127.0.0.1", 80)
        try:
            writer.write(request)
            return await reader.read()
        finally:
            writer.close()
    return await asyncio.wait_for(exchange(), ANSWER_SECONDS)


class Life:
    """The tool between its start and its kill."""

    def __init__(self, process):
        self.process = process
        self.start = time.time()
        self.ready = None  # since when its web site answers
        self.end = None
        self.samples = []  # (time, {what: how much})

    def usage(self):
        process = f"/proc/{self.process.pid}"
        return {"memory": numbers(f"{process}/smaps_rollup")["Private_Dirty"],
                "descriptors": len(os.listdir(f"{process}/fd")),
                "threads": numbers(f"{process}/status")["Threads"]}


class Game:
    def __init__(self, folder, seed, tool, server):
        self.seed = seed
        draw = self.draws("settings")
        self.startup, self.timeout = 2, draw.randint(5, 8)
        self.polling = draw.randint(500, 2000) / 1000
        self.password = f"{draw.getrandbits(48):x}"
        self.folder, self.directory = folder, folder / "game"
        self.program = self.directory / server.name
        self.lives = []
        self.obstacles = []  # (since, until) of what keeps the tool from its work
        self.findings = collections.Counter()
        self.manager = None
        shutil.rmtree(folder, ignore_errors=True)
        self.directory.mkdir(parents=True)
        subprocess.run(["mount", "-t", "tmpfs", "-o", "size=24m", "soak", self.directory],
                       check=True)
        for program in (tool, server):
            shutil.copy(program, self.directory)
        (self.directory / ARCHIVE).mkdir()
        (self.directory / "ZebekSuiteOptions.xml").write_text(self._settings())
        self.environment = {**{name: value for name, value in os.environ.items()
                               if not name.startswith("XDG_")}, "HOME": str(folder)}
        # The simulated server makes the files of an installation when it starts.
        subprocess.run([self.program, "-autoserve", "-exit-after", "0"], env=self.environment,
                       stderr=subprocess.DEVNULL, check=True)

    def _settings(self):
        values = {
            "ServerStartupTimeout": self.startup, "ServerTimeout": self.timeout,
            "ServerPollingFreq": round(self.polling * 1000),
            "ServerCommandLineArgs": self.arguments(self.draws("arguments")),
            "ReplayCount": MOST_REPLAYS, "ReplaysPath": self.directory / ARCHIVE,
            "AllowRemoteAccess": "True", "AdminUserName": "admin", "AdminPassword": self.password}
        elements = (f"<{name}>{xml.sax.saxutils.escape(str(value))}</{name}>"
                    for name, value in values.items())
        return f"<options>{''.join(elements)}</options>"

    def draws(self, purpose):
        """What is random depends on the seed alone, whatever comes before what."""
        return random.Random(f"{self.seed} {purpose}")

    def arguments(self, draw):
        """Of the server; the name of a player makes each page of statistics another."""
        return (f"-log ../events.log -joining 2 -match-length {draw.randint(*MATCH_SECONDS)} "
                f"-player-name P{draw.getrandbits(32):x}")

    def find(self, text):
        self.findings[text] += 1
        if self.findings[text] == 1:
            tell(f"FAULT: {text}")

    # The tool and its window manager

    @property
    def life(self):
        return self.lives[-1] if self.lives and self.lives[-1].end is None else None

    def start_tool(self):
        with open(self.folder / "ZebekSuite.log", "ab") as log:
            process = subprocess.Popen([self.directory / "ZebekSuite.exe"], env=self.environment,
                                       stdin=subprocess.DEVNULL, stdout=log, stderr=log)
        self.lives.append(Life(process))

    def end_tool(self, number):
        life = self.lives[-1]
        life.end = time.time()
        life.process.send_signal(number)
        return life.process.wait(10)

    def restart_manager(self):
        if self.manager:
            self.manager.kill()
            self.manager.wait()
        self.manager = subprocess.Popen(["openbox"], env=self.environment,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def worked_since(self, moment):
        """Whether nothing has kept the tool from its work since then."""
        life = self.life
        return (life is not None and life.ready is not None and life.ready <= moment
                and not any(until > moment for _, until in self.obstacles))

    @contextlib.contextmanager
    def obstacle(self):
        since = time.time()
        self.obstacles.append((since, float("inf")))
        try:
            yield
        finally:
            self.obstacles.remove((since, float("inf")))
            self.obstacles.append((since, time.time()))

    # The game server

    def runs_server(self, process):
        try:
            return os.readlink(f"/proc/{process}/exe") == str(self.program)
        except OSError:
            return False

    def servers(self):
        """All that run at one time, without what they have forked and is about to run another
        program."""
        seen = [int(name) for name in os.listdir("/proc")
                if name.isdigit() and self.runs_server(name)]
        return [process for process in seen
                if self.runs_server(process) and self._parent(process) not in seen]

    @staticmethod
    def _parent(process):
        with contextlib.suppress(OSError):
            return numbers(f"/proc/{process}/status")["PPid"]

    # The web site

    async def visit(self, path="/"):
        return await ask(f"GET {path} HTTP/1.1\r\nHost: localhost\r\n\r\n".encode())

    async def post(self, path, **fields):
        fields = {"UserName": "admin", "PW": self.password, **fields}
        body = urllib.parse.urlencode(fields, encoding="cp1252")
        head = f"POST {path} HTTP/1.1\r\nHost: localhost\r\nContent-Length: {len(body)}\r\n\r\n"
        return (await ask((head + body).encode())).decode("cp1252")

    # Its files

    def read(self, name):
        try:
            return (self.directory / name).read_bytes()
        except OSError:
            return b""

    def clean_up(self):
        for name in ("ZEBEK_Error.xml", "ZebekSuiteOptions.xml"):
            (self.folder / name).write_bytes(self.read(name))
        for process in (*(life.process for life in self.lives[-1:]), self.manager):
            if process:
                process.kill()
        for process in self.servers():
            os.kill(process, signal.SIGKILL)
