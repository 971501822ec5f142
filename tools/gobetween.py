"""A go-between before a daemon: passes requests on, or answers late, oddly, or with data that are hard to show."""
import contextlib
import http.client
import http.server
import json
import threading
import time

LOOPBACK = "127.0.0.1"
PIB = 1 << 50
HARD_NAMES = [
    "Short",
    "An.unbroken.name.without.a.single.blank.in.it.that.goes.on.and.on.until.it.has.left.every.screen.tar.zst",
    "موسيقى شعبية من الساحل الشرقي، تسجيلات قديمة نادرة جدا من أرشيف الإذاعة.flac",
    "東京の夜景を撮影した長い長い高解像度映像の完全版コレクション第十二巻と付録の写真集.mkv",
    "עברית mixed with Latin and العربية 2160p [x265] (10 bit).mkv",
    "<b>Bold</b> &amp; <img src=x> 100 % plain",
    "Zalgo z̸̡̛a̵̢͝l̶̨͠g̷̛͜o̴̧͠ and 🎬 emoji 👩‍👩‍👧‍👦 and ﷽",
    "    blanks   in   front   and    between   .iso   ",
    "two\nlines\tand a tab",
    "",
    "한국어 이름이 아주 길어서 화면의 끝을 넘어가는 토렌트 파일의 이름입니다 그리고 계속됩니다.zip",
]


class GoBetween(http.server.ThreadingHTTPServer):
    """Passes requests on to the daemon, unless a scene wants something else of it."""
    daemon_threads = True

    def __init__(self, daemon_port, hard):
        super().__init__((LOOPBACK, 0), Passing)
        self.daemon_port = daemon_port
        self.hard = hard
        self.late = {}  # RPC method: seconds
        self.instead = None  # status and body of every answer
        self.without_state = None  # torrents that the list keeps back
        threading.Thread(target=self.serve_forever, daemon=True).start()

    def __exit__(self, *_):
        self.shutdown()
        self.server_close()

    def forget(self):
        self.late, self.instead, self.without_state = {}, None, None

    def handle_error(self, request, client_address):
        pass  # the program went away in the midst of an answer

    def changed(self, asked, body):
        try:
            answer = json.loads(body)
        except ValueError:
            return body
        arguments = answer.get("arguments", {})
        torrents = arguments.get("torrents", [])
        if self.without_state is not None and "ids" not in asked.get("arguments", {}):
            arguments["torrents"] = [each for each in torrents if each.get("status") != self.without_state]
        if self.hard and asked.get("method") in ("torrent-get", "session-stats"):
            for each in torrents:
                harden(each)
            harden_numbers(arguments)
        return json.dumps(answer).encode()


def harden(torrent):
    number = torrent.get("id", 0)
    if "name" in torrent:
        torrent["name"] = HARD_NAMES[number % len(HARD_NAMES)]
    for key in ("totalSize", "uploadedEver", "rateDownload", "rateUpload"):
        if key in torrent:
            torrent[key] = 1023 * PIB + number
    if torrent.get("comment") is not None:
        torrent["comment"] = " ".join(HARD_NAMES)
    for each in torrent.get("files", []):
        each.update(name="/".join(HARD_NAMES[1:4]), length=1023 * PIB, bytesCompleted=512 * PIB)


def harden_numbers(numbers):
    for key, value in numbers.items():
        if isinstance(value, dict):
            harden_numbers(value)
        elif isinstance(value, int) and not isinstance(value, bool):
            numbers[key] = 1023 * PIB


class Passing(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def do_POST(self):
        body = self.rfile.read(int(self.headers.get("Content-Length", 0)))
        try:
            asked = json.loads(body)
        except ValueError:
            asked = {}
        time.sleep(self.server.late.get(asked.get("method"), 0))
        if self.server.instead:
            status, text = self.server.instead
            return self.answer(status, {"Content-Type": "text/html"}, text.encode())
        headers = {key: value for key, value in self.headers.items() if key.lower() != "accept-encoding"}
        connection = http.client.HTTPConnection(LOOPBACK, self.server.daemon_port, timeout=30)
        with contextlib.closing(connection):
            connection.request("POST", self.path, body, headers)
            said = connection.getresponse()
            text = said.read()
        kept = ("content-type", "x-transmission-session-id")
        headers = {key: value for key, value in said.getheaders() if key.lower() in kept}
        self.answer(said.status, headers, self.server.changed(asked, text) if said.status == 200 else text)

    do_GET = do_POST

    def answer(self, status, headers, body):
        self.send_response(status)
        for key, value in headers.items():
            self.send_header(key, value)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *_):
        pass
