#pragma once
// A tab strip whose tabs hang from the bottom edge of the control. The
// control's own outline is cut into a polygon with a notch at each tab
// boundary, its frame is drawn by hand, and each tab's text is a label of
// its own. The browser's four media tabs are one of these.

#include <QColor>
#include <QFont>
#include <QString>
#include <QWidget>
#include <array>
#include <functional>

class QLabel;

class NewTabControl : public QWidget {
  Q_OBJECT

 public:
  explicit NewTabControl(QWidget* parent = nullptr);

  // Enabled is passed on to the four labels. While the control is disabled
  // the getters below answer zero or nothing and the setters do nothing.
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);

  // A grey gradient instead of BackColor.
  bool Gradient() const { return gradient_; }
  void SetGradient(bool gradient);

  QFont Font() const;
  void SetFont(const QFont& font);

  // An invalid colour stands for the default: the system's button text and
  // button face colours.
  QColor ForeColor() const;
  void SetForeColor(const QColor& color);
  QColor BackColor() const;
  void SetBackColor(const QColor& color);

  // The text of tab `index`, 1 to 4. Only a non-empty text reaches the
  // label: a caption can be replaced but not cleared.
  QString Caption(int index) const;
  void SetCaption(int index, const QString& text);

  // 0 until a tab is set. Setting it, even to the tab already current,
  // repaints and raises Click.
  qint16 CurrentTab() const;
  void SetCurrentTab(qint16 tab);

  // The number of tabs that divide the width. A change shows at the next
  // resize, which is when the boundaries are worked out.
  qint16 Tabs() const;
  void SetTabs(qint16 tabs);

  // The number of tabs as set, whether or not the control is enabled.
  qint16 TabsShown() const { return tabs_; }

  // What a screen reader says of tab `index` beyond its caption, asked of
  // the owner only when the reader asks; none until one is given.
  void SetTabDescription(std::function<QString(int index)> describe);
  QString TabDescription(int index) const;

  // The window handle as decimal text.
  QString hWnd() const;

  void RePaint();

  // The label of tab `index`, 1 to 4 (nullptr otherwise).
  QLabel* CaptionLabel(int index) const;
  // The three tab boundaries in twips, as the last resize left them.
  std::array<int, 3> Edges() const { return edges_; }

 signals:
  // The new tab and the one before. Both are the control's own values: a
  // handler that changes the new tab changes what becomes the previous one.
  void Click(qint16& newTab, qint16& previousTab);
  // Button 1 left, 2 right, 4 middle; shift 1 Shift, 2 Ctrl, 4 Alt; x and y
  // in twips from the control's top left corner, for presses on the surface
  // and on the labels alike.
  void MouseDown(int button, int shift, int x, int y);
  void MouseMove(int button, int shift, int x, int y);
  void MouseUp(int button, int shift, int x, int y);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void LayOut();
  void ApplyOutline();
  void PaintBottomTabs(class QPainter& painter);
  void ApplyLabelColours();
  int LabelIndexOf(const QObject* object) const;

  bool enabled_ = true;
  bool gradient_ = false;
  QColor foreColor_;  // invalid: the system's button text
  QColor backColor_;  // invalid: the system's button face
  qint16 currentTab_ = 0;
  qint16 previousTab_ = 0;
  qint16 tabs_ = 3;
  // Only 1 (tabs along the bottom) is drawn; the other locations were never
  // built and paint nothing.
  int tabLocation_ = 1;
  std::array<int, 3> edges_{0, 0, 0};
  std::array<QLabel*, 4> labels_{};
  // Compared with a new caption before it reaches a label. Nothing ever
  // writes into it, so every non-empty caption gets through.
  QStringList captionList_;
  int pressedLabel_ = 0;
  std::function<QString(int)> describe_;
};
