import os
import unittest

import session
from journey import Journey


class NewUserJourney(Journey):
    """A user without any Tunedeck files. The demo service runs at eight times its speed."""

    def setUp(self):
        super().setUp()
        program = self.bundle / "Contents/Helpers/tunedeck"
        program.rename(self.folder / "demo")
        self.replace_program("fast", f"exec '{self.folder}/demo' --speed 8").rename(program)

    def test_works_from_the_first_start_to_the_removal(self):
        notifications = session.NotificationServer(self.environment["DBUS_SESSION_BUS_ADDRESS"])
        self.start()
        self.sees("Install the tools")  # without a second start
        self.sees("Step 1 of 3")
        self.sees("spotdl environment")
        self.press("Continue")
        self.sees("is backed up. Every change is backed up first; restore any time from the menu.")
        self.press("Continue")
        self.sees("Pick where you'll ask for tracks.")
        self.press("Claude")
        self.sees("Paste this into Claude")
        self.sees("Connected. Try: “Add ")
        self.press("Done")
        self.comes(lambda: self.desktop.windows() == ["Tunedeck"])
        self.sees("Running · connected to the cloud")

        # A short download may end before its start is noticed.
        titles = {"New download request", "Added to Rekordbox", "Download failed"}
        self.comes(lambda: titles & {title for title, _ in notifications.posted})
        log = self.home / ".tunedeck/notifications.log"
        announced = log.read_text()
        self.assertTrue(announced)

        self.press("More")
        self.press("Disconnect")
        self.sees("Disconnect Claude?")
        self.press("Disconnect")
        self.comes(lambda: "More" not in self.desktop.screen.texts())

        removed = self.run_program("--remove")
        self.assertEqual(removed.returncode, 0, removed.stdout)
        self.comes(lambda: not self.processes() and self.desktop.icons() == 0)
        self.assertFalse((self.home / ".tunedeck/bin/tunedeck").exists())
        self.assertEqual(os.listdir(self.home / "Library/LaunchAgents"), [])
        self.assertEqual(self.desktop.output("systemctl", "--user", "list-unit-files", "--no-legend", "com.brightfold.*"), "")
        self.assertIn("onboarded", (self.home / ".tunedeck/settings.json").read_text())  # settings stay
        self.assertTrue(log.read_text().startswith(announced))

    def test_says_why_the_service_cannot_start_and_goes_on_when_it_can(self):
        blocker = self.home / ".tunedeck/bin"
        blocker.parent.mkdir(exist_ok=True)
        blocker.write_text("a file where the folder of the service belongs")
        self.start()
        self.opens_with("Couldn't start Tunedeck's background service: ")
        self.press("Continue")
        self.sees("Couldn't start Tunedeck's background service: ")
        self.press("Open Log")
        self.sees("there is no such file")
        blocker.unlink()
        self.sees("is backed up. Every change is backed up first; restore any time from the menu.")
        self.press("Continue")
        self.press("Done")
        self.sees("Running · ")
        self.assertFalse([text for text in self.desktop.screen.texts() if "Couldn't start" in text])


if __name__ == "__main__":
    unittest.main()
