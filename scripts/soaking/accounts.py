"""What the tool owes and what it has done: restarts, replays, answers, and what it uses itself."""

import asyncio
import collections
import contextlib
import dataclasses
import hashlib
import html
import os
import re
import statistics
import time

from .game import ARCHIVE, MOST_REPLAYS, tell

BUSY_SECONDS = 5  # what a busy machine may take longer than any bound
NOTICE_SECONDS = 3.5  # from one look at the server's process to the next
LOOK_SECONDS = 45  # from one look at the page of statistics to the next
LATE_SECONDS = 0.7  # a look that comes a second late is left out
REST_SECONDS = 3  # a replay must have been left alone for so long


@dataclasses.dataclass
class Restart:
    why: str
    process: int  # the one that is to be replaced
    since: float
    bound: float
    done: float | None = None
    late: bool = False

    @property
    def seconds(self):
        return self.done - self.since


class Restarts:
    """The game server's, wanted and done. Who changes its state holds `handling`."""

    def __init__(self, game):
        self.game = game
        self.handling = asyncio.Lock()
        self.all = []
        self.servers = []  # as of the last look
        self.process = None  # the newest
        self.found = 0.0  # since when the tool can know it
        self.stopped = False  # by the administrator
        self.unwanted = self.pairs = 0
        self.latenesses = []  # moments at which the machine or the tool was late

    @property
    def wanted(self):
        return self.all[-1] if self.all and self.all[-1].done is None else None

    def want(self, why):
        now = time.time()
        self.stopped = False
        self.all.append(Restart(why, self.process, now, self._bound(why, now)))

    def _bound(self, why, since):
        game = self.game
        if why != "hung":
            return NOTICE_SECONDS
        grace = max(self.found + game.startup - since, 0)
        return grace + game.polling + game.timeout + game.polling + 15

    def tool_started(self):
        life = self.game.lives[-1]
        self.found = life.start
        if self.stopped and not self.game.runs_server(self.process):
            self.want("asked")  # it starts a server whenever it starts itself
        self.stopped = False
        if self.wanted:
            self.wanted.since = life.start
            self.wanted.bound = self._bound(self.wanted.why, life.start)

    async def until_done(self):
        while self.wanted:
            await asyncio.sleep(0.1)

    async def watch(self):
        last = time.time()
        while True:
            await asyncio.sleep(0.1)
            now = time.time()
            if now - last > LATE_SECONDS:
                self.latenesses.append(now)
            last = now
            self._look(now)

    def _look(self, now):
        servers, life, wanted = self.game.servers(), self.game.life, self.wanted
        if wanted and life and life.ready:
            wanted.since = max(wanted.since, life.ready)  # not before the tool was up itself
        if len(servers) > 1 and servers != self.servers:
            self.pairs += 1
            self.game.find(f"two game servers at once: {servers}")
        for process in servers:
            if process not in self.servers and process != self.process:
                self._came(process, now)
        self.servers = servers
        if self.wanted and life and not wanted.late:
            wanted.late = now > wanted.since + wanted.bound + BUSY_SECONDS
            if wanted.late:
                self.game.find(f"the server ({wanted.why}) is not back after {wanted.bound:.1f} s"
                               f" and {BUSY_SECONDS} s for a busy machine")

    def _came(self, process, now):
        self.process, self.found = process, now
        wanted = self.wanted
        if not wanted:
            self.unwanted += 1
            self.game.find("the server was restarted, which nothing called for")
            return
        wanted.done = now
        if wanted.why == "hung":
            self.latenesses.append(now)  # the tool has waited for the old one's end
        tell(f"server {process} is up, {wanted.seconds:.1f} of {wanted.bound:.1f} s ({wanted.why})")

    def rows(self):
        for why in sorted({restart.why for restart in self.all}):
            wanted = [restart for restart in self.all if restart.why == why]
            done = [restart for restart in wanted if restart.done]
            worst = max(done, key=lambda restart: restart.seconds / restart.bound, default=None)
            text = f"{len(wanted)} wanted, {len(done)} done"
            if worst:
                text += (f", the worst after {worst.seconds:.1f} s, bound {worst.bound:.1f} s"
                         f" (+ {BUSY_SECONDS} s for a busy machine)")
            yield f"restarts, {why}", text


@dataclasses.dataclass
class Match:
    ended: float
    replay: str  # its digest
    is_new: bool  # and not the page that was recorded last, as far as the tool can tell
    followed: float = float("inf")


class Replays:
    """Every match, and the replays that appear in the archive."""

    REPLAY, PAGE = "Data/Save/replay/defaultreplay.rpf", "missionstats.htm"

    def __init__(self, game, restarts):
        self.game, self.restarts = game, restarts
        self.matches = []
        self.written = set()  # digests of what the game has written
        self.archived = {}  # name: digest
        self.double = self.most = 0
        self.last = {}

    async def watch(self):
        while True:
            await asyncio.sleep(0.2)
            replay_changed, page_changed = map(self._changed, (self.REPLAY, self.PAGE))
            if replay_changed:
                self.written.add(self._digest(self.REPLAY))
            if page_changed:
                self._match_ended()
            for folder in (ARCHIVE, ARCHIVE + ".away"):
                self._look_at_archive(folder)

    def _changed(self, name):
        with contextlib.suppress(OSError):
            before, now = self.last.get(name), (self.game.directory / name).stat().st_mtime
            self.last[name] = now
            return now != before
        return False

    def _digest(self, name):
        return hashlib.sha1(self.game.read(name)).hexdigest()

    def _match_ended(self):
        page = self.last[self.PAGE]
        for match in self.matches[-1:]:
            match.followed = page
        text = self.game.read(self.PAGE)
        # On a full disk it may come alone or cut off, or the replay be empty.
        if (abs(page - self.last.get(self.REPLAY, 0)) < 1 and b"</TABLE>" in text
                and self.game.read(self.REPLAY)):
            recorded, new = (re.sub(rb"Mission Stats \([^)]*\)", b"", page_text)
                             for page_text in (self.game.read("ZEBEKSCache.dat"), text))
            self.matches.append(Match(page, self._digest(self.REPLAY), new != recorded))

    def _look_at_archive(self, folder):
        with contextlib.suppress(OSError):
            names = [name for name in os.listdir(self.game.directory / folder)
                     if name.endswith(".rpf")]
            self.most = max(self.most, len(names))
            for name in names:
                if name not in self.archived and self.game.read(f"{folder}/{name}"):
                    self._archived(name, self._digest(f"{folder}/{name}"))

    def _archived(self, name, digest):
        if digest in self.archived.values():
            self.double += 1
            self.game.find(f"a replay was archived twice, the second time as {name}")
        if digest not in self.written:
            self.game.find(f"{name} is no replay that the game has written")
        self.archived[name] = digest

    def is_due(self, match, end):
        """Whether the tool had a look at the match's page for certain, and nothing in its way."""
        return match.is_new and any(
            until - since > self._needed(since, until)
            for since, until in self._calm(match.ended + REST_SECONDS, min(match.followed, end)))

    def _needed(self, since, until):
        late = any(since <= moment <= until for moment in self.restarts.latenesses)
        return (2 * LOOK_SECONDS + 6 if late else LOOK_SECONDS) + 2

    def _calm(self, since, until):
        """The times within a life of the tool in which it had its disk and its folder."""
        for life in self.game.lives:
            start, end = max(life.start, since), min(life.end or until, until)
            for begins, ends in sorted(self.game.obstacles):
                if begins < end and ends > start:
                    yield start, begins
                    start = max(start, ends)
            yield start, end

    def judge(self, end):
        """How many replays were due, and how many of them were lost."""
        due = [match for match in self.matches if self.is_due(match, end)]
        lost = [match for match in due if match.replay not in self.archived.values()]
        for match in lost:
            self.game.find("the replay of the match was lost that ended at "
                           + time.strftime("%H:%M:%S", time.localtime(match.ended)))
        if self.most > MOST_REPLAYS:
            self.game.find(f"the archive held {self.most} replays, and {MOST_REPLAYS} are allowed")
        return len(due), len(lost)


class Requests:
    """Those of visitors, and the round trips of the administrator."""

    STOPPING = " while a hung server was waited for or stopped"

    def __init__(self, game, restarts):
        self.game, self.restarts = game, restarts
        self.answered = self.failed = self.cut_off = self.trips = 0
        self.slowest = {"": 0.0, self.STOPPING: 0.0}

    async def count(self, exchange, is_right):
        """The answer; none where it failed, or the tool was killed meanwhile."""
        asked = time.time()
        life, wanted = self.game.life, self.restarts.wanted
        when = self.STOPPING if wanted and wanted.why == "hung" else ""
        try:
            answer = await exchange
            reason = None if is_right(answer) else f"a wrong answer: {answer[:80]!r}"
        except (OSError, asyncio.TimeoutError) as error:
            answer, reason = None, repr(error)
        if not reason:
            self.answered += 1
            self.slowest[when] = max(self.slowest[when], time.time() - asked)
            return answer
        if life and life.ready and life.end is None and life.ready <= asked:
            self.failed += 1
            self.game.find(f"a request failed: {reason}")
        else:
            self.cut_off += 1
        return None


class Usage:
    """The tool's own, in each of its lives by itself."""

    WARM_SECONDS = 180  # until each state of the server was shown once
    LONG_SECONDS = 300  # too little can be said of a shorter life
    # A straight line's growth over a long life that is none yet: buffers for the busiest moment.
    MOST_GROWTH = {"memory": 1024, "descriptors": 8, "threads": 3}
    UNITS = {"memory": " KiB", "descriptors": "", "threads": ""}

    def __init__(self, game):
        self.game = game

    async def watch(self):
        while True:
            await asyncio.sleep(2)
            life = self.game.life
            if life and life.ready and time.time() > life.ready + self.WARM_SECONDS:
                with contextlib.suppress(OSError):  # it has just ended
                    life.samples.append((time.time(), life.usage()))

    def write(self, path):
        """For a look at how it has grown."""
        with open(path, "w", encoding="ascii") as table:
            print("life", "seconds", *self.MOST_GROWTH, sep=",", file=table)
            for number, life in enumerate(self.game.lives, 1):
                for moment, usage in life.samples:
                    print(number, round(moment - life.start), *usage.values(), sep=",", file=table)

    def rows(self):
        for number, life in enumerate(self.game.lives, 1):
            samples = life.samples
            seconds = samples[-1][0] - samples[0][0] if samples else 0
            if seconds < self.LONG_SECONDS:
                continue
            texts = []
            times = [moment for moment, _ in samples]
            for what, most in self.MOST_GROWTH.items():
                values = [usage[what] for _, usage in samples]
                growth = statistics.linear_regression(times, values).slope * seconds
                texts.append(f"{values[0]} to {values[-1]}{self.UNITS[what]} "
                             f"{what} ({growth:+.1f})")
                if growth > most:
                    self.game.find(f"life {number} of the tool grew in {seconds / 60:.1f} minutes:"
                                   f" {growth:+.1f}{self.UNITS[what]} {what}")
            yield f"life {number}, {seconds / 60:.1f} min", ", ".join(texts)


def error_records(game):
    """How often each text stands in the error log, numbers and names aside."""
    counts = collections.Counter()
    log = game.read("ZEBEK_Error.xml").decode("utf-8", "replace")
    pattern = r'<Error [^>]*Module="([^"]*)" Routine="([^"]*)"[^>]*>([^<]*)</Error>'
    for module, routine, text in re.findall(pattern, log):
        text = html.unescape(text).replace(f"{game.directory}/", "")
        text = re.sub(r'".*"', '"..."', text, flags=re.DOTALL)
        text = re.sub(r".*: No such file$", "...: No such file", text, flags=re.DOTALL)
        text = re.sub(r"[0-9_]+[0-9]|[0-9]", "N", text)
        counts[f"{module}, {routine}: {text}"] += 1
    return counts.most_common()
