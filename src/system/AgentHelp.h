#pragma once
// The tutorial's host: a window that is never shown and holds the
// character while the tour lasts. When the character has hidden, it opens
// the options for a user who has never saved them (else brings the browser
// forward) and unloads itself; unloading lets the character say goodbye if
// he is still up, and releases him.

#include <QWidget>

#include "core/WindowRoles.h"

class AgentCharacter;

class AgentHelp : public QWidget {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::AgentHelp;
  explicit AgentHelp(QWidget* parent = nullptr);

  // Takes the character's hide notification.
  void Watch(AgentCharacter* character);
  // The character has hidden.
  void Agent1_Hide();

 protected:
  void closeEvent(QCloseEvent* event) override;
};

// Registers the host's loader with the window registry (at start).
void RegisterTutorialWindow();
// The command bar's help button: loads the host below the main window and
// starts the tutorial over the browser.
void StartTutorialFromBar();
