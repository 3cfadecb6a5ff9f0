#include <gtest/gtest.h>

#include <QLabel>
#include <QPainter>
#include <QTest>

#include "platform/SingleInstance.h"
#include "platform/SystemMessage.h"
#include "shell/FrmAbout.h"
#include "shell/Logo.h"

TEST(SingleInstance, ASecondInstanceIsRefusedUntilTheFirstEnds) {
  auto first = std::make_unique<platform::SingleInstance>("Vistrel");
  EXPECT_TRUE(first->Acquired());
  {
    platform::SingleInstance second("Vistrel");
    EXPECT_FALSE(second.Acquired());
    platform::SingleInstance sibling("Lorvane");
    EXPECT_TRUE(sibling.Acquired());
  }
  first.reset();
  platform::SingleInstance third("Vistrel");
  EXPECT_TRUE(third.Acquired());
}

TEST(Logo, ShowsTheVersionAndTheFirstStageInARoundedWindow) {
  {
    Logo logo;
    EXPECT_EQ(Logo::Instance(), &logo);
    EXPECT_EQ(logo.LabelText(2), "Version 1.0");
    EXPECT_EQ(logo.Message(), "PLEASE WAIT... Setting up display data");
    logo.resize(480, 300);
    logo.show();
    // The outline is rounded: the corner pixel lies outside the window's mask.
    EXPECT_FALSE(logo.mask().contains(QPoint(1, 1)));
    EXPECT_TRUE(logo.mask().contains(QPoint(240, 150)));
  }
  EXPECT_EQ(Logo::Instance(), nullptr);
}

TEST(FrmAbout, TextsAndClosingKeys) {
  auto* about = new frmAbout;
  QPointer<frmAbout> alive = about;
  EXPECT_EQ(about->windowTitle(), " About Vistrel");
  EXPECT_EQ(about->lblTitle->text(), "Vistrel");
  EXPECT_EQ(about->lblVersion->text(), "Version 1.0");
  EXPECT_TRUE(about->lblDescription->text().startsWith(
      "The Vistrel program is designed to provide a wide variety of functions related to media "
      "files (i.e., pictures, videos, audios, DVDs).  These functions"));
  about->show();
  // The background is the white gradient: the first band is 3 darker.
  const QImage image = about->grab().toImage();
  EXPECT_EQ(image.pixelColor(2, 0), QColor(252, 252, 252));
  QTest::keyClick(about, Qt::Key_Escape);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(alive.isNull());
}

TEST(FrmAbout, WithoutASystemInformationToolSaysSo) {
  QString shown;
  platform::SetSystemMessageSink([&](const QString& text, const QString&) { shown = text; });
  const QByteArray path = qgetenv("PATH");
  qputenv("PATH", "/nonexistent");
  frmAbout about;
  about.StartSysInfo();
  qputenv("PATH", path);
  EXPECT_EQ(shown, "System Information Is Unavailable At This Time");
}
