#!/usr/bin/env python3
"""Processor time per second of sound, resident memory and wake-ups of this player beside mpd and mpv, on the same files
in the same run, each playing in real time into a null output. MIDI and modules also beside FluidSynth's and libopenmpt's
own programs, which render to a file as fast as they can and so need not wake up.

    bench/players.py --player build/linux-release/bin/hullrider-radio MUSIC

MUSIC is any folder with songs in it: the first flac, mp3, m4a, MIDI and module file found below it are played. The kind
"crossfade" plays 20 s from each of the first three in turn, with a cross-fade of 8 s. Without --player only the others
run. Installs them and the SoundFont from Debian when they are missing. Run it on a quiet machine; it takes (kinds x
players x rounds x (settle + seconds)).
"""

import argparse
import json
import math
import os
import shutil
import signal
import socket
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

KINDS = {
    "flac": {".flac"},
    "mp3": {".mp3"},
    "m4a": {".m4a"},
    "midi": {".mid", ".midi"},
    "module": {".mod", ".xm", ".s3m", ".it", ".mtm"},
}
CROSSFADE = "crossfade"
RADIO = "radio"
CROSSFADE_SECONDS = 8
EXCERPT_SECONDS = 32  # shorter files would not be faded as set
CROSSFADE_PERIOD = EXCERPT_SECONDS - CROSSFADE_SECONDS  # each song is opened, and faded in, once in this time
SOUND_FONT = Path("/usr/share/sounds/sf2/TimGM6mb.sf2")


def install_missing():
    wanted = [name for name in ("mpd", "mpv", "fluidsynth", "openmpt123", "ffmpeg") if shutil.which(name) is None]
    if not SOUND_FONT.exists():
        wanted.append("timgm6mb-soundfont")
    if not wanted:
        return
    print("installing", *wanted, "...", flush=True)
    root = [] if os.geteuid() == 0 else ["sudo"]
    command = root + ["apt-get", "install", "-y", "--no-install-recommends", *wanted]
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL)


def find_songs(music, kinds):
    """The first song of each kind, in the order of the paths."""
    files = sorted(path for path in music.rglob("*") if path.is_file())
    songs = {}
    for kind in (kind for kind in kinds if kind in KINDS):
        song = next((path for path in files if path.suffix.lower() in KINDS[kind]), None)
        if song is None:
            print(f"no {kind} file below {music}: left out", file=sys.stderr)
        else:
            songs[kind] = song.resolve()
    return songs


def make_albums(folder, songs):
    """One music directory for each kind, with one album that holds the one song."""
    for kind, song in songs.items():
        album = folder / kind / "album"
        album.mkdir(parents=True)
        (album / ("song" + song.suffix)).symlink_to(song)


def make_excerpts(folder, songs):
    album = folder / CROSSFADE / "album"
    album.mkdir(parents=True)
    for kind in (kind for kind in ("flac", "mp3", "m4a") if kind in songs):
        excerpt = album / f"{kind}{songs[kind].suffix}"
        command = ["ffmpeg", "-v", "error", "-ss", "20", "-i", songs[kind], "-t", str(EXCERPT_SECONDS), "-vn", "-sn"]
        subprocess.run([*command, excerpt], check=True, stdin=subprocess.DEVNULL)


def start(command, folder):
    log = open(folder / "log", "ab")
    return subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=log, stderr=log, cwd=folder)


def stop(process):
    process.send_signal(signal.SIGTERM)
    try:
        process.wait(10)
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait()


class CannotPlay(Exception):
    pass


# Each player that plays in real time: start(music, kind, folder, seconds) -> process. `folder` is its own and empty.


class Ours:
    name = "this player"

    def __init__(self, program):
        self.program = program.resolve()

    def start(self, music, kind, folder, seconds):
        fonts = folder / "fonts"
        fonts.mkdir()
        (fonts / SOUND_FONT.name).symlink_to(SOUND_FONT)
        data = folder / "data"
        data.mkdir()
        config = {"soundFontDirectoryPath": str(fonts), "hullriderPath": ""}
        (data / "config.json").write_text(json.dumps(config))
        if kind == RADIO:
            stations = [{"name": "radio", "url": (music / kind / "url").read_text()}]
            (data / "InternetStations.json").write_text(json.dumps(stations))
            self.change_settings(data, iSongPlayDurationMin=3600, iSongPlayDurationMax=3600)
        if kind == CROSSFADE:  # whole songs, faded into each other
            fade_ms = CROSSFADE_SECONDS * 1000
            self.change_settings(data, songPlayDurationMin=0, songPlayDurationMax=0, FADE_DURATION_MS=fade_ms)
        options = ["--output", "null", "--for", str(int(seconds) + 60), "--data-dir", data, "--music", music / kind]
        return start([self.program, *options], folder)

    def change_settings(self, data, **changes):
        """In the whole file that the player leaves by itself: it reads no further than to the first missing setting."""
        subprocess.run([self.program, "--data-dir", data, "--output", "null", "--for", "0"], check=True,
                       stdin=subprocess.DEVNULL, capture_output=True)
        path = data / "MusicSettings.json"
        path.write_text(json.dumps(json.loads(path.read_text()) | changes))


class Mpv:
    name = "mpv"

    def start(self, music, kind, folder, seconds):
        if kind == CROSSFADE:
            raise CannotPlay
        song = (music / kind / "url").read_text() if kind == RADIO else next((music / kind / "album").iterdir())
        options = ["--no-config", "--no-terminal", "--vid=no", "--ao=null", "--loop-file=inf"]
        return start(["mpv", *options, song], folder)


class Mpd:
    name = "mpd"
    # It decodes ahead in bursts of a quarter of its buffer. With the buffer of 4 MB that is one burst in 6 s, and a
    # measurement would depend on how many it happened to catch.
    config = """
music_directory "{music}"
playlist_directory "{folder}"
db_file "{folder}/database"
log_file "{folder}/log"
audio_buffer_size "1024"
bind_to_address "{folder}/socket"
audio_output {{
    type "null"
    name "null"
    sync "yes"
}}
decoder {{
    plugin "wildmidi"
    enabled "no"
}}
decoder {{
    plugin "fluidsynth"
    soundfont "{font}"
}}
"""

    def start(self, music, kind, folder, seconds):
        config = folder / "mpd.conf"
        config.write_text(self.config.format(music=music / kind, folder=folder, font=SOUND_FONT))
        process = start(["mpd", "--no-daemon", config], folder)
        try:
            song = (music / kind / "url").read_text() if kind == RADIO else "album"
            self.play(folder / "socket", song, kind == CROSSFADE)
        except (OSError, RuntimeError) as error:
            print(f"mpd, {kind}: {error}", file=sys.stderr)
            stop(process)
        return process

    def play(self, address, song, crossfading):
        with self.connect(address) as connection, connection.makefile("rw") as stream:
            stream.readline()  # its greeting
            self.ask(stream, "update")
            while any(line.startswith("updating_db") for line in self.ask(stream, "status")):
                time.sleep(0.05)
            for command in (f"crossfade {CROSSFADE_SECONDS if crossfading else 0}", "repeat 1", f"add {song}", "play"):
                self.ask(stream, command)
            time.sleep(0.5)
            if "state: play" not in self.ask(stream, "status"):
                raise RuntimeError("it does not play the song")

    @staticmethod
    def connect(address):
        for attempt in range(100):
            connection = socket.socket(socket.AF_UNIX)
            try:
                connection.connect(str(address))
                connection.settimeout(10)
                return connection
            except OSError:
                connection.close()
                time.sleep(0.05)
        raise RuntimeError("it does not listen")

    @staticmethod
    def ask(stream, command):
        stream.write(command + "\n")
        stream.flush()
        lines = []
        for line in stream:
            if line.startswith("ACK"):
                raise RuntimeError(line.strip())
            if line == "OK\n":
                break
            lines.append(line.strip())
        return lines


class Renderer:
    """A program that renders a song of its one kind to a file of 16-bit stereo samples, and ends."""

    def __init__(self, name, kind, command):
        self.name, self.kind, self.command = name, kind, command

    def render(self, song, folder):
        """The processor time per second of sound."""
        shutil.copy(song, folder / "song")
        before = os.times()
        subprocess.run(self.command, check=True, capture_output=True, cwd=folder)
        after = os.times()
        used = after.children_user + after.children_system - before.children_user - before.children_system
        return used * 1000 / ((folder / "song.raw").stat().st_size / 4 / 44100)


RENDERERS = [
    Renderer("fluidsynth", "midi",
             ["fluidsynth", "-niq", "-r", "44100", "-T", "raw", "-O", "s16", "-F", "song.raw", SOUND_FONT, "song"]),
    Renderer("openmpt123", "module",
             ["openmpt123", "--render", "--samplerate", "44100", "--no-float", "--output-type", "raw", "song"]),
]


def processor_seconds(pid):
    """User and system time of all threads, those that have ended too, to the nanosecond: the clock that
    clock_getcpuclockid(3) names. /proc/PID/stat counts the same in steps of 10 ms, too coarse for a short run."""
    return time.clock_gettime((~pid << 3) | 2)


def resident_megabytes(pid):
    for line in Path(f"/proc/{pid}/status").read_text().splitlines():
        if line.startswith("VmRSS:"):
            return int(line.split()[1]) * 1024 / 1e6
    return 0.0


def wakeups(pid):
    """How often its threads have waited and gone on."""
    total = 0
    for status in Path(f"/proc/{pid}/task").glob("*/status"):
        for line in status.read_text().splitlines():
            if line.startswith("voluntary_ctxt_switches:"):
                total += int(line.split()[1])
    return total


def measure(player, music, kind, settle, seconds):
    """(milliseconds of processor time per second of sound, resident MB, wake-ups a second), what is not known NaN; None
    when the player cannot play it."""
    with tempfile.TemporaryDirectory(prefix="players-") as name:
        if isinstance(player, Renderer):
            if kind != player.kind:
                return None
            song = next((music / kind / "album").iterdir())
            return player.render(song, Path(name)), math.nan, math.nan
        try:
            process = player.start(music, kind, Path(name), settle + seconds)
        except CannotPlay:
            return None
        try:
            time.sleep(settle)
            if process.poll() is not None:
                return None
            began, used, woken = time.monotonic(), processor_seconds(process.pid), wakeups(process.pid)
            time.sleep(seconds)
            if process.poll() is not None:
                return None
            used = processor_seconds(process.pid) - used
            passed = time.monotonic() - began
            return used * 1000 / passed, resident_megabytes(process.pid), (wakeups(process.pid) - woken) / passed
        finally:
            stop(process)


def measured_seconds(kind, seconds):
    """For the cross-fade, whole periods: a part would hold too many openings and fades, or none."""
    return math.ceil(seconds / CROSSFADE_PERIOD) * CROSSFADE_PERIOD if kind == CROSSFADE else seconds


def print_table(title, kinds, players, results, column, form):
    print(f"\n{title:44}" + "".join(f"{player.name:>14}" for player in players))
    for kind in kinds:
        cells = []
        for player in players:
            values = [round_[column] for round_ in results[kind, player.name] if round_ is not None]
            median = statistics.median(values) if values else math.nan
            cells.append("-" if math.isnan(median) else form.format(median))
        print(f"  {kind:42}" + "".join(f"{cell:>14}" for cell in cells))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("music", type=Path, help="folder with songs")
    parser.add_argument("--player", type=Path, help="the console front, hullrider-radio")
    parser.add_argument("--kinds", nargs="+", choices=[*KINDS, CROSSFADE, RADIO], default=[*KINDS, CROSSFADE])
    parser.add_argument("--stream", help="URL of a running stream, for the kind \"radio\"")
    parser.add_argument("--seconds", type=float, default=10.0, help="measured in each round")
    parser.add_argument("--settle", type=float, default=3.0, help="left to start up before that")
    parser.add_argument("--rounds", type=int, default=3)
    arguments = parser.parse_args()
    if not arguments.music.is_dir():
        parser.error(f"no such folder: {arguments.music}")
    if arguments.player and not os.access(arguments.player, os.X_OK):
        parser.error(f"no such program: {arguments.player}")

    if RADIO in arguments.kinds and not arguments.stream:
        parser.error("radio needs --stream URL")

    install_missing()
    players = ([Ours(arguments.player)] if arguments.player else []) + [Mpd(), Mpv(), *RENDERERS]
    songs = find_songs(arguments.music, KINDS)
    kinds = [kind for kind in arguments.kinds if kind in songs or kind not in KINDS]
    results = {(kind, player.name): [] for kind in kinds for player in players}
    with tempfile.TemporaryDirectory(prefix="players-music-") as name:
        music = Path(name)
        make_albums(music, songs)
        make_excerpts(music, songs)
        if RADIO in kinds:
            (music / RADIO / "album").mkdir(parents=True)
            (music / RADIO / "url").write_text(arguments.stream)
        for number in range(arguments.rounds):
            for kind in kinds:
                print(f"round {number + 1} of {arguments.rounds}: {kind}", file=sys.stderr, flush=True)
                for player in players:
                    results[kind, player.name].append(
                        measure(player, music, kind, arguments.settle, measured_seconds(kind, arguments.seconds)))

    print(f"medians of {arguments.rounds} rounds of {arguments.seconds:g} s, load average {os.getloadavg()[0]:.2f}")
    print_table("processor time, ms per second of sound", kinds, players, results, 0, "{:.2f}")
    print_table("resident memory, MB", kinds, players, results, 1, "{:.1f}")
    print_table("wake-ups a second", kinds, players, results, 2, "{:.0f}")


if __name__ == "__main__":
    main()
