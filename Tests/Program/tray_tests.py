import itertools
import pathlib
import unittest

from gi.repository import Gio, GLib
from Xlib import X, display

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
        icon = session.TrayItem(host.bus)
        self.start()
        self.comes(lambda: host.item)
        self.opens_with("Running · connected to the cloud")
        self.desktop.output("wmctrl", "-c", "Tunedeck")
        self.comes(lambda: self.desktop.windows() == [])
        common = ["Open Tunedeck", "Open Log", "Quit Tunedeck"]
        self.comes(lambda: [*icon.entries()] == ["(Running · connected to the cloud)", *common])
        self.assertEqual((icon.property("Title"), icon.property("ToolTip")[2]),
                         ("Tunedeck", "Tunedeck: Running · connected to the cloud"))

        signals = icon.watch()
        before = self.service.requested.count("/local/status")
        self.comes(lambda: self.service.requested.count("/local/status") >= before + 3)
        self.assertEqual(signals, [], "an unchanged status changes nothing")
        self.report(**jobs(**{"R&B & Soul_1": "running"}), rekordbox_db=LIBRARY)
        self.comes(lambda: "Apply Now" in icon.entries())
        # As a host reads it: "__" and "_&" are shown as "_" and "&".
        self.assertEqual([*icon.entries()], ["(Running · connected to the cloud)", "Open Tunedeck", "Apply Now",
                                             "R_&B & Soul__1 · Downloading", *common[1:]])
        self.assertEqual(set(signals), {"ItemsPropertiesUpdated"}, "no new layout, which would close an open menu")

        self.service.behaviours["/local/toolbox"] = web.answer(
            {"tools": [{"name": "ffmpeg", "ready": False, "wanted": "7"}], "venvs": [], "installing": False})
        icon.open_menu()
        self.comes(lambda: "Repair Tools" in icon.entries())
        icon.select("Repair Tools")
        self.comes(lambda: "/local/toolbox/install" in self.service.requested)
        icon.select("Apply Now")
        self.comes(lambda: "/local/rekordbox/apply" in self.service.requested)
        self.write("Library/Logs/tunedeck.log", "")
        icon.select("Open Log")
        self.comes(lambda: "tunedeck.log" in (self.folder / "opened").read_text())

        self.service.stop()
        self.comes(lambda: "Start tunedeck" in icon.entries())
        self.assertEqual(icon.property("ToolTip")[2], "Tunedeck: Not running")
        icon.select("Start tunedeck")
        self.comes(lambda: "(Starting…)" in icon.entries())
        self.comes(lambda: any(each.startswith("(Couldn't start tunedeck (launchctl exit") for each in icon.entries()))
        icon.select("Open Tunedeck")
        self.comes(lambda: self.desktop.windows() == ["Tunedeck"])
        icon.select("Quit Tunedeck")
        self.comes(lambda: not self.processes())

    def test_ends_the_busy_pointer_of_a_start_and_of_each_activation(self):
        notifications = StartupNotifications(self.environment["DISPLAY"])
        address = self.environment["DBUS_SESSION_BUS_ADDRESS"]
        session.TrayHost(address)
        server = session.NotificationServer(address)
        environment = self.environment
        self.environment = environment | {"DESKTOP_STARTUP_ID": "start-1_TIME5"}
        self.service.behaviours["/local/status"] = web.hang
        self.start()  # shows no window
        self.comes(lambda: notifications.ended() == ["start-1_TIME5"], notifications.messages)
        self.environment = environment
        self.report()
        self.opens_with("Running · connected to the cloud")
        # As a desktop opens it a second time; the window is already shown.
        for method, arguments in (("Activate", "(a{sv})"), ("ActivateAction", "(sava{sv})")):
            token = f"{method} of a launcher with an identifier longer than one message_TIME6".replace(" ", "-")
            data = {"desktop-startup-id": GLib.Variant("s", token)}
            session.connect(address).call_sync(
                "com.brightfold.tunedeck.menu", "/com/brightfold/tunedeck/menu", "org.freedesktop.Application", method,
                GLib.Variant(arguments, (data,) if method == "Activate" else ("", [], data)), None,
                Gio.DBusCallFlags.NONE, 5000, None)
            self.comes(lambda: notifications.ended()[-1] == token, notifications.messages)
        names = map(str, itertools.count())
        # A new job in each status: those in the first one aren't notified.
        self.comes(lambda: server.posted or self.report(**jobs(**{next(names): "running"})))

        def click():  # has no effect before the application has received its notification's number
            server.emit("ActivationToken", "(us)", (1, "notification_TIME7"))
            server.click_last()
            return notifications.ended()[-1] == "notification_TIME7"

        self.comes(click, notifications.messages)

    def test_explains_a_desktop_without_a_tray_until_the_user_knows(self):
        hint = "This desktop shows no tray icons"
        self.start()
        self.comes(self.lock.exists)
        self.opens_with(hint)
        self.press("Show how")
        self.comes(lambda: "desktops.txt" in (self.folder / "opened").read_text())
        guide = pathlib.Path((self.folder / "opened").read_text().strip())
        self.assertIn("gnome-shell-extension-appindicator", guide.read_text())
        self.press("Don't show again")
        self.comes(lambda: not any(hint in each for each in self.desktop.screen.texts()))
        self.quit()
        self.start()
        self.comes(self.lock.exists)
        self.opens_with("Version 1.4.0")
        self.assertFalse([each for each in self.desktop.screen.texts() if hint in each])


class StartupNotifications:
    """What an X11 desktop receives about starts, by the startup notification protocol."""

    def __init__(self, name):
        self.display = display.Display(name)
        self.display.screen().root.change_attributes(event_mask=X.PropertyChangeMask)
        self.display.sync()
        self.begin = self.display.intern_atom("_NET_STARTUP_INFO_BEGIN")
        self.messages = []

    def ended(self):
        """The identifiers of the starts that have ended, in order."""
        self.display.sync()
        while self.display.pending_events():
            event = self.display.next_event()
            if event.type == X.ClientMessage:
                piece = bytes(event.data[1]).split(b"\0")[0].decode()
                if event.client_type == self.begin:
                    self.messages.append(piece)
                else:
                    self.messages[-1] += piece
        return [each.removeprefix("remove: ID=") for each in self.messages if each.startswith("remove: ID=")]


if __name__ == "__main__":
    unittest.main()
