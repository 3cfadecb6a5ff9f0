#pragma once
// The tag editor " MP3 Song Title": title, artist, album, style (genre),
// year and track of one MP3 file, as the tail record and the frames in the
// file's head give them (Mp3Tags.h). The caller gives the file with
// GetData, places the window and shows it; the window reads the file when
// it becomes active. OK writes the tail record (and blanks the frames of
// fields the user emptied) and closes; Cancel, Esc and clicking elsewhere
// close it without a change. Nothing is said when the file cannot be
// written.

#include <QString>
#include <QWidget>

#include "cd/Mp3Tags.h"
#include "core/WindowRoles.h"
#include "core/WindowShow.h"

class NumberBox;
class QComboBox;
class QLineEdit;
class QPushButton;

class ChangeMP3 : public QWidget, public FileWindow {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::ChangeMP3;

  explicit ChangeMP3(QWidget* parent = nullptr);

  // The file to work on; read when the window becomes active.
  void GetData(const QString& path) override;
  QString TagFile() const { return tagFile_; }
  // What was read from the file, and the frames' old values.
  const TagFormValues& Values() const { return values_; }

  QLineEdit* TitleLabel;
  QLineEdit* AuthorLabel;
  QLineEdit* AlbumLabel;
  NumberBox* YearLabel;
  NumberBox* TrackLabel;
  // The genre names in table order; no entry (-1) for none.
  QComboBox* CategoryLabel;
  QPushButton* OKButton;
  QPushButton* cancelButton;

 public slots:
  // Reads the file's tags into the boxes.
  void Form_Activate();
  // Saves what the boxes hold and closes.
  void OKButton_Click();
  void cancelButton_Click();

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void PlaceControls();
  void Unload();

  QString tagFile_;
  TagFormValues values_;
  bool activated_ = false;
  bool closed_ = false;
};
