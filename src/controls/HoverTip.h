#pragma once
// The small window behind the program's hover help: a text on a tip-coloured
// face with a thin border. It comes up under the mouse a while after the
// mouse has come to rest on a watched control, and goes away after a while,
// when the mouse leaves the control, at a press of a mouse button or a key,
// or when the control goes. The tooltips and the help popups are built on it.

#include <QColor>
#include <QElapsedTimer>
#include <QLabel>
#include <QList>
#include <QMargins>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <functional>

class QWidget;

class HoverTip : public QObject {
  Q_OBJECT
 public:
  // The text shown for a control, in the given format; an empty text shows
  // nothing.
  using TextSource = std::function<QString(QWidget*)>;
  HoverTip(TextSource source, Qt::TextFormat format, QObject* parent = nullptr);
  ~HoverTip() override;

  void Watch(QWidget* control);
  void Unwatch(QWidget* control);
  bool Watching(const QWidget* control) const;
  int WatchCount() const;

  // Milliseconds from the mouse coming to rest to the tip; from one tool to
  // the next while a tip was just up; and the time a tip stays up.
  int InitialDelay() const { return initialDelay_; }
  void SetInitialDelay(int ms);
  int ReshowDelay() const { return reshowDelay_; }
  void SetReshowDelay(int ms);
  int VisibleTime() const { return visibleTime_; }
  void SetVisibleTime(int ms);

  QColor BackColor() const { return back_; }
  void SetBackColor(const QColor& color);
  QColor TextColor() const { return text_; }
  void SetTextColor(const QColor& color);
  // Room between the border and the text, in pixels, on top of a small
  // fixed padding.
  QMargins Margins() const { return margins_; }
  void SetMargins(const QMargins& margins);
  // The widest a tip may be, in pixels; longer lines wrap. Below 1: no limit.
  int MaxWidth() const { return maxWidth_; }
  void SetMaxWidth(int pixels);

  // Shows the tip of a control at once, under the given point of the screen.
  void ShowFor(QWidget* control, const QPoint& globalPos);
  // Shows it for a control under the control's middle.
  void ShowFor(QWidget* control);
  void Hide();
  // The control whose tip is up, or null.
  QWidget* ShownFor() const;
  // The tip's window; null until a tip was first shown.
  QLabel* Window() const { return window_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void ShowPending();
  void ApplyLook();
  QWidget* Find(const QObject* object) const;

  TextSource source_;
  Qt::TextFormat format_;
  QList<QPointer<QWidget>> controls_;
  QPointer<QLabel> window_;
  QPointer<QWidget> pending_;
  QPointer<QWidget> shown_;
  QPoint pendingPos_;
  QTimer showTimer_;
  QTimer hideTimer_;
  // Started when a tip went down because the mouse left its control.
  QElapsedTimer sinceLeft_;
  int initialDelay_ = 500;
  int reshowDelay_ = 100;
  int visibleTime_ = 5000;
  QColor back_;
  QColor text_;
  QMargins margins_;
  int maxWidth_ = -1;
};
