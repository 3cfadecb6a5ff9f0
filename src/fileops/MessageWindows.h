#pragma once
// The small windows that say the program is busy: CopyMessage ("Updating
// List"), DeleteMessage ("Deleting File") and CleaningMessage ("Clearing
// Browser History"). Each paints the program's white gradient with its one
// line and stands in the middle of the browser. And Background, a plain
// window that covers the main window's work area (under a slideshow), whose
// keys go to the keys all windows share.

#include <QWidget>

#include "core/WindowRoles.h"

class SmallMessage : public QWidget {
  Q_OBJECT
 public:
  SmallMessage(WindowId id, const QString& text, QWidget* parent);
  QString Text() const { return text_; }
  // Stands in the middle of the browser: left = (its width - own width) / 2,
  // top likewise; without a browser, in the middle of the main window or
  // the screen.
  void Centre();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  QString text_;
};

class CopyMessage : public SmallMessage {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::CopyMessage;
  explicit CopyMessage(QWidget* parent = nullptr);
};

class DeleteMessage : public SmallMessage {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::DeleteMessage;
  explicit DeleteMessage(QWidget* parent = nullptr);
};

class CleaningMessage : public SmallMessage {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::CleaningMessage;
  explicit CleaningMessage(QWidget* parent = nullptr);
};

// Shows the message modeless (loading it when it is not loaded), centred
// on the browser and painted at once; Hide... unloads it.
void ShowCopyMessage();
void HideCopyMessage();
void ShowDeleteMessage();
void HideDeleteMessage();
void ShowCleaningMessage();
void HideCleaningMessage();
// Paints a shown message again now.
void RefreshMessage(WindowId id);

class Background : public QWidget {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::Background;
  explicit Background(QWidget* parent = nullptr);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
};

// Loads Background, places it at the top left of the main window's work
// area with the given size (twips) and shows it; HideBackground unloads it.
Background* ShowBackground(int widthTwips, int heightTwips);
void HideBackground();
