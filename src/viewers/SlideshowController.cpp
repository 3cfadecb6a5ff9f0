#include "viewers/SlideshowController.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPointer>
#include <QPushButton>

#include "catalogue/PathRoutines.h"
#include "controls/NumberBox.h"
#include "controls/TransCheck.h"
#include "controls/UpDown.h"
#include "core/AppState.h"
#include "core/BarCommands.h"
#include "core/CommonKeys.h"
#include "core/Settings.h"
#include "core/ViewerHost.h"
#include "core/WindowFrame.h"
#include "core/WindowRegistry.h"
#include "fileops/MessageWindows.h"
#include "platform/KeyCodes.h"
#include "platform/Twips.h"
#include "viewers/AniGif.h"
#include "viewers/SingleImage.h"

namespace {

constexpr int Width = 3300;
constexpr int Height = 1500;
constexpr int MinimumDelay = 1;
constexpr int MaximumDelay = 60;

QRect Pixels(int left, int top, int width, int height) {
  return QRect(twips::ToPixels(left), twips::ToPixels(top), twips::ToPixels(width), twips::ToPixels(height));
}

QLabel* AddLabel(QWidget* parent, const QString& name, const QString& text, const QRect& place) {
  auto* label = new QLabel(text, parent);
  label->setObjectName(name);
  label->setGeometry(place);
  return label;
}

}  // namespace

SlideshowController::SlideshowController(QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint),
      NumberBox1(new NumberBox(this)),
      UpDown1(new UpDown(this)),
      RandomOrder(new TransCheck(this)),
      Fullsize(new TransCheck(this)),
      stopButton(new QPushButton("Stop Slideshow", this)) {
  setObjectName(WindowName(Id));
  setAttribute(Qt::WA_DeleteOnClose);
  setFixedSize(twips::ToPixels(Width), twips::ToPixels(Height));

  AddLabel(this, "Label1", "Delay", Pixels(120, 120, 480, 300));
  NumberBox1->setObjectName("NumberBox1");
  NumberBox1->SetFormat("#0");
  NumberBox1->SetPositiveOnly(true);
  NumberBox1->setGeometry(Pixels(630, 105, 480, 315));
  UpDown1->setObjectName("UpDown1");
  UpDown1->SetRange(MinimumDelay, MaximumDelay);
  UpDown1->setGeometry(Pixels(1110, 105, 255, 315));
  AddLabel(this, "Label2", "seconds", Pixels(1440, 120, 900, 300));
  RandomOrder->setObjectName("RandomOrder");
  RandomOrder->SetCaption("Random order?");
  RandomOrder->setGeometry(Pixels(120, 480, 3000, 285));
  Fullsize->setObjectName("Fullsize");
  Fullsize->SetCaption("Show full-size?");
  Fullsize->setGeometry(Pixels(120, 780, 3000, 285));
  stopButton->setObjectName("stopButton");
  stopButton->setGeometry(Pixels(120, 1095, Width - 240, 300));

  Timer1.setInterval(1000);
  connect(&Timer1, &QTimer::timeout, this, &SlideshowController::Timer1_Timer);
  connect(NumberBox1, &NumberBox::Change, this, &SlideshowController::NumberBox1_Change);
  connect(NumberBox1, &NumberBox::KeyDown, this, &SlideshowController::NumberBox1_KeyDown);
  connect(UpDown1, &UpDown::Change, this, &SlideshowController::UpDown1_Change);
  connect(RandomOrder, &TransCheck::Click, this, &SlideshowController::RandomOrder_Click);
  connect(Fullsize, &TransCheck::Click, this, &SlideshowController::Fullsize_Click);
  connect(stopButton, &QPushButton::clicked, this, &SlideshowController::stopButton_Click);
  for (QWidget* child : findChildren<QWidget*>()) child->installEventFilter(this);

  Order.NewQueue = [](int count) { return RandomSequence(1, count); };
  Windows().Loaded(this);
  Form_Load();
}

SingleImage* SlideshowController::Viewer() const { return Windows().Get<SingleImage>(); }

void SlideshowController::PlaceWindow() {
  const AppState& app = App();
  if (ViewerHost* host = TheViewerHost()) {
    const QRect main = host->MainOuterTwips();
    move(twips::ToPixels(main.left() + main.width() - Width - 90),
         twips::ToPixels(main.top() + app.TitleBarHeight + 15));
  }
}

void SlideshowController::Form_Load() {
  AppState& app = App();
  PlaceWindow();
  SavedPicture = app.CurrentPicture();
  app.SlideshowRunning = true;

  // The settings into the controls; their handlers would write them back.
  loaded_ = false;
  NumberBox1->SetValue(settings::GetSetting("SlideshowDelay", "3"));
  UpDown1->SetValue(Delay());
  RandomOrder->SetValue(settings::GetSetting("SlideshowOrder", "0") == "1" ? 1 : 0);
  Fullsize->SetValue(settings::GetSetting("SlideshowFullSize", "0") == "1" ? 1 : 0);
  Order.Random = RandomOrder->Value() == 1;
  if (Order.Random) Order.NewRound(app.Count(PicturesTab));
  loaded_ = true;

  // The main window's area turns plain; the viewer stands on it.
  const int width = TheViewerHost() ? TheViewerHost()->BrowserWidthTwips() : twips::FromPixels(800);
  const int height = TheViewerHost() ? TheViewerHost()->MainOuterTwips().height() : twips::FromPixels(600);
  ShowBackground(width, height);
  QPointer<SlideshowController> self(this);
  app.PendingFile.clear();
  SingleImage* viewer = Viewer();
  if (!viewer) viewer = qobject_cast<SingleImage*>(Windows().Load(WindowId::SingleImage));
  if (!self) return;
  if (viewer) {
    viewer->SizingWindow = true;
    viewer->PrepareForSlideshow();
    if (Fullsize->Value() == 1 && !viewer->Animated) viewer->SetFullSize();
    QWidget* frame = FrameOf(viewer);
    frame->show();
    frame->raise();
  }
  Timer1.start();
}

int SlideshowController::Delay() const {
  const int typed = int(NumberBox1->Value().toDouble());
  return std::clamp(typed, MinimumDelay, MaximumDelay);
}

void SlideshowController::Timer1_Timer() {
  ++ElapsedSeconds;
  if (ElapsedSeconds >= Delay()) NextSlide();
}

void SlideshowController::NextSlide() {
  Timer1.stop();
  SingleImage* viewer = Viewer();
  if (!viewer) return;
  AppState& app = App();
  viewer->PictureIndex = Order.NextIndex(app.PictureFiles(), app.Count(PicturesTab), viewer->PictureIndex);
  QPointer<SlideshowController> self(this);
  viewer->LoadImage();
  QCoreApplication::processEvents();
  if (!self || stopping_) return;
  ElapsedSeconds = 0;
  // An animated picture is seen to its end, whatever the delay.
  if (Viewer() && Viewer()->Picture3->isVisible() && Viewer()->Picture3->FrameCount() > 1) {
    WaitForCycle();
    return;
  }
  Timer1.start();
}

void SlideshowController::WaitForCycle() {
  waitingForCycle_ = true;
  AniGif* gif = Viewer()->Picture3;
  connect(gif, &AniGif::CycleDone, this, [this] {
    if (!waitingForCycle_) return;
    waitingForCycle_ = false;
    if (!stopping_) Timer1.start();
  }, Qt::SingleShotConnection);
}

void SlideshowController::stopButton_Click() {
  if (stopping_) return;
  stopping_ = true;
  Timer1.stop();
  AppState& app = App();
  app.CurrentPicture() = SavedPicture;
  if (SingleImage* viewer = Viewer()) viewer->SizingWindow = false;
  // The windows close once this handler has returned.
  QTimer::singleShot(0, qApp, [] {
    Windows().Unload(WindowId::SlideshowController);
    Windows().Unload(WindowId::SingleImage);
    HideBackground();
    App().SlideshowRunning = false;
  });
}

// ---- The delay, the order, full size ----------------------------------------------

void SlideshowController::NumberBox1_Change() {
  if (!loaded_) return;
  // Saved as typed; the box then shows it within the limit.
  settings::SaveSetting("SlideshowDelay", QString::number(int(NumberBox1->Value().toDouble())));
  const int typed = int(NumberBox1->Value().toDouble());
  if (typed > UpDown1->Max()) {
    // Shown as the limit; the setting keeps what was typed.
    loaded_ = false;
    NumberBox1->SetValue(QString::number(UpDown1->Max()));
    loaded_ = true;
    UpDown1->SetValue(UpDown1->Max());
    return;
  }
  UpDown1->SetValue(typed);
}

void SlideshowController::NumberBox1_KeyDown(int keyCode, int shift) {
  if (shift == keys::NoShift) UpDown1->StepNumberBox(NumberBox1, keyCode);
}

void SlideshowController::UpDown1_Change() { UpDown1->CopyToNumberBox(NumberBox1); }

void SlideshowController::RandomOrder_Click() {
  if (!loaded_) return;
  settings::SaveSetting("SlideshowOrder", QString::number(RandomOrder->Value()));
  Order.Random = RandomOrder->Value() == 1;
  if (Order.Random) Order.NewRound(App().Count(PicturesTab));
}

void SlideshowController::Fullsize_Click() {
  if (!loaded_) return;
  settings::SaveSetting("SlideshowFullSize", QString::number(Fullsize->Value()));
}

// ---- Window ------------------------------------------------------------------------

void SlideshowController::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  PlaceWindow();
  raise();
  activateWindow();
  stopButton->setFocus();
}

void SlideshowController::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  // Clicking elsewhere ends the show.
  if (event->type() == QEvent::ActivationChange && isVisible() && !isActiveWindow() &&
      QApplication::activeWindow() != nullptr && !stopping_)
    stopButton_Click();
}

void SlideshowController::closeEvent(QCloseEvent* event) {
  if (!stopping_) stopButton_Click();
  Timer1.stop();
  Windows().Closed(this);
  event->accept();
}

bool SlideshowController::HandleKey(int keyCode, int shift) {
  if (keyCode == keys::Escape && shift == keys::NoShift) {
    stopButton_Click();
    return true;
  }
  if (keyCode == keys::Escape && shift == keys::ShiftMask) {
    stopButton_Click();
    App().QuickExit = true;
    QTimer::singleShot(0, qApp, [] { Windows().Unload(WindowId::MainForm); });
    return true;
  }
  if (keyCode == keys::F1 && shift == keys::NoShift) {
    stopButton_Click();
    if (SingleImage* viewer = Viewer()) FrameOf(viewer)->showMinimized();
    if (BarCommands* bar = CommandBarCommands()) bar->ClickIfEnabled(BarButton::HelpButton);
    return true;
  }
  return false;
}

bool SlideshowController::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    auto* key = static_cast<QKeyEvent*>(event);
    if (HandleKey(keys::KeyCode(key), keys::ShiftOf(key))) return true;
  }
  return QWidget::eventFilter(watched, event);
}

void SlideshowController::keyPressEvent(QKeyEvent* event) {
  const int code = keys::KeyCode(event), shift = keys::ShiftOf(event);
  if (HandleKey(code, shift)) return;
  HandleCommonKey(this, code, shift, false, false);
}

void SlideshowController::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), App().ColorLightGrey);
  painter.setPen(Qt::white);
  painter.drawLine(0, 0, width() - 1, 0);
  painter.drawLine(0, 0, 0, height() - 1);
  painter.setPen(Qt::darkGray);
  painter.drawLine(width() - 1, 0, width() - 1, height() - 1);
  painter.drawLine(0, height() - 1, width() - 1, height() - 1);
}
