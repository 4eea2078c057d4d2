#!/usr/bin/env python3
"""stations_test.py PROGRAM: the console front on stations of a real Icecast server, which dies and returns."""

import http.server
import json
import os
import pathlib
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time
import unittest
import urllib.parse
import urllib.request

from playing import PATIENCE_SEC, read_recording, strength, wait_until, write_settings, write_tone

PROGRAM = sys.argv.pop(1)
AUDIBLE = 0.03
SONG_HZ = 300.0
# name: frequency, and how ffmpeg encodes it
STATIONS = {
    "mp3": (500.0, ["-c:a", "libmp3lame", "-b:a", "128k", "-f", "mp3"], "audio/mpeg"),
    "aac": (700.0, ["-c:a", "aac", "-b:a", "96k", "-f", "adts"], "audio/aac"),
    "vorbis": (900.0, ["-c:a", "libvorbis", "-f", "ogg"], "application/ogg"),
    "opus": (1100.0, ["-c:a", "libopus", "-f", "ogg"], "application/ogg"),
    "flac": (1300.0, ["-c:a", "flac", "-f", "ogg"], "application/ogg"),
}
CONFIG = """<icecast>
  <limits><sources>10</sources><burst-size>131072</burst-size></limits>
  <authentication><source-password>s</source-password><admin-user>a</admin-user><admin-password>a</admin-password>
  </authentication>
  <listen-socket><port>{port}</port><bind-address>127.0.0.1</bind-address></listen-socket>
  <paths><logdir>{folder}</logdir><webroot>/usr/share/icecast2/web</webroot>
    <adminroot>/usr/share/icecast2/admin</adminroot></paths>
  <logging><accesslog>access</accesslog><errorlog>error</errorlog><loglevel>2</loglevel></logging>
  <security><chroot>0</chroot>{owner}</security>
</icecast>
"""
OWNER = "<changeowner><user>nobody</user><group>nogroup</group></changeowner>"  # it refuses to run as root


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


class Icecast:
    """A server with one source for each station."""

    def __init__(self, folder, stations):
        self.folder, self.stations, self.port = folder, stations, free_port()
        self.processes = []
        folder.mkdir()
        folder.chmod(0o777)
        (folder / "config.xml").write_text(
            CONFIG.format(port=self.port, folder=folder, owner=OWNER if os.geteuid() == 0 else ""))

    def url(self, station):
        return f"http://127.0.0.1:{self.port}/{station}"

    def start(self):
        self.run(["icecast2", "-c", str(self.folder / "config.xml")])
        assert wait_until(self.listens) is not None, "Icecast does not listen"
        for name in self.stations:
            frequency, arguments, kind = STATIONS[name]
            tone = f"sine=frequency={frequency}:sample_rate=44100"
            self.run(["ffmpeg", "-v", "error", "-nostdin", "-re", "-f", "lavfi", "-i", tone, "-ac", "2", *arguments,
                      "-content_type", kind, "-ice_name", name, f"icecast://source:s@127.0.0.1:{self.port}/{name}"])
        assert wait_until(lambda: all(self.answers(name) for name in self.stations)) is not None, "no source came"

    def run(self, command):
        self.processes.append(subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                               stderr=subprocess.DEVNULL))

    def listens(self):
        with socket.socket() as client:
            return client.connect_ex(("127.0.0.1", self.port)) == 0

    def answers(self, station):
        try:
            with urllib.request.urlopen(self.url(station), timeout=2) as stream:
                return len(stream.read(100)) == 100
        except OSError:
            return False

    def set_title(self, station, title):
        manager = urllib.request.HTTPPasswordMgrWithDefaultRealm()
        manager.add_password(None, f"http://127.0.0.1:{self.port}/", "a", "a")
        opener = urllib.request.build_opener(urllib.request.HTTPBasicAuthHandler(manager))
        opener.open(f"http://127.0.0.1:{self.port}/admin/metadata?mount=/{station}&mode=updinfo&charset=UTF-8&song="
                    + urllib.parse.quote(title), timeout=5).read()

    def kill(self):
        for process in self.processes:
            process.send_signal(signal.SIGKILL)
            process.wait()
        self.processes.clear()


class Directory(http.server.BaseHTTPRequestHandler):
    """The station directory: knows one station, at the address in `server.found`."""

    def do_HEAD(self):
        self.send_response(200)
        self.end_headers()

    def do_GET(self):
        self.do_HEAD()
        station = {"name": "moved", "url": self.server.found, "tags": "test", "votes": 1}
        self.wfile.write(json.dumps([station] if "search?name=moved" in self.path else []).encode())

    def log_message(self, *_):
        pass


class Lines:
    """What a program prints, read on a thread of its own."""

    def __init__(self, stream):
        self.all = []
        threading.Thread(target=lambda: self.all.extend(iter(stream.readline, "")), daemon=True).start()


@unittest.skipUnless(shutil.which("icecast2") and shutil.which("ffmpeg"), "there is no Icecast")
class StationsTest(unittest.TestCase):
    def setUp(self):
        keep = tempfile.TemporaryDirectory()
        self.addCleanup(keep.cleanup)
        self.folder = pathlib.Path(keep.name)
        self.folder.chmod(0o755)
        self.data = self.folder / "data"
        self.recording = self.folder / "recording.wav"

    def serve(self, *stations):
        server = Icecast(self.folder / "icecast", stations)
        self.addCleanup(server.kill)
        server.start()
        return server

    def start_player(self, stations, *options):
        for name in ("one", "two"):
            write_tone(self.folder / "music" / "Album" / f"{name}.mp3", SONG_HZ, 120, rate=8000)
        write_settings(PROGRAM, self.data, directoryPaths=[str(self.folder / "music")], songPlayDurationMin=90,
                       songPlayDurationMax=90, FADE_DURATION_MS=500, volumeLevel=0.5, rawRadio=0, rawMP3=1)
        listed = [{"name": name, "url": url} for name, url in stations.items()]
        (self.data / "InternetStations.json").write_text(json.dumps(listed))
        self.player = subprocess.Popen(
            [PROGRAM, "--data-dir", str(self.data), "--output", f"wav:{self.recording}", *options], text=True,
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        self.addCleanup(self.player.stdout.close)
        self.addCleanup(self.player.stdin.close)
        self.addCleanup(self.player.wait)
        self.addCleanup(self.player.kill)
        self.lines = Lines(self.player.stdout)
        self.wait_for("Playing:")

    def say(self, command):
        self.player.stdin.write(command + "\n")
        self.player.stdin.flush()

    def wait_for(self, text, times=1, patience=PATIENCE_SEC):
        found = lambda: sum(text in line for line in list(self.lines.all)) >= times
        self.assertIsNotNone(wait_until(found, patience), f"'{text}' never came:\n" + "".join(self.lines.all[-30:]))

    def end_player(self):
        """The recording's left channel from its first sound on, and its rate."""
        self.say("quit")
        self.assertEqual(self.player.wait(timeout=PATIENCE_SEC), 0)
        rate, left = read_recording(self.recording)
        first = next(i for i, sample in enumerate(left) if abs(sample) > 0.01)
        return left[first:], rate

    def longest_silence(self, heard, rate):
        step = rate // 20
        longest = silence = 0
        for i in range(0, len(heard) - step, step):
            silence = silence + 1 if max(map(abs, heard[i:i + step])) < 0.001 else 0
            longest = max(longest, silence)
        return longest / 20

    def test_every_codec_is_heard_without_a_gap(self):
        server = self.serve(*STATIONS)
        self.start_player({name: server.url(name) for name in STATIONS})
        for count, _ in enumerate(STATIONS):
            self.say("PREVIOUS_STATION")
            self.wait_for("Playing: ", times=count + 2)
            time.sleep(2)
        server.set_title("mp3", "Grüße")
        self.wait_for("On air: Grüße")
        heard, rate = self.end_player()
        blocks = [heard[i:i + rate // 2] for i in range(0, len(heard), rate // 2)]
        for name, (frequency, _, _) in STATIONS.items():
            strongest = max(strength(block, frequency, rate) for block in blocks)
            self.assertGreater(strongest, AUDIBLE, f"{name} is not heard")
        self.assertLess(self.longest_silence(heard, rate), 0.2)

    def test_music_plays_while_the_server_is_gone_and_the_station_comes_back(self):
        server = self.serve("mp3")
        self.start_player({"mp3": server.url("mp3")})
        self.say("NEXT_STATION")
        self.wait_for("Playing: mp3")
        time.sleep(3)
        server.kill()
        self.wait_for("Playing: Album", times=2, patience=60)
        server.start()
        self.wait_for("Playing: mp3", times=2, patience=120)
        heard, rate = self.end_player()
        self.assertLess(self.longest_silence(heard, rate), 2.0)

    def test_a_station_that_has_moved_is_found_and_kept(self):
        server = self.serve("mp3")
        directory = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Directory)
        directory.found = server.url("mp3")
        threading.Thread(target=directory.serve_forever, daemon=True).start()
        self.addCleanup(directory.server_close)
        self.addCleanup(directory.shutdown)
        old = f"http://127.0.0.1:{free_port()}/gone"
        self.start_player({"moved": old}, "--directory-url", f"http://127.0.0.1:{directory.server_port}")
        self.say("NEXT_STATION")
        self.wait_for("Playing: moved")
        self.end_player()
        station = json.loads((self.data / "InternetStations.json").read_text())[0]
        self.assertEqual((station["url"], station["oldUrl"]), (server.url("mp3"), old))


if __name__ == "__main__":
    unittest.main(verbosity=2)
