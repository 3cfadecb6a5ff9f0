#pragma once
// Headings: a heading strip: the caption on a band of BackColor with an
// etched line beneath.

#include <QFont>
#include <QString>

#include "controls/SmallControl.h"

class Headings : public SmallControl {
  Q_OBJECT
 public:
  explicit Headings(QWidget* parent = nullptr);

  QFont Font() const { return font(); }
  void SetFont(const QFont& font);
  quint32 ForeColor() const { return foreColor_; }
  void SetForeColor(quint32 color);
  quint32 BackColor() const { return backColor_; }
  void SetBackColor(quint32 color);
  QString Caption() const { return caption_; }
  void SetCaption(const QString& caption);

  void Refresh() { update(); }
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  quint32 foreColor_ = 0x80000012;
  quint32 backColor_ = 0x8000000F;
  QString caption_;
};
