#include <gtest/gtest.h>

#include <cmath>

#include "browser/BrowserKeys.h"
#include "browser/TabState.h"
#include "platform/KeyCodes.h"

namespace {

constexpr int Letter(char letter) { return keys::KeyA + (letter - 'A'); }
constexpr int F(int number) { return keys::F1 + number - 1; }

QString Describe(const FormKeyAction& action) {
  switch (action.Kind) {
    case FormKeyKind::Nothing: return "nothing";
    case FormKeyKind::FocusFirstCell: return "first cell";
    case FormKeyKind::GoHome: return "home";
    case FormKeyKind::ScrollToEnd: return "end";
    case FormKeyKind::EndProgram: return "end program";
    case FormKeyKind::GoToTab: return QStringLiteral("tab %1").arg(action.Tab);
    case FormKeyKind::ClickButton: return QString("click ") + BarButtonName(*action.Button);
    case FormKeyKind::Minimise: return "minimise";
    case FormKeyKind::Enter: return "enter";
    case FormKeyKind::CommonKey: return "common";
  }
  return QString();
}

QString Down(int key, int shift) { return Describe(FormKeyDownAction(key, shift)); }

}  // namespace

TEST(FormKeyDown, TheTableMatchesFromTheTop) {
  for (int shift : {0, 1, 2, 3}) {
    EXPECT_EQ(Down(keys::Pause, shift), "first cell");
    EXPECT_EQ(Down(keys::Home, shift), "home");  // Ctrl+Home is plain Home
    EXPECT_EQ(Down(keys::End, shift), "end");
    EXPECT_EQ(Down(keys::Escape, shift), "end program");
    EXPECT_EQ(Down(F(9), shift), "minimise");
    EXPECT_EQ(Down(keys::Return, shift), "enter");
  }
  EXPECT_EQ(QStringList({Down(F(1), 2), Down(F(2), 2), Down(F(3), 2), Down(F(4), 2)}),
            QStringList({"tab 1", "tab 2", "tab 3", "tab 4"}));
  // Without Ctrl (Ctrl with Shift included) the function keys act on their own.
  for (int shift : {0, 1, 3}) {
    EXPECT_EQ(QStringList({Down(F(1), shift), Down(F(2), shift), Down(F(3), shift), Down(F(4), shift)}),
              QStringList({"click HelpButton", "minimise", "nothing", "nothing"}));
  }
  // The rest: Ctrl goes to the command bar's letters, anything else to the
  // keys all windows share.
  EXPECT_EQ(Down(Letter('R'), 2), "click refreshButton");
  EXPECT_EQ(Down(Letter('G'), 2), "nothing");
  EXPECT_EQ(Down(F(5), 2), "nothing");
  EXPECT_EQ(Down(Letter('R'), 0), "common");
  EXPECT_EQ(Down(F(5), 0), "common");
  EXPECT_EQ(Down(Letter('F'), 3), "common");
}

TEST(FormKeyUp, CtrlNPAndTWithTheirConditions) {
  EXPECT_EQ(FormKeyUpAction(Letter('N'), 2, DocumentsTab, 0, ""), KeyUpAction::ContextMenu);
  EXPECT_EQ(FormKeyUpAction(Letter('N'), 0, PicturesTab, 3, ""), KeyUpAction::Nothing);
  EXPECT_EQ(FormKeyUpAction(Letter('P'), 2, PicturesTab, 0, ""), KeyUpAction::Properties);
  EXPECT_EQ(FormKeyUpAction(Letter('P'), 2, VideosTab, 0, ""), KeyUpAction::Nothing);
  EXPECT_EQ(FormKeyUpAction(Letter('P'), 2, AudiosTab, 1, "wav"), KeyUpAction::Properties);
  EXPECT_EQ(FormKeyUpAction(Letter('P'), 1, AudiosTab, 1, "wav"), KeyUpAction::Nothing);
  EXPECT_EQ(FormKeyUpAction(Letter('T'), 2, AudiosTab, 1, "MP2"), KeyUpAction::Mp3Tags);
  EXPECT_EQ(FormKeyUpAction(Letter('T'), 2, AudiosTab, 1, "mp3"), KeyUpAction::Mp3Tags);
  EXPECT_EQ(FormKeyUpAction(Letter('T'), 2, AudiosTab, 1, "wma"), KeyUpAction::Nothing);
  EXPECT_EQ(FormKeyUpAction(Letter('T'), 2, VideosTab, 1, "mp3"), KeyUpAction::Nothing);
}

TEST(Enter, ThumbnailSizeIsClampedToTheBoxAndItsLimits) {
  const int tall = 10000;
  EXPECT_EQ(ThumbnailSizeAfterEnter(1.25, tall), 1800);
  EXPECT_EQ(ThumbnailSizeAfterEnter(0.1, tall), 720);
  EXPECT_EQ(ThumbnailSizeAfterEnter(7, tall), 4320);
  EXPECT_EQ(ThumbnailSizeAfterEnter(1.0007, tall), 1441);  // Int, not rounding
  // A box of 2500 twips takes cells of (2500 - 270) / 1440 inches at most.
  EXPECT_EQ(ThumbnailSizeAfterEnter(3, 2500), 2230);
  // A box too low for half an inch takes what fits; nonsense is the smallest.
  EXPECT_EQ(ThumbnailSizeAfterEnter(2, 300), 30);
  EXPECT_EQ(ThumbnailSizeAfterEnter(std::nan(""), tall), 720);
}

TEST(Enter, PositionLeadsToItsPageAndCell) {
  auto jump = [](qint64 value, qint32 count, int pageSize, int tab) {
    const PositionJump j = PositionJumpFor(value, count, pageSize, tab);
    return QStringLiteral("%1/%2").arg(j.ScrollValue).arg(j.FocusCell);
  };
  EXPECT_EQ(jump(95, 200, 40, PicturesTab), "2/14");
  EXPECT_EQ(jump(81, 200, 40, AudiosTab), "2/0");
  EXPECT_EQ(jump(5000, 200, 40, PicturesTab), "4/39");
  EXPECT_EQ(jump(5000, 201, 40, PicturesTab), "5/0");
  EXPECT_EQ(jump(95, 200, 40, DocumentsTab), "2/-1");
  EXPECT_EQ(jump(7, 0, 40, PicturesTab), "0/-1");
  EXPECT_EQ(jump(7, 10, 0, PicturesTab), "6/0");
}
