#include <gtest/gtest.h>

#include <QComboBox>
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPrinter>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include "controls/BalloonHelp.h"
#include "controls/NumberBox.h"
#include "controls/UpDown.h"
#include "core/AppState.h"
#include "core/Settings.h"
#include "core/WindowRegistry.h"
#include "support/TestEnv.h"
#include "viewers/Magnifier.h"
#include "viewers/PrinterSetup.h"

namespace {

// ---- The magnifier -----------------------------------------------------------

class MagnifierTest : public testing::Test {
 protected:
  void TearDown() override {
    Windows().Unload(WindowId::Magnifier);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  static Magnifier* Open() {
    auto* window = new Magnifier;
    window->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window));
    return window;
  }
};

TEST_F(MagnifierTest, ReopeningRestoresPlaceSizeAndFactor) {
  const QScreen* screen = QGuiApplication::primaryScreen();
  ASSERT_EQ(screen->geometry(), QRect(0, 0, 800, 800));
  ASSERT_EQ(screen->availableGeometry(), QRect(0, 0, 800, 800));

  // The first time: the smallest size, centred across the screen and just
  // above the bottom of the work area, at factor 2, with its help.
  Magnifier* window = Open();
  EXPECT_EQ(window->geometry(), QRect(280, 650, 240, 145));
  EXPECT_EQ(window->hscZoom->value(), 2);
  EXPECT_EQ(window->lblZoom->text(), "2 X");
  EXPECT_TRUE(window->tmrRefresh->isActive());
  EXPECT_EQ(window->Balloons().TextOf(window->hscZoom),
            "Use this slider control to change\r\nthe amount of magnification used");

  window->setGeometry(150, 90, 300, 200);
  window->hscZoom->setValue(4);
  EXPECT_EQ(window->lblZoom->text(), "4 X");
  // Nothing smaller than the smallest size.
  window->resize(100, 50);
  EXPECT_EQ(window->size(), QSize(240, 145));
  window->resize(300, 200);
  QTest::mouseClick(window->cmdClose, Qt::LeftButton);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(Windows().IsLoaded(WindowId::Magnifier));
  EXPECT_EQ(settings::GetSetting("MagnifierLeft"), "2250");
  EXPECT_EQ(settings::GetSetting("MagnifierTop"), "1350");
  EXPECT_EQ(settings::GetSetting("MagnifierWidth"), "4500");
  EXPECT_EQ(settings::GetSetting("MagnifierHeight"), "3000");
  EXPECT_EQ(settings::GetSetting("MagnifierValue"), "4");

  window = Open();
  EXPECT_EQ(window->geometry(), QRect(150, 90, 300, 200));
  EXPECT_EQ(window->hscZoom->value(), 4);
  Windows().Unload(WindowId::Magnifier);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

  // A saved size below the smallest is set back; without popup help there
  // are no balloons.
  settings::SaveSetting("MagnifierWidth", "1500");
  settings::SaveSetting("MagnifierValue", "25");
  App().ShowPopupHelp = false;
  window = Open();
  EXPECT_EQ(window->geometry(), QRect(150, 90, 240, 200));
  EXPECT_EQ(window->hscZoom->value(), 10);
  EXPECT_EQ(window->Balloons().Count(), 0);
}

TEST_F(MagnifierTest, EnlargesInWholeBlocksAndLeavesTheOffDesktopPartBlack) {
  // A white patch in the screen's top left corner, the magnifier elsewhere.
  QWidget patch(nullptr, Qt::FramelessWindowHint);
  patch.setAutoFillBackground(true);
  QPalette white = patch.palette();
  white.setColor(QPalette::Window, Qt::white);
  patch.setPalette(white);
  patch.setGeometry(0, 0, 100, 100);
  patch.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&patch));
  settings::SaveSetting("MagnifierLeft", "6000");
  settings::SaveSetting("MagnifierTop", "4500");
  Magnifier* window = Open();
  window->tmrRefresh->stop();
  ASSERT_EQ(window->picViewer->size(), QSize(240, 117));

  // At factor 2 around the corner the screen's pixel (0, 0) lands at view
  // pixel (120, 58); everything above and left of it is off the desktop.
  QImage view;
  EXPECT_TRUE(QTest::qWaitFor([&] {
    window->ShowZoom(QPoint(0, 0));
    view = window->picViewer->pixmap().toImage();
    return view.pixelColor(200, 100) == QColor(Qt::white);
  }));
  EXPECT_EQ(view.size(), QSize(240, 117));
  EXPECT_EQ(view.pixelColor(120, 58), QColor(Qt::white));
  EXPECT_EQ(view.pixelColor(239, 116), QColor(Qt::white));
  EXPECT_EQ(view.pixelColor(119, 58), QColor(Qt::black));
  EXPECT_EQ(view.pixelColor(120, 57), QColor(Qt::black));
  EXPECT_EQ(view.pixelColor(0, 0), QColor(Qt::black));
}

// ---- Printing ----------------------------------------------------------------

// What the PDF writer put down: the page count and each page's media box.
struct PdfPages {
  int Count = 0;
  QStringList MediaBoxes;
};

PdfPages ReadPdf(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  const QString text = QString::fromLatin1(file.readAll());
  PdfPages pages;
  pages.Count = int(text.count(QRegularExpression("/Type\\s*/Page(?!s)")));
  QRegularExpressionMatchIterator boxes =
      QRegularExpression("/MediaBox\\s*\\[([^\\]]*)\\]").globalMatch(text);
  while (boxes.hasNext()) pages.MediaBoxes << boxes.next().captured(1).trimmed();
  return pages;
}

// A PDF printer on A4 at 1200 dots to the inch, where 60 twips are 50 dots
// and a picture's pixel is 12.5.
void MakePdfPrinter(QPrinter& printer, const QString& path) {
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(path);
  printer.setPageSize(QPageSize(QPageSize::A4));
  printer.setResolution(1200);
}

QImage Picture(int width, int height) {
  QImage picture(width, height, QImage::Format_RGB32);
  picture.fill(Qt::darkGreen);
  return picture;
}

TEST(PrintPictureTest, EachCopyOnItsOwnPageAndPortraitAfterward) {
  QPrinter printer(QPrinter::HighResolution);
  const QString first = testenv::Root() + "/first.pdf";
  MakePdfPrinter(printer, first);
  EXPECT_EQ(PrintPictureCopies(printer, Picture(96, 48), 2, 2), QRect(50, 150, 1200, 600));
  EXPECT_EQ(printer.pageLayout().orientation(), QPageLayout::Portrait);
  const PdfPages landscape = ReadPdf(first);
  EXPECT_EQ(landscape.Count, 2);
  EXPECT_EQ(landscape.MediaBoxes, QStringList({"0 0 842.000000 595.000000", "0 0 842.000000 595.000000"}));

  // The next job on the same printer stands upright unless asked.
  const QString second = testenv::Root() + "/second.pdf";
  printer.setOutputFileName(second);
  EXPECT_EQ(PrintPictureCopies(printer, Picture(96, 48), 1, 1), QRect(50, 150, 1200, 600));
  const PdfPages portrait = ReadPdf(second);
  EXPECT_EQ(portrait.Count, 1);
  EXPECT_EQ(portrait.MediaBoxes, QStringList({"0 0 595.000000 842.000000"}));

  // 2000 by 3000 pixels are 25000 by 37500 dots, far beyond the A4 sheet:
  // not scaled.
  printer.setOutputFileName(testenv::Root() + "/large.pdf");
  EXPECT_EQ(PrintPictureCopies(printer, Picture(2000, 3000), 1, 1), QRect(50, 150, 25000, 37500));
}

class PrinterSetupTest : public testing::Test {
 protected:
  void TearDown() override {
    Windows().Unload(WindowId::PrinterSetup);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
};

TEST_F(PrinterSetupTest, CopiesStepWithinOneToNinetyNineAndOkWithoutAPrinterOnlyCloses) {
  auto* window = new PrinterSetup;
  window->show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
  QLineEdit* box = window->NumberBox1->txtNumber();
  box->setFocus();
  QTest::keyClick(box, Qt::Key_Up);
  EXPECT_EQ(window->NumberBox1->Value(), "2");
  // Below the least, the least.
  for (int i = 0; i < 3; ++i) QTest::keyClick(box, Qt::Key_Down);
  EXPECT_EQ(window->NumberBox1->Value(), "1");

  window->NumberBox1->SetValue("99");
  EXPECT_EQ(window->UpDown1->Value(), 99);
  QTest::keyClick(box, Qt::Key_Up);
  QTest::mouseClick(window->UpDown1->UpButton(), Qt::LeftButton);
  EXPECT_EQ(window->NumberBox1->Value(), "99");
  QTest::mouseClick(window->UpDown1->DownButton(), Qt::LeftButton);
  EXPECT_EQ(window->NumberBox1->Value(), "98");
  EXPECT_EQ(box->selectedText(), "98");

  // 0 copies print one.
  window->NumberBox1->SetValue("0");
  EXPECT_EQ(window->Copies(), 1);

  window->Combo1->clear();
  QTest::mouseClick(window->OKButton, Qt::LeftButton);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(Windows().IsLoaded(WindowId::PrinterSetup));
}

}  // namespace
