// The player control's sizes: the film's window, the status strip and the
// audio panel, all reckoned in twips.

#include <QCoreApplication>
#include <QResizeEvent>

#include "platform/Twips.h"
#include "viewers/AudioVideoPlayer.h"
#include "viewers/PlayerCommands.h"
#include "viewers/VideoFrame.h"

namespace {

// Smallest sizes: the video mode's height, the width of the other picture
// modes, the audio mode's width and height, and the audio viewer's width.
constexpr int LeastWidth = 3000;
constexpr int LeastVideoHeight = 1500;
constexpr int LeastOtherWidth = 3705;
constexpr int LeastAudioWidth = 2400;
constexpr int AudioHeight = 1590;
constexpr int AudioFrameHeight = 1485;
constexpr int AudioOwnerHeight = 1425;
constexpr int AudioViewerWidth = 4425;
// A film's window out of sight lies this far below the control.
constexpr int OutOfSight = 1000;

// The status strip in video mode and in the others.
constexpr int VideoStripHeight = 345;
constexpr int OtherStripHeight = 225;
constexpr int OtherStripLift = 120;

// The audio panel's rows, caption column and grooves.
constexpr int RowTop = 15;
constexpr int RowStep = 255;
constexpr int RowHeight = 225;
constexpr int CaptionLeft = 90;
constexpr int ValueLeft = 840;
constexpr int PanelRightMargin = 150;

// Sets a flag for a scope and puts back what it was.
class Guard {
 public:
  explicit Guard(bool& flag) : flag_(flag), was_(flag) { flag_ = true; }
  ~Guard() { flag_ = was_; }

 private:
  bool& flag_;
  bool was_;
};

QRect Pixels(const QRect& t) {
  return QRect(twips::ToPixels(t.left()), twips::ToPixels(t.top()), qMax(0, twips::ToPixels(t.width())),
               qMax(0, twips::ToPixels(t.height())));
}

int Round(double value) { return int(RoundHalfEven(value)); }

}  // namespace

void AudioVideoPlayer::SetControlSize(int widthTwips, int heightTwips) {
  Guard sizing(sizing_);
  widthTwips_ = widthTwips;
  heightTwips_ = heightTwips;
  resize(twips::ToPixels(widthTwips), twips::ToPixels(heightTwips));
}

void AudioVideoPlayer::PlaceFrame(const QRect& twips) {
  frame_ = twips;
  FrameVideo->setGeometry(Pixels(twips));
}

void AudioVideoPlayer::PlaceStrip(const QRect& twips) {
  strip_ = twips;
  StatusDisplay->setGeometry(Pixels(twips));
}

void AudioVideoPlayer::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  // Sizes the control gave itself come back here too, at once or when it
  // is first shown: only the owner's count.
  const QSize own(twips::ToPixels(widthTwips_), twips::ToPixels(heightTwips_));
  if (sizing_ || event->size() == own) return;
  widthTwips_ = twips::FromPixels(event->size().width());
  heightTwips_ = twips::FromPixels(event->size().height());
  if (playerType_ != 0) {
    SizeVideo();
    return;
  }
  Guard sizing(sizing_);
  const int least =
      QCoreApplication::applicationName() == "Vistrel" ? AudioViewerWidth : LeastOtherWidth;
  SetControlSize(qMax(widthTwips_, least), AudioOwnerHeight);
  ArrangeDisplay();
}

void AudioVideoPlayer::SizeVideo() {
  if (playerType_ == 0) return;
  Guard sizing(sizing_);
  const QSize before(widthTwips_, heightTwips_);
  if (playerType_ == 1)
    SetControlSize(qMax(widthTwips_, minimumWidth_), qMax(heightTwips_, LeastVideoHeight));
  else
    SetControlSize(qMax(widthTwips_, LeastOtherWidth), heightTwips_);

  if (!FrameVideo->isEnabled()) {
    // No picture: the strip alone, the film's window out of sight.
    PlaceStrip(strip_.translated(0, -strip_.top()));
    if (movieSizer_ == 0 && playerType_ == 1) SetControlSize(minimumWidth_, LeastVideoHeight);
    PlaceStrip(strip_.translated(0, heightTwips_ - strip_.height() - strip_.top()));
    ArrangeDisplay();
    PlaceFrame(QRect(frame_.left(), heightTwips_ + OutOfSight, frame_.width(), frame_.height()));
    return;
  }

  bool changed = false;
  QRect frame = frame_;
  if (movieSizer_ == 0) {
    // The control takes the film's size.
    const int height = qMax(frame.height() + StripHeight(), LeastVideoHeight);
    const int width = qMax(frame.width(), minimumWidth_);
    SetControlSize(playerType_ == 1 ? width : widthTwips_, height);
    changed = QSize(widthTwips_, heightTwips_) != before;
  } else if (videoWidth_ > 0 && videoHeight_ > 0 && widthTwips_ > 0) {
    // The film fits into the control, at its own shape.
    const double ratio = double(videoHeight_) / videoWidth_;
    const double room = double(heightTwips_ - StripHeight()) / widthTwips_;
    if (ratio < room) {
      frame.setWidth(widthTwips_);
      frame.setHeight(Round(frame.width() * ratio - StripHeight()));
      changed = true;
    } else if (ratio == room) {
      frame.setWidth(widthTwips_);
      frame.setHeight(heightTwips_ - StripHeight());
      changed = true;
    } else {
      frame.setHeight(heightTwips_ - StripHeight());
      frame.setWidth(Round(frame.height() / ratio));
    }
  }
  const int top = frame.height() + StripHeight() < heightTwips_
                      ? Round((heightTwips_ - StripHeight() - frame.height()) / 2.0)
                      : 0;
  const int left = frame.width() < widthTwips_ ? Round((widthTwips_ - frame.width()) / 2.0) : 0;
  frame.moveTo(left, top);
  PlaceFrame(frame);
  MciPutWindow(0, 0, 0, 0, FrameVideo);
  if (changed) {
    ArrangeDisplay();
    Refresh();
    emit OnSelfResize(widthTwips_, heightTwips_);
  }
}

void AudioVideoPlayer::SetMovieSizer(int sizer) {
  movieSizer_ = sizer;
  if (playerType_ != 1 || sizer != 0) return;
  // Back to the film's own size.
  const int width = videoWidth_ == -1 ? 0 : videoWidth_ * twips::PerPixel;
  const int height = videoHeight_ == -1 ? 0 : videoHeight_ * twips::PerPixel;
  const bool enabled = videoWidth_ != -1 && videoHeight_ != -1 && fileLoaded_;
  const bool differs = width != frame_.width() || height != frame_.height() || enabled != FrameVideo->isEnabled();
  PlaceFrame(QRect(frame_.left(), frame_.top(), width, height));
  FrameVideo->setEnabled(enabled);
  if (differs) SizeVideo();
}

void AudioVideoPlayer::VidSize(int widthTwips, int heightTwips) {
  Guard sizing(sizing_);
  const int width = widthTwips < LeastWidth ? LeastWidth : widthTwips < minimumWidth_ ? minimumWidth_ : widthTwips;
  const int height = qMax(heightTwips, LeastVideoHeight);
  const bool changed = width != widthTwips_ || height != heightTwips_;
  SetControlSize(width, height);
  if (changed) SizeVideo();
}

void AudioVideoPlayer::ShowPanels() {
  Guard sizing(sizing_);
  if (playerType_ != 0) {
    SetTagsVisible(false);
    FrameVideo->show();
    SizeVideo();
    return;
  }
  // The audio panel; the film's window stays behind it, unseen.
  SetTagsVisible(true);
  FrameVideo->hide();
  SetControlSize(qMax(widthTwips_, LeastAudioWidth), AudioHeight);
  PlaceFrame(QRect(0, 0, widthTwips_, AudioFrameHeight));
  ArrangeDisplay();
}

void AudioVideoPlayer::SetTagsVisible(bool on) {
  for (QWidget* part : std::initializer_list<QWidget*>{Label1, Label2, Label3, Label4, Label6, TitleLabel,
                                                       AuthorLabel, CategoryLabel, AlbumLabel, YearLabel,
                                                       TrackLabel, SeparatorLine, Line[0], Line[1], Line[2],
                                                       Line[5], Line[6], Line[7]})
    part->setVisible(on);
}

void AudioVideoPlayer::ArrangeDisplay() {
  const int width = widthTwips_, height = heightTwips_;
  const auto place = [](QWidget* part, int left, int top, int w, int h) {
    part->setGeometry(Pixels(QRect(left, top, w, h)));
  };
  if (playerType_ == 1) {
    PlaceStrip(QRect(0, height - VideoStripHeight, width, VideoStripHeight));
    for (QFrame* line : Line) line->hide();
    Status->move(twips::ToPixels(60), twips::ToPixels(45));
    TimeLabel->move(twips::ToPixels(60), twips::ToPixels(45));
  } else {
    PlaceStrip(QRect(30, height - OtherStripLift - OtherStripHeight, width - 135, OtherStripHeight));
    Status->move(twips::ToPixels(30), twips::ToPixels(30));
    TimeLabel->move(twips::ToPixels(30), twips::ToPixels(30));
    // Grooves: a dark line and a light one below it, under the first three
    // rows of the panel and above and below the strip.
    const int stripTop = strip_.top();
    const int grooves[5] = {RowTop + RowHeight, RowTop + RowStep + RowHeight, RowTop + 2 * RowStep + RowHeight,
                            stripTop - 45, strip_.top() + strip_.height() + 15};
    for (int i = 0; i < 5; ++i) {
      place(Line[i], 30, grooves[i], width - 75, 15);
      place(Line[i + 5], 45, grooves[i] + 15, width - 90, 15);
    }
    Line[3]->show();
    Line[4]->show();
    Line[8]->show();
    Line[9]->show();
  }
  if (playerType_ == 0) {
    // Title, artist and album have a row each; style, year and track share
    // the last one.
    const int valueWidth = qMax(0, width - ValueLeft - PanelRightMargin);
    QLabel* captions[4] = {Label1, Label2, Label4, Label3};
    QLabel* values[3] = {TitleLabel, AuthorLabel, AlbumLabel};
    for (int row = 0; row < 4; ++row) {
      place(captions[row], CaptionLeft, RowTop + row * RowStep, ValueLeft - CaptionLeft - 60, RowHeight);
      if (row < 3) place(values[row], ValueLeft, RowTop + row * RowStep, valueWidth, RowHeight);
    }
    const int lastRow = RowTop + 3 * RowStep;
    const int styleWidth = valueWidth * 2 / 5;
    const int yearCaption = ValueLeft + styleWidth + 120;
    place(CategoryLabel, ValueLeft, lastRow, styleWidth, RowHeight);
    place(Label6, yearCaption, lastRow, 540, RowHeight);
    place(YearLabel, yearCaption + 540, lastRow, 900, RowHeight);
    const int trackLeft = yearCaption + 540 + 960;
    place(TrackLabel, trackLeft, lastRow, qMax(0, width - PanelRightMargin - trackLeft), RowHeight);
    place(SeparatorLine, ValueLeft - 60, RowTop, 30, 4 * RowStep - 30);
  }
  Status->adjustSize();
  AlignTimeLabel();
}

void AudioVideoPlayer::RefreshTimeLabel() {
  TimeLabel->setText(cTimeLabel->text() + " " + tTimeLabel->text());
  AlignTimeLabel();
}

void AudioVideoPlayer::AlignTimeLabel() {
  TimeLabel->adjustSize();
  const int left = strip_.width() - twips::FromPixels(TimeLabel->width()) - (playerType_ == 1 ? 90 : 45);
  TimeLabel->move(twips::ToPixels(left), TimeLabel->y());
}
