#include "system/AgentHelp.h"

#include <QCloseEvent>
#include <QTimer>

#include "core/Settings.h"
#include "core/WindowFrame.h"
#include "core/WindowRegistry.h"
#include "platform/Twips.h"
#include "system/AgentCharacter.h"
#include "system/AgentModule.h"

AgentHelp::AgentHelp(QWidget* parent) : QWidget(parent) {
  setObjectName("AgentHelp");
  AgentModuleState& agent = Agent();
  agent.AgentHost = this;
  agent.MerlinGreeted = false;
  agent.MerlinVisible = false;
  if (agent.TourCharacter) Watch(agent.TourCharacter);
}

void AgentHelp::Watch(AgentCharacter* character) {
  connect(character, &AgentCharacter::Hidden, this, &AgentHelp::Agent1_Hide,
          Qt::UniqueConnection);
}

void AgentHelp::Agent1_Hide() {
  if (settings::GetSetting("Defined") != "Yes") {
    if (QWidget* options = FrameOf(Windows().Load(WindowId::OptionsEntry))) {
      options->show();
      options->raise();
    }
  } else if (QWidget* browser = FrameOf(Windows().Find(WindowId::Thumbnails))) {
    browser->raise();
  }
  AgentModuleState& agent = Agent();
  agent.TourRunning = false;
  // He is off screen, whoever hid him: the close must not call him back.
  agent.MerlinVisible = false;
  // The host goes once the notification is over.
  QTimer::singleShot(0, [] { Windows().Unload(WindowId::AgentHelp); });
}

void AgentHelp::closeEvent(QCloseEvent* event) {
  AgentModuleState& agent = Agent();
  AgentCharacter* merlin = agent.TourCharacter;
  if (agent.MerlinVisible && merlin && merlin->Visible()) SayGoodbye();
  agent.MerlinVisible = false;
  if (merlin) {
    // Released: he finishes what he was asked (the goodbye) and then goes.
    disconnect(merlin, nullptr, this, nullptr);
    if (merlin->Visible())
      connect(merlin, &AgentCharacter::Hidden, merlin, &QObject::deleteLater);
    else
      merlin->deleteLater();
  }
  agent.TourCharacter = nullptr;
  if (agent.AgentHost == this) agent.AgentHost = nullptr;
  event->accept();
}

void RegisterTutorialWindow() {
  Windows().SetLoader(WindowId::AgentHelp, [] { return new AgentHelp(); });
}

void StartTutorialFromBar() {
  QWidget* host = Windows().Load(WindowId::AgentHelp);
  if (!host) {
    RegisterTutorialWindow();
    host = Windows().Load(WindowId::AgentHelp);
  }
  if (QWidget* main = Windows().Find(WindowId::MainForm)) {
    // Out of sight, below the main window.
    const int top = twips::ToPixels(twips::FromPixels(main->frameGeometry().height()) + 300);
    host->move(host->x(), top);
  }
  StartTutorial(Windows().Find(WindowId::Thumbnails));
}
