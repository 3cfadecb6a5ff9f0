#pragma once
// Headings: a heading strip: the caption on a band of BackColor with an
// etched line beneath.

#include <QFont>
#include <QString>

#include "controls/SmallControl.h"
#include "controls/SystemColours.h"

class Headings : public SmallControl {
  Q_OBJECT
 public:
  explicit Headings(QWidget* parent = nullptr);

  QFont Font() const { return font(); }
  void SetFont(const QFont& font);
  // Colour numbers; -1 puts back the default.
  OleColor ForeColor() const { return foreColor_; }
  void SetForeColor(OleColor color);
  OleColor BackColor() const { return backColor_; }
  void SetBackColor(OleColor color);
  QString Caption() const { return caption_; }
  void SetCaption(const QString& caption);

  void Refresh() { update(); }
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  OleColor foreColor_ = SysColor::ButtonText;
  OleColor backColor_ = SysColor::ButtonFace;
  QString caption_;
};
