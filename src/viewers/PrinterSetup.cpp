#include "viewers/PrinterSetup.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QPushButton>
#include <QScreen>
#include <algorithm>

#include "catalogue/MediaPicture.h"
#include "catalogue/PathParts.h"
#include "controls/NumberBox.h"
#include "controls/PaintRoutines.h"
#include "controls/TransRadio.h"
#include "controls/UpDown.h"
#include "core/AppState.h"
#include "core/CommonKeys.h"
#include "core/WindowRegistry.h"
#include "platform/KeyCodes.h"
#include "platform/Twips.h"

namespace {

// Measures of the window, in twips.
constexpr int Margin = 240;
constexpr int CaptionWidth = 1260;
constexpr int FieldLeft = Margin + CaptionWidth;
constexpr int FieldWidth = 3300;
constexpr int Width = FieldLeft + FieldWidth + Margin;
constexpr int RowHeight = 315;
constexpr int PrinterTop = 255;
constexpr int CopiesTop = 735;
constexpr int CopiesWidth = 600;
constexpr int UpDownWidth = 255;
constexpr int OrientationTop = 1215;
constexpr int OptionHeight = 285;
constexpr int OptionStep = 300;
constexpr int ButtonTop = OrientationTop + 2 * OptionStep + 240;
constexpr int ButtonWidth = 1215;
constexpr int ButtonHeight = 375;
constexpr int ButtonGap = 120;
constexpr int Height = ButtonTop + ButtonHeight + Margin;

// Where the picture stands on the page, in twips from the top left of the
// printable area.
constexpr int PictureLeft = 60;
constexpr int PictureTop = 180;
constexpr int TwipsPerInch = 1440;

// A printer the system lists but that prints nothing on paper.
const QString NotAPrinter = QStringLiteral("Rendering Subsystem");

QRect PixelsOf(int left, int top, int width, int height) {
  return QRect(twips::ToPixels(left), twips::ToPixels(top), twips::ToPixels(width),
               twips::ToPixels(height));
}

int DeviceUnits(int twipsValue, int dpi) { return qRound(double(twipsValue) * dpi / TwipsPerInch); }

// The whole number a number box holds; 0 when it is empty.
int WholeValue(const NumberBox* box) { return int(box->Value().toDouble()); }

}  // namespace

// ---- The window ------------------------------------------------------------------

PrinterSetup::PrinterSetup(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint),
      Combo1(new QComboBox(this)),
      NumberBox1(new NumberBox(this)),
      UpDown1(new UpDown(this)),
      OrientationOption{new TransRadio(this), new TransRadio(this)},
      OKButton(new QPushButton("&OK", this)),
      exitButton(new QPushButton("Cancel", this)) {
  setObjectName(WindowName(Id));
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(" Printer Setup");
  setModal(true);

  Combo1->setObjectName("Combo1");
  NumberBox1->setObjectName("NumberBox1");
  NumberBox1->SetFormat("#0");
  NumberBox1->SetPositiveOnly(true);
  UpDown1->setObjectName("UpDown1");
  UpDown1->SetRange(1, MaxCopies);
  const char* captions[2] = {"Portrait", "Landscape"};
  for (int i = 0; i < 2; ++i) {
    OrientationOption[size_t(i)]->setObjectName(QString("OrientationOption%1").arg(i));
    OrientationOption[size_t(i)]->SetCaption(captions[i]);
  }
  OKButton->setObjectName("OKButton");
  exitButton->setObjectName("exitButton");
  for (QPushButton* button : {OKButton, exitButton}) {
    QPalette palette = button->palette();
    palette.setColor(QPalette::Button, App().ColorLightGrey);
    button->setPalette(palette);
  }
  OKButton->setDefault(true);
  PlaceControls();

  // Form_Load: the printers with the default one chosen, one copy, upright.
  FillPrinters();
  NumberBox1->SetValue("1");
  UpDown1->SetValue(1);
  OrientationOption[0]->SetValue(true);

  connect(OKButton, &QPushButton::clicked, this, &PrinterSetup::OKButton_Click);
  connect(exitButton, &QPushButton::clicked, this, &PrinterSetup::exitButton_Click);
  connect(NumberBox1, &NumberBox::Change, this, &PrinterSetup::NumberBox1_Change);
  connect(NumberBox1, &NumberBox::KeyDown, this, &PrinterSetup::NumberBox1_KeyDown);
  connect(UpDown1, &UpDown::Change, this, &PrinterSetup::UpDown1_Change);

  Windows().Loaded(this);
}

QLabel* PrinterSetup::AddLabel(const QString& name, const QString& text, int left, int top,
                               int width) {
  auto* label = new QLabel(text, this);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  label->setGeometry(PixelsOf(left, top, width, RowHeight));
  return label;
}

void PrinterSetup::PlaceControls() {
  AddLabel("PrinterLabel", "Printer:", Margin, PrinterTop, CaptionWidth);
  Combo1->setGeometry(PixelsOf(FieldLeft, PrinterTop, FieldWidth, RowHeight));
  AddLabel("CopiesLabel", "Copies:", Margin, CopiesTop, CaptionWidth);
  NumberBox1->setGeometry(PixelsOf(FieldLeft, CopiesTop, CopiesWidth, RowHeight));
  UpDown1->setGeometry(PixelsOf(FieldLeft + CopiesWidth, CopiesTop, UpDownWidth, RowHeight));
  AddLabel("OrientationLabel", "Orientation:", Margin, OrientationTop, CaptionWidth);
  for (int i = 0; i < 2; ++i)
    OrientationOption[size_t(i)]->setGeometry(
        PixelsOf(FieldLeft, OrientationTop + i * OptionStep, FieldWidth, OptionHeight));
  const int exitLeft = Width - Margin - ButtonWidth;
  exitButton->setGeometry(PixelsOf(exitLeft, ButtonTop, ButtonWidth, ButtonHeight));
  OKButton->setGeometry(
      PixelsOf(exitLeft - ButtonGap - ButtonWidth, ButtonTop, ButtonWidth, ButtonHeight));
  setFixedSize(twips::ToPixels(Width), twips::ToPixels(Height));
}

void PrinterSetup::FillPrinters() {
  for (const QPrinterInfo& info : QPrinterInfo::availablePrinters())
    if (info.printerName() != NotAPrinter) Combo1->addItem(info.printerName());
  const int chosen = Combo1->findText(QPrinterInfo::defaultPrinterName());
  if (chosen >= 0) Combo1->setCurrentIndex(chosen);
}

int PrinterSetup::Copies() const { return std::max(WholeValue(NumberBox1), 1); }

int PrinterSetup::Orientation() const { return OrientationOption[1]->Value() ? 2 : 1; }

void PrinterSetup::OKButton_Click() {
  const QPrinterInfo printer = Combo1->count() > 0 ? QPrinterInfo::printerInfo(Combo1->currentText())
                                                   : QPrinterInfo();
  if (!printer.isNull()) {
    const QString path = App().CurrentMediaFile;
    QImage picture;
    // A picture that cannot be decoded prints as the marker the viewers
    // show for it; the callers have checked the picture before.
    LoadMediaPicture(path, picture);
    QPrinter job(printer, QPrinter::HighResolution);
    job.setDocName(GetBaseName(path));
    PrintPictureCopies(job, picture, Copies(), Orientation());
  }
  exitButton_Click();
}

void PrinterSetup::exitButton_Click() {
  if (Windows().Find(Id) == this)
    Windows().Unload(Id);
  else
    close();
}

void PrinterSetup::NumberBox1_Change() {
  // A number above the most copies is lowered to it; the arrow buttons
  // follow the box.
  const int value = WholeValue(NumberBox1);
  if (value > UpDown1->Max()) {
    NumberBox1->SetValue(QString::number(UpDown1->Max()));
    return;  // the box's change comes back here with the lowered value
  }
  UpDown1->SetValue(value);
}

void PrinterSetup::NumberBox1_KeyDown(int keyCode, int shift) {
  if (shift == keys::NoShift) UpDown1->StepNumberBox(NumberBox1, keyCode);
}

void PrinterSetup::UpDown1_Change() { UpDown1->CopyToNumberBox(NumberBox1); }

void PrinterSetup::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  // In the middle of the main window, or of the screen without it.
  QRect over;
  if (const QWidget* main = Windows().Find(WindowId::MainForm); main && main->isVisible())
    over = main->frameGeometry();
  else if (const QScreen* screen = QGuiApplication::primaryScreen())
    over = screen->availableGeometry();
  const QSize outer = frameGeometry().size().expandedTo(size());
  move(over.left() + (over.width() - outer.width()) / 2,
       over.top() + (over.height() - outer.height()) / 2);
}

void PrinterSetup::keyPressEvent(QKeyEvent* event) {
  // Enter presses the button with the focus, or OK.
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    QDialog::keyPressEvent(event);
    return;
  }
  HandleCommonKey(this, keys::KeyCode(event), keys::ShiftOf(event), true, false);
}

void PrinterSetup::closeEvent(QCloseEvent* event) {
  Windows().Closed(this);
  QDialog::closeEvent(event);
}

void PrinterSetup::paintEvent(QPaintEvent*) {
  // The white gradient, laid over three times the window's height so that
  // only its light part lies under the controls.
  QPainter painter(this);
  PaintFormGradient(painter, QSize(width(), height() * 3), 255, 255, 255, 1);
}

// ---- Printing ------------------------------------------------------------------

QRect PrintedPictureRect(const QImage& picture, int dpiX, int dpiY) {
  // A picture's natural size is the size it has in the viewer, one pixel
  // to 15 twips (96 to the inch), whatever resolution the file claims: many
  // files carry none or a made-up one, and the printout then is the picture
  // the user saw.
  const int widthTwips = twips::FromPixels(picture.width());
  const int heightTwips = twips::FromPixels(picture.height());
  return QRect(DeviceUnits(PictureLeft, dpiX), DeviceUnits(PictureTop, dpiY),
               DeviceUnits(widthTwips, dpiX), DeviceUnits(heightTwips, dpiY));
}

QRect PrintPictureCopies(QPrinter& printer, const QImage& picture, int copies, int orientation) {
  printer.setPageOrientation(orientation == 2 ? QPageLayout::Landscape : QPageLayout::Portrait);
  QRect drawn;
  QPainter painter;
  if (!picture.isNull() && copies > 0 && painter.begin(&printer)) {
    drawn = PrintedPictureRect(picture, printer.resolution(), printer.resolution());
    for (int copy = 1; copy <= copies; ++copy) {
      // Each copy ends its page. The new page is begun when the next copy
      // is drawn on it, so that the end of the job leaves no empty sheet
      // behind: n copies are n sheets.
      if (copy > 1) printer.newPage();
      painter.drawImage(drawn, picture);
    }
    painter.end();
  }
  printer.setPageOrientation(QPageLayout::Portrait);
  return drawn;
}
