#include "controls/MsgBoxEnhanced.h"

#include <QApplication>
#include <QScreen>
#include <QStyle>

#include "controls/MessageBox.h"
#include "controls/MsgBoxLayout.h"
#include "controls/MsgBoxStyle.h"
#include "platform/Twips.h"

namespace {

constexpr QStyle::StandardPixmap IconPixmaps[4] = {
    QStyle::SP_MessageBoxCritical, QStyle::SP_MessageBoxQuestion, QStyle::SP_MessageBoxWarning,
    QStyle::SP_MessageBoxInformation};

QRect ToTwips(const QRect& pixels) {
  return QRect(twips::FromPixels(pixels.x()), twips::FromPixels(pixels.y()),
               twips::FromPixels(pixels.width()), twips::FromPixels(pixels.height()));
}

void SetTextColor(QWidget* widget, const QColor& color) {
  QPalette palette = widget->palette();
  palette.setColor(QPalette::WindowText, color);
  widget->setPalette(palette);
}

}  // namespace

MsgBoxEnhanced::MsgBoxEnhanced() {
  const int pixels = QApplication::style()->pixelMetric(QStyle::PM_LargeIconSize);
  IconSize_ = twips::FromPixels(pixels > 0 ? pixels : 32);
}

MessageBox* MsgBoxEnhanced::Form() const { return Form_.data(); }

MsgBoxEnhanced::~MsgBoxEnhanced() {
  *Alive_ = false;
  if (Form_) {
    if (ShowingModal_) {
      Form_->Unload();
      Form_->deleteLater();
    } else
      delete Form_.data();
  }
}

void MsgBoxEnhanced::SetBackColorBody(OleColor value) {
  BackColorBody_ = SysColor::OrDefault(value, SysColor::ButtonFace);
}
void MsgBoxEnhanced::SetBackColorButtons(OleColor value) {
  BackColorButtons_ = SysColor::OrDefault(value, SysColor::ButtonFace);
}
void MsgBoxEnhanced::SetBackColorHeading(OleColor value) {
  BackColorHeading_ = SysColor::OrDefault(value, SysColor::ActiveCaption);
}
void MsgBoxEnhanced::SetForeColorBody(OleColor value) {
  ForeColorBody_ = SysColor::OrDefault(value, SysColor::ButtonText);
}
void MsgBoxEnhanced::SetForeColorHeading(OleColor value) {
  ForeColorHeading_ = SysColor::OrDefault(value, SysColor::HighlightText);
}
void MsgBoxEnhanced::SetGradientDirection(int value) {
  GradientDirection_ = msgbox::StoredGradientDirection(value);
}
void MsgBoxEnhanced::SetHeadingType(int value) {
  HeadingType_ = value == 0 || value == 1 ? value : 0;
}
void MsgBoxEnhanced::SetTextAlignment(int value) {
  TextAlignment_ = value >= 0 && value <= 2 ? value : 0;
}
void MsgBoxEnhanced::SetTimerSeconds(int value) { TimerSeconds_ = value < 0 ? 0 : value; }
void MsgBoxEnhanced::SetStartUpPosition(int value) {
  StartUpPosition_ = value >= 0 && value <= 2 ? value : 2;
}
void MsgBoxEnhanced::SetTop(qint32 value) { Top_ = value < 0 ? 0 : value; }
void MsgBoxEnhanced::SetLeft(qint32 value) { Left_ = value < 0 ? 0 : value; }

qint16 MsgBoxEnhanced::MsgBox(const QString& Prompt, qint16 Buttons, const QString& Title) {
  // There is one form: a question asked while another one waits for its
  // answer cannot be shown. A box left up without waiting gives way.
  if (ShowingModal_) return msgbox::TimedOut;
  if (Form_) delete Form_.data();

  QWidget* owner = QApplication::activeWindow();
  if (qobject_cast<MessageBox*>(owner)) owner = nullptr;
  QRect ownerRect;
  if (StartUpPosition_ == 1) {
    if (owner)
      ownerRect = ToTwips(owner->frameGeometry());
    else
      StartUpPosition_ = 2;
  }

  auto* form = new MessageBox(*this);
  Form_ = form;

  SetTextColor(form->TopCaption, ColorFromOle(ForeColorHeading_));
  form->TopHeading->Drawing().BackColor = ColorFromOle(BackColorHeading_);
  form->Background->Drawing().BackColor = ColorFromOle(BackColorBody_);
  SetTextColor(form->MsgText, ColorFromOle(ForeColorBody_));
  for (QPushButton* button : form->MsgButton) {
    QPalette palette = button->palette();
    palette.setColor(QPalette::Button, ColorFromOle(BackColorButtons_));
    button->setPalette(palette);
  }

  QString title = Title;
  if (title.isEmpty()) title = DefaultTitle_;
  if (title.isEmpty() && owner) title = owner->windowTitle().left(255);
  if (title.isEmpty()) title = QStringLiteral("Message");
  form->TopCaption->setText(title);
  form->setWindowTitle(title);
  const QSize captionSize = form->TopCaption->sizeHint();

  const msgbox::Style style = msgbox::DecodeStyle(Buttons);
  IconIndex_ = style.IconIndex;
  IconPicture_ = QPixmap();
  const int iconPixels = twips::ToPixels(IconSize_);
  if (IconIndex_ >= 0)
    IconPicture_ = QApplication::style()->standardIcon(IconPixmaps[IconIndex_]).pixmap(iconPixels);
  const bool hasIcon = IconIndex_ >= 0;

  for (int i = 0; i < 4; ++i) {
    QPushButton* button = form->MsgButton[i];
    const bool used = i < style.Captions.size();
    button->setText(used ? style.Captions[i] : QString());
    button->setEnabled(used);
    button->setVisible(used);
    button->setFocusPolicy(used ? Qt::StrongFocus : Qt::NoFocus);
  }
  form->DefaultIndex = style.EffectiveDefault();
  for (int i = 0; i < 4; ++i) {
    form->MsgButton[i]->setAutoDefault(true);
    form->MsgButton[i]->setDefault(i == form->DefaultIndex);
  }

  QString prompt = Prompt;
  prompt.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  prompt.replace(QLatin1Char('\r'), QLatin1Char('\n'));
  form->MsgText->setText(prompt);
  const QSize textSize = form->MsgText->sizeHint();

  QScreen* screen = owner && owner->screen() ? owner->screen() : QGuiApplication::primaryScreen();
  const QRect screenRect = screen ? ToTwips(screen->geometry()) : QRect(0, 0, 12000, 9000);

  msgbox::LayoutInput in;
  in.CaptionWidth = twips::FromPixels(captionSize.width());
  in.ControlBox = ControlBox_;
  in.ButtonCount = static_cast<int>(style.Captions.size());
  in.HasIcon = hasIcon;
  in.IconWidth = in.IconHeight = hasIcon ? IconSize_ : 0;
  in.TextWidth = twips::FromPixels(textSize.width());
  in.TextHeight = twips::FromPixels(textSize.height());
  in.TextAlignment = TextAlignment_;
  in.ScreenWidth = screenRect.width();
  const msgbox::Layout layout = msgbox::ComputeLayout(in);

  const int formWidth = twips::ToPixels(layout.FormWidth);
  const int formHeight = twips::ToPixels(layout.FormHeight);
  const int headingHeight = twips::ToPixels(msgbox::HeadingHeight);
  form->setFixedSize(formWidth, formHeight);
  form->TopHeading->setGeometry(0, 0, formWidth, headingHeight);
  form->Background->setGeometry(0, headingHeight, formWidth, formHeight - headingHeight);
  form->TopCaption->setGeometry(twips::ToPixels(msgbox::CaptionLeft),
                                (headingHeight - captionSize.height()) / 2, captionSize.width(),
                                captionSize.height());
  for (int i = 0; i < 3; ++i) {
    form->HLine[i]->setGeometry(0, headingHeight - 3 + i, formWidth, 1);
    form->HLine[i]->setVisible(HeadingType_ == 1);
  }

  form->MsgText->setAlignment(TextAlignment_ == 1   ? Qt::AlignRight | Qt::AlignTop
                              : TextAlignment_ == 2 ? Qt::AlignHCenter | Qt::AlignTop
                                                    : Qt::AlignLeft | Qt::AlignTop);
  form->MsgText->setGeometry(twips::ToPixels(layout.TextX), twips::ToPixels(layout.TextY),
                             textSize.width(), textSize.height());
  for (int i = 0; i < 4; ++i)
    form->MsgButton[i]->setGeometry(twips::ToPixels(layout.ButtonLeft[i]),
                                    twips::ToPixels(layout.ButtonTop),
                                    twips::ToPixels(msgbox::ButtonWidth),
                                    twips::ToPixels(msgbox::ButtonHeight));
  if (hasIcon && !GradientPaint_)
    form->Background->SetOverlay(IconPicture_, QPoint(twips::ToPixels(msgbox::IconLeft),
                                                      twips::ToPixels(msgbox::IconTop)));

  int left = 0, top = 0;
  switch (StartUpPosition_) {
    case 0:
      left = Left_;
      top = Top_;
      break;
    case 1:
      left = ownerRect.x() + (ownerRect.width() - layout.FormWidth) / 2;
      top = ownerRect.y() + (ownerRect.height() - layout.FormHeight) / 2;
      break;
    default:
      left = screenRect.x() + (screenRect.width() - layout.FormWidth) / 2;
      top = screenRect.y() + (screenRect.height() - layout.FormHeight) / 2;
      break;
  }
  form->move(twips::ToPixels(left), twips::ToPixels(top));

  const int closeSize = twips::ToPixels(msgbox::CloseBoxSize);
  form->ControlBoxUp->setGeometry(twips::ToPixels(layout.CloseBoxLeft),
                                  (headingHeight - closeSize) / 2, closeSize, closeSize);
  form->ControlBoxUp->setVisible(ControlBox_);
  form->ControlBoxUp->setEnabled(ControlBox_);

  Result_ = msgbox::TimedOut;
  if (SoundBeep_) QApplication::beep();

  // Staying on top is settled before the window first shows: changing it on
  // a shown dialog would hide it.
  if (KeepOnTop_) SetWindowOnTop(form, true);
  if (!Modal_) {
    form->setModal(false);
    QObject::connect(form, &QDialog::finished, form, &QObject::deleteLater);
    form->show();
    return msgbox::TimedOut;
  }
  form->setWindowModality(Qt::ApplicationModal);
  ShowingModal_ = true;
  const std::shared_ptr<bool> alive = Alive_;
  form->exec();
  if (!*alive) return msgbox::TimedOut;
  ShowingModal_ = false;
  delete Form_.data();
  return Result_;
}
