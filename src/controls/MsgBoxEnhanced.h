#pragma once
// The program's message box: the program keeps one object of it, which asks
// every question and reports every failure. It takes the style word of the
// usual message box and gives its result codes, but shows a window of its
// own, the form MessageBox, dressed by the properties below. The properties
// stay as set between calls.

#include <QPixmap>
#include <QPointer>
#include <QString>
#include <QtGlobal>
#include <memory>

#include "controls/SystemColours.h"

class MessageBox;

class MsgBoxEnhanced {
 public:
  MsgBoxEnhanced();
  ~MsgBoxEnhanced();
  MsgBoxEnhanced(const MsgBoxEnhanced&) = delete;
  MsgBoxEnhanced& operator=(const MsgBoxEnhanced&) = delete;

  // Shows the prompt and waits for the answer: 1 "&OK", 2 "Cancel" (also
  // Escape and the close box), 3 "&Abort", 4 "&Retry", 5 "&Ignore",
  // 6 "&Yes", 7 "&No"; 0 when the count-down ran out, when the box could not
  // be shown, or at once for a modeless box.
  qint16 MsgBox(const QString& Prompt, qint16 Buttons = 0, const QString& Title = QString());

  // Colours: -1 puts back the default.
  OleColor BackColorBody() const { return BackColorBody_; }
  void SetBackColorBody(OleColor value);
  OleColor BackColorButtons() const { return BackColorButtons_; }
  void SetBackColorButtons(OleColor value);
  OleColor BackColorHeading() const { return BackColorHeading_; }
  void SetBackColorHeading(OleColor value);
  OleColor ForeColorBody() const { return ForeColorBody_; }
  void SetForeColorBody(OleColor value);
  OleColor ForeColorHeading() const { return ForeColorHeading_; }
  void SetForeColorHeading(OleColor value);

  bool GradientPaint() const { return GradientPaint_; }
  void SetGradientPaint(bool value) { GradientPaint_ = value; }
  // Kept with 5 and 6, 7 and 8, ... 15 and 16 exchanged, and read back so.
  qint16 GradientDirection() const { return GradientDirection_; }
  void SetGradientDirection(int value);
  int HeadingType() const { return HeadingType_; }
  void SetHeadingType(int value);
  bool SolidColorHeading() const { return SolidColorHeading_; }
  void SetSolidColorHeading(bool value) { SolidColorHeading_ = value; }
  // 0 left, 1 right, 2 centre.
  int TextAlignment() const { return TextAlignment_; }
  void SetTextAlignment(int value);
  bool Moveable() const { return Moveable_; }
  void SetMoveable(bool value) { Moveable_ = value; }
  bool KeepOnTop() const { return KeepOnTop_; }
  void SetKeepOnTop(bool value) { KeepOnTop_ = value; }
  bool Modal() const { return Modal_; }
  void SetModal(bool value) { Modal_ = value; }
  int TimerSeconds() const { return TimerSeconds_; }
  void SetTimerSeconds(int value);
  bool SoundBeep() const { return SoundBeep_; }
  void SetSoundBeep(bool value) { SoundBeep_ = value; }
  bool ControlBox() const { return ControlBox_; }
  void SetControlBox(bool value) { ControlBox_ = value; }
  // 0 manual (Top and Left), 1 centred on the active window, 2 on the screen.
  int StartUpPosition() const { return StartUpPosition_; }
  void SetStartUpPosition(int value);
  qint32 Top() const { return Top_; }
  void SetTop(qint32 value);
  qint32 Left() const { return Left_; }
  void SetLeft(qint32 value);
  QString DefaultTitle() const { return DefaultTitle_; }
  void SetDefaultTitle(const QString& value) { DefaultTitle_ = value; }

  // State shared with the form while it is up.
  qint16 Result() const { return Result_; }
  void SetResult(qint16 value) { Result_ = value; }
  const QPixmap& IconPicture() const { return IconPicture_; }
  int IconIndex() const { return IconIndex_; }

  // The form while it is loaded, else null. Tests answer the box through it.
  MessageBox* Form() const;

 private:
  OleColor BackColorBody_ = SysColor::ButtonFace;
  OleColor BackColorButtons_ = SysColor::ButtonFace;
  OleColor BackColorHeading_ = SysColor::ActiveCaption;
  OleColor ForeColorBody_ = SysColor::ButtonText;
  OleColor ForeColorHeading_ = SysColor::HighlightText;
  bool GradientPaint_ = false;
  qint16 GradientDirection_ = 1;
  int HeadingType_ = 0;
  bool SolidColorHeading_ = false;
  int TextAlignment_ = 0;
  bool Moveable_ = false;
  bool KeepOnTop_ = true;
  bool Modal_ = true;
  int TimerSeconds_ = 0;
  bool SoundBeep_ = true;
  bool ControlBox_ = true;
  int StartUpPosition_ = 2;
  qint32 Top_ = 0;
  qint32 Left_ = 0;
  QString DefaultTitle_;

  int IconSize_ = 0;  // twips, square
  qint16 Result_ = 0;
  QPixmap IconPicture_;
  int IconIndex_ = -1;
  QPointer<MessageBox> Form_;
  bool ShowingModal_ = false;
  // Cleared when the object goes, so that a modal show that it ends knows
  // not to touch it any more.
  std::shared_ptr<bool> Alive_ = std::make_shared<bool>(true);
};
