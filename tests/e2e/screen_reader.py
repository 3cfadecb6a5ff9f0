#!/usr/bin/python3
"""What a screen reader hears: the real program on an X server of its own,
read through the desktop's accessibility bus as a reader reads it.

Run inside a session bus of its own (dbus-run-session), with Debian's
python3 and its accessibility module. Arguments: the program folder of the
build and the fresh data file."""

import os
import shutil
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from daylib import Desktop, Failure, check, check_equal  # noqa: E402


def make_folder(folder):
    os.makedirs(folder)
    for name, colour in [("Apple tree.jpg", "green"), ("Zoë's lake; day.jpg", "blue")]:
        subprocess.run(["convert", "-size", "320x240", "xc:" + colour, os.path.join(folder, name)], check=True)
    with open(os.path.join(folder, "notes.txt"), "w") as f:
        f.write("A note\n")


def tree(node, depth=0):
    """(depth, role, name, description, states) of the node and all below it."""
    import pyatspi
    states = node.getState()
    rows = [(depth, node.getRoleName(), node.name, node.description,
             {"selected": states.contains(pyatspi.STATE_SELECTED),
              "sensitive": states.contains(pyatspi.STATE_SENSITIVE)})]
    for i in range(node.childCount):
        child = node.getChildAtIndex(i)
        if child is not None:
            rows += tree(child, depth + 1)
    return rows


def application():
    import pyatspi
    for app in pyatspi.Registry.getDesktop(0):
        if app is not None and app.name == "Vistrel":
            return app
    return None


def find(node, role, name):
    if node.getRoleName() == role and node.name == name:
        return node
    for i in range(node.childCount):
        child = node.getChildAtIndex(i)
        found = find(child, role, name) if child is not None else None
        if found is not None:
            return found
    return None


def read_browser(desktop):
    """The names a reader hears for the buttons, the tabs and the cells."""
    desktop.wait_until(lambda: application() is not None, "the program on the accessibility bus")
    rows = tree(application())
    buttons = {name: (description, states["sensitive"]) for _, role, name, description, states in rows
               if role == "push button" and name}
    tabs = [(name, description, states["selected"]) for _, role, name, description, states in rows
            if role == "page tab"]
    lists = {}
    current = None
    for depth, role, name, _, states in rows:
        if role == "list":
            current = (depth, name)
            lists[name] = []
        elif role == "list item" and current and depth == current[0] + 1:
            lists[current[1]].append((name, states["selected"]))
    return buttons, tabs, lists


def main():
    program_source, fresh_data_file = sys.argv[1], sys.argv[2]
    check("DBUS_SESSION_BUS_ADDRESS" in os.environ, "a session bus (run under dbus-run-session)")
    scratch = tempfile.mkdtemp(prefix="vistrel-reader.", dir="/tmp")
    home = os.path.join(scratch, "home")
    folder = os.path.join(scratch, "Reader")
    make_folder(folder)
    os.makedirs(os.path.join(home, ".config", "Vistrel"))
    with open(os.path.join(home, ".config", "Vistrel", "Vistrel.ini"), "w", encoding="utf-8") as f:
        f.write("[Settings]\nDefined=Yes\nFirstRun=No\nMerlinShown=Yes\nShowSplashScreen=0\n"
                "MainMaximized=Yes\nDefaultFolder=" + folder + "\n")
    program = os.path.join(scratch, "program")
    os.makedirs(program)
    for name in ["Vistrel", "vistrel-decode"]:
        shutil.copy2(os.path.join(program_source, name), program)
    shutil.copytree(os.path.join(program_source, "tutorial"), os.path.join(program, "tutorial"))
    shutil.copy2(fresh_data_file, os.path.join(program, "Vistrel.VRD"))

    desktop = Desktop(scratch, home)
    ok = False
    try:
        desktop.env["DBUS_SESSION_BUS_ADDRESS"] = os.environ["DBUS_SESSION_BUS_ADDRESS"]
        # The reader is there before the program: Qt then offers its tree.
        desktop.children.append(subprocess.Popen(["/usr/libexec/at-spi-bus-launcher", "--launch-immediately"],
                                                 env=desktop.env, stdout=subprocess.DEVNULL,
                                                 stderr=subprocess.DEVNULL))
        desktop.env["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        os.environ["DISPLAY"] = desktop.display
        time.sleep(1)
        desktop.start_program(program)
        desktop.wait_trace(r"^count 4 ", timeout=90)

        # The help button comes on once the first-run watch has found the
        # tutorial's character and voice, a moment after the browser.
        desktop.wait_until(lambda: read_browser(desktop)[0].get("Program Tutorial", ("", False))[1],
                           "the tutorial button enabled")
        buttons, tabs, lists = read_browser(desktop)
        check_equal(buttons.get("Refresh"), ("Click here to refresh the current display", True),
                    "the refresh button, its help and state")
        check_equal(buttons.get("Program Options"), ("Click here to define program options", True),
                    "the options button")
        check_equal(buttons.get("Program Tutorial"), ("Click here to start an animated program tutorial", True),
                    "the tutorial button")
        check_equal(tabs, [("Pictures (2)", "1 to 2 of 2 picture files", True),
                           ("Videos (0)", "0 video files available", False),
                           ("Audios (0)", "0 audio files available", False),
                           ("Documents (1)", "1 to 1 of 1 document files", False)], "the tabs")
        check_equal(lists.get("Pictures"), [("Apple tree.jpg", True), ("Zoë's lake; day.jpg", False)],
                    "the cells of the Pictures tab")

        # The reader's own action on a tab brings it forward.
        tab = find(application(), "page tab", "Documents (1)")
        check(tab is not None, "the Documents tab")
        tab.queryAction().doAction(0)
        desktop.wait_until(lambda: read_browser(desktop)[2].get("Documents") is not None,
                           "the Documents list")
        buttons, tabs, lists = read_browser(desktop)
        check_equal([name for name, _, selected in tabs if selected], ["Documents (1)"], "the tab in front")
        check_equal(lists.get("Documents"), [("notes.txt", True)], "the cells of the Documents tab")

        desktop.click(800, 70)
        desktop.key("Escape")
        desktop.wait_exit(timeout=60)
        check_equal(desktop.exit_code(), 0, "the program's exit code")
        ok = True
    except Failure as failure:
        print("FAILED:", failure)
    finally:
        if not ok:
            desktop.screenshot(os.path.join(scratch, "failure.png"))
        desktop.stop()
    if ok:
        shutil.rmtree(scratch, ignore_errors=True)
        print("screen reader: passed")
        return 0
    print("scratch kept in", scratch)
    return 1


if __name__ == "__main__":
    sys.exit(main())
