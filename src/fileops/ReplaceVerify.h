#pragma once
// The window that asks, before a copy or move overwrites a file, whether
// to replace it: the two files ReplaceSource and ReplaceTarget side by
// side, each with its picture (or the audio or video icon), name, size,
// date and time. It answers in ReplaceAnswer: 6 "&Yes", 7 "&No", 2 Esc.

#include <array>

#include "fileops/VerifyWindow.h"

class Label3D;
class NewImage;
class QFrame;
class QLabel;
class QPushButton;

class ReplaceVerify : public VerifyWindow {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::ReplaceVerify;
  // Form_Load: fills the source side, then the target side, from the
  // program-wide ReplaceSource and ReplaceTarget.
  explicit ReplaceVerify(QWidget* parent = nullptr);

  QLabel* Label1;
  QLabel* MsgText;
  Label3D* Label3D1;
  Label3D* Label3D2;
  // Per side: the frame the image lies in, the image, and the texts.
  QFrame* ImageArea1;
  QFrame* ImageArea2;
  NewImage* Image1;
  NewImage* Image2;
  QLabel *Name1, *Name2, *Size1, *Size2, *Date1, *Date2, *Time1, *Time2;
  // "&Yes" and "&No".
  std::array<QPushButton*, 2> MsgButton;

  // The full name a side shows (its label may shorten a long one).
  QString ShownName(int side) const;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  struct Side {
    QFrame* Area;
    NewImage* Image;
    QLabel *Name, *Size, *Date, *Time;
  };
  Side MakeSide(int side, int left);
  void FillSide(const Side& side, const QString& path);

  std::array<QString, 2> names_;
};

// Shows ReplaceVerify modal for ReplaceSource and ReplaceTarget and returns
// once it has gone; the answer is in ReplaceAnswer.
void ShowReplaceVerify();
