#pragma once
// The tutorial's character: a frameless, see-through window that stays over
// the main window and shows a figure drawn from the character file (an SVG
// document whose groups are the frames of his animations, "Greet-1",
// "Greet-2" ...). What he is asked to do goes into his own queue and each
// request returns at once; he then carries the requests out in order, at his
// own pace: an animation frame by frame, a line spoken aloud for as long as
// its sound lasts with the words in a speech bubble, a move as a glide.
// A right click offers "Hide", the user's way out; the Hidden signal tells
// when he has gone, whoever hid him.

#include <QPoint>
#include <QPointer>
#include <QStringList>
#include <QTimer>
#include <QWidget>
#include <deque>
#include <memory>

class QPainter;
class QSvgRenderer;
class QVariantAnimation;
class AgentBubble;
namespace platform {
class SoundPlayer;
}

class AgentCharacter : public QWidget {
  Q_OBJECT
 public:
  // The figure's size in pixels.
  static constexpr int Size = 128;

  // Loads the character from its file; IsLoaded tells whether the file held
  // a character. The owner is the window he stays above (may be nullptr).
  AgentCharacter(const QString& name, const QString& file, QWidget* owner = nullptr);
  ~AgentCharacter() override;

  bool IsLoaded() const;
  QString Name() const { return name_; }

  // The requests; each is queued and returns at once.
  void Play(const QString& animation);
  void Speak(const QString& text);
  void MoveTo(int x, int y);
  void Show();
  void Hide();

  // True from the start of a Show until a Hide has finished.
  bool Visible() const { return shown_; }
  // Drops every request still waiting, cuts off the one under way and
  // hides him (the menu's "Hide").
  void HideNow();
  // Whether the animation exists in the file (its first frame does).
  bool HasAnimation(const QString& animation) const;

  // For tests: the requests as they were carried out, in order ("Play
  // Greet", "Speak ...", "MoveTo 120,80", "Show", "Hide"); a fast mode in
  // which every request is done at once, without sound or waiting; and
  // whether the queue has run dry.
  QStringList Log() const { return log_; }
  void SetFast(bool fast) { fast_ = fast; }
  bool Fast() const { return fast_; }
  bool Idle() const { return !busy_ && !starting_ && queue_.empty(); }
  // The frame on show ("RestPose-1") and the bubble's text ("" without one).
  QString Frame() const { return frame_; }
  QString BubbleText() const;

 signals:
  // He has been hidden (the end of a Hide, by the tour or by the user).
  void Hidden();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void moveEvent(QMoveEvent* event) override;

 private:
  enum class Kind { Play, Speak, MoveTo, Show, Hide };
  struct Request {
    Kind kind;
    QString text;
    QPoint to;
  };
  void Queue(Request request);
  void StartNext();
  void Carry(const Request& request);
  void Done();
  void Abort();
  void RunFrames(const QString& animation, std::function<void()> then);
  void SetFrame(const QString& frame);
  void DrawFigure(QPainter& painter) const;
  void StartSpeech(const QString& text);
  void StartGlide(QPoint to);
  int FrameCount(const QString& animation) const;
  QPoint OnScreen(QPoint to) const;

  QString name_;
  std::unique_ptr<QSvgRenderer> art_;
  std::deque<Request> queue_;
  bool busy_ = false;
  // The next request is about to start from the event loop.
  bool starting_ = false;
  bool shown_ = false;
  bool fast_ = false;
  QStringList log_;
  QString frame_;
  QString mouth_;
  // The run of frames under way.
  QStringList frames_;
  int frameIndex_ = 0;
  std::function<void()> afterFrames_;
  QTimer frameTimer_, mouthTimer_, speechTimer_;
  QPointer<QVariantAnimation> glide_;
  AgentBubble* bubble_ = nullptr;
  std::unique_ptr<platform::SoundPlayer> sound_;
  QPoint dragOffset_;
  bool dragging_ = false;
  // Bumped by Abort, so that the end of an aborted step is ignored.
  int generation_ = 0;
};
