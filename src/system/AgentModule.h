#pragma once
// The guided tour: the tutorial's character greets the user over the main
// window, then reads the tour's lines from the data file's HelpFile table.
// The line numbers of the rows decide where he stands and which way he
// points before he speaks a line. Everything he is asked to do goes into
// his own queue; the routines here only queue the tour.

#include <QList>
#include <QPoint>
#include <QPointer>
#include <QString>

class QWidget;
class AgentCharacter;

// The module's state.
struct AgentModuleState {
  // The loaded character, and the hidden window that hosts him.
  QPointer<AgentCharacter> TourCharacter;
  QPointer<QWidget> AgentHost;
  // The opening has been given since the host was loaded.
  bool MerlinGreeted = false;
  // The character is on screen.
  bool MerlinVisible = false;
  // The body of the tour is being queued.
  bool TourRunning = false;
  // Characters loaded from now on carry their requests out at once, without
  // sound (for tests).
  bool FastCharacter = false;
};
AgentModuleState& Agent();
// Puts the module's state back to its start (tests, between cases); the
// character, if any, is deleted.
void ResetAgentModule();

// The window measures the tour's places are worked out from, in twips: the
// main window's outer rectangle, the browser's top (in the main window's
// area), width and height, the command bar's top, and the left (in the
// browser) and width of the caption of the browser's first tab.
struct TourMeasures {
  int MainLeft = 0, MainTop = 0, MainWidth = 0, MainHeight = 0;
  int FormTop = 0, FormWidth = 0, FormHeight = 0;
  int CommandBarTop = 0;
  int LabelLeft = 0, LabelWidth = 0;
};
// The measures as the windows stand, with `form` the browser.
TourMeasures CurrentTourMeasures(QWidget* form);

// What the character does before he speaks a line of the tour: a move (to
// a place in pixels) or an animation.
struct TourStep {
  enum class Kind { MoveTo, Play };
  Kind kind = Kind::Play;
  QPoint To;
  QString Animation;
  bool operator==(const TourStep&) const = default;
};
// The steps for a line number, in order; none for a number that is only
// spoken.
QList<TourStep> TourStepsFor(int helpLine, const TourMeasures& measures);
// Where he first appears, and where the tour brings him back: near the top
// right corner of the browser.
QPoint TourStartingPlace(const TourMeasures& measures);

// Makes the sound audible: lifts the master mute and, when the master
// volume is 0, sets the master, compact disc and wave out volumes to the
// setting AlarmVolume (default 100).
void MakeTutorialAudible();

// Shows the character and gives the opening (once per loading of the host),
// then, when `form` is the browser, queues the tour.
void StartTutorial(QWidget* form);
// Queues the body of the tour.
void RunTour(QWidget* form);
// Queues the ending: "Goodbye", a wave, and he hides.
void SayGoodbye();
// Lets events run until the time is up or the character is no longer on
// screen (or, for a fast character, has nothing left to do).
void WaitForMerlin(double seconds);
