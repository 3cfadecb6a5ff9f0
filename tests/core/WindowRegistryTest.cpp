#include <gtest/gtest.h>

#include <QApplication>
#include <QCloseEvent>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTest>
#include <QCoreApplication>
#include <QPointer>
#include <QWidget>

#include "core/AppState.h"
#include "core/WindowRegistry.h"
#include "core/WindowShow.h"

namespace {
// A window with unsaved changes whose user chooses to stay.
class StayingWindow : public QWidget {
 protected:
  void closeEvent(QCloseEvent* event) override {
    App().CloseRefused = true;
    event->ignore();
  }
};
}  // namespace

TEST(WindowRegistry, UnloadsInReverseOrderAndKeepsARefusingWindow) {
  QPointer<QWidget> first = new QWidget;
  QPointer<QWidget> staying = new StayingWindow;
  QPointer<QWidget> last = new QWidget;
  Windows().Loaded(WindowId::MainForm, first);
  Windows().Loaded(WindowId::OptionsEntry, staying);
  Windows().Loaded(WindowId::SingleImage, last);
  EXPECT_EQ(Windows().LoadedNames(), QStringList({"MainForm", "OptionsEntry", "SingleImage"}));
  EXPECT_EQ(Windows().IdOf(staying), WindowId::OptionsEntry);

  EXPECT_FALSE(Windows().Unload(WindowId::OptionsEntry));
  EXPECT_TRUE(App().CloseRefused);
  EXPECT_TRUE(Windows().IsLoaded(WindowId::OptionsEntry));

  Windows().UnloadAllExcept({WindowId::MainForm});
  EXPECT_EQ(Windows().LoadedNames(), QStringList({"MainForm", "OptionsEntry"}));
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(last.isNull());

  EXPECT_TRUE(Windows().Unload(WindowId::FindFiles));
  delete staying;
  EXPECT_EQ(Windows().LoadedNames(), QStringList({"MainForm"}));
  EXPECT_TRUE(Windows().Unload(WindowId::MainForm));
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(first.isNull());
}

TEST(WindowShow, AWindowBroughtForwardTakesTheKeyboardFromTheOneBefore) {
  QMdiArea area;
  auto* before = new QLineEdit;
  auto* shown = new QWidget;  // a window whose controls take no focus of their own
  auto* box = new QLineEdit(shown);
  area.addSubWindow(before);
  QMdiSubWindow* frame = area.addSubWindow(shown);
  area.resize(400, 300);
  area.show();
  QApplication::setActiveWindow(&area);
  area.setActiveSubWindow(qobject_cast<QMdiSubWindow*>(before->parentWidget()));
  before->setFocus();
  ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::focusWidget() == before; }));

  GiveKeyboard(shown);
  EXPECT_EQ(area.activeSubWindow(), frame);
  EXPECT_TRUE(QApplication::focusWidget() == shown || QApplication::focusWidget() == box);
  // A window that holds the keyboard keeps its control focused.
  box->setFocus();
  GiveKeyboard(shown);
  EXPECT_EQ(QApplication::focusWidget(), box);
}
