"""A fake service with as many items as a user could have: twelve links and sixty backups."""
import datetime
import http.server
import json
import threading


def ago(days):
    moment = datetime.datetime.now(datetime.timezone.utc) - datetime.timedelta(days=days)
    return moment.strftime("%Y-%m-%dT%H:%M:%SZ")


def link(number):
    kind = ("claude", "chatgpt")[number % 2]
    return {"id": f"l{number}", "kind": kind, "label": f"Studio {number + 1}", "lastUsedAt": ago(number + 2),
            "url": f"https://tunedeck.example/u/k7QxPz81mWv0aVh8Kd{number:02}/mcp"}


def backup(number):
    return {"version": f"1.{60 - number}.0", "created_at": ago(number + 2), "size_bytes": 14_000_000,
            "reason": f"Before adding {number % 9 + 2} tracks to “Set {60 - number}”"}


def job(number, state="done"):
    return {"job_id": f"j{number}", "state": state, "playlist": f"Friday {number}", "message": "Saved 14 songs.",
            "created_at": ago(3), "finished_at": ago(2)}


class Crowd(http.server.ThreadingHTTPServer):
    """Serves on a free port until close()."""

    def __init__(self):
        super().__init__(("127.0.0.1", 0), Answer)
        library = {"db_path": "/db", "rekordbox_running": False, "pending": [], "failed": [], "current_version": "1.60.0",
                   "backups": [backup(number) for number in range(60)]}
        self.documents = {
            "/local/status": {
                "version": "5.0", "download_dir": "/music", "download_dir_source": "default",
                "download_dir_writable": True, "import_xml": "/music/import.xml", "rekordbox_db": library,
                "cloud": {"enabled": True, "base_url": "https://tunedeck.example", "connected": True},
                "recent_jobs": [job(number) for number in range(3)]},
            "/local/toolbox": {"tools": [], "venvs": [], "installing": False},
            "/local/links": {"links": [link(number) for number in range(12)]},
        }
        threading.Thread(target=self.serve_forever, daemon=True).start()

    def change_one_job(self):
        """Changes the second of the three jobs."""
        self.documents["/local/status"]["recent_jobs"][1] = job(1, "failed")

    def close(self):
        self.shutdown()
        self.server_close()


class Answer(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        body = json.dumps(self.server.documents.get(self.path, {})).encode()
        self.send_response(200)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *_):
        pass
