#pragma once
// What the audio and the video viewer are alike: a player control over the
// current file of their tab's list, the position slider, the transport
// buttons, continuous play, the walk through the list over removed
// entries, and the file operations on the file that plays. The audio
// viewer shows the file's tags; the video viewer shows the film and
// follows its size.

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include "core/WindowShow.h"

class AudioVideoPlayer;
class BalloonHelp;
class Button;
class NewSlider;
class QLabel;
class TransCheck;

class PlayerViewer : public QWidget, public MediaViewer {
  Q_OBJECT
 public:
  // What sets the two viewers apart.
  struct Kind {
    int Tab;
    const char* MediaType;       // "A" or "V"
    const char* Title;           // the window's title
    const char* ContinuousKey;   // the setting of continuous play
    const char* PlaylistWord;    // what the playlist sibling is started with
    const char* Noun;            // "audio" or "video", for the help texts
    int PlayerType;              // 0 audio, 1 video
    int SliderScale;             // slider units to the second
  };
  PlayerViewer(const Kind& kind, QWidget* parent = nullptr);
  ~PlayerViewer() override;

  // Loads and plays the entry at Index (or the pending file).
  void LoadMedia();
  void ResizeEverything();
  void ResetButtons();
  void LoadCurrentItem() override;
  bool Closing() const { return closing_; }

  // Fields of the window.
  qint32 Index = 0;
  qint32 Count = 0;
  QChar Direction = '+';
  bool SliderBusy = false;
  bool WindowSizing = false;
  bool ContinuousPlay = false;
  QString CurrentFile;
  QString Pending;
  int DescriptionWidth = 0;

  AudioVideoPlayer* Player;
  NewSlider* Slider1;
  TransCheck* Check1;
  QTimer Timer1;
  QLabel* DescriptionLabel;
  Button* firstButton;
  Button* previousButton;
  Button* nextButton;
  Button* lastButton;
  Button* playlistButton;
  Button* renameButton;
  Button* copyButton;
  Button* moveButton;
  Button* deleteButton;
  Button* emailButton;
  Button* propertiesButton;
  Button* tagButton;  // the audio viewer's only
  Button* playButton;
  Button* pauseButton;
  Button* stopButton;
  Button* restartButton;
  Button* endButton;
  Button* fbButton;
  Button* ffButton;

  // The buttons' routines.
  void firstButton_Click();
  void previousButton_Click();
  void nextButton_Click();
  void lastButton_Click();
  void playlistButton_Click();
  void renameButton_Click();
  void copyButton_Click();
  void moveButton_Click();
  void deleteButton_Click();
  void emailButton_Click();
  void propertiesButton_Click();
  void tagButton_Click();
  void playButton_Click();
  void pauseButton_Click();
  void stopButton_Click();
  void restartButton_Click();
  void endButton_Click();
  void fbButton_Click();
  void ffButton_Click();
  void Check1_Click();
  void Timer1_Timer();

  // A key of the window's table; false when it is not one of them.
  bool Form_KeyDown(int keyCode, int shift);
  bool Form_KeyUp(int keyCode, int shift);

 protected:
  // The player has finished the file (or could not open it).
  virtual void PlayFinished();
  // Before a file is loaded, and once its slider is set.
  virtual void BeforeLoad() {}
  // The window's size changed by the user (not by the program).
  virtual void UserResized() {}
  const Kind& KindOf() const { return kind_; }
  bool IsMaximised() const;
  bool IsMinimised() const;
  void CloseViewer();
  void LayOut();

  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

  static constexpr int PlayerTop = 1305;
  void Form_Load();

 private:
  void MakeControls();
  void Form_Activate();
  void FrameStateChanged(Qt::WindowStates was, Qt::WindowStates now);
  void ShowDescription();
  void StepTo(bool forward);
  void SetSlider(int value);
  void SeekToSlider();
  void Slider1_Change(int value);
  void Slider1_Scroll(int value);
  void Player_PlayStateChange(int state);
  void ReleaseFileForWriting();
  void TakeFileBackAfter(QWidget* window);
  void CopyOrMove(const QString& word);
  void RemoveCurrentFile(bool moved);
  bool EntryPasses() const;
  QString EntryPath(qint32 index) const;

  Kind kind_;
  QList<Button*> buttons_;
  BalloonHelp* balloons_;
  QString description_;
  // A tag or properties window is working on the file: coming back, the
  // file is loaded again and the remembered state restored.
  bool fileLent_ = false;
  int lentState_ = 0, lentSlider_ = 0;
  bool closing_ = false;
};

class SingleAudio : public PlayerViewer {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::SingleAudio;
  explicit SingleAudio(QWidget* parent = nullptr);
  void LoadAudio() { LoadMedia(); }
};

class SingleVideo : public PlayerViewer {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::SingleVideo;
  explicit SingleVideo(QWidget* parent = nullptr);
  void LoadVideo() { LoadMedia(); }

  QTimer ResizeTimer;

 protected:
  void PlayFinished() override;
  void BeforeLoad() override;
  void UserResized() override;

 private:
  void Player_OnSelfResize(int widthTwips, int heightTwips);
  void ResizeTimer_Timer();
};
