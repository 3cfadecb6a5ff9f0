#include "system/AgentModule.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include "controls/NewTabControl.h"
#include "core/AppState.h"
#include "core/Database.h"
#include "core/Settings.h"
#include "core/Statements.h"
#include "core/ViewerHost.h"
#include "core/WindowFrame.h"
#include "core/WindowRegistry.h"
#include "platform/Twips.h"
#include "system/AgentCharacter.h"
#include "system/AgentHelp.h"
#include "system/MixerModule.h"

namespace {

// The mixer's controls the tutorial touches.
constexpr int MasterVolume = 0;
constexpr int CompactDiscVolume = 4;
constexpr int WaveOutVolume = 5;
constexpr int MasterMute = 7;

// How long the opening is given before the tour goes on.
constexpr double OpeningSeconds = 33;

const char* const OpeningLines[] = {
    "During the next few minutes, please allow me to take you on a tour of the Ostrand "
    "Vistrel program.",
    "If you wish to exit the tour before the end of my presentation,",
    "press the right button on your mouse while the pointer is on top of me, then click on "
    "'Hide'.",
    "To restart the tour, click on the button with the green question mark in the bottom, "
    "right corner of your screen,",
    "or just press the F1 key.",
};

int Px(int twipsValue) { return twipsValue / twips::PerPixel; }

TourStep Move(int x, int y) { return {TourStep::Kind::MoveTo, QPoint(x, y), {}}; }
TourStep Play(const char* animation) { return {TourStep::Kind::Play, {}, animation}; }

// The window's top in the main window's area, in twips; 0 for a window of
// its own.
int TopInMainArea(QWidget* window) {
  QWidget* frame = FrameOf(window);
  if (!frame || frame->isWindow()) return 0;
  return twips::FromPixels(frame->y());
}

}  // namespace

AgentModuleState& Agent() {
  static AgentModuleState state;
  return state;
}

void ResetAgentModule() {
  AgentModuleState& agent = Agent();
  delete agent.TourCharacter.data();
  agent = AgentModuleState{};
}

TourMeasures CurrentTourMeasures(QWidget* form) {
  TourMeasures m;
  if (ViewerHost* host = TheViewerHost()) {
    const QRect main = host->MainOuterTwips();
    m.MainLeft = main.left();
    m.MainTop = main.top();
    m.MainWidth = main.width();
    m.MainHeight = main.height();
    m.FormWidth = host->BrowserWidthTwips();
    m.FormHeight = host->BrowserHeightTwips();
  } else if (QWidget* main = Windows().Find(WindowId::MainForm)) {
    const QRect outer = main->frameGeometry();
    m.MainLeft = twips::FromPixels(outer.left());
    m.MainTop = twips::FromPixels(outer.top());
    m.MainWidth = twips::FromPixels(outer.width());
    m.MainHeight = twips::FromPixels(outer.height());
  }
  if (form) {
    if (!TheViewerHost()) {
      m.FormWidth = twips::FromPixels(form->width());
      m.FormHeight = twips::FromPixels(form->height());
    }
    m.FormTop = TopInMainArea(form);
    if (auto* tabs = form->findChild<NewTabControl*>("ThumbnailTabs")) {
      if (QLabel* label = tabs->CaptionLabel(1)) {
        m.LabelLeft = twips::FromPixels(label->mapTo(form, QPoint(0, 0)).x());
        m.LabelWidth = twips::FromPixels(label->width());
      }
    }
  }
  m.CommandBarTop = TopInMainArea(Windows().Find(WindowId::CommandBar));
  return m;
}

QPoint TourStartingPlace(const TourMeasures& m) {
  return QPoint(Px(m.MainLeft + m.FormWidth) - 112, Px(m.MainTop + m.FormTop) + 10);
}

QList<TourStep> TourStepsFor(int helpLine, const TourMeasures& m) {
  switch (helpLine) {
    case 20:
      // Over the tabs, pointing down at them.
      return {Move(Px(m.MainLeft + m.LabelLeft + m.LabelWidth) - 65,
                   Px(m.MainTop + m.CommandBarTop) - 80),
              Play("GestureDown")};
    case 25: return {Play("RestPose")};
    case 30: return {Play("GestureRight")};
    case 35: return {Play("GestureLeft")};
    case 40:
      // Beside the thumbnails, on the right.
      return {Move(Px(m.MainLeft + m.FormWidth) - 155, Px(m.MainTop + m.FormHeight / 2) - 62),
              Play("RestPose")};
    case 41: return {Play("GestureLeft")};
    case 42: return {Play("RestPose")};
    case 50: return {Play("GestureUp")};
    case 51: return {Play("RestPose")};
    case 60:
      // At the right end of the command bar.
      return {Move(Px(m.MainLeft + m.FormWidth) - 80, Px(m.MainTop + m.CommandBarTop) - 75),
              Play("RestPose")};
    case 61: return {Play("GestureRight")};
    case 62: return {Play("RestPose")};
    case 70: return {Play("GestureDown")};
    case 71: return {Play("RestPose")};
    case 80:
      // In the middle of the main window.
      return {Move(Px(m.MainLeft + m.MainWidth / 2) - 60, Px(m.MainTop + m.MainHeight / 2) - 62),
              Play("RestPose")};
    case 90: {
      const QPoint start = TourStartingPlace(m);
      return {Move(start.x(), start.y())};
    }
    default: return {};
  }
}

void MakeTutorialAudible() {
  SetMute(MasterMute, false);
  if (GetVolume(MasterVolume) != 0) return;
  const int volume = settings::GetInt("AlarmVolume", 100);
  for (int index : {MasterVolume, CompactDiscVolume, WaveOutVolume}) SetVolume(index, volume);
}

void StartTutorial(QWidget* browser) {
  AgentModuleState& agent = Agent();
  // The wait for the opening lets events run: the window may go meanwhile.
  const QPointer<QWidget> form = browser;
  MakeTutorialAudible();
  const bool onScreen = agent.MerlinVisible && agent.TourCharacter && agent.TourCharacter->Visible();
  if (!onScreen) {
    if (QWidget* frame = FrameOf(form)) frame->raise();
    if (!agent.MerlinGreeted || !agent.TourCharacter) {
      delete agent.TourCharacter.data();
      auto* character = new AgentCharacter("Merlin", App().AgentCharacterFile,
                                           Windows().Find(WindowId::MainForm));
      if (!character->IsLoaded()) {
        delete character;
        return;
      }
      character->SetFast(agent.FastCharacter);
      agent.TourCharacter = character;
      if (auto* host = qobject_cast<AgentHelp*>(agent.AgentHost.data())) host->Watch(character);
    }
    AgentCharacter* merlin = agent.TourCharacter;
    const QPoint place = TourStartingPlace(CurrentTourMeasures(form));
    if (!merlin->Visible()) merlin->move(place);
    merlin->Show();
    agent.MerlinVisible = true;
    if (!agent.MerlinGreeted) {
      merlin->Play("Greet");
      merlin->Play("RestPose");
      merlin->Speak("Greetings, my name is Merlin.");
      merlin->Play("DoMagic1");
      for (const char* line : OpeningLines) merlin->Speak(line);
      agent.MerlinGreeted = true;
      WaitForMerlin(OpeningSeconds);
    }
  }
  // The user may have sent him away during the opening: then the tour is
  // over before it began.
  if (!agent.TourCharacter || !agent.TourCharacter->Visible()) return;
  if (form && Windows().IdOf(form.data()) == WindowId::Thumbnails) RunTour(form);
}

void RunTour(QWidget* form) {
  AgentModuleState& agent = Agent();
  for (WindowId id : {WindowId::ChooseDirectory, WindowId::DeleteVerify, WindowId::FindFiles,
                      WindowId::OptionsEntry, WindowId::RenameFile, WindowId::SelectionSort,
                      WindowId::SingleAudio, WindowId::SingleImage, WindowId::SingleVideo})
    Windows().Unload(id);
  if (form)
    if (auto* tabs = form->findChild<NewTabControl*>("ThumbnailTabs")) tabs->SetCurrentTab(1);
  agent.TourRunning = true;
  settings::SaveSetting("MerlinShown", "Yes");
  AgentCharacter* merlin = agent.TourCharacter;
  if (!merlin) {
    agent.TourRunning = false;
    return;
  }
  merlin->Play("ReadContinued");
  QList<HelpLineRow> rows;
  if (App().DatabaseConnection) rows = SelectHelpLines(*App().DatabaseConnection);
  const TourMeasures measures = CurrentTourMeasures(form);
  for (const HelpLineRow& row : rows) {
    if (row.HelpText.trimmed().isEmpty()) continue;
    for (const TourStep& step : TourStepsFor(row.HelpLine, measures)) {
      if (step.kind == TourStep::Kind::MoveTo)
        merlin->MoveTo(step.To.x(), step.To.y());
      else
        merlin->Play(step.Animation);
    }
    merlin->Speak(row.HelpText);
  }
  SayGoodbye();
  agent.TourRunning = false;
}

void SayGoodbye() {
  AgentModuleState& agent = Agent();
  if (AgentCharacter* merlin = agent.TourCharacter) {
    merlin->Speak("Goodbye");
    merlin->Play("Wave");
    merlin->Hide();
  }
  agent.MerlinVisible = false;
}

void WaitForMerlin(double seconds) {
  QElapsedTimer clock;
  clock.start();
  const qint64 end = qint64(seconds * 1000);
  while (clock.elapsed() < end) {
    AgentCharacter* merlin = Agent().TourCharacter;
    if (!merlin || !merlin->Visible()) return;
    if (merlin->Fast() && merlin->Idle()) return;
    QEventLoop round;
    QTimer::singleShot(20, &round, &QEventLoop::quit);
    round.exec();
  }
}
