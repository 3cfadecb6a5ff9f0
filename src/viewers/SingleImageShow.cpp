// The picture viewer showing an entry of its list: the check, the
// description, the picture decoded at the size it is shown (or taken from
// the worker that decoded it ahead), the window's size around it, its
// layout, and the user's resizing.

#include "viewers/SingleImage.h"
#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMovie>
#include <QScreen>
#include <QSvgRenderer>
#include "catalogue/FileInfoText.h"
#include "catalogue/MediaPicture.h"
#include "catalogue/MediaTypes.h"
#include "catalogue/NumberFormat.h"
#include "catalogue/PathParts.h"
#include "catalogue/PathRoutines.h"
#include "controls/BalloonHelp.h"
#include "controls/Button.h"
#include "core/AppState.h"
#include "core/BarCommands.h"
#include "core/BrowserCommands.h"
#include "core/CommonKeys.h"
#include "core/Settings.h"
#include "core/Trace.h"
#include "core/ViewerHost.h"
#include "core/WindowFrame.h"
#include "core/WindowRegistry.h"
#include "platform/KeyCodes.h"
#include "platform/Twips.h"
#include "viewers/AniGif.h"
#include "viewers/PictureHolder.h"
#include "viewers/SingleImageLayout.h"
#include "viewers/ViewerFrame.h"
#include "viewers/PictureWalk.h"

using namespace singleimage;

// ---- Showing an entry ----------------------------------------------------------

QString SingleImage::EntryPath(qint32 index) const {
  const AppState& app = App();
  if (!Pending.isEmpty()) return Pending;
  const QString entry = app.Entry(PicturesTab, index);
  if (entry.isEmpty()) return QString();
  return app.AlbumMode ? entry : JoinPath(app.CurrentFolder, entry);
}

bool SingleImage::EntryPasses() const {
  const auto pictureType = [](const QString& name) {
    const QString type = GetMediaType(name);
    return type == "I" || type == "C" || type == "P";
  };
  if (!Pending.isEmpty()) return QFileInfo::exists(Pending) && pictureType(Pending);
  const QString entry = App().Entry(PicturesTab, PictureIndex);
  return !entry.isEmpty() && pictureType(entry);
}

void SingleImage::LoadImage() {
  AppState& app = App();
  // An entry that fails the check is passed over in the walking direction;
  // a list with nothing to show ends the walk once both ends are reached.
  const qint32 count = Pending.isEmpty() ? app.Count(PicturesTab) : 1;
  for (qint32 tries = 0; !EntryPasses(); ++tries) {
    if (tries > count + 1 || !Pending.isEmpty()) {
      CloseViewer();
      return;
    }
    const WalkStep step = Direction == '-' ? StepBackward(app.PictureFiles(), count, PictureIndex)
                                           : StepForward(app.PictureFiles(), count, PictureIndex);
    Direction = step.Direction;
    if (step.Close) {
      CloseViewer();
      return;
    }
    PictureIndex = step.Index;
    SetWalkButtons();
  }

  QApplication::setOverrideCursor(Qt::WaitCursor);
  Picture1->hide();
  Picture2->hide();
  Picture3->StopAnimate(false, false);
  Picture3->hide();
  if (FullSizeShow()) Picture1->Clear();

  // The description, and the thumbnail of the entry made current.
  const QString entry = app.Entry(PicturesTab, PictureIndex);
  QString description;
  if (!Pending.isEmpty()) {
    description = " File: " + Pending;
  } else {
    description = " " + Format(PictureIndex + 1, "##,##0") + " of " + Format(count, "##,##0") + " files    Name: ";
    // The name begins where this text ends: the rename window's box goes there.
    DescriptionWidth = twips::FromPixels(DescriptionLabel->fontMetrics().horizontalAdvance(description));
    description += app.AlbumMode ? GetBaseName(entry) : entry;
    if (!app.SlideshowRunning)
      if (BrowserCommands* browser = TheBrowserCommands()) browser->HighlightItem(PicturesTab, PictureIndex);
  }
  description_ = description;
  Trace("picture" + description);

  CurrentFile = EntryPath(PictureIndex);
  Extension = GetFileExtension(CurrentFile).toLower().left(3);

  // The picture, decoded ahead when the walk came this way.
  ViewerPicture picture;
  if (auto ahead = ahead_.Take(CurrentFile, RoomKey())) {
    picture = *ahead;
  } else {
    const PictureRoom room = Room();
    const bool full = IsMaximised() || FullSizeShow();
    const qreal ratio = devicePixelRatioF();
    picture = DecodeForViewer(CurrentFile, [room, full, ratio](QSize natural) {
      return BoxFor(natural, room, full, ratio);
    });
  }
  PictureValid = picture.Valid;
  shown_ = picture.Picture;
  natural_ = picture.Natural;

  app.CurrentMediaFile = CurrentFile;
  if (app.ShowPopupData)
    Picture1->setToolTip(PictureValid ? FileInfoText(GetBaseName(CurrentFile), CurrentFile) : QString());

  // Fitted into the room, the window around it.
  const QSize shown = FitPicture(QSize(twips::FromPixels(natural_.width()), twips::FromPixels(natural_.height())),
                                 Room());
  PictureWidth = shown.width();
  PictureHeight = shown.height();
  SetFormSize();
  ShowDescription();

  Animated = PictureValid && (Extension == "mng" || (Extension == "gif" && picture.Frames > 1));
  if (FullSizeShow() && !Animated) SetFullSize();

  if (Extension == "gif" && PictureValid && picture.Frames > 1) {
    Picture3->LoadFile(CurrentFile);
    Picture3->show();
  } else if (Extension == "mng" && PictureValid) {
    auto* movie = new QMovie(CurrentFile, QByteArray(), Picture2);
    if (QMovie* old = Picture2->movie()) old->deleteLater();
    Picture2->setMovie(movie);
    movie->start();
    Picture2->show();
  } else {
    Picture1->SetPicture(shown_);
    Picture1->show();
  }
  PlacePictures();

  slideshowButton->SetEnabled(PictureCount > 1);
  if (PictureCount < 1) {
    for (Button* b : {firstButton, previousButton, nextButton, lastButton}) b->SetEnabled(false);
    QApplication::restoreOverrideCursor();
    CloseViewer();
    return;
  }
  if (ShowCaptions) LoadCaption();
  QApplication::restoreOverrideCursor();
  DecodeAhead();
}

void SingleImage::DecodeAhead() {
  if (!Pending.isEmpty() || App().SlideshowRunning) return;
  const AppState& app = App();
  const qint32 count = app.Count(PicturesTab);
  const WalkStep step = Direction == '-' ? StepBackward(app.PictureFiles(), count, PictureIndex)
                                         : StepForward(app.PictureFiles(), count, PictureIndex);
  if (step.Close || step.Index == PictureIndex || step.Direction != Direction) return;
  const QString path = EntryPath(step.Index);
  if (path.isEmpty()) return;
  const PictureRoom room = Room();
  const bool full = IsMaximised();
  const qreal ratio = devicePixelRatioF();
  ahead_.Start(path, RoomKey(), [room, full, ratio](QSize natural) { return BoxFor(natural, room, full, ratio); });
}

void SingleImage::ShowDescription() {
  const int width = twips::FromPixels(DescriptionLabel->width()) - 60;
  DescriptionLabel->setText(ShortenPath(DescriptionLabel, description_, width, 1));
}

void SingleImage::SetFormSize() {
  if (IsMaximised()) {
    SetFullSize();
    return;
  }
  const QRect frame = FrameTwips();
  SizingWindow = true;
  SetFrameTwips(QRect(frame.topLeft(), FormSize(QSize(PictureWidth, PictureHeight), Room())));
  SizingWindow = false;
  LayOut();
}

void SingleImage::SetFullSize() {
  const FullSize full = FullSizePicture(QSize(PictureWidth, PictureHeight), Room());
  if (full.Picture.isEmpty()) return;
  PictureWidth = full.Picture.width();
  PictureHeight = full.Picture.height();
  if (!IsMaximised()) {
    SizingWindow = true;
    SetFrameTwips(QRect(0, 0, full.Window.width(), full.Window.height()));
    SizingWindow = false;
  }
  RedecodeIfShort();
  LayOut();
}

// ---- Layout --------------------------------------------------------------------

void SingleImage::LayOut() {
  const int width = twips::FromPixels(this->width());
  if (!slideshowLayout_) {
    for (int i = 0; i < buttons_.size(); ++i)
      buttons_[i]->setGeometry(TwipsRect(ButtonLeft + i * ButtonSize, ButtonTop, ButtonSize, ButtonSize));
  }
  DescriptionLabel->setGeometry(
      TwipsRect(60, slideshowLayout_ ? 0 : DescriptionTop, std::max(width - 120, 300), DescriptionHeight));
  PlacePictures();
  if (ShowCaptions) LayOutCaption();
  if (!description_.isEmpty()) ShowDescription();
}

void SingleImage::PlacePictures() {
  const int width = twips::FromPixels(this->width());
  const int top = slideshowLayout_ ? SlideshowPictureTop : PictureTop;
  const int left = std::max((width - PictureWidth) / 2, 0);
  const QRect place = TwipsRect(left, top, PictureWidth, PictureHeight);
  Picture1->setGeometry(place);
  Picture2->setGeometry(place);
  Picture3->setGeometry(place);
}

void SingleImage::LayOutCaption() {
  const int height = twips::FromPixels(this->height());
  const int width = twips::FromPixels(this->width());
  const int labelTop = height - 255;
  // The box takes the width the label leaves, at least the window's width
  // less 765 when the label's word is short.
  const int labelWidth = std::max(CaptionLabelWidth,
                                  twips::FromPixels(CaptionLabel->fontMetrics().horizontalAdvance(CaptionLabel->text())) + 60);
  CaptionLabel->setGeometry(TwipsRect(60, labelTop, labelWidth, 225));
  CaptionText->setGeometry(TwipsRect(60 + labelWidth, labelTop - 45, std::max(width - 120 - labelWidth, 600), 300));
}

void SingleImage::PrepareForSlideshow() {
  slideshowLayout_ = true;
  for (Button* b : buttons_) b->hide();
  if (SizingWindow) {
    const QRect frame = FrameTwips();
    SetFrameTwips(QRect(frame.topLeft(), QSize(frame.width(), frame.height() - 435)));
  }
  TopMargin = ShowCaptions ? 945 : 645;
  LayOut();
}

// ---- Sizing by the user ----------------------------------------------------------

void SingleImage::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  AppState& app = App();
  if (SkipResize) {
    SkipResize = false;
    app.IgnoreNextResize = true;
    return;
  }
  if (IsMinimised()) {
    FrameOf(this)->setWindowTitle(GetBaseName(CurrentFile));
    return;
  }
  if (IsMaximised()) {
    app.IgnoreNextResize = true;
    SkipResize = true;
    ResizeTimer_Timer();
  } else {
    ResizeTimer.start();
  }
  FrameOf(this)->setWindowTitle(" Picture Viewer");
  setWindowTitle(" Picture Viewer");
  LayOut();
}

void SingleImage::ResizeTimer_Timer() {
  ResizeTimer.stop();
  if (SizingWindow) return;
  if (!IsMaximised() && !App().SlideshowRunning) {
    const QRect frame = FrameTwips();
    if (frame.width() < MinimumWidth) {
      SetFrameTwips(QRect(frame.topLeft(), QSize(MinimumWidth, frame.height())));
      return;
    }
    if (frame.height() < MinimumHeight) {
      SetFrameTwips(QRect(frame.topLeft(), QSize(frame.width(), MinimumHeight)));
      return;
    }
  }
  ResizePicture();
}

void SingleImage::ResizePicture() {
  const QSize sized = ResizedPicture(QSize(PictureWidth, PictureHeight), FrameTwips().size(), TopMargin, SideMargin);
  PictureWidth = sized.width();
  PictureHeight = sized.height();
  RedecodeIfShort();
  PlacePictures();
}

void SingleImage::RedecodeIfShort() {
  // A picture shown larger than it was decoded for is decoded again, as far
  // as its natural size allows.
  if (!PictureValid || shown_.isNull() || !Picture1->isVisible()) return;
  const qreal ratio = devicePixelRatioF();
  const QSize wanted = (QSizeF(twips::ToPixelsF(PictureWidth), twips::ToPixelsF(PictureHeight)) * ratio).toSize();
  if (shown_.width() >= std::min(wanted.width(), natural_.width()) - 1) return;
  QImage picture;
  if (!LoadMediaPicture(CurrentFile, picture, wanted)) return;
  shown_ = picture;
  Picture1->SetPicture(shown_);
}

void SingleImage::RefitPicture() {
  // An animated picture keeps its size; a still one takes the largest.
  if (Extension == "gif" && Animated) return;
  const QSize fitted = FitPicture(QSize(twips::FromPixels(natural_.width()), twips::FromPixels(natural_.height())),
                                  Room());
  PictureWidth = fitted.width();
  PictureHeight = fitted.height();
  ResizePicture();
}

