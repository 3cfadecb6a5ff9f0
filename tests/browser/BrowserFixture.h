#pragma once
// What the browser's window tests share: folders of made-up media, a browser
// of a known size opened on a folder, and readings of its cells.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QTest>

#include "browser/CdTitles.h"
#include "browser/ThumbnailLoader.h"
#include "browser/Thumbnails.h"
#include "catalogue/MediaTypes.h"
#include "controls/NewTabControl.h"
#include "controls/NumberBox.h"
#include "core/Settings.h"
#include "support/TestEnv.h"

namespace browsertest {

inline QString MakeFolderWith(const QString& name, const QStringList& files) {
  const QString folder = testenv::Root() + "/" + name;
  QDir().mkpath(folder);
  for (const QString& file : files) testenv::MakeFile(folder + "/" + file, QByteArray());
  return folder;
}

// A picture of the given size with a diagonal, saved in the format of its
// extension.
inline void MakePicture(const QString& path, int width, int height,
                        const QColor& colour = QColor(40, 120, 200)) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(colour);
  QPainter painter(&image);
  painter.setPen(QPen(Qt::yellow, 3));
  painter.drawLine(0, 0, width, height);
  painter.end();
  ASSERT_TRUE(image.save(path)) << path.toStdString();
}

// count pictures p00.png, p01.png, ... (40 x 30 unless told) in a new folder.
inline QString MakePictureFolder(const QString& name, int count, int width = 40, int height = 30,
                                 const QString& extension = "png") {
  const QString folder = testenv::Root() + "/" + name;
  QDir().mkpath(folder);
  for (int i = 0; i < count; ++i)
    MakePicture(QString("%1/p%2.%3").arg(folder).arg(i, 2, 10, QChar('0')).arg(extension), width, height);
  return folder;
}

// count names from a pattern with a two-digit number: "v%1.avi" gives
// v00.avi, v01.avi, ...
inline QStringList Numbered(const QString& pattern, int count, int first = 0) {
  QStringList names;
  for (int i = first; i < first + count; ++i) names << pattern.arg(i, 2, 10, QChar('0'));
  return names;
}

// Types a value into a number box of the bottom strip and presses Enter.
inline void EnterNumber(NumberBox* box, const QString& value) {
  QLineEdit* text = box->txtNumber();
  text->setFocus();
  QCoreApplication::processEvents();
  text->setText(value);
  QTest::keyClick(text, Qt::Key_Return);
}

inline QStringList Captions(const Thumbnails& window) {
  QStringList captions;
  for (int tab = 1; tab <= 4; ++tab) captions << window.ThumbnailTabs->Caption(tab);
  return captions;
}

inline void WaitForPage(Thumbnails& window) {
  QDeadlineTimer deadline(20000);
  while (window.PageFilling() && !deadline.hasExpired())
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
  QCoreApplication::processEvents();
}

inline int VisibleCells(const Thumbnails& window, int tab) {
  int visible = 0;
  for (int cell = 0; cell < window.CellCount(tab); ++cell)
    if (!window.Cell(tab, cell)->isHidden()) ++visible;
  return visible;
}

inline QStringList PageNames(const Thumbnails& window, int tab) {
  QStringList names;
  for (int cell = 0; cell < window.CellCount(tab); ++cell)
    if (!window.Name(tab, cell)->isHidden()) names << window.Name(tab, cell)->text();
  return names;
}

// The first lines of a text of "\r\n"-separated lines.
inline QStringList FirstLines(const QString& text, int count) {
  return text.split("\r\n").mid(0, count);
}

class BrowserTest : public testing::Test {
 protected:
  void SetUp() override {
    FillMediaTables();
    ThumbnailLoader::ResetDecodeCount();
  }
  void TearDown() override { SetCdTitleLookup({}); }

  // A browser of 600 x 400 pixels: five picture columns of three rows at the
  // inch size, and fifteen rows of names in each of the two columns.
  void Open(Thumbnails& window, const QString& folder) {
    settings::SaveSetting("DefaultFolder", folder);
    window.resize(600, 400);
    window.show();
    window.Form_Load();
    WaitForPage(window);
  }
};

}  // namespace browsertest
