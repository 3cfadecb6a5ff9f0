-- The guided tour: what the tutorial character says, line by line, in the
-- order of HelpLine. Some line numbers also move him or make him point:
-- 20 to 35 over the left part of the command bar, 40 to 51 beside the
-- thumbnails, 60 to 71 over the right end of the command bar, 80 in the
-- middle of the window, 90 back where he started. Any other number is only
-- spoken.

INSERT INTO HelpFile (HelpID, HelpLine, HelpText) VALUES
  ('Main', 10, 'Vistrel shows the pictures, videos, audio files and documents of a folder as thumbnails, so that you can see at a glance what it holds.'),
  ('Main', 11, 'Let me show you around the main window.'),
  ('Main', 20, 'Up here is the command bar. The name of the folder or album you are looking at is written at its top, and each of its buttons starts one function of the program.'),
  ('Main', 25, 'The folder button beside the name lets you choose another folder, and the refresh button reads the folder again.'),
  ('Main', 30, 'Further along, buttons search your disks for media files, sort and select the files you want to see, set a sleep timer or an alarm, open the paint program, the magnifier and the options.'),
  ('Main', 35, 'The first buttons on the left play your CDs, DVDs and music, and open and close the tray of your CD drive.'),
  ('Main', 40, 'The large area beside me is the thumbnail browser.'),
  ('Main', 41, 'Every file of the tab appears there as a small picture. Click on one to open it, or rest the mouse pointer on it to see its name, size and date.'),
  ('Main', 42, 'Click on a thumbnail with the right mouse button for a menu that lets you rename, copy, move, delete, print or e-mail the file.'),
  ('Main', 43, 'When a folder holds more files than fit on one page, the scroll bar, the mouse wheel and the Page Up and Page Down keys turn the pages.'),
  ('Main', 50, 'Up in the command bar, the name of the current folder or album is shown.'),
  ('Main', 51, 'Press the Home key to come back to your default folder at any time.'),
  ('Main', 60, 'Here, at the right end of the command bar, the slider sets the volume of your computer, and the speaker button switches the sound off and on again.'),
  ('Main', 61, 'The number to my right tells you the volume in per cent. Back along the bar, the last buttons open the sound settings of your computer, tell you about the program, and start this tour again.'),
  ('Main', 62, 'The album button lets you gather files from many folders into an album, and show that album as if it were a single folder.'),
  ('Main', 63, 'Your albums are kept safely in the program''s data file, together with the captions you write under your pictures.'),
  ('Main', 70, 'Down at the bottom of the browser are the four tabs: Pictures, Videos, Audios and Documents. Each lists only the files of its own kind.'),
  ('Main', 71, 'Click on a tab to see the other kinds of media in the same folder or album.'),
  ('Main', 72, 'When Vistrel renames or moves a file, its caption and its place in your albums go with it.'),
  ('Main', 80, 'Every kind of media opens in a viewer of its own.'),
  ('Main', 81, 'The picture viewer fits a picture to its window. Page Up and Page Down walk through the pictures of the tab, and you can write a caption beneath each one.'),
  ('Main', 82, 'From the picture viewer you can also start a slideshow, print the picture, copy it to the clipboard or send it by e-mail.'),
  ('Main', 83, 'The audio and video viewers play your files with their own controls, and show the tags of your MP3 songs.'),
  ('Main', 84, 'The magnifier enlarges any part of the screen, and when you need a break, Target Practice lets you shoot up the current picture.'),
  ('Main', 90, 'That is the end of our tour. Press the F1 key whenever you would like to see it again.'),
  ('Main', 91, 'Enjoy your media with Vistrel!');
