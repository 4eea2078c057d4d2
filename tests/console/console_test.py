#!/usr/bin/env python3
"""console_test.py PROGRAM: runs the console front for real and looks at what it records, prints and leaves behind."""

import json
import pathlib
import random
import re
import signal
import subprocess
import sys
import tempfile
import unittest

from playing import PATIENCE_SEC, read_recording, strength, wait_until, write_settings, write_tone

PROGRAM = sys.argv.pop(1)


class ConsoleTest(unittest.TestCase):
    def setUp(self):
        keep = tempfile.TemporaryDirectory()
        self.addCleanup(keep.cleanup)
        self.folder = pathlib.Path(keep.name)
        self.data = self.folder / "data"

    def start(self, *options, **streams):
        return subprocess.Popen([PROGRAM, "--data-dir", str(self.data), *options], stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE, text=True, **streams)

    def run_player(self, *options, seconds):
        player = self.start("--for", str(seconds), *options, stdin=subprocess.DEVNULL)
        output, errors = player.communicate(timeout=seconds + PATIENCE_SEC)
        self.assertEqual(player.returncode, 0, output + errors)
        return output, errors

    def test_songs_cross_fade_without_a_gap(self):
        tones = {"low": 400.0, "high": 1000.0}
        for name, frequency in tones.items():
            write_tone(self.folder / "music" / f"Álbum {name}" / f"{name} töne.mp3", frequency, 40)
        write_settings(PROGRAM, self.data, directoryPaths=[str(self.folder / "music")], songPlayDurationMin=4,
                       songPlayDurationMax=5, FADE_DURATION_MS=2000, volumeLevel=0.5, historyDepth=1)
        recording = self.folder / "heard.wav"
        output, _ = self.run_player("--output", f"wav:{recording}", seconds=20)
        played = re.findall(r"^Playing: .* / (low|high) töne", output, re.M)
        self.assertGreaterEqual(len(played), 4, output)
        self.assertTrue(all(one != other for one, other in zip(played, played[1:])), played)
        rate, left = read_recording(recording)
        self.assertAlmostEqual(len(left) / rate, 20, delta=1.5)
        step = rate // 10
        blocks = [left[i:i + step] for i in range(0, len(left) - step, step)]
        levels = [[strength(block, frequency, rate) for frequency in tones.values()] for block in blocks]
        both = [sum(pair) for pair in levels]

        # The tone's amplitude is 0.5 and the volume 0.5. Linear fades of two songs that cross add up to that.
        self.assertLess(max(both), 0.3)
        self.assertGreater(min(both[25:]), 0.2, "a gap after the first fade-in")
        self.assertTrue(any(min(pair) > 0.08 for pair in levels), "the two are never heard at once")

    def test_ctrl_c_and_quit_save_and_the_end_of_input_does_not_end(self):
        player = self.start("--output", "null", stdin=subprocess.DEVNULL)
        self.assertTrue(any(line.startswith("Output: ") for line in player.stdout))
        self.assertIsNone(wait_until(lambda: player.poll() is not None, 1.5))
        (self.data / "MusicSettings.json").unlink(missing_ok=True)
        player.send_signal(signal.SIGINT)
        player.communicate(timeout=PATIENCE_SEC)
        self.assertEqual(player.returncode, 0)
        self.assertTrue((self.data / "MusicSettings.json").exists())

        (self.data / "MusicSettings.json").unlink()
        player = self.start("--output", "null", stdin=subprocess.PIPE)
        player.communicate("no such command\nquit\n", timeout=PATIENCE_SEC)
        self.assertEqual(player.returncode, 0)
        self.assertTrue((self.data / "MusicSettings.json").exists())

    def test_a_kill_loses_no_file_and_leaves_a_playable_recording(self):
        write_tone(self.folder / "music" / "Album" / "tone.mp3", 400.0, 40)
        write_settings(PROGRAM, self.data, directoryPaths=[str(self.folder / "music")], rawMIDI=7)
        recording = self.folder / "heard.wav"
        player = self.start("--output", f"wav:{recording}", stdin=subprocess.DEVNULL)
        growing = wait_until(lambda: recording.exists() and recording.stat().st_size > 3 * 44100 * 8)
        player.kill()
        player.communicate()
        self.assertIsNotNone(growing, "nothing was recorded")
        rate, left = read_recording(recording)
        self.assertGreater(len(left) / rate, 2.5)
        self.assertEqual(json.loads((self.data / "MusicSettings.json").read_text())["rawMIDI"], 7)

    def test_a_kill_costs_what_has_changed_in_the_last_seconds_only(self):
        tone = self.folder / "music" / "Album" / "tone.mp3"
        write_tone(tone, 400.0, 40)
        write_settings(PROGRAM, self.data, directoryPaths=[str(self.folder / "music")])
        player = self.start("--output", "null", stdin=subprocess.PIPE)
        self.assertTrue(any(line.startswith("Playing: ") for line in player.stdout))
        player.stdin.write("VOL 0.25\nfavoriteCount 3\nNEXT_SONG\n")
        player.stdin.flush()

        def kept(name):
            try:
                return json.loads((self.data / name).read_text())
            except (OSError, ValueError):
                return {}

        wanted = {
            "MusicSettings.json": lambda file: file.get("volumeLevel") == 0.25,
            "favorite.json": lambda file: [one["favoriteCount"] for one in file.get("favorites", [])] == [3],
            "Song History.json": lambda file: len(file.get("songs", [])) == 2,
            "MusicLibraryPlayCount.json": lambda file: file.get("playCounts") == {str(tone): 1},
            "Sonorant_Stats.json": lambda file: file.get("skips") == 1,
        }
        took = wait_until(lambda: all(holds(kept(name)) for name, holds in wanted.items()))
        player.kill()
        player.communicate()
        self.assertIsNotNone(took, {name: kept(name) for name in wanted})
        self.assertLess(took, 15)
        for name, holds in wanted.items():
            self.assertTrue(holds(kept(name)), name)

    def test_what_cannot_be_done_is_said(self):
        player = subprocess.run([PROGRAM, "--nonsense"], capture_output=True, text=True, timeout=PATIENCE_SEC)
        self.assertEqual((player.returncode, player.stdout, player.stderr.count("\n")), (2, "", 1))
        player = subprocess.run([PROGRAM, "--output", "null", "--data-dir", str(self.folder / "missing" / "below")],
                                capture_output=True, text=True, timeout=PATIENCE_SEC)
        self.assertEqual(player.returncode, 1)
        self.assertIn("create_directory", player.stderr)

    def test_a_library_of_broken_songs_is_silence_with_a_reason(self):
        noise = random.Random(1).randbytes(5000)
        for name, content in {"empty.mp3": b"", "text.mp3": b"not music\n" * 50, "noise.mod": noise,
                              "noise.mid": b"MThd" + noise[:500], "cut.flac": b"fLaC\0\0"}.items():
            path = self.folder / "music" / "Album" / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(content)
        output, errors = self.run_player("--output", "null", "--music", str(self.folder / "music"), seconds=2)
        self.assertNotIn("Playing:", output)
        for name in ("empty.mp3", "text.mp3", "noise.mod", "noise.mid", "cut.flac"):
            self.assertIn("Cannot play " + str(self.folder / "music" / "Album" / name), errors)


if __name__ == "__main__":
    unittest.main(verbosity=2)
