"""The administrator's round trips: log in, change a setting, and read it back."""

import asyncio
import time

from .accounts import BUSY_SECONDS
from .game import MOST_REPLAYS, tell

SAVED_SECONDS = 2  # from a change of a setting to its file


class Administrator:
    def __init__(self, game, restarts, requests):
        self.game, self.restarts, self.requests = game, restarts, requests
        self.draw = game.draws("administrator")

    async def work(self):
        changes = (self.change_control, self.change_replays, self.change_status, self.change_game)
        while True:
            await asyncio.sleep(self.draw.uniform(2, 5))
            if not (self.game.life and self.game.life.ready):
                continue
            since, failures = time.time(), self.game.findings.total()
            if (await self.answer(self.game.post("/logon"), "MAIN")
                    and await self.draw.choice(changes)()):
                self.requests.trips += 1
            elif self.game.worked_since(since) and self.game.findings.total() == failures:
                self.game.find("a setting that was changed could not be read back")

    async def answer(self, exchange, text):
        """Where the tool is kept from its work, it may answer that it could not do it."""
        since = time.time()
        return await self.requests.count(
            exchange, lambda answer: text in answer or not self.game.worked_since(since))

    async def change(self, form, menu, shown, saved, file="ZebekSuiteOptions.xml", **fields):
        """Posts a form and reads back what it has changed, from its page and from the file."""
        since = time.time()
        post = self.game.post
        if not (await self.answer(post(f"/UpdateAdmin{form}Config", **fields),
                                  "Configuration Updated")
                and await self.answer(post("/AdminMenu", AdminMenu=menu), shown)):
            return False
        while saved.encode() not in self.game.read(file):
            if time.time() > since + SAVED_SECONDS + BUSY_SECONDS or not self.game.life:
                return False
            await asyncio.sleep(0.1)
        return True

    async def change_control(self):
        game, arguments = self.game, self.game.arguments(self.draw)
        return await self.change(
            "ServerControl", "Server Control", arguments, arguments, SubmitType="Update",
            CMDLine=arguments, AutoStartGRServer="on", AutoRestartGRServer="on",
            AutoRestartOnProcessStop="on", Pollingfreq=round(game.polling * 1000),
            Timeout=game.timeout, StartupTimeout=game.startup)

    async def change_replays(self):
        count = self.draw.randint(MOST_REPLAYS - 5, MOST_REPLAYS)
        return await self.change(
            "Replays", "Replays", f'value="{count}"', f"<ReplayCount>{count}</ReplayCount>",
            archiveReplays="on", SkipBlankReplays="on", ReplayCount=count)

    async def change_status(self):
        image = f"http://images.example/{self.draw.getrandbits(32):x}.gif"
        return await self.change("StatusOptions", "Status Options", image, image, ServerGo=image,
                                 ServerCrash=image)

    async def change_game(self):
        """Refused while the server runs; now and then the server is stopped for it."""
        motd = f"Day {self.draw.getrandbits(32):x}"
        fields = {"ServerName": "Soak", "MOTD": motd, "Synch": 60, "JoinPort": 2346,
                  "AnnouncePort": 2347}
        if self.draw.random() < 0.95 or self.restarts.handling.locked():
            return await self.try_to_change_game(fields)
        async with self.restarts.handling:
            await self.restarts.until_done()
            return await self.change_stopped_game(motd, fields)

    async def try_to_change_game(self, fields):
        before = self.game.read("options.xml")
        answer = await self.answer(
            self.game.post("/UpdateAdminServerOptionsConfig", **fields), "SERVER OPTIONS")
        refused = "while the server is running" in (answer or "")
        return answer and (not refused or self.game.read("options.xml") == before)

    async def change_stopped_game(self, motd, fields):
        self.restarts.stopped = True
        if not await self.press("Stop Server", "Process stop successful"):
            return False
        changed = await self.change("ServerOptions", "Server Options", motd, motd, "options.xml",
                                    **fields)
        if self.restarts.stopped:  # the tool was not started anew meanwhile
            self.restarts.want("asked")
            await self.press("Start Server", "Process start/find successful")
        await self.restarts.until_done()
        return changed

    async def press(self, button, text):
        tell(f"the administrator presses {button}")
        return await self.answer(
            self.game.post("/UpdateAdminServerControlConfig", SubmitType=button), text)
