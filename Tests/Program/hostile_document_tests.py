"""Documents that a service could send to freeze or fill the application. Each is as large as a reply may be."""
import json
import pathlib
import time

from gi.repository import Gio

import session
import web
from journey import Journey

LIMIT = 1024 * 1024 - 4096  # bytes of a reply, less a margin for the rest of the document
PLAIN = {"tools": [], "venvs": [], "installing": False}


def status(**members):
    return web.STATUS | members


def library(**members):
    return status(rekordbox_db={"db_path": "/l", "rekordbox_running": False, "pending": [], "failed": [], "backups": []} |
                  members)


def job(**members):
    return {"job_id": "1", "state": "failed", "playlist": "Friday", "message": "No network"} | members


def many(entry):
    """As many entries as a reply may have; `entry` makes one from its number."""
    size = len(json.dumps(entry(99999))) + 2
    return [entry(number) for number in range(LIMIT // size)]


def link(number):
    return {"id": str(number), "kind": "claude", "label": "Claude", "url": f"https://x.example/{number}/secret"}


# Name: (path of the document, the document, a text that shows that it has arrived)
DOCUMENTS = {
    "playlist of one word": ("/local/status", status(recent_jobs=[job(playlist="W" * LIMIT)]), "WWW"),
    "playlist of combining marks": ("/local/status", status(recent_jobs=[job(playlist="e" + "\u0301" * (LIMIT // 7))]), "e\u0301"),
    "message of lines": ("/local/status", status(recent_jobs=[job(message="a\n" * (LIMIT // 3))]), "Friday"),
    "error of words": ("/local/status", library(failed=[{"id": "1", "summary": "Tag", "error": "no disk " * (LIMIT // 8)}]), "Tag"),
    "jobs": ("/local/status", status(recent_jobs=many(lambda n: job(job_id=str(n)))), "Friday"),
    "failed changes": ("/local/status", library(failed=many(lambda n: {"id": str(n), "summary": f"Change {n}", "error": "E"})),
                       "Change 1"),
    "pending changes": ("/local/status", library(pending=many(lambda n: {"id": str(n), "created_at": "x", "summary": f"S {n}"})),
                        "S 1"),
    "backups": ("/local/status", library(backups=many(lambda n: {"version": f"1.{n}", "created_at": "x", "reason": "R",
                                                                 "size_bytes": 1})), "Backups ("),
    "links": ("/local/links", {"links": many(link)}, "/39/"),
    "links of Telegram": ("/local/links", {"links": many(lambda n: link(n) | {"kind": "telegram"})}, "waiting"),
    "tools": ("/local/toolbox", PLAIN | {"tools": many(lambda n: {"name": f"tool {n}", "wanted": "1", "ready": False})},
              "Missing: "),
}


class HostileDocumentJourney(Journey):
    def test_no_document_freezes_or_fills_the_application(self):
        self.remove_service_program()
        self.service = web.Server()
        self.addCleanup(self.service.stop)
        self.use_service(self.service)
        self.write(".tunedeck/settings.json", '{"onboarded": true}')
        self.serve()
        self.start()
        self.opens_with("Running")
        self.bus = session.connect(self.environment["DBUS_SESSION_BUS_ADDRESS"])
        self.serve("/local/links", {"links": [link(1)]})
        self.watch(6)
        before = self.memory()
        for name, (path, document, text) in DOCUMENTS.items():
            with self.subTest(name):
                pause = 20 if "links" in path else 8  # the list of links is fetched every 15 s
                self.serve(path, document)
                stall = self.watch(pause)
                memory = self.memory()
                self.sees(text)
                self.serve()
                stall = max(stall, self.watch(pause))
                after = self.memory()
                print(f"{name}: {len(json.dumps(document))} bytes, stall {stall * 1000:.0f} ms, "
                      f"memory {(memory - before) / 1024:+.1f} MiB, after it {(after - before) / 1024:+.1f} MiB")
                self.assertLess(stall, 3)
                self.assertLess(memory - before, 60 * 1024)
                self.assertLess(after - before, 20 * 1024)

    def serve(self, path=None, document=None):
        """Serves usual documents, but this one at `path`."""
        documents = {"/local/status": web.STATUS, "/local/links": {"links": []}, "/local/toolbox": PLAIN}
        self.service.behaviours = {each: web.answer(document if each == path else usual) for each, usual in documents.items()}

    def watch(self, seconds):
        """The longest time in which the application's event loop didn't answer, in seconds."""
        longest = 0
        end = time.monotonic() + seconds
        while (start := time.monotonic()) < end:
            self.bus.call_sync("com.brightfold.tunedeck.menu", "/com/brightfold/tunedeck/menu",
                               "org.freedesktop.DBus.Introspectable", "Introspect", None, None, Gio.DBusCallFlags.NONE,
                               60000, None)
            longest = max(longest, time.monotonic() - start)
            time.sleep(0.01)
        return longest

    def memory(self):
        """The application's private memory in KiB."""
        lines = pathlib.Path(f"/proc/{self.application.pid}/smaps_rollup").read_text().splitlines()
        return next(int(line.split()[1]) for line in lines if line.startswith("Private_Dirty:"))
