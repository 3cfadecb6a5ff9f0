#include "shell/VolumeStrip.h"

#include <QLabel>
#include <QSignalBlocker>
#include <QtConcurrent/QtConcurrentRun>

#include "controls/Button.h"
#include "controls/NewSlider.h"
#include "controls/SystemColours.h"
#include "core/AppState.h"
#include "platform/Twips.h"
#include "shell/BarPictures.h"
#include "shell/CommandTable.h"

namespace {

// The mixer's lines: the master volume, the compact disc and wave out
// volumes that follow it, and the master mute.
constexpr int MasterVolume = 0;
constexpr int CompactDiscVolume = 4;
constexpr int WaveOutVolume = 5;
constexpr int MasterMute = 7;

// Layout, in twips, from the left: the mute button, the slider, the percent.
constexpr int RowHeight = 345;
constexpr int NearGap = 60;
constexpr int SliderLeft = SmallButtonTwips + NearGap;
constexpr int SliderWidth = 1500;
constexpr int VolumeLeft = SliderLeft + SliderWidth + NearGap;
constexpr int VolumeWidth = 600;

constexpr int TimerInterval = 500;

}  // namespace

VolumeStrip::VolumeStrip(QWidget* bar) : QWidget(bar) {
  setObjectName("VolumeStrip");
  muteButton = MakeBarButton(CommandRowOf(BarButton::muteButton), this);

  const int small = twips::ToPixels(SmallButtonTwips);
  Picture1 = new QLabel(this);
  Picture1->setObjectName("Picture1");
  Picture1->setPixmap(BarPicture("Picture1", small - 7));
  Picture1->hide();
  Picture2 = new QLabel(this);
  Picture2->setObjectName("Picture2");
  Picture2->setPixmap(BarPicture("Picture2", small - 7));
  Picture2->hide();
  muteButton->SetPicture(Picture1->pixmap());

  Slider1 = new NewSlider(this);
  Slider1->setObjectName("Slider1");
  Slider1->SetMax(100);
  Slider1->SetLargeChange(10);
  Slider1->SetSliderShape(1);
  Slider1->SetBackColor(ToOleColor(App().ColorLightGrey));

  Volume = new QLabel(this);
  Volume->setObjectName("Volume");
  Volume->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  QFont bold = Volume->font();
  bold.setBold(true);
  Volume->setFont(bold);

  Timer1.setInterval(TimerInterval);
  connect(&Timer1, &QTimer::timeout, this, &VolumeStrip::Timer1_Timer);
  connect(&look_, &QFutureWatcherBase::finished, this, &VolumeStrip::ShowLook);
}

VolumeStrip::~VolumeStrip() = default;

int VolumeStrip::WidthTwips() { return VolumeLeft + VolumeWidth; }

void VolumeStrip::Place(int leftTwips, int topTwips) {
  const auto px = [](int t) { return twips::ToPixels(t); };
  setGeometry(px(leftTwips), px(topTwips), px(WidthTwips()), px(RowHeight));
  muteButton->move(0, 0);
  Slider1->setGeometry(px(SliderLeft), 0, px(SliderWidth), px(RowHeight));
  Volume->setGeometry(px(VolumeLeft), 0, px(VolumeWidth), px(RowHeight));
}

// ---- Opening and closing -------------------------------------------------------

void VolumeStrip::Open() {
  OpenMixer(0);
  reader_ = std::make_shared<MasterReader>();
  const int volume = GetVolume(MasterVolume);
  {
    const QSignalBlocker quiet(Slider1);
    Slider1->SetValue(volume);
  }
  Volume->setText(VolumeText(volume));
  Timer1_Timer();
  Timer1.start();
}

void VolumeStrip::Close() {
  Timer1.stop();
  Forget();
  lookAgain_ = false;
  // A look under way keeps its own reader until it is done.
  reader_.reset();
  CloseMixer();
}

// ---- From the user --------------------------------------------------------------

QString VolumeStrip::VolumeText(int percent) { return QString::number(percent) + "% "; }

void VolumeStrip::ShowMutePicture(bool muted) {
  muteButton->SetPicture(muted ? Picture2->pixmap() : Picture1->pixmap());
}

void VolumeStrip::ChangeVolume(int percent) {
  Timer1.stop();
  Forget();
  Volume->setText(VolumeText(percent));
  SetVolume(MasterVolume, percent);
  SetVolume(CompactDiscVolume, percent);
  SetVolume(WaveOutVolume, percent);
  Timer1.start();
}

void VolumeStrip::FlipMute() {
  Forget();
  const bool muted = !GetMute(MasterMute);
  ShowMutePicture(muted);
  SetMute(MasterMute, muted);
}

// ---- Looking at the mixer ----------------------------------------------------------

void VolumeStrip::Timer1_Timer() {
  if (looking_) {
    lookAgain_ = true;
    return;
  }
  StartLook();
}

void VolumeStrip::StartLook() {
  if (!reader_) return;
  looking_ = true;
  lookAgain_ = false;
  lookGeneration_ = generation_;
  look_.setFuture(QtConcurrent::run([reader = reader_] { return reader->Read(); }));
}

void VolumeStrip::ShowLook() {
  looking_ = false;
  if (lookGeneration_ == generation_) {
    const MasterReading reading = look_.result();
    ShowMutePicture(reading.Muted);
    // The user's drag has the last word while it lasts.
    if (!Slider1->Scrolling()) {
      const QSignalBlocker quiet(Slider1);
      Slider1->SetValue(reading.Volume);
    }
    Volume->setText(VolumeText(reading.Volume));
    SetVolume(CompactDiscVolume, reading.Volume);
    SetVolume(WaveOutVolume, reading.Volume);
  }
  if (lookAgain_) StartLook();
}
