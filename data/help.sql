-- The guided tour: what the tutorial character says, line by line, in the
-- order of HelpLine. Some line numbers also move him or make him point:
-- 20 to 35 at the tabs, 40 to 51 at the thumbnails, 60 to 71 at the command
-- bar, 80 in the middle of the window, 90 back where he started. Any other
-- number is only spoken.

INSERT INTO HelpFile (HelpID, HelpLine, HelpText) VALUES
  ('Main', 10, 'Vistrel shows the pictures, videos, audio files and documents of a folder as thumbnails, so that you can see at a glance what it holds.'),
  ('Main', 11, 'Let me show you around the main window.'),
  ('Main', 20, 'Down here are the four tabs of the browser: Pictures, Videos, Audios and Documents.'),
  ('Main', 25, 'Each tab lists only the files of its own kind, taken from the folder or the album you are looking at.'),
  ('Main', 30, 'Click on the Videos, Audios or Documents tab to see the other kinds of media in the same folder.'),
  ('Main', 35, 'The Pictures tab, here on the left, is the one you see first.'),
  ('Main', 40, 'The large area beside me is the thumbnail browser.'),
  ('Main', 41, 'Every file of the tab appears there as a small picture. Click on one to open it, or rest the mouse pointer on it to see its name, size and date.'),
  ('Main', 42, 'Click on a thumbnail with the right mouse button for a menu that lets you rename, copy, move, delete, print or e-mail the file.'),
  ('Main', 43, 'When a folder holds more files than fit on one page, the scroll bar, the mouse wheel and the Page Up and Page Down keys turn the pages.'),
  ('Main', 50, 'Above the thumbnails, the name of the current folder or album is shown.'),
  ('Main', 51, 'Press the Home key to come back to your default folder at any time.'),
  ('Main', 60, 'Now let us look at the command bar. Each of its buttons starts one function of the program.'),
  ('Main', 61, 'Over there, the slider sets the volume of your computer, and the speaker button switches the sound off and on again.'),
  ('Main', 62, 'Other buttons choose a folder, refresh the thumbnails, sort and select the files you want to see, and open the options.'),
  ('Main', 63, 'The search button looks through your disks for media files, and shows what it finds in a list of its own.'),
  ('Main', 70, 'The album button lets you gather files from many folders into an album, and show that album as if it were a single folder.'),
  ('Main', 71, 'Your albums are kept safely in the program''s data file, together with the captions you write under your pictures.'),
  ('Main', 72, 'From the command bar you can also play CDs, DVDs and music, set a sleep timer or an alarm, and open the paint program.'),
  ('Main', 80, 'Every kind of media opens in a viewer of its own.'),
  ('Main', 81, 'The picture viewer fits a picture to its window. Page Up and Page Down walk through the pictures of the tab, and you can write a caption beneath each one.'),
  ('Main', 82, 'From the picture viewer you can also start a slideshow, print the picture, copy it to the clipboard or send it by e-mail.'),
  ('Main', 83, 'The audio and video viewers play your files with their own controls, and show the tags of your MP3 songs.'),
  ('Main', 84, 'The magnifier enlarges any part of the screen, and when you need a break, Target Practice lets you shoot up the current picture.'),
  ('Main', 90, 'That is the end of our tour. Press the F1 key whenever you would like to see it again.'),
  ('Main', 91, 'Enjoy your media with Vistrel!');
