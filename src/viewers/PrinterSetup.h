#pragma once
// The window " Printer Setup": prints the picture named by CurrentMediaFile
// at its natural size, on the printer chosen in Combo1, in as many copies
// as NumberBox1 says and in the orientation chosen. It is shown modal by
// the picture viewer and the browser's context menu, which have made sure
// that the picture can be decoded. OK prints and closes; Cancel closes.
//
// Without any printer the list stays empty and OK closes the window
// without printing: there is nothing to print on, and nothing to say.

#include <QDialog>
#include <QImage>
#include <QRect>
#include <array>

#include "core/WindowRoles.h"

class NumberBox;
class QComboBox;
class QLabel;
class QPrinter;
class QPushButton;
class TransRadio;
class UpDown;

class PrinterSetup : public QDialog {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::PrinterSetup;
  // The most copies one job makes: enough for any use at home, and no
  // more than the two places of the copies box hold.
  static constexpr int MaxCopies = 99;

  explicit PrinterSetup(QWidget* parent = nullptr);

  QComboBox* Combo1;
  NumberBox* NumberBox1;
  UpDown* UpDown1;
  // "Portrait" and "Landscape".
  std::array<TransRadio*, 2> OrientationOption;
  QPushButton* OKButton;
  QPushButton* exitButton;

  // The copies asked for: the box's whole number, 0 (or nothing) being 1.
  int Copies() const;
  // 1 portrait, 2 landscape.
  int Orientation() const;

 public slots:
  void OKButton_Click();
  void exitButton_Click();
  void NumberBox1_Change();
  void NumberBox1_KeyDown(int keyCode, int shift);
  void UpDown1_Change();

 protected:
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void FillPrinters();
  void PlaceControls();
  QLabel* AddLabel(const QString& name, const QString& text, int left, int top, int width);
};

// Where the picture of a print job stands on its pages: its left and top
// (60 and 180 twips into the printable area) and its natural size, in the
// printer's device units.
QRect PrintedPictureRect(const QImage& picture, int dpiX, int dpiY);

// Prints the picture on the printer in the given number of copies, one to a
// page, each where PrintedPictureRect puts it and never scaled to the page
// (a picture larger than the page is cut off at its edge). Orientation 2 is
// landscape, any other portrait; the printer is set back to portrait after
// the job, so that the next job starts upright. Gives the rectangle the
// picture was drawn into on each page, or an empty one when nothing was
// printed (no picture, no copies, or a printer that would not start).
QRect PrintPictureCopies(QPrinter& printer, const QImage& picture, int copies, int orientation);
