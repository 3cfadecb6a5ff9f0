#!/usr/bin/env python3
"""The Debian package, made and checked from outside as a user's system
would take it: its files and control data, its desktop entry and software
centre data, whether apt can resolve what it depends on, and the unpacked
program started by its command as an ordinary user with a fresh home.

    installed_package.py BUILD_FOLDER FRESH_DATA_FILE CPACK

The installed program folder (/usr/lib/vistrel) belongs to root: the
program, run as an ordinary user, keeps its data file in
$XDG_DATA_HOME/Vistrel/ and writes nothing beside itself. When the script
runs as root it starts the program as the user "nobody"; otherwise it takes
the write permission off the unpacked program folder. On a failure the
scratch folder stays, with the screen at that moment in failure.png.
"""

import glob
import hashlib
import os
import re
import shutil
import stat
import struct
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "e2e"))
from daylib import Desktop, Failure, check, check_equal, data_file_rows  # noqa: E402

DATA_FILE_KEY = "gladeon48172"
APP_ID = "org.vistrel.Vistrel"
NOBODY = 65534
ICON_SIZES = [16, 24, 32, 48, 64, 128, 256]

EXPECTED_PATHS = [
    "./usr/",
    "./usr/bin/",
    "./usr/bin/vistrel",
    "./usr/lib/",
    "./usr/lib/vistrel/",
    "./usr/lib/vistrel/Vistrel",
    "./usr/lib/vistrel/Vistrel.VRD",
    "./usr/lib/vistrel/tutorial/",
    "./usr/lib/vistrel/tutorial/Merlin.character",
    "./usr/lib/vistrel/vistrel-decode",
    "./usr/share/",
    "./usr/share/applications/",
    "./usr/share/applications/org.vistrel.Vistrel.desktop",
    "./usr/share/icons/",
    "./usr/share/icons/hicolor/",
    "./usr/share/icons/hicolor/128x128/",
    "./usr/share/icons/hicolor/128x128/apps/",
    "./usr/share/icons/hicolor/128x128/apps/org.vistrel.Vistrel.png",
    "./usr/share/icons/hicolor/16x16/",
    "./usr/share/icons/hicolor/16x16/apps/",
    "./usr/share/icons/hicolor/16x16/apps/org.vistrel.Vistrel.png",
    "./usr/share/icons/hicolor/24x24/",
    "./usr/share/icons/hicolor/24x24/apps/",
    "./usr/share/icons/hicolor/24x24/apps/org.vistrel.Vistrel.png",
    "./usr/share/icons/hicolor/256x256/",
    "./usr/share/icons/hicolor/256x256/apps/",
    "./usr/share/icons/hicolor/256x256/apps/org.vistrel.Vistrel.png",
    "./usr/share/icons/hicolor/32x32/",
    "./usr/share/icons/hicolor/32x32/apps/",
    "./usr/share/icons/hicolor/32x32/apps/org.vistrel.Vistrel.png",
    "./usr/share/icons/hicolor/48x48/",
    "./usr/share/icons/hicolor/48x48/apps/",
    "./usr/share/icons/hicolor/48x48/apps/org.vistrel.Vistrel.png",
    "./usr/share/icons/hicolor/64x64/",
    "./usr/share/icons/hicolor/64x64/apps/",
    "./usr/share/icons/hicolor/64x64/apps/org.vistrel.Vistrel.png",
    "./usr/share/icons/hicolor/scalable/",
    "./usr/share/icons/hicolor/scalable/apps/",
    "./usr/share/icons/hicolor/scalable/apps/org.vistrel.Vistrel.svg",
    "./usr/share/metainfo/",
    "./usr/share/metainfo/org.vistrel.Vistrel.metainfo.xml",
]

# Modes as dpkg-deb lists them; every other file is -rw-r--r--, every
# folder drwxr-xr-x.
EXECUTABLES = ["./usr/bin/vistrel", "./usr/lib/vistrel/Vistrel", "./usr/lib/vistrel/vistrel-decode"]

# Pieces the program loads or reads at run time, which no link names.
RUNTIME_PACKAGES = ["libqt6gui6", "libqt6svg6", "qt6-image-formats-plugins", "libemf2svg1",
                    "espeak-ng-data", "timgm6mb-soundfont", "fonts-urw-base35", "xdg-utils",
                    "shared-mime-info", "qt6-wayland"]
# A few of the libraries the programs link, found by dpkg-shlibdeps.
LINKED_PACKAGES = ["libqt6core6", "libqt6widgets6", "libsqlcipher0", "libcdio19", "libcddb2", "libmpv2",
                   "libfluidsynth3", "libespeak-ng1", "libwmf-0.2-7", "libc6", "libstdc++6"]

DESKTOP_LINES = [
    "Name=Vistrel",
    "Exec=vistrel",
    "Icon=org.vistrel.Vistrel",
    "Terminal=false",
    "StartupWMClass=Vistrel",
]

DATA_TABLES = ["CD_Songs", "CD_Titles", "FileCaptions", "HelpFile", "PlaylistFiles", "PlaylistHeader"]


def run(arguments, **options):
    result = subprocess.run(arguments, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, **options)
    return result.returncode, result.stdout.decode("utf-8", "replace")


def run_ok(arguments, what, **options):
    code, out = run(arguments, **options)
    if code != 0:
        raise Failure(f"{what} failed ({code}):\n{out}")
    return out


# ---- Making the package -----------------------------------------------------

def make_package(build, cpack, folder):
    """Runs CPack over the build tree; the package's path."""
    config = os.path.join(build, "CPackConfig.cmake")
    run_ok([cpack, "-G", "DEB", "--config", config, "-B", folder], "cpack")
    architecture = run_ok(["dpkg", "--print-architecture"], "dpkg --print-architecture").strip()
    debs = sorted(os.path.basename(p) for p in glob.glob(os.path.join(folder, "*.deb")))
    check_equal(debs, ["vistrel_1.0_" + architecture + ".deb"], "the packages made")
    return os.path.join(folder, debs[0])


# ---- The package from outside -------------------------------------------------

def check_contents(deb):
    listing = run_ok(["dpkg-deb", "-c", deb], "dpkg-deb -c").splitlines()
    entries = {}
    for line in listing:
        mode, owner, _size, _date, _time, path = line.split(None, 5)
        entries[path] = (mode, owner)
    check_equal(sorted(entries), sorted(EXPECTED_PATHS), "the package's files")
    for path, (mode, owner) in sorted(entries.items()):
        check_equal(owner, "root/root", "the owner of " + path)
        if path.endswith("/"):
            expected = "drwxr-xr-x"
        elif path in EXECUTABLES:
            expected = "-rwxr-xr-x"
        else:
            expected = "-rw-r--r--"
        check_equal(mode, expected, "the mode of " + path)


def depends_names(depends):
    """The package names of a Depends field, without versions or architectures."""
    names = set()
    for clause in depends.split(","):
        for alternative in clause.split("|"):
            name = alternative.strip().split(" ")[0].split(":")[0]
            if name:
                names.add(name)
    return names


def check_control(deb):
    fields = {}
    for name in ["Package", "Version", "Architecture", "Section", "Priority", "Maintainer", "Homepage"]:
        fields[name] = run_ok(["dpkg-deb", "-f", deb, name], "dpkg-deb -f " + name).strip()
    architecture = run_ok(["dpkg", "--print-architecture"], "dpkg --print-architecture").strip()
    check_equal(fields, {
        "Package": "vistrel",
        "Version": "1.0",
        "Architecture": architecture,
        "Section": "graphics",
        "Priority": "optional",
        "Maintainer": "The Vistrel developers <packages@vistrel.org>",
        "Homepage": "https://vistrel.org/",
    }, "the control fields")
    description = run_ok(["dpkg-deb", "-f", deb, "Description"], "dpkg-deb -f Description").splitlines()
    check_equal(description[0], "browse and organise pictures, videos, audios and documents",
                "the description's summary")
    check(len(description) > 1 and description[1].startswith(" Vistrel lists a folder"),
          "the description's text follows the summary")
    depends = run_ok(["dpkg-deb", "-f", deb, "Depends"], "dpkg-deb -f Depends").strip()
    print("Depends:", depends)
    names = depends_names(depends)
    for package in RUNTIME_PACKAGES + LINKED_PACKAGES:
        check(package in names, f"Depends names {package}: {depends}")
    # The versions dpkg-shlibdeps found for what is linked.
    check(re.search(r"libqt6widgets6 \(>= 6\.\d", depends) is not None, "a version for libqt6widgets6")


def png_header(path):
    """Width, height, bit depth and colour type of a PNG."""
    with open(path, "rb") as f:
        head = f.read(26)
    check_equal(head[:8], b"\x89PNG\r\n\x1a\n", path + " is a PNG")
    check_equal(head[12:16], b"IHDR", path + " starts with its header")
    return struct.unpack(">IIBB", head[16:26])


def alpha_at(path, x, y):
    code, out = run(["convert", path, "-format", f"%[fx:p{{{x},{y}}}.a]", "info:"])
    check_equal(code, 0, "convert reads " + path)
    return out.strip()


def check_desktop_files(root):
    desktop = os.path.join(root, "usr/share/applications", APP_ID + ".desktop")
    code, out = run(["desktop-file-validate", desktop])
    check_equal(code, 0, "desktop-file-validate's exit code; it said:\n" + out)
    check(not re.search(r"error|warning", out), "desktop-file-validate finds nothing wrong:\n" + out)
    with open(desktop, encoding="utf-8") as f:
        lines = f.read().splitlines()
    check_equal(lines[0], "[Desktop Entry]", "the desktop entry's group")
    for line in DESKTOP_LINES:
        check(line in lines, "the desktop entry holds " + line)
    # The program opens files through its own windows only: the desktop
    # hands it none.
    check(not any(line.startswith("MimeType=") for line in lines), "the desktop entry names no file types")

    metainfo = os.path.join(root, "usr/share/metainfo", APP_ID + ".metainfo.xml")
    code, out = run(["appstreamcli", "validate", "--no-net", metainfo])
    check_equal(code, 0, "appstreamcli validate's exit code; it said:\n" + out)
    with open(metainfo, encoding="utf-8") as f:
        text = f.read()
    for piece in ["<id>org.vistrel.Vistrel</id>",
                  '<launchable type="desktop-id">org.vistrel.Vistrel.desktop</launchable>',
                  "<binary>vistrel</binary>", '<release version="1.0"',
                  "<image>https://vistrel.org/screenshots/browser.png</image>",
                  "<image>https://vistrel.org/screenshots/viewer.png</image>",
                  "<image>https://vistrel.org/screenshots/options.png</image>"]:
        check(piece in text, "the software centre data holds " + piece)

    icons = os.path.join(root, "usr/share/icons/hicolor")
    for size in ICON_SIZES:
        png = os.path.join(icons, f"{size}x{size}", "apps", APP_ID + ".png")
        # 8 bits a channel with alpha (colour type 6).
        check_equal(png_header(png), (size, size, 8, 6), f"the {size} px icon's header")
        # A transparent corner around an opaque picture.
        check_equal(alpha_at(png, 0, 0), "0", f"the {size} px icon's corner")
        check_equal(alpha_at(png, size // 2, size // 2), "1", f"the {size} px icon's middle")
    with open(os.path.join(icons, "scalable/apps", APP_ID + ".svg"), encoding="utf-8") as f:
        check(f.read().startswith("<svg "), "the scalable icon is an SVG")

    with open(os.path.join(root, "usr/bin/vistrel"), encoding="utf-8") as f:
        launcher = f.read()
    check_equal(launcher.splitlines()[0], "#!/bin/sh", "the command's interpreter")
    check('exec "$here/../lib/vistrel/Vistrel" "$@"' in launcher, "the command starts the program")


def check_apt_resolves(deb):
    if not glob.glob("/var/lib/apt/lists/*_Packages*"):
        print("apt's package lists are missing: the dependency simulation is left out")
        return
    out = run_ok(["apt-get", "install", "-s", "-o", "Debug::NoLocking=1", os.path.abspath(deb)],
                 "apt-get install -s")
    check(re.search(r"^Inst vistrel ", out, re.M) is not None, "apt would install vistrel:\n" + out)
    check(not re.search(r"^Remv ", out, re.M), "apt would remove nothing:\n" + out)


# ---- The unpacked program ------------------------------------------------------

def snapshot(folder):
    """Every path under a folder with its mode, size and bytes' digest."""
    entries = {}
    for top, folders, files in os.walk(folder):
        for name in folders + files:
            path = os.path.join(top, name)
            info = os.lstat(path)
            digest = ""
            if stat.S_ISREG(info.st_mode):
                with open(path, "rb") as f:
                    digest = hashlib.sha256(f.read()).hexdigest()
            entries[os.path.relpath(path, folder)] = (info.st_mode, info.st_size, digest)
    return entries


def make_user_folders(scratch):
    """A fresh home with settings that skip the first-run windows, and
    fresh XDG folders; all owned by the user the program runs as."""
    home = os.path.join(scratch, "home")
    config = os.path.join(home, ".config", "Vistrel")
    os.makedirs(config)
    with open(os.path.join(config, "Vistrel.ini"), "w", encoding="utf-8") as f:
        f.write("[Settings]\nDefined=Yes\nFirstRun=No\nMerlinShown=Yes\n")
    folders = {"HOME": home,
               "XDG_CONFIG_HOME": os.path.join(home, ".config"),
               "XDG_CACHE_HOME": os.path.join(home, ".cache"),
               "XDG_DATA_HOME": os.path.join(scratch, "data"),
               "XDG_RUNTIME_DIR": os.path.join(scratch, "user-run")}
    for name in ["XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"]:
        os.makedirs(folders[name], mode=0o700)
    if os.geteuid() == 0:
        for top in [home, folders["XDG_DATA_HOME"], folders["XDG_RUNTIME_DIR"]]:
            os.chown(top, NOBODY, NOBODY)
            for parent, names, files in os.walk(top):
                for name in names + files:
                    os.chown(os.path.join(parent, name), NOBODY, NOBODY)
    return folders


def set_writable(folder, writable):
    for top, _, _ in os.walk(folder):
        os.chmod(top, 0o755 if writable else 0o555)


class Run:
    """What one start of the unpacked program showed and left."""
    data_file_at_start = None
    data_tables_after = None


def start_and_quit(root, desktop, folders, observed):
    program_folder = os.path.join(root, "usr/lib/vistrel")
    user_data_file = os.path.join(folders["XDG_DATA_HOME"], "Vistrel", "Vistrel.VRD")
    before = snapshot(root)
    command = [os.path.join(root, "usr/bin/vistrel")]
    if os.geteuid() == 0:
        command = ["setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups"] + command
    env = dict(desktop.env, QT_QPA_PLATFORM="xcb", QT_LOGGING_RULES="vistrel.trace.info=true", **folders)
    desktop.log = open(desktop.log_path, "wb")
    desktop.program = subprocess.Popen(command, cwd=folders["HOME"], env=env, stdout=desktop.log,
                                       stderr=desktop.log)
    desktop.wait_window("MainForm", timeout=180)
    desktop.wait_trace(r"^shown Thumbnails ", timeout=60)
    if os.path.isfile(user_data_file):
        with open(user_data_file, "rb") as f:
            observed.data_file_at_start = f.read()
    # The window's class is the one the desktop entry names.
    code, out = run(["xdotool", "search", "--class", "^Vistrel$"], env=desktop.env)
    check(code == 0 and out.strip() != "", "a window of class Vistrel")
    # Esc on the command bar while the browser is still starting: the
    # program ends once the browser has listed the start folder on its four
    # tabs, not before.
    desktop.click(800, 70)
    desktop.key("Escape")
    desktop.wait_trace(r"^count 4 ", timeout=60)
    desktop.wait_exit(timeout=60)
    check_equal(desktop.exit_code(), 0, "the program's exit code")
    check_equal(desktop.processes_left(program_folder), [], "processes left running")
    check(snapshot(root) == before, "nothing in the unpacked package changed")
    check_equal(sorted(os.listdir(program_folder)), ["Vistrel", "Vistrel.VRD", "tutorial", "vistrel-decode"],
                "the program folder after the run")
    if os.path.isfile(user_data_file):
        query = "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite%' ORDER BY name;"
        rows = data_file_rows(user_data_file, query, DATA_FILE_KEY)
        observed.data_tables_after = [r[0] for r in rows]


def check_user_data_file(root, observed):
    with open(os.path.join(root, "usr/lib/vistrel/Vistrel.VRD"), "rb") as f:
        packaged = f.read()
    check(observed.data_file_at_start is not None,
          "the data file was made in $XDG_DATA_HOME/Vistrel/ by the time the browser showed")
    check(observed.data_file_at_start == packaged,
          "the user's new data file holds the packaged fresh file's bytes")
    check_equal(observed.data_tables_after, DATA_TABLES, "the user's data file's tables after the run")


def check_fresh_file_packaged(root, fresh_data_file):
    with open(os.path.join(root, "usr/lib/vistrel/Vistrel.VRD"), "rb") as packaged:
        with open(fresh_data_file, "rb") as fresh:
            check(packaged.read() == fresh.read(), "the packaged Vistrel.VRD is the build's fresh data file")


def main():
    if len(sys.argv) != 4:
        print(__doc__)
        return 2
    build, fresh_data_file, cpack = sys.argv[1:]
    scratch = tempfile.mkdtemp(prefix="vistrel-package.", dir="/tmp")
    # The program's user passes through to its home and the unpacked root.
    os.chmod(scratch, 0o755)
    root = os.path.join(scratch, "root")
    failures = []
    desktop = None

    def stage(what, function, *arguments):
        try:
            function(*arguments)
            print("ok:", what)
            return True
        except Failure as failure:
            failures.append(f"{what}: {failure}")
            print("FAILED:", what, "-", failure)
            return False

    deb = []
    if stage("the package is made", lambda: deb.append(make_package(build, cpack, os.path.join(scratch, "out")))):
        deb = deb[0]
        stage("the package's files", check_contents, deb)
        stage("the package's control data", check_control, deb)
        stage("unpacking", lambda: run_ok(["dpkg", "-x", deb, root], "dpkg -x"))
        stage("the packaged data file", check_fresh_file_packaged, root, fresh_data_file)
        stage("the desktop entry, software centre data, icons and command", check_desktop_files, root)
        stage("apt resolves the dependencies", check_apt_resolves, deb)

        observed = Run()
        if os.geteuid() != 0:
            set_writable(os.path.join(root, "usr/lib/vistrel"), False)
        try:
            folders = make_user_folders(scratch)
            # The X server and window manager run as the caller, with a home
            # of their own: nothing of theirs lands in the user's home.
            desktop_home = os.path.join(scratch, "desktop-home")
            os.makedirs(desktop_home)
            desktop = Desktop(scratch, desktop_home)
            if not stage("the unpacked program starts, shows the browser and ends",
                         start_and_quit, root, desktop, folders, observed):
                desktop.screenshot(os.path.join(scratch, "failure.png"))
                print("--- the program's trace and messages, last 40 lines ---")
                with open(desktop.log_path, "rb") as f:
                    print("\n".join(f.read().decode("utf-8", "replace").splitlines()[-40:]))
        finally:
            if desktop:
                desktop.stop()
            if os.geteuid() != 0:
                set_writable(os.path.join(root, "usr/lib/vistrel"), True)
        stage("the user's own data file", check_user_data_file, root, observed)

    if failures:
        print("scratch kept in", scratch)
    else:
        shutil.rmtree(scratch, ignore_errors=True)
    print("installed package:", "passed" if not failures else f"failed ({len(failures)})")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
