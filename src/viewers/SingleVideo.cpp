// The two viewers of sound and film. The audio viewer plays the current
// audio file and shows its tags; a finished file stays. The video viewer
// shows the film, and window and film follow each other's size: a new film
// comes up at its natural size and the window follows it; a window the
// user sizes fits the film inside. At the end of a film it walks on.

#include <QCoreApplication>

#include "controls/Button.h"
#include "controls/NewSlider.h"
#include "core/AppState.h"
#include "core/BrowserSession.h"
#include "core/ViewerHost.h"
#include "viewers/AudioVideoPlayer.h"
#include "viewers/PlayerRules.h"
#include "viewers/PlayerViewer.h"
#include "viewers/ViewerFrame.h"

namespace {

constexpr PlayerViewer::Kind AudioKind{AudiosTab, "A", " Audio Player", "ContinuousPlayAudio", " //audio",
                                       "audio", 0, 1};
constexpr PlayerViewer::Kind VideoKind{VideosTab, "V", " Video Viewer", "ContinuousPlayVideo", " //video",
                                       "video", 1, 100};

// The smallest window around a film, in twips.
constexpr int SmallestFilmWidth = 4170, SmallestFilmHeight = 3300;

}  // namespace

SingleAudio::SingleAudio(QWidget* parent) : PlayerViewer(AudioKind, parent) {
  setObjectName("SingleAudio");
  Form_Load();
  LoadAudio();
}

SingleVideo::SingleVideo(QWidget* parent) : PlayerViewer(VideoKind, parent) {
  setObjectName("SingleVideo");
  ResizeTimer.setInterval(200);
  ResizeTimer.setSingleShot(true);
  connect(&ResizeTimer, &QTimer::timeout, this, &SingleVideo::ResizeTimer_Timer);
  connect(Player, &AudioVideoPlayer::OnSelfResize, this, &SingleVideo::Player_OnSelfResize);
  Form_Load();
  LoadVideo();
}

void SingleVideo::BeforeLoad() {
  // A new film comes up at its natural size, unless the window fills the area.
  if (!IsMaximised()) Player->SetMovieSizer(0);
}

void SingleVideo::PlayFinished() {
  PlayerViewer::PlayFinished();
  // Unlike a sound, a finished film walks on.
  if (Direction != '-') {
    if (nextButton->isEnabled()) nextButton_Click();
  } else if (previousButton->isEnabled()) {
    previousButton_Click();
  }
}

void SingleVideo::Player_OnSelfResize(int widthTwips, int heightTwips) {
  WindowSizing = true;
  const QRect frame = ViewerFrameTwips(this);
  const ViewerHost* host = TheViewerHost();
  const int browserWidth = host ? host->BrowserWidthTwips() : frame.left() + widthTwips + 90;
  const int lowest = host ? host->BrowserHeightTwips() - 60 : frame.top() + heightTwips + 5000;
  const FilmWindow size = FilmWindowSize(widthTwips, heightTwips, frame.left(), frame.top(), frame.width(),
                                         browserWidth, lowest, App().TitleBarHeight);
  SetViewerFrameTwips(this, QRect(frame.topLeft(), QSize(size.Width, size.Height)));
  QCoreApplication::processEvents();
  WindowSizing = false;
}

void SingleVideo::UserResized() {
  if (IsMaximised()) {
    App().IgnoreNextResize = true;
    ResizeTimer_Timer();
  } else {
    ResizeTimer.start();
  }
}

void SingleVideo::ResizeTimer_Timer() {
  ResizeTimer.stop();
  // The film now fits the control.
  Player->SetMovieSizer(1);
  const QRect frame = ViewerFrameTwips(this);
  if (!IsMaximised() && (frame.width() < SmallestFilmWidth || frame.height() < SmallestFilmHeight)) {
    WindowSizing = true;
    SetViewerFrameTwips(this, QRect(frame.topLeft(), QSize(std::max(frame.width(), SmallestFilmWidth),
                                                         std::max(frame.height(), SmallestFilmHeight))));
    WindowSizing = false;
    Player->Refresh();
    return;
  }
  const int width = frame.width() - 90;
  const int height = frame.height() - PlayerTop - App().TitleBarHeight - 30;
  if (width != Player->WidthTwips() || height != Player->HeightTwips()) Player->VidSize(width, height);
}
