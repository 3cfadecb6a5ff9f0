#include "browser/BottomStrip.h"

#include <QFrame>
#include <QLabel>
#include <QLineEdit>

#include "browser/PageTexts.h"
#include "controls/BalloonHelp.h"
#include "controls/NumberBox.h"
#include "core/HelpTexts.h"
#include "core/Trace.h"
#include "platform/Twips.h"

using namespace pagegeometry;

namespace {

// The width of a label of the size group: its text and a little room.
int TextWidth(const QLabel* label) {
  return twips::FromPixels(label->fontMetrics().horizontalAdvance(label->text())) + 45;
}

void Hide(std::initializer_list<QWidget*> widgets) {
  for (QWidget* widget : widgets) widget->hide();
}

}  // namespace

void BottomStrip::MakeTab(QWidget* window, int tab, QObject* filter) {
  const size_t i = size_t(tab - 1);
  CountLabel[i] = new QLabel(window);
  CountLabel[i]->setObjectName(QString("CountLabel%1").arg(tab));
  PositionLabel[i] = new QLabel("Position:", window);
  PositionLabel[i]->setObjectName(QString("PositionLabel%1").arg(tab));
  PositionLabel[i]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  NumberBox* box = PositionNumber[i] = new NumberBox(window);
  box->setObjectName(QString("PositionNumber%1").arg(tab));
  box->SetFormat("##,###");
  box->SetPositiveOnly(true);
  box->SetMinValue(0);
  box->SetMaxValue(2147483647);
  box->SetEnabled(false);
  box->txtNumber()->installEventFilter(filter);
  box->installEventFilter(filter);
  Hide({CountLabel[i], PositionLabel[i], box});
}

void BottomStrip::MakeSizeGroup(QWidget* window, QObject* filter) {
  Separator = new QFrame(window);
  Separator->setObjectName("Separator");
  Separator->setFrameShape(QFrame::VLine);
  Separator->setFrameShadow(QFrame::Sunken);
  SizeLabel = new QLabel("Thumbnail Size:", window);
  SizeLabel->setObjectName("SizeLabel");
  SizeLabel->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  ThumbnailSize = new NumberBox(window);
  ThumbnailSize->setObjectName("ThumbnailSize");
  ThumbnailSize->SetFormat("0.000");
  ThumbnailSize->SetPositiveOnly(true);
  ThumbnailSize->SetMinValue(0);
  ThumbnailSize->SetMaxValue(3);
  ThumbnailSize->txtNumber()->installEventFilter(filter);
  ThumbnailSize->installEventFilter(filter);
  InchLabel = new QLabel("inches", window);
  InchLabel->setObjectName("InchLabel");
  HideSizeGroup();
  Balloons = new BalloonHelp(window);
}

void BottomStrip::Place(const PageLayout& l, int textHeight) {
  for (size_t i = 0; i < TabCount; ++i) {
    CountLabel[i]->setGeometry(
        twips::ToPixels(QRectF(l.Tabs.left() + FirstCellLeft, l.CountTop, 4200, textHeight)));
    PositionLabel[i]->setGeometry(
        twips::ToPixels(QRectF(l.PositionLabelX, l.CountTop, PositionLabelWidth, textHeight)));
    PositionNumber[i]->setGeometry(twips::ToPixels(
        QRectF(l.PositionLabelX + PositionLabelWidth + LabelGap, l.CountTop - 30, PositionBoxWidth,
               textHeight + 60)));
  }
  // The size group: its labels as wide as their texts, the whole centred.
  const int sizeLabelWidth = TextWidth(SizeLabel);
  const int inchLabelWidth = TextWidth(InchLabel);
  const int sizeBoxWidth = 900;
  const int groupLeft =
      SizeGroupLeft(l, sizeLabelWidth + LabelGap + sizeBoxWidth + LabelGap + inchLabelWidth);
  SizeLabel->setGeometry(
      twips::ToPixels(QRectF(groupLeft, l.CountTop, sizeLabelWidth, textHeight)));
  const int boxLeft = groupLeft + sizeLabelWidth + LabelGap;
  ThumbnailSize->setGeometry(
      twips::ToPixels(QRectF(boxLeft, l.CountTop - 30, sizeBoxWidth, textHeight + 60)));
  InchLabel->setGeometry(twips::ToPixels(
      QRectF(boxLeft + sizeBoxWidth + LabelGap, l.CountTop, inchLabelWidth, textHeight)));
  Separator->setGeometry(twips::ToPixels(QRectF(l.SeparatorX, l.Box.top(), 45, l.Box.height())));
}

void BottomStrip::HideTab(int tab) {
  const size_t i = size_t(tab - 1);
  Hide({CountLabel[i], PositionLabel[i], PositionNumber[i]});
}

void BottomStrip::HideSizeGroup() { Hide({Separator, SizeLabel, ThumbnailSize, InchLabel}); }

void BottomStrip::HideForLayout() {
  for (int tab = PicturesTab; tab <= DocumentsTab; ++tab) HideTab(tab);
  Hide({SizeLabel, InchLabel});
}

void BottomStrip::ShowTab(int tab, const TabState& state) {
  const size_t i = size_t(tab - 1);
  CountLabel[i]->show();
  Separator->setVisible(tab != PicturesTab && state.Count > 0);
  const bool sizeGroup = tab == PicturesTab && state.Count > 0;
  for (QWidget* w : {static_cast<QWidget*>(SizeLabel), static_cast<QWidget*>(ThumbnailSize),
                     static_cast<QWidget*>(InchLabel)}) {
    w->setVisible(sizeGroup);
    w->setEnabled(sizeGroup);
  }
  const bool paging = state.Count > state.PageSize;
  PositionLabel[i]->setVisible(paging);
  PositionNumber[i]->setVisible(paging);
  PositionNumber[i]->SetEnabled(paging);
}

void BottomStrip::ShowPageCount(int tab, const TabState& state) {
  SetCount(tab, PageCountText(tab, state.PageStart, state.PageSize, state.Count));
}

void BottomStrip::ShowEmptyCount(int tab) { SetCount(tab, EmptyCountText(tab)); }

void BottomStrip::SetCount(int tab, const QString& text) {
  QLabel* label = CountLabel[size_t(tab - 1)];
  if (label->text() != text) Trace(QStringLiteral("count %1 %2").arg(tab).arg(text));
  label->setText(text);
}

void BottomStrip::ShowPosition(int tab, qint32 item) {
  PositionNumber[size_t(tab - 1)]->SetValue(QString::number(item + 1));
}

void BottomStrip::ShowThumbnailSize(int twips) {
  ThumbnailSize->SetValue(QString::number(twips / 1440.0, 'f', 3));
}

double BottomStrip::TypedThumbnailSize() const {
  return ThumbnailSize->UnformatNumeric(ThumbnailSize->txtNumber()->text()).toDouble();
}

qint64 BottomStrip::TypedPosition(int tab) const {
  const NumberBox* box = PositionNumber[size_t(tab - 1)];
  return box->UnformatNumeric(box->txtNumber()->text()).toLongLong();
}

void BottomStrip::SetHelp(bool on) {
  Balloons->Clear();
  if (!on) return;
  for (int tab = PicturesTab; tab <= AudiosTab; ++tab) {
    const QString control = QString("PositionNumber(%1)").arg(tab);
    Balloons->SetBalloon(PositionNumber[size_t(tab - 1)], HelpText(control), HelpTitle(control));
  }
  Balloons->SetBalloon(ThumbnailSize, HelpText("ThumbnailSize"), HelpTitle("ThumbnailSize"));
}

int BottomStrip::PositionBoxTab(const QObject* object) const {
  for (int tab = PicturesTab; tab <= DocumentsTab; ++tab) {
    const NumberBox* box = PositionNumber[size_t(tab - 1)];
    if (box && (object == box || object == box->txtNumber())) return tab;
  }
  return 0;
}

bool BottomStrip::IsSizeBox(const QObject* object) const {
  return ThumbnailSize && (object == ThumbnailSize || object == ThumbnailSize->txtNumber());
}
