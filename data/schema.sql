-- The tables of the data file. Identities are assigned by the file and never
-- given out twice; yes/no fields hold 0 or 1.

CREATE TABLE PlaylistHeader (
  PlaylistID INTEGER PRIMARY KEY AUTOINCREMENT,
  PlaylistName TEXT NOT NULL DEFAULT '',
  PlaylistType TEXT NOT NULL DEFAULT 'B' CHECK (length(PlaylistType) <= 1),
  PlaylistSequence SMALLINT NOT NULL DEFAULT 0,
  PlaylistPreventDuplicates INTEGER NOT NULL DEFAULT 0 CHECK (PlaylistPreventDuplicates IN (0, 1))
);

CREATE TABLE PlaylistFiles (
  PlaylistID INTEGER NOT NULL,
  PlaylistRow SMALLINT NOT NULL DEFAULT 0,
  PlaylistSelected INTEGER NOT NULL DEFAULT 0 CHECK (PlaylistSelected IN (0, 1)),
  PlaylistFile TEXT NOT NULL DEFAULT ''
);
CREATE INDEX PlaylistFilesByAlbum ON PlaylistFiles (PlaylistID);

CREATE TABLE FileCaptions (
  FileName TEXT NOT NULL DEFAULT '',
  FileCaption TEXT NOT NULL DEFAULT ''
);
CREATE INDEX FileCaptionsByName ON FileCaptions (FileName);

CREATE TABLE CD_Titles (
  MediaID INTEGER PRIMARY KEY AUTOINCREMENT,
  MediaNumber TEXT NOT NULL DEFAULT '',
  MediaDownloaded INTEGER NOT NULL DEFAULT 0 CHECK (MediaDownloaded IN (0, 1)),
  MediaTitle TEXT NOT NULL DEFAULT '',
  MediaArtist TEXT NOT NULL DEFAULT '',
  MediaStyle TEXT NOT NULL DEFAULT '',
  MediaYear SMALLINT NOT NULL DEFAULT 0,
  MediaTracks SMALLINT NOT NULL DEFAULT 0,
  MediaSequence SMALLINT NOT NULL DEFAULT 0
);
CREATE INDEX CD_TitlesByNumber ON CD_Titles (MediaNumber);

CREATE TABLE CD_Songs (
  MediaID INTEGER NOT NULL,
  SongTrack SMALLINT NOT NULL DEFAULT 0,
  SongNumber TEXT NOT NULL DEFAULT '',
  SongSelected INTEGER NOT NULL DEFAULT 0 CHECK (SongSelected IN (0, 1)),
  SongTitle TEXT NOT NULL DEFAULT ''
);
CREATE INDEX CD_SongsByDisc ON CD_Songs (MediaID, SongTrack);

CREATE TABLE HelpFile (
  HelpID TEXT NOT NULL DEFAULT '',
  HelpLine INTEGER NOT NULL DEFAULT 0,
  HelpText TEXT NOT NULL DEFAULT ''
);
CREATE INDEX HelpFileByLine ON HelpFile (HelpID, HelpLine);
