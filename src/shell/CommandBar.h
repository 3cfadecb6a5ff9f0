#pragma once
// The bar across the top of the main window. For now it holds the name of
// the folder or album on display; its buttons come later.

#include <QString>
#include <QWidget>

class QLabel;

class CommandBar : public QWidget {
  Q_OBJECT
 public:
  explicit CommandBar(QWidget* parent = nullptr);

  // The folder or album on display, followed by a blank and shortened to
  // the label's width.
  QLabel* DirectoryName;

  void ShowDirectoryName(const QString& folderOrAlbum);
  // The caption as it stands, without the blank: the folder the listing
  // reads file dates and lengths from.
  QString DirectoryCaption() const;
  // Makes the buttons and labels visible once the browser has its lists.
  void ShowControls();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void FitDirectoryName();
  QString fullName_;
};
