// The controls gallery: every control of the control library in one window,
// with sample values, on the shaded background of the program's forms, for
// looking at them by eye. Resting the mouse on the buttons, the number
// boxes or the slider shows their tooltips and balloons; "Message box..."
// asks a question in the program's own message box.

#include <QApplication>
#include <QLabel>
#include <QLinearGradient>
#include <QPainter>
#include <QPushButton>
#include <QStyle>

#include "controls/AutoComplete.h"
#include "controls/BalloonHelp.h"
#include "controls/Button.h"
#include "controls/ButtonFlat.h"
#include "controls/Divider3D.h"
#include "controls/Headings.h"
#include "controls/Label3D.h"
#include "controls/MsgBoxEnhanced.h"
#include "controls/NewImage.h"
#include "controls/NewLabel2.h"
#include "controls/NewSlider.h"
#include "controls/NewTabControl.h"
#include "controls/NumberBox.h"
#include "controls/PaintRoutines.h"
#include "controls/RadioButton.h"
#include "controls/ThumbnailScroll.h"
#include "controls/TransCheck.h"
#include "controls/TransFrame.h"
#include "controls/TransRadio.h"
#include "controls/hTooltip.h"
#include "shell/SharedMessageBox.h"

namespace {

// A form with the program's shaded background, so that the transparent
// controls have something to show through.
class GalleryForm : public QWidget {
 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    PaintFormGradient(painter, size(), 255, 255, 255, 1);
  }
};

template <typename Control>
Control* Place(QWidget* parent, int x, int y, int w, int h) {
  auto* control = new Control(parent);
  control->setGeometry(x, y, w, h);
  return control;
}

Headings* Heading(QWidget* parent, const QString& caption, int x, int y, int w) {
  auto* heading = Place<Headings>(parent, x, y, w, 22);
  heading->SetCaption(caption);
  QFont font = heading->font();
  font.setBold(true);
  heading->SetFont(font);
  return heading;
}

QPixmap StandardPicture(QStyle::StandardPixmap which, int size = 24) {
  return QApplication::style()->standardIcon(which).pixmap(size);
}

// A small flat picture: a coloured square with a border, for the states of
// the flat buttons.
QPixmap Square(const QColor& fill, int size = 28) {
  QPixmap pixmap(size, size);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(fill.darker(160), 2));
  painter.setBrush(fill);
  painter.drawRoundedRect(QRectF(2, 2, size - 4, size - 4), 5, 5);
  return pixmap;
}

// A landscape drawn here, so that the gallery needs no picture file.
QImage SamplePicture() {
  QImage image(240, 160, QImage::Format_RGB32);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  QLinearGradient sky(0, 0, 0, 110);
  sky.setColorAt(0, QColor(40, 90, 170));
  sky.setColorAt(1, QColor(250, 190, 120));
  painter.fillRect(image.rect(), sky);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(255, 230, 90));
  painter.drawEllipse(QPointF(170, 70), 22, 22);
  painter.setBrush(QColor(50, 120, 60));
  painter.drawEllipse(QRectF(-60, 90, 220, 140));
  painter.setBrush(QColor(30, 90, 45));
  painter.drawEllipse(QRectF(90, 100, 240, 130));
  return image;
}

void AddTabsAndNumbers(QWidget* form, hTooltip& tips, BalloonHelp& balloons) {
  Heading(form, "Tab control and thumbnail scroll bar", 10, 10, 640);
  auto* tabs = Place<NewTabControl>(form, 10, 40, 600, 110);
  tabs->SetTabs(4);
  tabs->SetGradient(true);
  const char* captions[] = {"Pictures (128)", "Audio (12)", "Video (3)", "Documents (0)"};
  for (int tab = 1; tab <= 4; ++tab) tabs->SetCaption(tab, captions[tab - 1]);
  tabs->SetCurrentTab(2);
  auto* scroll = Place<ThumbnailScroll>(form, 624, 40, 17, 260);
  scroll->SetMax(10);
  scroll->SetValue(3);
  scroll->SetMouseWheel(false);

  Heading(form, "Number boxes and auto-complete box", 10, 165, 600);
  auto* count = Place<NumberBox>(form, 10, 195, 120, 24);
  count->SetFormat("##,###");
  count->SetValue("1234567");
  auto* ratio = Place<NumberBox>(form, 140, 195, 120, 24);
  ratio->SetFormat("0.000");
  ratio->SetValue("3.14159");
  balloons.SetBalloon(count, "The position in the list.\r\nType a number and press Enter.",
                      "Position");
  tips.AddTool(ratio, "A number with three decimals");
  auto* complete = Place<AutoComplete>(form, 280, 195, 200, 24);
  complete->AddItems({"Album of the summer", "Albatross", "Alps in winter", "Birthday",
                      "Holidays 2003", "Wedding"});
  complete->SetText("Al");
}

void AddButtons(QWidget* form, hTooltip& tips, MsgBoxEnhanced& box) {
  Heading(form, "Buttons", 10, 235, 600);
  auto* open = Place<Button>(form, 10, 265, 36, 36);
  open->SetPicture(StandardPicture(QStyle::SP_DirOpenIcon));
  auto* save = Place<Button>(form, 52, 265, 36, 36);
  save->SetPicture(StandardPicture(QStyle::SP_DialogSaveButton));
  save->SetBackColor(0x00C0FFFF);  // light yellow
  auto* off = Place<Button>(form, 94, 265, 36, 36);
  off->SetPicture(StandardPicture(QStyle::SP_TrashIcon));
  off->SetEnabled(false);
  for (int i = 0; i < 3; ++i) {
    auto* flat = Place<ButtonFlat>(form, 150 + 40 * i, 269, 28, 28);
    const QColor colour = QColor::fromHsv(120 * i, 140, 230);
    flat->SetPicture(Square(colour));
    flat->SetHoverPicture(Square(colour.lighter(115)));
    flat->SetClickPicture(Square(colour.darker(130)));
  }
  auto* ask = Place<QPushButton>(form, 290, 268, 130, 30);
  ask->setText("Message box...");
  QObject::connect(ask, &QPushButton::clicked, form, [&box] {
    box.MsgBox("The file \"Holidays 2003.jpg\" already exists.\nReplace it?", 292,
               "Replace file");
  });
  tips.AddTool(open, "Open a folder");
  tips.AddTool(save, "Save the album");
  tips.AddTool(ask, "Shows the program's message box");
}

void AddLabels(QWidget* form) {
  Heading(form, "Labels", 10, 315, 600);
  auto* plain = Place<NewLabel>(form, 10, 345, 180, 20);
  plain->SetCaption("NewLabel on button face");
  auto* right = Place<NewLabel2>(form, 200, 345, 180, 20);
  right->SetCaption("NewLabel2, right adjusted");
  right->SetRightAdjust(true);
  right->SetBackColor(0x00E0FFE0);  // pale green
  auto* shadowed = Place<Label3D>(form, 400, 340, 200, 30);
  QFont font = shadowed->font();
  font.setPointSize(14);
  font.setBold(true);
  shadowed->SetFont(font);
  shadowed->SetCaption("Label3D caption");
  auto* framed = Place<Label3D>(form, 400, 375, 200, 26);
  framed->SetCaption("Opaque, bordered");
  framed->SetBackStyle(1);
  framed->SetBorderStyle(1);
  framed->SetBackColor(0x00FFFFFF);
  framed->SetColor1(0x00800000);  // navy
  framed->SetColor2(0x00C0C0C0);
  auto* heading = Place<Headings>(form, 10, 375, 370, 22);
  heading->SetCaption("Headings in highlight colours");
  heading->SetBackColor(SysColor::Highlight);
  heading->SetForeColor(SysColor::HighlightText);
  Place<Divider3D>(form, 10, 412, 630, 2);
}

void AddTransparentControls(QWidget* form) {
  auto* frame = Place<TransFrame>(form, 10, 425, 300, 150);
  frame->SetCaption("TransFrame: options");
  auto* check = Place<TransCheck>(frame, 12, 22, 130, 22);
  check->SetCaption("Checked");
  check->SetValue(1);
  auto* greyed = Place<TransCheck>(frame, 12, 46, 130, 22);
  greyed->SetCaption("Greyed");
  greyed->SetValue(2);
  auto* disabled = Place<TransCheck>(frame, 12, 70, 130, 22);
  disabled->SetCaption("Disabled");
  disabled->SetEnabled(false);
  auto* opaque = Place<TransCheck>(frame, 12, 94, 130, 22);
  opaque->SetCaption("Opaque back");
  opaque->SetBackStyle(1);
  opaque->SetBackColor(0x00FFE0C0);  // pale blue
  auto* first = Place<TransRadio>(frame, 150, 22, 140, 22);
  first->SetCaption("First choice");
  first->SetValue(true);
  auto* second = Place<TransRadio>(frame, 150, 46, 140, 22);
  second->SetCaption("Second choice");
  auto* bold = Place<TransRadio>(frame, 150, 70, 140, 22);
  bold->SetCaption("Bold, right");
  bold->SetFontBold(true);
  bold->SetAlignment(1);
  auto* radioOn = Place<RadioButton>(frame, 150, 100, 15, 15);
  radioOn->SetValue(true);
  Place<RadioButton>(frame, 175, 100, 15, 15);
  Place<RadioButton>(frame, 200, 100, 15, 15)->SetEnabled(false);
}

void AddSlidersAndImages(QWidget* form, BalloonHelp& balloons) {
  Heading(form, "Sliders and pictures", 330, 425, 310);
  for (int shape = 0; shape < 3; ++shape) {
    auto* slider = Place<NewSlider>(form, 330, 455 + 32 * shape, 150, 26);
    slider->SetSliderShape(shape);
    slider->SetValue(20 + 30 * shape);
    if (shape == 2) slider->SetShowBorder(false);
    balloons.SetBalloon(slider, QString("Shape %1, value %2").arg(shape).arg(slider->Value()),
                        "Volume");
  }
  auto* image = Place<NewImage>(form, 490, 455, 150, 100);
  const QImage picture = SamplePicture();
  image->LoadFile("landscape", &picture);
  auto* deleted = Place<NewImage>(form, 330, 555, 40, 40);
  deleted->LoadDeleted();
}

}  // namespace

int main(int argc, char* argv[]) {
  QApplication app(argc, argv);
  MsgBoxEnhanced* box = CreateSharedMsgBox();

  GalleryForm form;
  form.setWindowTitle("Controls gallery");
  form.resize(660, 610);
  hTooltip tips;
  tips.Create(&form);
  BalloonHelp balloons;
  AddTabsAndNumbers(&form, tips, balloons);
  AddButtons(&form, tips, *box);
  AddLabels(&form);
  AddTransparentControls(&form);
  AddSlidersAndImages(&form, balloons);
  form.show();

  const int result = app.exec();
  ReleaseSharedMsgBox();
  return result;
}
