#!/usr/bin/env python3
"""A day of use: the real program, started as a new user would start it, is
driven through its keys and mouse on an X server of its own, and what it did
is then checked from outside: the files, the Trash, the data file, the
settings, and that nothing of it is left running.

    day_of_use.py PROGRAM_FOLDER FRESH_DATA_FILE

The program reports what it shows (windows and where they stand, the
browser's counts, the viewer's file) through its trace logging category;
the script waits for those lines instead of sleeping. On a failure the
scratch folder stays, with the screen at that moment in failure.png.
"""

import os
import re
import shutil
import sys
import tempfile
import time
import urllib.parse

from daylib import Desktop, Failure, check, check_equal, data_file_rows, make_day_folder

DATA_FILE_KEY = "gladeon48172"


class Day:
    def __init__(self, desktop, scratch):
        self.d = desktop
        self.scratch = scratch
        self.day = os.path.join(scratch, "Day")

    # ---- Moves a user makes -------------------------------------------------

    def click_browser(self):
        """A click on the browser's empty corner, so that its keys work."""
        self.d.click(1190, 870)

    def choose_folder(self, path):
        """In a folder tree that has the keyboard: from the top of the tree,
        each folder of the path is opened (+), entered (Down) and found by
        typing its name. The folder model reads a folder's children after it
        opens, so a busy machine may need a second, slower try."""
        for pause in [0.8, 2.0, 4.0]:
            self.d.skip_trace()
            self.d.key("Home")
            prefix = ""
            try:
                for part in [p for p in path.split("/") if p]:
                    prefix += "/" + part
                    self.d.key("plus")
                    time.sleep(pause)
                    self.d.key("Down")
                    self.d.type(part)
                    self.d.wait_trace(r"^folder " + re.escape(prefix) + "$", timeout=5 * pause)
                time.sleep(0.5)  # the tree's type-ahead settles
                return
            except Failure:
                pass
        raise Failure("the folder tree never reached " + path)

    def first_run_options(self):
        x, y, _, _ = self.d.wait_window("OptionsEntry", timeout=180)
        self.d.click(x + 244, y + 21)  # the General page
        self.d.click(x + 145, y + 241)  # "Allow entry and display of picture captions?"
        self.d.click(x + 145, y + 181)  # "Display splash screen at program StartUp?"
        self.d.click(x + 43, y + 21)  # the Pictures page
        self.d.click(x + 100, y + 265)  # "ART images (*.art)"
        self.d.key("alt+s")
        self.d.wait_trace(r"hidden OptionsEntry")

    def pick_folder(self):
        self.click_browser()
        self.d.key("ctrl+l")
        x, y, _, _ = self.d.wait_window("ChooseDirectory")
        self.d.click(x + 150, y + 150)
        self.choose_folder(self.day)
        self.d.key("Return")
        self.d.wait_trace(r"count 1 1 to 96 of 146 picture files")
        self.d.wait_trace(r"count 4 1 to 2 of 2 document files")

    def page_through(self):
        self.d.key("Next")
        self.d.wait_trace(r"count 1 97 to 146 of 146 picture files")
        self.d.key("Prior")
        self.d.wait_trace(r"count 1 1 to 96 of 146 picture files")

    def open_picture_and_caption(self):
        self.d.key("Return")
        self.d.wait_trace(r"picture 1 of 146 files    Name: blue\.jpg")
        x, y, _, height = self.d.wait_window("SingleImage")
        self.d.click(x + 300, y + height - 10)  # the caption box
        self.d.type("Blue hour; Zoë's \"first\" photo")
        self.d.key("Next")  # walking on keeps the caption
        self.d.wait_trace(r"picture 2 of 146 files    Name: green\.jpg")

    def send_to(self, keys, folder):
        """Copies or moves the viewer's picture into a folder of the day."""
        self.d.key(keys)
        x, y, _, _ = self.d.wait_window("ChooseDirectory")
        self.d.click(x + 150, y + 150)
        self.choose_folder(os.path.join(self.day, folder))
        self.d.key("Return")

    def rename_shown_picture(self, name, attempts=3):
        """Renames the viewer's picture. On a loaded machine a letter that the
        keyboard map lacks can be lost on its way in; the picture is then
        renamed again, so that what is checked is the program's handling of
        the name, not the typing."""
        target = os.path.join(self.day, name + ".jpg")
        for _ in range(attempts):
            self.d.key("ctrl+r")
            self.d.wait_window("RenameFile")
            self.d.type(name)
            self.d.key("Return")
            self.d.wait_trace(r"hidden RenameFile")
            try:
                self.d.wait_until(lambda: os.path.isfile(target), target, timeout=5)
                return
            except Failure:
                print("the typed name arrived incomplete; renaming again", flush=True)
        raise Failure("the picture never took the name " + name)

    def rename_copy_move_delete(self):
        self.rename_shown_picture("Zoë's lake; day")

        self.send_to("ctrl+c", "Kept")
        self.d.wait_trace(r"hidden ChooseDirectory")
        self.d.wait_file(os.path.join(self.day, "Kept", "Zoë's lake; day.jpg"))

        self.d.key("Next")
        self.d.wait_trace(r"picture 3 of 146 files    Name: orange\.jpg")
        self.send_to("ctrl+m", "Moved")
        self.d.wait_trace(r"picture 4 of 146 files    Name: photo 001\.jpg")

        self.d.key("ctrl+d")
        self.d.wait_window("DeleteVerify")
        self.d.key("Return")  # "Move to Recycle Bin", Yes
        self.d.wait_trace(r"picture 5 of 146 files    Name: photo 002\.jpg")

    def slideshow(self):
        self.d.key("ctrl+l")
        x, y, _, _ = self.d.wait_window("SlideshowController")
        self.d.wait_trace(r"picture 7 of 146 files    Name: photo 004\.jpg", timeout=30)
        self.d.click(x + 110, y + 82)  # "Stop Slideshow"
        self.d.wait_trace(r"hidden SlideshowController")
        self.d.wait_trace(r"hidden SingleImage")

    def album_by_search(self):
        self.click_browser()
        self.d.key("ctrl+b")
        x, y, _, _ = self.d.wait_window("AlbumEdit")
        self.d.type("Lake day")  # the album's name box has the keyboard
        self.d.click(x + 228, y + 17)  # "File name:"
        self.d.type("photo 01*")
        self.d.click(x + 96, y + 175)  # the folder tree
        self.choose_folder(self.day)
        self.d.click(x + 47, y + 91)  # Start
        self.d.wait_trace(r"album search found 10")
        self.d.key("alt+a")  # Add >>
        time.sleep(0.5)
        self.d.click(x + 722, y + 68)  # Save
        self.d.wait_until(lambda: self.album_rows() == 10, "the album's ten rows in the data file")
        # Closing the editor brings the album selection, which offers the album.
        self.d.key("Escape")
        self.d.wait_trace(r"hidden AlbumEdit")
        self.d.wait_window("AlbumSelect")
        self.d.key("alt+o")  # Open
        self.d.wait_trace(r"count 1 1 to 10 of 10 picture files")

    def search_disk(self):
        self.d.key("ctrl+f")
        x, y, _, _ = self.d.wait_window("FindFiles")
        self.d.type("Zoë*")
        self.d.click(x + 116, y + 255)  # the folder tree
        self.choose_folder(self.day)
        self.d.click(x + 294, y + 19)  # Start
        self.d.wait_trace(r"search found 2")
        self.d.key("Return")  # Show the first file found
        self.d.wait_trace(r"picture File: " + re.escape(self.day) + r"/(Kept/)?Zoë's lake; day\.jpg")
        self.d.key("Escape")
        self.d.wait_trace(r"hidden SingleImage")
        self.d.key("Escape")
        self.d.wait_trace(r"hidden FindFiles")

    def change_option(self):
        self.click_browser()
        self.d.key("ctrl+o")
        x, y, _, _ = self.d.wait_window("OptionsEntry")
        self.d.click(x + 244, y + 21)  # the General page
        self.d.click(x + 145, y + 221)  # "Display "help data" in popup windows"
        self.d.key("alt+s")
        self.d.wait_trace(r"hidden OptionsEntry")

    def quit(self):
        # Esc on the command bar ends the program by unloading the main
        # window through the window registry, as the other windows go.
        self.d.click(800, 70)  # the command bar, beside its buttons
        self.d.key("Escape")
        self.d.wait_exit(timeout=60)

    def album_rows(self):
        rows = data_file_rows(self.program_data_file(), "SELECT count(*) FROM PlaylistFiles;", DATA_FILE_KEY)
        return int(rows[0][0]) if rows else -1

    def program_data_file(self):
        return os.path.join(self.scratch, "program", "Vistrel.VRD")


def check_outcome(day, originals, home):
    d = day.day
    # The files where they should be, with their bytes.
    check_equal(sorted(os.listdir(os.path.join(d, "Kept"))), ["Zoë's lake; day.jpg"], "Kept holds the copy")
    check_equal(sorted(os.listdir(os.path.join(d, "Moved"))), ["orange.jpg"], "Moved holds the moved file")
    for gone in ["green.jpg", "orange.jpg", "photo 001.jpg"]:
        check(not os.path.exists(os.path.join(d, gone)), f"{gone} left the folder")
    for path, original in [(os.path.join(d, "Zoë's lake; day.jpg"), "green.jpg"),
                           (os.path.join(d, "Kept", "Zoë's lake; day.jpg"), "green.jpg"),
                           (os.path.join(d, "Moved", "orange.jpg"), "orange.jpg")]:
        with open(path, "rb") as f:
            check(f.read() == originals[original], f"{path} holds the bytes of {original}")
    check_equal(len([n for n in os.listdir(d) if n.endswith((".jpg", ".png"))]), 144, "pictures left in the folder")

    # The Trash's entry.
    trash = os.path.join(home, ".local", "share", "Trash")
    with open(os.path.join(trash, "files", "photo 001.jpg"), "rb") as f:
        check(f.read() == originals["photo 001.jpg"], "the Trash holds the deleted picture's bytes")
    with open(os.path.join(trash, "info", "photo 001.jpg.trashinfo"), encoding="utf-8") as f:
        info = f.read().splitlines()
    check_equal(info[0:2], ["[Trash Info]", "Path=" + urllib.parse.quote(os.path.join(d, "photo 001.jpg"))],
                "the Trash's record")
    check(re.fullmatch(r"DeletionDate=\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d", info[2]) is not None, "the deletion date")

    # The album and the caption in the data file.
    data = day.program_data_file()
    check_equal(data_file_rows(data, "SELECT PlaylistID, PlaylistName FROM PlaylistHeader;", DATA_FILE_KEY),
                [["1", "Lake day"]], "the album's header")
    files = data_file_rows(data, "SELECT PlaylistFile FROM PlaylistFiles WHERE PlaylistID = 1;", DATA_FILE_KEY)
    check_equal(sorted(r[0] for r in files), [os.path.join(d, "photo %03d.jpg" % n) for n in range(10, 20)],
                "the album's files")
    check_equal(data_file_rows(data, "SELECT FileName, FileCaption FROM FileCaptions;", DATA_FILE_KEY),
                [["blue.jpg", "Blue hour; Zoë's \"first\" photo"]], "the caption")
    check(not os.path.exists(os.path.join(day.scratch, "program", "MediaTemp.VRD")), "no compaction left over")

    # The settings the options wrote.
    with open(os.path.join(home, ".config", "Vistrel", "Vistrel.ini"), encoding="utf-8") as f:
        settings = dict(line.split("=", 1) for line in f.read().splitlines() if "=" in line)
    for key, value in [("Defined", "Yes"), ("MerlinShown", "Yes"), ("ShowCaptions", "1"),
                       ("ShowSplashScreen", "0"), ("ShowPopupHelp", "0"),
                       ("PictureOptions", "11111111000000000011")]:
        check_equal(settings.get(key), value, "setting " + key)

    # No temporary file of the program's own anywhere in the day's folders.
    leftovers = [os.path.join(r, n) for r, _, names in os.walk(d) for n in names if n.startswith(".vistrel-")]
    check_equal(leftovers, [], "temporary files left over")


def main():
    if len(sys.argv) != 3:
        print(__doc__)
        return 2
    program_folder, fresh_data_file = sys.argv[1], sys.argv[2]
    # A short path: the folder trees are walked to it by typing its names.
    scratch = tempfile.mkdtemp(prefix="vistrel-day.", dir="/tmp")
    home = os.path.join(scratch, "home")
    os.makedirs(home)
    program = os.path.join(scratch, "program")
    os.makedirs(os.path.join(program, "MyMedia"))
    for part in ["Vistrel", "vistrel-decode"]:
        shutil.copy2(os.path.join(program_folder, part), program)
    shutil.copytree(os.path.join(program_folder, "tutorial"), os.path.join(program, "tutorial"))
    shutil.copy2(fresh_data_file, os.path.join(program, "Vistrel.VRD"))
    originals = make_day_folder(os.path.join(scratch, "Day"))

    desktop = Desktop(scratch, home)
    ok = False
    try:
        desktop.start_program(program)
        day = Day(desktop, scratch)
        day.first_run_options()
        # A new user watches the guided tour to its end.
        desktop.wait_trace(r"character hidden", timeout=420)
        day.pick_folder()
        day.page_through()
        day.open_picture_and_caption()
        day.rename_copy_move_delete()
        day.slideshow()
        day.album_by_search()
        day.search_disk()
        day.change_option()
        day.quit()
        check_equal(desktop.exit_code(), 0, "the program's exit code")
        # Opened three times (a folder, a copy, a move), the chooser keeps
        # its size rather than growing by its frame.
        check_equal(re.findall(r"^shown ChooseDirectory \S+ (\S+)$", "\n".join(desktop.trace_lines()), re.M),
                    ["316x328", "316x328", "316x328"], "the folder chooser's size at each opening")
        check_equal(desktop.processes_left(program), [], "processes left running")
        check_outcome(day, originals, home)
        ok = True
    except Failure as failure:
        desktop.screenshot(os.path.join(scratch, "failure.png"))
        print("FAILED:", failure)
        print("--- the program's trace, last 40 lines ---")
        print("\n".join(desktop.trace_lines()[-40:]))
    finally:
        desktop.stop()
        if ok:
            shutil.rmtree(scratch, ignore_errors=True)
        else:
            print("scratch kept in", scratch)
    print("day of use:", "passed" if ok else "failed")
    return 0 if ok else 1


if __name__ == "__main__":
    sys.exit(main())
