"""A PulseAudio server of the test's own, with sinks that nobody hears, and what comes out of them."""

import array
import os
import signal
import subprocess

from playing import PATIENCE_SEC, wait_until

RATE = 48000


class SoundServer:
    """Lives below a folder. Its sinks are "first", which is the default, and "second"."""

    def __init__(self, folder):
        self.folder = folder
        folder.mkdir(mode=0o700)
        self.environment = {**os.environ, "HOME": str(folder), "XDG_RUNTIME_DIR": str(folder),
                            "PULSE_SERVER": f"unix:{folder}/socket", "PULSE_COOKIE": str(folder / "cookie")}
        for name in ("DBUS_SESSION_BUS_ADDRESS", "DISPLAY"):
            self.environment.pop(name, None)
        self.process = None

    def start(self):
        modules = [f"module-native-protocol-unix auth-anonymous=1 socket={self.folder}/socket",
                   f"module-null-sink sink_name=first rate={RATE}", f"module-null-sink sink_name=second rate={RATE}"]
        command = ["pulseaudio", "-n", "--system=false", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1"]
        for module in modules:
            command += ["-L", module]
        environment = {name: value for name, value in self.environment.items() if name != "PULSE_SERVER"}
        self.process = subprocess.Popen(command, env=environment, stdin=subprocess.DEVNULL,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        if wait_until(lambda: self.control("info").returncode == 0) is None:
            raise RuntimeError("the sound server did not start")
        self.control("set-default-sink", "first")

    def control(self, *words):
        return subprocess.run(["pactl", *words], env=self.environment, capture_output=True, text=True, timeout=PATIENCE_SEC)

    def state(self, sink):
        """RUNNING while someone plays on it."""
        rows = (line.split() for line in self.control("list", "short", "sinks").stdout.splitlines())
        return next((row[-1] for row in rows if row[1] == sink), None)

    def kill(self):
        if self.process is not None:
            self.process.kill()
            self.process.wait()
            self.process = None

    def take_away(self, sink):
        """As when a device is unplugged."""
        for line in self.control("list", "short", "modules").stdout.splitlines():
            if f"sink_name={sink} " in line:
                self.control("unload-module", line.split()[0])

    def halt(self):
        self.process.send_signal(signal.SIGSTOP)

    def go_on(self):
        self.process.send_signal(signal.SIGCONT)

    def record(self, sink, seconds):
        """What comes out of the sink from now on, one channel as floats."""
        command = ["parec", "-d", f"{sink}.monitor", "--raw", "--format=float32le", f"--rate={RATE}", "--channels=1",
                   "--latency-msec=50"]
        samples = array.array("f")
        with subprocess.Popen(command, env=self.environment, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL) as parec:
            wanted = int(seconds * RATE) * samples.itemsize
            heard = parec.stdout.read(wanted)
            parec.kill()
        samples.frombytes(heard[:len(heard) - len(heard) % samples.itemsize])
        return samples
