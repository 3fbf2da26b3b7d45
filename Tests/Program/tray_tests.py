import unittest

import session
import web
from journey import Journey

LIBRARY = {"db_path": "/db", "rekordbox_running": False, "failed": [], "backups": [],
           "pending": [{"id": "p", "created_at": "2026-01-02T03:04:05Z", "summary": "Add a playlist"}]}


def jobs(**states):
    return {"recent_jobs": [{"job_id": name, "playlist": name, "state": state, "message": ""}
                            for name, state in states.items()]}


class TrayJourney(Journey):
    """The test acts as the service and as the desktop's tray. The first run is already done."""

    def setUp(self):
        super().setUp()
        self.remove_service_program()
        self.write(".tunedeck/settings.json", '{"onboarded": true}')
        self.service = web.Server()
        self.report()
        self.use_service(self.service)
        self.desktop.tray.kill()
        self.desktop.tray.wait()

    def report(self, **changes):
        """Changes the service's status."""
        self.service.behaviours["/local/status"] = web.answer(web.STATUS | changes)

    def test_shows_the_state_in_the_menu_and_does_what_its_entries_say(self):
        host = session.TrayHost(self.environment["DBUS_SESSION_BUS_ADDRESS"])
        self.start()
        self.comes(lambda: host.item)
        self.opens_with("Running · connected to the cloud")
        self.desktop.output("wmctrl", "-c", "Tunedeck")
        self.comes(lambda: self.desktop.windows() == [])
        common = ["Open Tunedeck", "Open Log", "Quit Tunedeck"]
        self.comes(lambda: [*host.entries()] == ["(Running · connected to the cloud)", *common])
        self.assertEqual((host.property("Title"), host.property("ToolTip")[2]),
                         ("Tunedeck", "Tunedeck: Running · connected to the cloud"))

        signals = host.watch()
        before = self.service.requested.count("/local/status")
        self.comes(lambda: self.service.requested.count("/local/status") >= before + 3)
        self.assertEqual(signals, [], "an unchanged status changes nothing")
        self.report(**jobs(**{"R&B & Soul_1": "running"}), rekordbox_db=LIBRARY)
        self.comes(lambda: "Apply Now" in host.entries())
        # As a host reads it: "__" and "_&" are shown as "_" and "&".
        self.assertEqual([*host.entries()], ["(Running · connected to the cloud)", "Open Tunedeck", "Apply Now",
                                             "R_&B & Soul__1 · Downloading", *common[1:]])
        self.assertEqual(set(signals), {"ItemsPropertiesUpdated"}, "no new layout, which would close an open menu")

        self.service.behaviours["/local/toolbox"] = web.answer(
            {"tools": [{"name": "ffmpeg", "ready": False, "wanted": "7"}], "venvs": [], "installing": False})
        host.open_menu()
        self.comes(lambda: "Repair Tools" in host.entries())
        host.select("Repair Tools")
        self.comes(lambda: "/local/toolbox/install" in self.service.requested)
        host.select("Apply Now")
        self.comes(lambda: "/local/rekordbox/apply" in self.service.requested)
        self.write("Library/Logs/tunedeck.log", "")
        host.select("Open Log")
        self.comes(lambda: "tunedeck.log" in (self.folder / "opened").read_text())

        self.service.stop()
        self.comes(lambda: "Start tunedeck" in host.entries())
        self.assertEqual(host.property("ToolTip")[2], "Tunedeck: Not running")
        host.select("Start tunedeck")
        self.comes(lambda: "(Starting…)" in host.entries())
        self.comes(lambda: any(each.startswith("(Couldn't start tunedeck (launchctl exit") for each in host.entries()))
        host.select("Open Tunedeck")
        self.comes(lambda: self.desktop.windows() == ["Tunedeck"])
        host.select("Quit Tunedeck")
        self.comes(lambda: not self.processes())


if __name__ == "__main__":
    unittest.main()
