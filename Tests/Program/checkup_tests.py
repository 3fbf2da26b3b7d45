import json
import os
import signal
import time
import unittest

import session
import web
from journey import UNIT, Journey


class CheckupJourney(Journey):
    def checkup(self):
        """Runs the check-up and returns "LEVEL: SENTENCE" by name."""
        ended = self.run_program("--checkup", "--json")
        checks = json.loads(ended.stdout)
        self.assertEqual(len(checks), 16)
        self.assertEqual(ended.returncode, int(any(check["level"] == "problem" for check in checks)))
        return {check["name"]: f"{check['level']}: {check['sentence']}" for check in checks}

    def test_follows_a_running_installation_into_its_faults(self):
        session.NotificationServer(self.environment["DBUS_SESSION_BUS_ADDRESS"])
        self.write(".tunedeck/settings.json", '{"onboarded": true}')
        self.start()
        self.comes(lambda: self.run_program("--status").returncode == 0)
        lines = self.checkup()
        for name in ("Service", "Service answer", "Service program", "Service files", "Download folder", "Your own tunnel",
                     "Notifications", "Updates"):
            self.assertRegex(lines[name], "^ok: ", name)
        self.assertEqual(lines["Tunedeck"], "ok: Version 1.4.0 is running.")
        self.comes(lambda: self.checkup()["Tray icon"] == "ok: The icon is in the tray.")

        unit = self.home / ".config/systemd/user" / UNIT
        unit.write_text(unit.read_text() + "# edited\n")
        self.assertRegex(self.checkup()["Service files"], " was changed.$")
        edited = self.service_pid()
        self.quit()
        self.start()
        self.comes(lambda: self.service_pid() not in (0, edited), "the next start repairs the unit")
        self.assertRegex(self.checkup()["Service files"], "^ok: ")

        self.desktop.output("systemctl", "--user", "stop", UNIT)
        self.write("Library/LaunchAgents/com.brightfold.tunedeck.plist", "<plist/>")
        lines = self.checkup()
        self.assertEqual(lines["Service"], "problem: It is stopped; it ended with exit status 0.")
        self.assertRegex(lines["Service answer"], "^problem: Nothing answers on port ")
        self.assertRegex(lines["Service files"], " was changed.$")

    def test_asks_the_relay_and_masks_secrets(self):
        service, relay = web.Server(), web.Server()
        self.use_service(service)
        service.behaviours["/local/status"] = web.answer(
            web.STATUS | {"download_dir_writable": False, "download_dir_error": "Bearer abc",
                          "cloud": {"enabled": True, "base_url": relay.url()}})
        for health, expected in (
                ({"status": "ok"}, "warning: 127.0.0.1 doesn't answer."),
                ({"status": "down", "version": "", "protocol": "", "queued": 2},
                 "warning: 127.0.0.1 reports “down”. Waiting there: 2 requests."),
                ({"status": "ok", "version": "", "protocol": "", "agent": {"online": False, "last_seen": "x"}},
                 "warning: 127.0.0.1 doesn't see this computer."),
                ({"status": "ok", "version": "", "protocol": "", "agent": {"online": True}}, "ok: 127.0.0.1 works.")):
            relay.behaviours["/health"] = web.answer(health)
            lines = self.checkup()
            self.assertEqual(lines["Cloud relay"], expected)
            self.assertRegex(lines["Service answer"], f"^ok: .* answers on port {service.server_port}.$")
            self.assertEqual(lines["Download folder"], "problem: /music can't be written to. Bearer …")

    def test_no_text_of_the_service_controls_the_terminal(self):
        service = web.Server()
        self.use_service(service)
        status = web.STATUS | {"version": "1\u009b31m\u202e\u007f", "cloud": {"enabled": True, "base_url": ""}}
        service.behaviours["/local/status"] = web.answer(json.dumps(status, ensure_ascii=False, indent=1))
        for options in (["--status"], ["--status", "--json"]):
            printed = self.run_program(*options).stdout
            self.assertFalse(set("\u009b\u202e\u007f") & set(printed), printed)
        self.assertEqual(json.loads(printed), status)

    def test_ends_in_time_when_nothing_responds(self):
        service = web.Server()
        service.behaviours["*"] = web.hang
        self.use_service(service)
        self.replace_program("systemctl", f"echo $$ > '{self.folder}/hung'; exec sleep 1000")
        self.desktop.bus.send_signal(signal.SIGSTOP)
        begin = time.monotonic()
        ended = self.run_program("--checkup")
        self.assertLess(time.monotonic() - begin, 10)
        self.desktop.bus.send_signal(signal.SIGCONT)
        self.assertEqual(ended.returncode, 1)
        lines = [line for line in ended.stdout.splitlines() if line[:2] in ("✓ ", "! ", "✗ ")]
        self.assertEqual(len(lines), 16, ended.stdout)
        for index in (0, 11, 12, 13):
            self.assertRegex(lines[index], "^✗.* it took too long.$")
        self.assertIn("It doesn't answer in time", lines[1])
        hung = (self.folder / "hung").read_text().strip()
        self.comes(lambda: not os.path.exists(f"/proc/{hung}"), "its child process still runs")

    def test_works_without_desktop_and_service(self):
        for name in ("DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR"):
            del self.environment[name]
        lines = self.checkup()
        self.assertEqual(lines["Service"], "problem: It isn't set up.")
        self.assertEqual(lines["Service program"], "problem: It isn't installed.")
        self.assertEqual(lines["Tunedeck"], "warning: Tunedeck isn't running.")
        self.assertFalse({".tunedeck", ".config", "Library"} & set(os.listdir(self.home)), "it creates nothing")
        started = self.run_program()
        self.assertEqual(started.returncode, 1)
        self.assertIn("there is no display to run on", started.stdout)


if __name__ == "__main__":
    unittest.main()
