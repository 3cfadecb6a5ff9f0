#pragma once
// The audio CD device: every command is one line of text, and every reply
// is "Success" or an error text, as with the players' media commands. It
// knows one device type, "cdaudio"; the disc is read through the platform's
// CD drives, and a CUE sheet of a disc image is a drive like any other.
//
// Commands understood (words compare without regard to case; the alias is
// any word without blanks; "wait", "shareable" and "notify" are accepted
// anywhere after the alias and change nothing, since every command here
// finishes before it answers):
//   open "DEVICE" type cdaudio alias ALIAS
//   close ALIAS | close all
//   set ALIAS door open | set ALIAS door closed
//   set ALIAS time format tmsf | msf | milliseconds | ms
//   status ALIAS number of tracks    (reply: a number)
//   status ALIAS length              (reply: the disc's playing time)
//   status ALIAS length track N      (reply: the playing time of track N)
//   status ALIAS mode                (reply: playing, stopped or not ready)
//   status ALIAS media present       (reply: true or false)
//   info ALIAS identity              (reply: the disc's identity)
//
// Opening needs a device, not a disc: a drive with its tray open opens, so
// that the tray can then be closed. The questions about the disc fail with
// the "no disc" text while the drive holds none.
//
// A disc image has no tray: "door open" and "door closed" on an image change
// nothing and answer the "no door" error text. The callers that open and
// close the tray ignore the reply, so an image simply stays in place.
//
// The disc identity is "XXXXXXXX-T-L": the disc id of the table of contents
// in eight lower-case hex digits (the usual CD lookup id: the digit sums of
// the track starts in seconds, the playing time in seconds and the number of
// tracks), T the number of tracks and L the lead-out sector, both in
// decimal. It depends only on the tracks' positions, so the same disc has
// the same identity in every drive and at every insertion, and two discs
// that share a lookup id by chance still differ by their length in sectors.
// It holds only hex digits, decimal digits and hyphens, and never more than
// 30 characters.

#include <QString>

#include "platform/CdDevices.h"

// The codes of the replies; 0 is success. Each has its text, CdErrorText.
enum CdReplyCode : int {
  CdSuccess = 0,
  CdNotOpen = 1,
  CdUnknownCommand = 2,
  CdUnknownWord = 3,
  CdMissingParameter = 4,
  CdUnknownDevice = 5,
  CdDeviceMissing = 6,
  CdAliasInUse = 7,
  CdNoDisc = 8,
  CdNoDoor = 9,
  CdTrayFailed = 10,
  CdOutOfRange = 11,
};

// Sends one command; the reply code is the result, and `returned` takes what
// the command gives back (a number, a word, the identity), empty for the
// others.
int CdCommand(const QString& command, QString* returned = nullptr);
// The same, answering with the reply word: "Success" or the error text.
QString CdSendString(const QString& command, QString* returned = nullptr);
// "Success" for 0, else the error text of the code (at most 128 characters).
QString CdErrorText(int code);

// A playing time of `sectors` (75 to the second) in the time format of the
// drive: "mm:ss:ff" for msf and tmsf, whole milliseconds for milliseconds.
QString CdLengthText(int sectors, const QString& timeFormat);

// Closes every open alias.
void CdCloseAll();

// The identity of the disc described, as "info ALIAS identity" answers it;
// empty for a disc that is not ready.
QString CdIdentityOf(const platform::CdDisc& disc);
// The usual CD lookup id of the disc's table of contents.
quint32 CdLookupId(const platform::CdDisc& disc);
