#include <gtest/gtest.h>

#include <QCloseEvent>
#include <QCoreApplication>
#include <QPointer>
#include <QWidget>

#include "shell/AppState.h"
#include "shell/WindowRegistry.h"

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
  Windows().Loaded("First", first);
  Windows().Loaded("Staying", staying);
  Windows().Loaded("Last", last);
  EXPECT_EQ(Windows().LoadedNames(), QStringList({"First", "Staying", "Last"}));

  EXPECT_FALSE(Windows().Unload("Staying"));
  EXPECT_TRUE(App().CloseRefused);
  EXPECT_TRUE(Windows().IsLoaded("Staying"));

  Windows().UnloadAllExcept({"First"});
  EXPECT_EQ(Windows().LoadedNames(), QStringList({"First", "Staying"}));
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(last.isNull());

  EXPECT_TRUE(Windows().Unload("NeverLoaded"));
  delete staying;
  EXPECT_EQ(Windows().LoadedNames(), QStringList({"First"}));
  EXPECT_TRUE(Windows().Unload("First"));
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(first.isNull());
}
