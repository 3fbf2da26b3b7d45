import json
import os
import pathlib
import subprocess
import tempfile
import unittest
import urllib.error
import urllib.request

PROGRAM = os.environ["TUNEDECK_DEMO_PROGRAM"]


class DemoProgram(unittest.TestCase):
    """Runs the demo service with a home folder of its own."""

    def setUp(self):
        self.home = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.environment = os.environ | {"HOME": str(self.home)}
        self.runtime = self.home / ".tunedeck/runtime.json"

    def start(self, *arguments):
        process = subprocess.Popen([PROGRAM, *arguments], env=self.environment, stdout=subprocess.PIPE, text=True)
        self.addCleanup(process.communicate)
        self.addCleanup(process.kill)
        self.port = int(process.stdout.readline().split(":")[-1])  # the first line comes when it is ready
        return process

    def end(self, process):
        process.terminate()
        self.assertEqual(process.wait(), 0)

    def status_of(self, *arguments):
        """The exit status of a run that ends at once."""
        return subprocess.run([PROGRAM, *arguments], env=self.environment, stderr=subprocess.DEVNULL,
                              check=False).returncode

    def get(self, path):
        return urllib.request.urlopen(f"http://127.0.0.1:{self.port}/local/{path}").read().decode()

    def post(self, path, body):
        try:
            return urllib.request.urlopen(f"http://127.0.0.1:{self.port}/local/{path}", body.encode()).status
        except urllib.error.HTTPError as error:
            return error.code

    def published_port(self):
        return json.loads(self.runtime.read_text())["port"]

    def test_publishes_its_port_while_it_runs_and_continues_where_it_ended(self):
        program = self.start("--scenario", "quiet", "--speed", "1000")
        self.assertEqual(self.published_port(), self.port)
        self.assertEqual(self.post("links", '{"kind":"chatgpt"}'), 201)
        self.assertEqual(self.post("rekordbox/restore", '{"version":"1.0.0"}'), 200)
        self.assertEqual(self.post("links", " " * 70_000), 413)
        links = self.get("links")
        self.assertIn("chatgpt", links)
        self.assertEqual(self.status_of("--port", str(self.port)), 1, "it is taken")
        self.end(program)
        self.assertFalse(self.runtime.exists())
        self.assertIn('Name="Friday"', (self.home / ".tunedeck/rekordbox.xml").read_text())

        self.end(self.start("--scenario", "quiet"))
        program = self.start()
        self.assertEqual(self.get("links"), links)
        status = self.get("status")
        self.assertIn("Before restoring v1.0.0", status)
        self.assertIn('"download_dir_writable":true', status)
        (self.home / ".tunedeck/settings.json").write_text('{"download_dir": "/nowhere"}')
        self.assertIn("The folder doesn't exist.", self.get("status"))
        self.runtime.write_text('{"port": 1, "pid": 1}')
        self.end(program)
        self.assertEqual(self.published_port(), 1, "another process has published its port")

        self.end(self.start("--scenario", "fresh"))
        self.start()
        self.assertEqual(self.get("links"), '{"links":[]}')

    def test_starts_anew_after_a_damaged_state_file(self):
        (self.home / ".tunedeck").mkdir()
        (self.home / ".tunedeck/demo-state.json").write_text('{"scenario":')
        self.start()
        self.assertTrue(self.get("status"))

    def test_rejects_wrong_options(self):
        for option in ("--scenario=x", "--port=65536", "--speed=nan", "--speed=1001", "x"):
            self.assertEqual(self.status_of(option), 2, option)


if __name__ == "__main__":
    unittest.main()
