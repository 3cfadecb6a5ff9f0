#include "fileops/ReplaceVerify.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>

#include "catalogue/MediaIcons.h"
#include "catalogue/MediaPicture.h"
#include "catalogue/MediaTypes.h"
#include "controls/Label3D.h"
#include "controls/NewImage.h"
#include "core/AppState.h"
#include "core/WindowRegistry.h"
#include "fileops/ReplaceTexts.h"
#include "platform/FileTimes.h"
#include "platform/Twips.h"

namespace {

// Measures of the window, in twips.
constexpr int Margin = 240;
constexpr int ColumnWidth = 4200;
constexpr int Width = 3 * Margin + 2 * ColumnWidth;
constexpr int HeadingTop = 540;
constexpr int AreaTop = 930;
constexpr int AreaSize = 1800;
constexpr int RowTop = AreaTop + AreaSize + 180;
constexpr int RowHeight = 270;
constexpr int CaptionWidth = 720;
constexpr int QuestionTop = RowTop + 4 * RowHeight + 180;
constexpr int ButtonTop = QuestionTop + 285 + 180;
constexpr int ButtonWidth = 1095;
constexpr int ButtonHeight = 375;
constexpr int ButtonGap = 105;
constexpr int Height = ButtonTop + ButtonHeight + 300;

QRect Pixels(int left, int top, int width, int height) {
  return QRect(twips::ToPixels(left), twips::ToPixels(top), twips::ToPixels(width),
               twips::ToPixels(height));
}

// The text behind the last separator of a path.
QString NameOf(const QString& path) { return path.mid(path.lastIndexOf('/') + 1); }

}  // namespace

ReplaceVerify::ReplaceVerify(QWidget* parent) : VerifyWindow(Id, " Replace Media File", parent) {
  setFixedSize(twips::ToPixels(Width), twips::ToPixels(Height));

  Label1 = AddLabel("Label1", "A file with the same name already exists in the destination folder.",
                    Margin, 180, Width - 2 * Margin, 285, Qt::AlignCenter);
  MsgText = AddLabel("MsgText", "Do you wish to replace this file?", Margin, QuestionTop,
                     Width - 2 * Margin, 285, Qt::AlignCenter);
  QFont bold = MsgText->font();
  bold.setBold(true);
  MsgText->setFont(bold);

  std::array<Label3D*, 2> headings{};
  const char* headingTexts[2] = {"From file:", "To file:"};
  for (int i = 0; i < 2; ++i) {
    auto* heading = new Label3D(this);
    heading->setObjectName(QString("Label3D%1").arg(i + 1));
    heading->SetCaption(headingTexts[i]);
    heading->SetColor1(0x787878);  // grey 120, 120, 120
    heading->SetColor2(0xFFFFFF);  // a white shadow: engraved in the light body
    QFont font = heading->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.15);
    heading->SetFont(font);
    heading->setGeometry(Pixels(Margin + i * (ColumnWidth + Margin), HeadingTop, ColumnWidth, 330));
    headings[size_t(i)] = heading;
  }
  Label3D1 = headings[0];
  Label3D2 = headings[1];

  const Side from = MakeSide(1, Margin);
  const Side to = MakeSide(2, 2 * Margin + ColumnWidth);
  ImageArea1 = from.Area;
  Image1 = from.Image;
  Name1 = from.Name;
  Size1 = from.Size;
  Date1 = from.Date;
  Time1 = from.Time;
  ImageArea2 = to.Area;
  Image2 = to.Image;
  Name2 = to.Name;
  Size2 = to.Size;
  Date2 = to.Date;
  Time2 = to.Time;

  const char* captions[2] = {"&Yes", "&No"};
  const int rowLeft = (Width - (2 * ButtonWidth + ButtonGap)) / 2;
  for (int i = 0; i < 2; ++i) {
    QPushButton* button =
        AddButton(QString("MsgButton%1").arg(i), captions[i], QColor(220, 230, 240));
    button->setGeometry(
        Pixels(rowLeft + i * (ButtonWidth + ButtonGap), ButtonTop, ButtonWidth, ButtonHeight));
    connect(button, &QPushButton::clicked, this, [this, i] { Answer(i == 0 ? 6 : 7); });
    MsgButton[size_t(i)] = button;
  }
  MsgButton[0]->setDefault(true);

  // Form_Load.
  const AppState& app = App();
  if (!app.ReplaceSource.isEmpty()) FillSide(from, app.ReplaceSource);
  if (!app.ReplaceTarget.isEmpty()) FillSide(to, app.ReplaceTarget);
  CentreOnMainWindow();
}

ReplaceVerify::Side ReplaceVerify::MakeSide(int side, int left) {
  Side made{};
  made.Area = new QFrame(this);
  made.Area->setObjectName(QString("ImageArea%1").arg(side));
  made.Area->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  made.Area->setAutoFillBackground(true);
  QPalette palette = made.Area->palette();
  palette.setColor(QPalette::Window, Qt::white);
  made.Area->setPalette(palette);
  made.Area->setGeometry(Pixels(left + (ColumnWidth - AreaSize) / 2, AreaTop, AreaSize, AreaSize));
  made.Image = new NewImage(made.Area);
  made.Image->setObjectName(QString("Image%1").arg(side));
  made.Image->hide();

  const char* captions[4] = {"Name:", "Size:", "Date:", "Time:"};
  const char* names[4] = {"Name", "Size", "Date", "Time"};
  std::array<QLabel*, 4> values{};
  for (int row = 0; row < 4; ++row) {
    const int top = RowTop + row * RowHeight;
    AddLabel(QString("%1Label%2").arg(names[row]).arg(side), captions[row], left, top, CaptionWidth,
             RowHeight);
    values[size_t(row)] = AddLabel(QString("%1%2").arg(names[row]).arg(side), QString(),
                                   left + CaptionWidth, top, ColumnWidth - CaptionWidth, RowHeight);
  }
  made.Name = values[0], made.Size = values[1], made.Date = values[2], made.Time = values[3];
  return made;
}

void ReplaceVerify::FillSide(const Side& side, const QString& path) {
  const int inner = AreaSize - 60;
  const QString type = GetMediaType(path);
  QSize boxTwips(inner, inner);
  if (type == "A" || type == "V") {
    side.Image->SetPicture(MediaIcon(type == "A" ? MediaIconKind::Audio : MediaIconKind::Video,
                                     twips::ToPixels(inner), devicePixelRatioF()));
  } else {
    // A file that can't be decoded comes back as the InvalidImage picture.
    QImage picture;
    LoadMediaPicture(path, picture, QSize(twips::ToPixels(inner), twips::ToPixels(inner)));
    boxTwips = PictureBoxTwips(picture.size(), AreaSize);
    side.Image->SetPicture(QPixmap::fromImage(picture));
  }
  // The image stands in the middle of its area.
  const QSize box(twips::ToPixels(boxTwips.width()), twips::ToPixels(boxTwips.height()));
  side.Image->setGeometry(QRect(QPoint((side.Area->width() - box.width()) / 2,
                                       (side.Area->height() - box.height()) / 2),
                                box));
  side.Image->show();
  side.Image->Refresh();

  const QString name = NameOf(path);
  names_[side.Name == Name1 ? 0 : 1] = name;
  // A name too long for its place is shortened in the middle; the whole
  // name is its tooltip.
  const QString shown =
      side.Name->fontMetrics().elidedText(name, Qt::ElideMiddle, side.Name->width());
  side.Name->setText(shown);
  side.Name->setToolTip(shown == name ? QString() : name);
  side.Size->setText(ReplaceSizeText(std::max<qint64>(platform::FileSizeBytes(path), 0)));
  const QDateTime modified = platform::FileModifiedTime(path);
  side.Date->setText(modified.isValid() ? ReplaceDateText(modified.date()) : QString());
  side.Time->setText(modified.isValid() ? ReplaceTimeText(modified.time()) : QString());
}

QString ReplaceVerify::ShownName(int side) const { return names_[side == 2 ? 1 : 0]; }

void ReplaceVerify::showEvent(QShowEvent* event) {
  VerifyWindow::showEvent(event);
  CentreOnMainWindow();
  MsgButton[0]->setFocus();
}

void ShowReplaceVerify() {
  ShowVerifyWindowModal(new ReplaceVerify(Windows().Find(WindowId::MainForm)));
}
