#pragma once
// hTooltip: one tooltip window for a form. The form creates it, sets its
// width and colours, and adds a tool (a control and its text) for each
// control that has help; each tool shows its text when the mouse rests on
// the control. Before Create every operation does nothing.

#include <QHash>
#include <QMargins>
#include <QObject>
#include <QPointer>
#include <QString>
#include <memory>

class HoverTip;
class QWidget;

class hTooltip : public QObject {
  Q_OBJECT
 public:
  // Selectors of SetDelayTime and GetDelayTime: all three times at once
  // from one value, the delay from one tool to the next, the time shown,
  // the delay before showing.
  enum DelaySelector { DelayAutomatic = 0, DelayReshow = 1, DelayAutoPop = 2, DelayInitial = 3 };

  explicit hTooltip(QObject* parent = nullptr);
  ~hTooltip() override;

  // Makes the tooltip window for the form. False when there is no form.
  bool Create(QWidget* parentForm);
  // Adds a tool for a control, or gives a known control its new text. The
  // lines of the text may be separated by "\r\n" or "\n".
  bool AddTool(QWidget* control, const QString& text);
  void RemoveTool(QWidget* control);

  // Colour numbers (0x00BBGGRR, or a system colour); -1 puts back the
  // desktop's tooltip colours.
  quint32 BackColor() const;
  void SetBackColor(qint64 color);
  // Reading the text colour gives nothing of use: always 0.
  quint32 TxtColor() const;
  void SetTxtColor(qint64 color);

  // Sets one of the times (the selector is taken modulo 4). A negative time
  // puts back the default of that selector; DelayAutomatic sets the delay
  // to the value, the time shown to ten times and the reshow delay to a
  // fifth of it.
  void SetDelayTime(int which, int milliseconds);
  int GetDelayTime(int which) const;
  // The delay before a tip shows, and the time it stays.
  void DelayTime(int milliseconds) { SetDelayTime(DelayInitial, milliseconds); }
  void VisibleTime(int milliseconds) { SetDelayTime(DelayAutoPop, milliseconds); }

  // The tooltip window (null before Create or before the first tip shows).
  QWidget* hWnd() const;

  // Room around the text, in pixels.
  QMargins Margin() const;
  void SetMargin(const QMargins& margin);
  // The widest a tip may be, in pixels; -1 for no limit (the start value).
  int MaxTipWidth() const;
  void SetMaxTipWidth(int pixels);

  int ToolCount() const;
  QString ToolText(QWidget* control) const;
  void SetToolText(QWidget* control, const QString& text);

  // Shows the tip of a tool at once (keyboard help, and tests).
  void ShowTool(QWidget* control);
  // The tip's text as shown, "" when no tip is up.
  QString ShownText() const;

 private:
  bool Created() const { return created_ && !parent_.isNull(); }

  std::unique_ptr<HoverTip> tip_;
  QPointer<QWidget> parent_;
  bool created_ = false;
  QHash<const QWidget*, QString> texts_;
};
