#!/usr/bin/env python3
"""device_test.py PROGRAM: the console front on a real sound server, which is killed, halted and changed under it."""

import concurrent.futures
import pathlib
import shutil
import subprocess
import sys
import tempfile
import threading
import time
import unittest

from playing import PATIENCE_SEC, strength, wait_until, write_settings, write_tone
from sound_server import RATE, SoundServer

PROGRAM = sys.argv.pop(1)
TONE_HZ = 400.0
AUDIBLE = 0.1  # the tone's amplitude is 0.5 and the volume 0.5


class Player:
    """A running player, and how many songs it has begun."""

    def __init__(self, data, environment):
        self.process = subprocess.Popen([PROGRAM, "--data-dir", str(data)], env=environment, text=True,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.lines = []
        self.reader = threading.Thread(target=self.read, daemon=True)
        self.reader.start()

    def read(self):
        for line in self.process.stdout:
            self.lines.append(line)

    def songs(self):
        return sum(line.startswith("Playing:") for line in self.lines)

    def say(self, command):
        self.process.stdin.write(command + "\n")
        self.process.stdin.flush()

    def end(self):
        self.process.kill()
        self.process.wait()
        self.reader.join()
        self.process.stdin.close()
        self.process.stdout.close()


@unittest.skipUnless(shutil.which("pulseaudio") and shutil.which("parec"), "there is no PulseAudio")
class DeviceTest(unittest.TestCase):
    def setUp(self):
        keep = tempfile.TemporaryDirectory()
        self.addCleanup(keep.cleanup)
        self.folder = pathlib.Path(keep.name)
        self.server = SoundServer(self.folder / "server")
        self.addCleanup(self.server.kill)
        self.server.start()

    def start_player(self, play_sec):
        """Plays one tone after the other, each for so long, until the test ends."""
        player = self.start_with(self.scan_music(play_sec))
        self.assertIsNotNone(wait_until(player.songs), "nothing was played")
        return player

    def scan_music(self, play_sec):
        """The data folder of a player that knows two songs and plays each for so long."""
        data = self.folder / "data"
        for name in ("one", "two"):
            write_tone(self.folder / "music" / "Album" / f"{name}.mp3", TONE_HZ, 60, rate=8000)
        write_settings(PROGRAM, data, directoryPaths=[str(self.folder / "music")], songPlayDurationMin=play_sec,
                       songPlayDurationMax=play_sec, FADE_DURATION_MS=500, volumeLevel=0.5)
        return data

    def start_with(self, data):
        player = Player(data, self.server.environment)
        self.addCleanup(player.end)
        return player

    def sec_until_heard(self, sink):
        """Seconds until the tone comes out of the sink, whole for half a second; fails when it never does."""
        begin = time.monotonic()
        while time.monotonic() - begin < PATIENCE_SEC:
            heard = self.server.record(sink, 0.5)
            step = RATE // 10
            blocks = [heard[i:i + step] for i in range(0, len(heard) - step + 1, step)]
            if len(blocks) >= 4 and all(strength(block, TONE_HZ, RATE) > AUDIBLE for block in blocks):
                return time.monotonic() - begin
        return self.fail(f"no tone came out of the {sink} sink")

    def test_the_tone_is_heard_at_its_own_frequency(self):
        self.start_player(play_sec=50)
        self.sec_until_heard("first")
        heard = self.server.record("first", 3)[RATE:]
        rises = [i for i in range(1, len(heard)) if heard[i - 1] < 0.0 <= heard[i]]
        frequency = (len(rises) - 1) * RATE / (rises[-1] - rises[0])
        self.assertAlmostEqual(frequency, TONE_HZ, delta=1.0)
        self.assertAlmostEqual(strength(heard, TONE_HZ, RATE), 0.25, delta=0.05)

    def test_songs_go_on_while_the_server_is_gone_and_are_heard_when_it_is_back(self):
        player = self.start_player(play_sec=3)
        self.sec_until_heard("first")
        self.server.kill()
        songs = player.songs()
        self.assertIsNotNone(wait_until(lambda: player.songs() >= songs + 3), "time stood still")
        self.server.start()
        print(f"heard again after {self.sec_until_heard('first'):.1f} s")
        player.say("quit")
        self.assertEqual(player.process.wait(timeout=PATIENCE_SEC), 0)

    def test_the_default_sink_is_followed_and_one_that_is_taken_away_gives_way_to_another(self):
        self.start_player(play_sec=50)
        self.sec_until_heard("first")
        self.server.control("set-default-sink", "second")
        print(f"heard from the new one after {self.sec_until_heard('second'):.1f} s")
        self.server.take_away("second")
        print(f"heard from the other one after {self.sec_until_heard('first'):.1f} s")

    def test_a_device_without_anything_to_play_is_let_rest_and_wakes(self):
        data = self.scan_music(play_sec=50)
        write_settings(PROGRAM, data)  # scans the music
        music = self.folder / "music"
        music.rename(self.folder / "away")
        player = self.start_with(data)
        self.assertIsNotNone(wait_until(lambda: self.server.state("first") == "RUNNING"), "no device was opened")
        rests = wait_until(lambda: self.server.state("first") != "RUNNING", 2 * PATIENCE_SEC)
        self.assertIsNotNone(rests, "the device never rested")
        (self.folder / "away").rename(music)
        player.say("NEXT_SONG")
        self.sec_until_heard("first")

    def test_the_end_is_no_click(self):
        player = self.start_player(play_sec=50)
        self.sec_until_heard("first")
        with concurrent.futures.ThreadPoolExecutor() as pool:
            record = pool.submit(self.server.record, "first", 3)
            time.sleep(1)
            player.say("quit")
            self.assertEqual(player.process.wait(timeout=PATIENCE_SEC), 0)
            heard = record.result()
        loud = [i for i, sample in enumerate(heard) if abs(sample) > AUDIBLE]
        self.assertGreater(len(loud), RATE // 10, "nothing was recorded")
        self.assertLess(loud[-1], len(heard) - RATE // 10, "it never ended")
        end = heard[loud[-1] - RATE // 100:loud[-1] + RATE // 50]
        # The tone itself moves by a twentieth of its amplitude from one sample to the next.
        self.assertLess(max(abs(after - before) for before, after in zip(end, end[1:])), 0.02)

    def test_a_halted_server_holds_up_neither_time_nor_the_end(self):
        player = self.start_player(play_sec=3)
        self.sec_until_heard("first")
        self.server.halt()
        songs = player.songs()
        self.assertIsNotNone(wait_until(lambda: player.songs() >= songs + 2), "time stood still")
        self.server.go_on()
        self.sec_until_heard("first")
        self.server.halt()
        player.say("quit")
        begin = time.monotonic()
        self.assertEqual(player.process.wait(timeout=PATIENCE_SEC), 0)
        print(f"ended within {time.monotonic() - begin:.1f} s")


if __name__ == "__main__":
    unittest.main(verbosity=2)
