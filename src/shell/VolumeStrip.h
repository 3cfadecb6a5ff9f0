#pragma once
// The master volume at the right of the command bar's top row: the mute
// button, the slider and the volume in percent. Every 500 ms Timer1 looks
// at the system's mixer, so that changes made outside the program show.
//
// The look is taken on a worker thread over a connection of its own and
// shown back on the user-interface thread, one look at a time, so that a
// sound server that hangs never holds up the window. The slider's and the
// mute button's writes go straight over the mixer's connection: a request
// gives up after SoundServer::TimeOutMs, and a server that let one time out
// is left alone for a while, so a hung server costs the bar one such wait.

#include <QFutureWatcher>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <memory>

#include "system/MixerModule.h"

class Button;
class NewSlider;
class QLabel;

class VolumeStrip : public QWidget {
  Q_OBJECT
 public:
  explicit VolumeStrip(QWidget* bar);
  ~VolumeStrip() override;

  Button* muteButton = nullptr;
  NewSlider* Slider1 = nullptr;  // master volume, 0 to 100
  QLabel* Volume = nullptr;      // the volume as "40% "
  // The two pictures of muteButton: sound on, sound off. Never shown.
  QLabel* Picture1 = nullptr;
  QLabel* Picture2 = nullptr;
  QTimer Timer1;

  // Opens the mixer, shows its volume, takes a first look and starts Timer1.
  void Open();
  // Stops Timer1, forgets a look under way and closes the mixer.
  void Close();

  // Shows the percent and sets the master, compact disc and wave out
  // volumes to it; Timer1 starts again after it.
  void ChangeVolume(int percent);
  // Turns the mixer's mute over, showing the new state on the button.
  void FlipMute();
  // Asks for a look at the mixer. A look still under way is not doubled:
  // one more follows it once it is done.
  void Timer1_Timer();
  static QString VolumeText(int percent);

  // The strip's width on the top row, in twips.
  static int WidthTwips();
  // Places the strip with its left edge at `leftTwips` on the row at `topTwips`.
  void Place(int leftTwips, int topTwips);

 private:
  void StartLook();
  void ShowLook();
  void ShowMutePicture(bool muted);
  // Looks begun before the last change from here are not shown.
  void Forget() { ++generation_; }

  std::shared_ptr<MasterReader> reader_;
  QFutureWatcher<MasterReading> look_;
  bool looking_ = false;
  bool lookAgain_ = false;
  quint64 generation_ = 0;
  quint64 lookGeneration_ = 0;
};
