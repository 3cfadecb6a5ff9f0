"""What the day of use needs around the program: an X server with a window
manager, the program's trace, the keyboard and mouse, the data file read
with the command-line database tool, and a folder of made media files."""

import ctypes
import os
import re
import shutil
import signal
import subprocess
import time


class Failure(Exception):
    pass


def check(condition, what):
    if not condition:
        raise Failure(what)


def check_equal(actual, expected, what):
    if actual != expected:
        raise Failure(f"{what}: expected {expected!r}, got {actual!r}")


def run(arguments, **options):
    return subprocess.run(arguments, check=True, stdout=subprocess.PIPE, stderr=subprocess.PIPE, **options)


def data_file_rows(path, query, key):
    """The rows of a query on the encrypted data file, each a list of texts."""
    # The ascii mode divides columns by 0x1F and rows by 0x1E.
    script = f"PRAGMA key = '{key}';\n.mode ascii\n{query}\n"
    result = subprocess.run(["sqlcipher", path], input=script.encode(), stdout=subprocess.PIPE,
                            stderr=subprocess.PIPE)
    out = result.stdout.decode()
    # The key pragma answers "ok" on newer versions; it is not a row.
    records = [r for r in out.split("\x1e") if r.strip("\n") not in ("", "ok")]
    return [r.lstrip("\n").split("\x1f") for r in records]


def make_day_folder(folder):
    """Pictures, a video, sounds and texts, as a camera and a day leave
    them; the bytes of each picture by name, to check copies against."""
    os.makedirs(os.path.join(folder, "Kept"))
    os.makedirs(os.path.join(folder, "Moved"))
    colours = ["red", "green", "blue", "orange", "purple"]
    for colour in colours:
        run(["convert", "-size", "640x480", "xc:" + colour, "-fill", "white", "-draw", "circle 320,240 320,100",
             os.path.join(folder, colour + ".jpg")])
    run(["convert", "-size", "300x200", "gradient:yellow-navy", os.path.join(folder, "sunset.png")])
    for n in range(1, 141):
        shutil.copyfile(os.path.join(folder, colours[n % 5] + ".jpg"), os.path.join(folder, "photo %03d.jpg" % n))
    run(["ffmpeg", "-loglevel", "error", "-f", "lavfi", "-i", "testsrc=size=160x120:rate=10", "-t", "1",
         "-pix_fmt", "yuv420p", os.path.join(folder, "clip.mp4")])
    run(["sox", "-n", "-r", "22050", os.path.join(folder, "tone.wav"), "synth", "1", "sine", "440"])
    run(["sox", "-n", "-r", "22050", os.path.join(folder, "beep.wav"), "synth", "0.5", "sine", "880"])
    with open(os.path.join(folder, "notes.txt"), "w") as f:
        f.write("A note about the day\n")
    with open(os.path.join(folder, "list.txt"), "w") as f:
        f.write("Shopping: bread; milk\n")
    originals = {}
    for name in os.listdir(folder):
        if name.endswith(".jpg"):
            with open(os.path.join(folder, name), "rb") as f:
                originals[name] = f.read()
    return originals


class Desktop:
    """An X server of 1280 x 960 with a window manager, and the program on it."""

    def __init__(self, scratch, home):
        self.scratch = scratch
        self.home = home
        self.log_path = os.path.join(scratch, "trace.log")
        self.cursor = 0
        self.program = None
        self.children = []
        read, write = os.pipe()
        self.xvfb = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "1280x960x24",
                                      "-nolisten", "tcp"], pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as f:
            self.display = ":" + f.readline().strip()
        self.env = {
            "PATH": os.environ.get("PATH", "/usr/bin:/bin"),
            "HOME": home,
            "DISPLAY": self.display,
            "LANG": "C.UTF-8",
            "XDG_RUNTIME_DIR": os.path.join(scratch, "run"),
            # No sound server: the day is silent.
            "PULSE_SERVER": "unix:" + os.path.join(scratch, "no-sound-server"),
        }
        # A sanitized build's program reports by these settings.
        for name in ["ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"]:
            if name in os.environ:
                self.env[name] = os.environ[name]
        os.makedirs(self.env["XDG_RUNTIME_DIR"], mode=0o700)
        self.map_keys(["ediaeresis", "Ediaeresis"])
        self.children.append(subprocess.Popen(["openbox"], env=self.env, stdout=subprocess.DEVNULL,
                                              stderr=subprocess.DEVNULL))
        time.sleep(0.5)

    def map_keys(self, keysyms, keycode=254):
        """Puts letters the keyboard map lacks on a spare key before the
        program starts. The typing tool would otherwise map them for a moment
        at each key, and on a busy machine the program reads the key after the
        map has changed back."""
        x11 = ctypes.CDLL("libX11.so.6")
        x11.XOpenDisplay.restype = ctypes.c_void_p
        x11.XOpenDisplay.argtypes = [ctypes.c_char_p]
        x11.XStringToKeysym.restype = ctypes.c_ulong
        x11.XStringToKeysym.argtypes = [ctypes.c_char_p]
        x11.XChangeKeyboardMapping.argtypes = [ctypes.c_void_p, ctypes.c_int, ctypes.c_int,
                                               ctypes.POINTER(ctypes.c_ulong), ctypes.c_int]
        x11.XSync.argtypes = [ctypes.c_void_p, ctypes.c_int]
        x11.XCloseDisplay.argtypes = [ctypes.c_void_p]
        connection = x11.XOpenDisplay(self.display.encode())
        check(connection, "the X server answers")
        symbols = (ctypes.c_ulong * len(keysyms))(*[x11.XStringToKeysym(k.encode()) for k in keysyms])
        x11.XChangeKeyboardMapping(connection, keycode, len(keysyms), symbols, 1)
        x11.XSync(connection, 0)
        x11.XCloseDisplay(connection)

    def start_program(self, program_folder):
        env = dict(self.env, QT_QPA_PLATFORM="xcb", QT_LOGGING_RULES="vistrel.trace.info=true")
        self.log = open(self.log_path, "wb")
        self.program = subprocess.Popen(["./Vistrel"], cwd=program_folder, env=env, stdout=self.log,
                                        stderr=self.log)

    # ---- The trace ---------------------------------------------------------

    def trace_lines(self):
        with open(self.log_path, "rb") as f:
            lines = f.read().decode("utf-8", "replace").splitlines()
        prefix = "vistrel.trace: "
        return [line[len(prefix):] for line in lines if line.startswith(prefix)]

    def wait_trace(self, pattern, timeout=60):
        """Waits for a trace line after the last one waited for; its match."""
        expression = re.compile(pattern)
        deadline = time.monotonic() + timeout
        while True:
            lines = self.trace_lines()
            for i in range(self.cursor, len(lines)):
                match = expression.search(lines[i])
                if match:
                    self.cursor = i + 1
                    return match
            if self.program.poll() is not None:
                raise Failure(f"the program ended ({self.program.returncode}) while waiting for {pattern!r}")
            if time.monotonic() > deadline:
                raise Failure(f"no trace line {pattern!r} within {timeout} s")
            time.sleep(0.1)

    def skip_trace(self):
        """Later waits look only at lines from now on."""
        self.cursor = len(self.trace_lines())

    def wait_window(self, name, timeout=60):
        """Waits for the window to show; where its inside stands on the screen
        and its size: x, y, width, height."""
        match = self.wait_trace(r"shown " + name + r" (-?\d+),(-?\d+) (\d+)x(\d+)", timeout)
        time.sleep(0.4)  # the window settles and takes the keyboard
        return tuple(int(match.group(i)) for i in range(1, 5))

    def wait_until(self, condition, what, timeout=30):
        deadline = time.monotonic() + timeout
        while not condition():
            if time.monotonic() > deadline:
                raise Failure("never came: " + what)
            time.sleep(0.2)

    def wait_file(self, path, timeout=30):
        self.wait_until(lambda: os.path.isfile(path), path)

    def wait_exit(self, timeout):
        try:
            self.program.wait(timeout)
        except subprocess.TimeoutExpired:
            raise Failure(f"the program did not end within {timeout} s")

    def exit_code(self):
        return self.program.returncode

    def processes_left(self, program_folder):
        """Processes that still run in the program's folder."""
        left = []
        for pid in os.listdir("/proc"):
            if not pid.isdigit():
                continue
            try:
                if os.readlink(f"/proc/{pid}/cwd").startswith(program_folder):
                    with open(f"/proc/{pid}/cmdline", "rb") as f:
                        left.append(f.read().replace(b"\0", b" ").decode().strip())
            except OSError:
                pass
        return left

    # ---- Keyboard, mouse and screen -----------------------------------------

    def xdotool(self, *arguments):
        subprocess.run(["xdotool", *arguments], env=self.env, check=True)

    def key(self, *keys):
        self.xdotool("key", "--delay", "80", *keys)
        time.sleep(0.3)

    def type(self, text):
        self.xdotool("type", "--delay", "40", text)
        time.sleep(0.2)

    def click(self, x, y):
        self.xdotool("mousemove", str(x), str(y), "click", "1")
        time.sleep(0.4)

    def screenshot(self, path):
        subprocess.run(["import", "-window", "root", path], env=self.env)

    def stop(self):
        if self.program and self.program.poll() is None:
            self.program.kill()
            self.program.wait()
        for child in self.children + [self.xvfb]:
            if child.poll() is None:
                child.send_signal(signal.SIGTERM)
                try:
                    child.wait(5)
                except subprocess.TimeoutExpired:
                    child.kill()
