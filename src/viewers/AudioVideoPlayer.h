#pragma once
// AudioVideoPlayer: the one control that plays a media file, over the media
// command interpreter (Mci.h). It keeps a small state machine whose state
// is the word in its status strip, shows the elapsed and total time, draws
// the film into FrameVideo, and in audio mode shows the file's tags. Its
// owner sets FileName (which loads the file), calls Play, and listens to
// the five signals.
//
// Sizes are kept in twips: the control's own (WidthTwips, HeightTwips) and
// those of its parts; the widgets follow at 15 twips to a pixel.

#include <QFrame>
#include <QLabel>
#include <QRect>
#include <QTimer>
#include <QVariantMap>
#include <QWidget>
#include <array>

class VideoFrame;

// Seconds as the player shows them: "01:15" under an hour, "1:00:05" from
// an hour on.
QString FormatTime(qint64 seconds);

class AudioVideoPlayer : public QWidget {
  Q_OBJECT
 public:
  explicit AudioVideoPlayer(QWidget* parent = nullptr);
  ~AudioVideoPlayer() override;

  // ---- Methods ----
  void Refresh();
  void SetSkipClose(bool on);
  void Play();
  void ShowStart();
  void Pause();
  void SkipForward();
  void SkipBackward();
  void StopPlay();
  void VidSize(int widthTwips, int heightTwips);
  void ClosePlayer();
  void RestartVideo();

  // ---- Properties ----
  QString FileName() const;
  void SetFileName(const QString& name);  // loads the file at once
  QString Title() const;
  QString Artist() const;
  QString Length() const;
  int PlayerType() const;
  void SetPlayerType(int type);
  int CurrentPosition() const;  // seconds
  void SetCurrentPosition(int seconds);
  void SetCurrentPosition2(int seconds);
  int FastForwardBySec() const;
  void SetFastForwardBySec(int seconds);
  int FastRewindBySec() const;
  void SetFastRewindBySec(int seconds);
  bool Repeat() const;
  void SetRepeat(bool on);
  double ChildNo() const;
  void SetChildNo(double number);
  int MinimumWidth() const;
  void SetMinimumWidth(int twips);
  int PlayState() const;  // 0 stopped, 1 paused, 2 playing, 3 other
  int Duration() const;   // seconds
  QString CurrentTime() const;
  int MovieSizer() const;
  void SetMovieSizer(int sizer);
  void SetScrolling(bool on);
  QString LastResult() const;
  // Width and height of the control in twips (its owner sizes and places
  // it in twips).
  int WidthTwips() const;
  int HeightTwips() const;

  // What the device reported at the load: units per second of playing
  // time, the length in those units, the picture's natural size (-1 when
  // none), and whether the file is loaded.
  int FramesPerSecond() const { return framesPerSecond_; }
  qint64 LengthUnits() const { return lengthUnits_; }
  int VideoWidth() const { return videoWidth_; }
  int VideoHeight() const { return videoHeight_; }
  bool FileLoaded() const { return fileLoaded_; }
  // The device the file was opened on ("MPEGVideo", "AviVideo",
  // "sequencer").
  QString DeviceType() const { return deviceType_; }

  // The persisted properties under their keys ("FileName",
  // "CurrentPosition", "ChildNo", "MovieSizer", "MinimumWidth", "Repeat",
  // "FastForwardBySec", "FastRewindBySec", "Type"); reading takes each key
  // that is there, and a file name loads the file.
  QVariantMap WriteProperties() const;
  void ReadProperties(const QVariantMap& properties);

  // Parts the owner and tests look at.
  VideoFrame* FrameVideo;
  QFrame* StatusDisplay;
  QLabel* Status;
  QLabel* TimeLabel;
  QLabel* cTimeLabel;
  QLabel* tTimeLabel;
  QLabel* Label1;
  QLabel* Label2;
  QLabel* Label3;
  QLabel* Label4;
  QLabel* Label6;
  QLabel* TitleLabel;
  QLabel* AuthorLabel;
  QLabel* CategoryLabel;
  QLabel* AlbumLabel;
  QLabel* YearLabel;
  QLabel* TrackLabel;
  QFrame* SeparatorLine;
  // Line1 to Line10 of the audio panel's decoration.
  std::array<QFrame*, 10> Line;
  QTimer TimerMisc;
  QTimer TimerAtEndFile;

 signals:
  void PlayStateChange(int state);
  void OnPlayerError(int number, const QString& text);
  void OnSelfResize(int widthTwips, int heightTwips);
  void OnPlayStart();
  void OnPlayFinish();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  // The fields that the tag reader gives the audio panel; empty for a field
  // the file does not have.
  struct PanelTags {
    QString Title, Artist, Style, Album, Year, Track;
  };

  void LoadFile();
  void LoadFailed();
  void TimerMisc_Timer();
  void TimerAtEndFile_Timer();
  // The end of the file as the poll sees it: position at or past the
  // length, neither of them unknown.
  bool MciAtEnd();
  void Skip(bool forward);
  // Seeks to `position_` as a write of CurrentPosition does.
  void SeekToPosition();
  void RaisePlayerError();
  QString Alias() const;
  void SetStatus(const QString& word);
  void ReadTags();
  void ShowTags(const PanelTags& tags);

  // Layout (AudioVideoPlayerLayout.cpp), all in twips.
  void SizeVideo();
  void ShowPanels();
  void ArrangeDisplay();
  // Shows cTimeLabel and tTimeLabel in TimeLabel, right-aligned.
  void RefreshTimeLabel();
  // Right-aligns TimeLabel in the strip.
  void AlignTimeLabel();
  void SetControlSize(int widthTwips, int heightTwips);
  void PlaceFrame(const QRect& twips);
  void PlaceStrip(const QRect& twips);
  void SetTagsVisible(bool on);
  int StripHeight() const { return strip_.height(); }

  QString fileName_;
  int videoWidth_ = -1, videoHeight_ = -1;
  int framesPerSecond_ = 0;
  qint64 position_ = 0;
  qint64 lengthUnits_ = 0;
  int durationSeconds_ = 0;
  int minimumWidth_ = 3000;
  QString deviceType_;
  QString lastResult_;
  QString playMode_;
  int fastForwardBySec_ = 3, fastRewindBySec_ = 3;
  bool fileLoaded_ = false, repeat_ = false, sizing_ = false, playStarted_ = false;
  bool scrolling_ = false, skipClose_ = false;
  int movieSizer_ = 0;
  int playerType_ = 1;
  double childNo_ = 0;

  // The control, FrameVideo and StatusDisplay in twips.
  int widthTwips_ = 0, heightTwips_ = 0;
  QRect frame_;
  QRect strip_;
};
