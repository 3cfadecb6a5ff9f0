#pragma once
// RadioButton: a small option button drawn by hand, without a caption.
// Option buttons with the same parent form one group.

#include <QPixmap>
#include <QWidget>

class RadioButton : public QWidget {
  Q_OBJECT
 public:
  explicit RadioButton(QWidget* parent = nullptr);

  bool Enabled() const { return isEnabled(); }
  void SetEnabled(bool on) { setEnabled(on); }
  // Becoming true clears the other RadioButtons of the parent and raises
  // Click; setting false only clears this one.
  bool Value() const { return value_; }
  void SetValue(bool value);
  // 0 flat, 1 sunken; others become 1.
  int Appearance() const { return appearance_; }
  void SetAppearance(int appearance);
  QPixmap MouseIcon() const { return mouseIcon_; }
  void SetMouseIcon(const QPixmap& icon);
  int MousePointer() const { return mousePointer_; }
  void SetMousePointer(int pointer);
  QWidget* hWnd() { return this; }

  void Refresh() { update(); }

  // The circle, centred in the control.
  QRect CircleRect() const;
  QSize sizeHint() const override { return QSize(15, 15); }

 signals:
  void Click();
  // Buttons 1 left, 2 right, 4 middle; x and y in twips.
  void MouseDown(int button, int shift, int x, int y);
  void MouseUp(int button, int shift, int x, int y);
  void MouseMove(int button, int shift, int x, int y);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  bool value_ = false;
  bool pressed_ = false;
  int appearance_ = 1;
  QPixmap mouseIcon_;
  int mousePointer_ = 0;
};
