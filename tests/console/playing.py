"""What the tests of the console front share: songs of one tone, what is heard of it, and settings."""

import array
import json
import math
import struct
import subprocess
import time
import wave

PATIENCE_SEC = 30  # with a machine that has other things to do


def write_tone(path, frequency, seconds, rate=22050):
    """A mono song of one steady tone at half of full scale."""
    path.parent.mkdir(parents=True, exist_ok=True)
    samples = array.array("h", (int(16384 * math.sin(2 * math.pi * frequency * i / rate))
                                for i in range(int(seconds * rate))))
    with wave.open(str(path), "wb") as out:
        out.setparams((1, 2, rate, 0, "NONE", ""))
        out.writeframes(samples.tobytes())


def strength(block, frequency, rate):
    """Amplitude of one frequency within a block (Goertzel)."""
    turn = 2 * math.cos(2 * math.pi * frequency / rate)
    s1 = s2 = 0.0
    for sample in block:
        s1, s2 = sample + turn * s1 - s2, s1
    power = s1 * s1 + s2 * s2 - turn * s1 * s2
    return 2 * math.sqrt(max(power, 0.0)) / max(1, len(block))


def read_recording(path):
    """(rate, left channel as floats) of a 32-bit float stereo WAV file."""
    data = path.read_bytes()
    assert data[:4] == b"RIFF" and data[8:12] == b"WAVE", data[:12]
    position, rate, left = 12, 0, None
    while position + 8 <= len(data):
        name, size = data[position:position + 4], struct.unpack("<I", data[position + 4:position + 8])[0]
        body = data[position + 8:position + 8 + size]
        if name == b"fmt ":
            _, channels, rate, _, _, bits = struct.unpack("<HHIIHH", body[:16])
            assert (channels, bits) == (2, 32), (channels, bits)
        if name == b"data":
            left = array.array("f", body)[::2]
        position += 8 + size + size % 2
    return rate, left


def write_settings(program, data, **changes):
    """A whole settings file: the one the player leaves by itself, with changes."""
    subprocess.run([program, "--data-dir", str(data), "--output", "null", "--for", "0"], check=True,
                   stdin=subprocess.DEVNULL, capture_output=True, timeout=PATIENCE_SEC)
    path = data / "MusicSettings.json"
    settings = json.loads(path.read_text())
    settings.update(changes)
    path.write_text(json.dumps(settings))


def wait_until(condition, patience=PATIENCE_SEC):
    """Seconds until the condition held, or None."""
    begin = time.monotonic()
    while time.monotonic() - begin < patience:
        if condition():
            return time.monotonic() - begin
        time.sleep(0.05)
    return None
