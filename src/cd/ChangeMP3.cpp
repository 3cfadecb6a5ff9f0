#include "cd/ChangeMP3.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QTimer>

#include "controls/NumberBox.h"
#include "controls/PaintRoutines.h"
#include "core/AppState.h"
#include "core/CommonKeys.h"
#include "core/WindowRegistry.h"
#include "platform/KeyCodes.h"
#include "platform/Twips.h"

namespace {

// Measures of the window's inside, in twips.
constexpr int Margin = 240;
constexpr int CaptionWidth = 720;
constexpr int FieldLeft = Margin + CaptionWidth + 60;
constexpr int FieldWidth = 3600;
constexpr int Width = FieldLeft + FieldWidth + Margin;
constexpr int RowTop = 240;
constexpr int RowStep = 420;
constexpr int RowHeight = 315;
constexpr int YearWidth = 900;
constexpr int TrackCaptionLeft = FieldLeft + YearWidth + 360;
constexpr int TrackCaptionWidth = 600;
constexpr int TrackWidth = 600;
constexpr int ButtonTop = RowTop + 5 * RowStep + 120;
constexpr int ButtonWidth = 1215;
constexpr int ButtonHeight = 375;
constexpr int ButtonGap = 120;
constexpr int Height = ButtonTop + ButtonHeight + Margin;
// Where the window waits until its caller places it.
constexpr int UnplacedLeft = -6000;
// The most characters of a text field of the tail record.
constexpr int TextLength = 30;

QRect PixelsOf(int left, int top, int width, int height) {
  return QRect(twips::ToPixels(left), twips::ToPixels(top), twips::ToPixels(width),
               twips::ToPixels(height));
}

int RowAt(int row) { return RowTop + row * RowStep; }

// The whole number a number box holds; 0 when it is empty.
int WholeValue(const NumberBox* box) { return int(qRound64(box->Value().toDouble())); }

QString NumberText(int value) { return value > 0 ? QString::number(value) : QString(); }

// Esc, F1 to F10 and Ctrl+F belong to the window whatever has the focus.
bool IsWindowKey(int keyCode, int shift) {
  if (keyCode == keys::Escape) return true;
  if (keyCode >= keys::F1 && keyCode <= keys::F1 + 9) return true;
  return keyCode == 'F' && shift == keys::CtrlMask;
}

}  // namespace

ChangeMP3::ChangeMP3(QWidget* parent)
    : QWidget(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint),
      TitleLabel(new QLineEdit(this)),
      AuthorLabel(new QLineEdit(this)),
      AlbumLabel(new QLineEdit(this)),
      YearLabel(new NumberBox(this)),
      TrackLabel(new NumberBox(this)),
      CategoryLabel(new QComboBox(this)),
      OKButton(new QPushButton("&OK", this)),
      cancelButton(new QPushButton("Cancel", this)) {
  setObjectName(WindowName(Id));
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(" MP3 Song Title");

  TitleLabel->setObjectName("TitleLabel");
  AuthorLabel->setObjectName("AuthorLabel");
  AlbumLabel->setObjectName("AlbumLabel");
  for (QLineEdit* box : {TitleLabel, AuthorLabel, AlbumLabel}) box->setMaxLength(TextLength);
  YearLabel->setObjectName("YearLabel");
  YearLabel->SetFormat("####");
  YearLabel->SetPositiveOnly(true);
  TrackLabel->setObjectName("TrackLabel");
  TrackLabel->SetFormat("##");
  TrackLabel->SetPositiveOnly(true);
  CategoryLabel->setObjectName("CategoryLabel");
  CategoryLabel->addItems(GenreNames());
  CategoryLabel->setCurrentIndex(-1);
  OKButton->setObjectName("OKButton");
  cancelButton->setObjectName("cancelButton");
  for (QPushButton* button : {OKButton, cancelButton}) {
    QPalette palette = button->palette();
    palette.setColor(QPalette::Button, App().ColorLightGrey);
    button->setPalette(palette);
  }
  PlaceControls();
  move(twips::ToPixels(UnplacedLeft), 0);

  connect(OKButton, &QPushButton::clicked, this, &ChangeMP3::OKButton_Click);
  connect(cancelButton, &QPushButton::clicked, this, &ChangeMP3::cancelButton_Click);
  for (QWidget* control : findChildren<QWidget*>()) control->installEventFilter(this);

  Windows().Loaded(this);
}

void ChangeMP3::PlaceControls() {
  const struct {
    const char* name;
    const char* text;
    int left, top, width;
  } captions[] = {{"TitleCaption", "Title:", Margin, RowAt(0), CaptionWidth},
                  {"ArtistCaption", "Artist:", Margin, RowAt(1), CaptionWidth},
                  {"AlbumCaption", "Album:", Margin, RowAt(2), CaptionWidth},
                  {"StyleCaption", "Style:", Margin, RowAt(3), CaptionWidth},
                  {"YearCaption", "Year:", Margin, RowAt(4), CaptionWidth},
                  {"TrackCaption", "Track:", TrackCaptionLeft, RowAt(4), TrackCaptionWidth}};
  for (const auto& c : captions) {
    auto* label = new QLabel(c.text, this);
    label->setObjectName(c.name);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    label->setGeometry(PixelsOf(c.left, c.top, c.width, RowHeight));
  }
  TitleLabel->setGeometry(PixelsOf(FieldLeft, RowAt(0), FieldWidth, RowHeight));
  AuthorLabel->setGeometry(PixelsOf(FieldLeft, RowAt(1), FieldWidth, RowHeight));
  AlbumLabel->setGeometry(PixelsOf(FieldLeft, RowAt(2), FieldWidth, RowHeight));
  CategoryLabel->setGeometry(PixelsOf(FieldLeft, RowAt(3), FieldWidth, RowHeight));
  YearLabel->setGeometry(PixelsOf(FieldLeft, RowAt(4), YearWidth, RowHeight));
  TrackLabel->setGeometry(
      PixelsOf(TrackCaptionLeft + TrackCaptionWidth, RowAt(4), TrackWidth, RowHeight));
  const int cancelLeft = Width - Margin - ButtonWidth;
  cancelButton->setGeometry(PixelsOf(cancelLeft, ButtonTop, ButtonWidth, ButtonHeight));
  OKButton->setGeometry(
      PixelsOf(cancelLeft - ButtonGap - ButtonWidth, ButtonTop, ButtonWidth, ButtonHeight));
  setFixedSize(twips::ToPixels(Width), twips::ToPixels(Height));
}

void ChangeMP3::GetData(const QString& path) { tagFile_ = path; }

void ChangeMP3::Form_Activate() {
  values_ = LoadTagsFromFile(tagFile_);
  TitleLabel->setText(values_.Title);
  AuthorLabel->setText(values_.Artist);
  AlbumLabel->setText(values_.Album);
  YearLabel->SetValue(NumberText(values_.Year));
  TrackLabel->SetValue(NumberText(values_.Track));
  CategoryLabel->setCurrentIndex(values_.Genre);
  // The box that took the focus as the window came up offers its new text.
  if (auto* box = qobject_cast<QLineEdit*>(focusWidget());
      box == TitleLabel || box == AuthorLabel || box == AlbumLabel)
    box->selectAll();
}

void ChangeMP3::OKButton_Click() {
  if (closed_) return;
  values_.Title = TitleLabel->text();
  values_.Artist = AuthorLabel->text();
  values_.Album = AlbumLabel->text();
  values_.Year = WholeValue(YearLabel);
  values_.Track = WholeValue(TrackLabel);
  values_.Genre = CategoryLabel->currentIndex();
  // A file that cannot be written stays as it was; nothing is said.
  if (!tagFile_.isEmpty()) SaveTagsToFile(tagFile_, values_);
  Unload();
}

void ChangeMP3::cancelButton_Click() { Unload(); }

void ChangeMP3::Unload() {
  if (Windows().Find(Id) == this)
    Windows().Unload(Id);
  else
    close();
}

bool ChangeMP3::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate && !activated_) {
    // The first activation reads the file; the window does not outlive
    // losing the focus, so there is no second one.
    activated_ = true;
    Form_Activate();
  }
  // Clicking elsewhere closes the window without saving.
  if (event->type() == QEvent::WindowDeactivate && activated_ && !closed_) Unload();
  return QWidget::event(event);
}

bool ChangeMP3::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) {
    // The text boxes offer their whole text for replacing, however the
    // focus came (a click would set the caret after the selection).
    if (auto* box = qobject_cast<QLineEdit*>(watched);
        box == TitleLabel || box == AuthorLabel || box == AlbumLabel)
      QTimer::singleShot(0, box, &QLineEdit::selectAll);
  } else if (event->type() == QEvent::KeyPress) {
    auto* key = static_cast<QKeyEvent*>(event);
    const int keyCode = keys::KeyCode(key);
    const int shift = keys::ShiftOf(key);
    if (IsWindowKey(keyCode, shift)) {
      HandleCommonKey(this, keyCode, shift, true, false);
      return true;
    }
    // Enter presses the button that has the focus, or OK.
    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
      if (auto* button = qobject_cast<QPushButton*>(watched))
        button->click();
      else
        OKButton_Click();
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void ChangeMP3::keyPressEvent(QKeyEvent* event) {
  HandleCommonKey(this, keys::KeyCode(event), keys::ShiftOf(event), true, false);
}

void ChangeMP3::closeEvent(QCloseEvent* event) {
  event->accept();
  if (closed_) return;
  closed_ = true;
  Windows().Closed(this);
}

void ChangeMP3::paintEvent(QPaintEvent*) {
  // The white gradient, laid over three times the window's height so that
  // only its light part lies under the controls.
  QPainter painter(this);
  PaintFormGradient(painter, QSize(width(), height() * 3), 255, 255, 255, 1);
}
