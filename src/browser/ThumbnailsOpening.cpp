// Opening the current item of a tab: pictures, videos and audios in the
// program's own viewers, documents and the videos that an outside program
// plays in the desktop's program for their type, CD tracks in the viewer
// sibling. A viewer closes before another opens, and the index of the item
// is put back afterwards, since closing a viewer can change it.

#include "browser/Thumbnails.h"

#include <QCoreApplication>

#include "browser/MenuFile.h"
#include "browser/Opening.h"
#include "catalogue/PathParts.h"
#include "controls/MsgBoxEnhanced.h"
#include "core/AppState.h"
#include "core/BarCommands.h"
#include "core/WindowRegistry.h"
#include "core/WindowShow.h"
#include "platform/SiblingPrograms.h"
#include "system/MixerModule.h"

namespace {

void LetEventsRun() { QCoreApplication::processEvents(); }

// An open viewer shows the current item again; else the viewer opens.
void ShowViewer(WindowId id) {
  if (auto* viewer = dynamic_cast<MediaViewer*>(Windows().Find(id)))
    viewer->LoadCurrentItem();
  else
    ShowWindow(id);
}

}  // namespace

void Thumbnails::OpenItem(int tab) {
  DblClickDelay[size_t(tab - 1)]->stop();
  emit ItemOpened(tab, App().Current(tab));
  switch (tab) {
    case PicturesTab: OpenPicture(); break;
    case VideosTab: OpenVideo(); break;
    case AudiosTab: OpenAudio(); break;
    case DocumentsTab: OpenDocument(); break;
    default: break;
  }
}

void Thumbnails::OpenPicture() {
  App().PendingFile.clear();
  Windows().Unload(WindowId::SingleImage);
  LetEventsRun();
  Menu->hide();
  LetEventsRun();
  ShowWindow(WindowId::SingleImage);
}

void Thumbnails::OpenVideo() {
  AppState& app = App();
  const qint32 current = app.CurrentVideo();
  app.PendingFile.clear();
  Windows().Unload(WindowId::SingleAudio);
  Windows().Unload(WindowId::SingleVideo);
  LetEventsRun();
  app.CurrentVideo() = current;
  Menu->hide();
  const QString entry = app.Entry(VideosTab, current);
  if (IsExteriorPgmTypeV(entry)) {
    Windows().Unload(WindowId::SingleVideo);
    StartExteriorProgram(entry, ExteriorFilePath(app.CurrentFolder, entry));
  } else {
    ShowViewer(WindowId::SingleVideo);
  }
}

void Thumbnails::OpenDocument() {
  AppState& app = App();
  const qint32 current = app.CurrentDocument();
  app.PendingFile.clear();
  for (WindowId viewer : {WindowId::SingleImage, WindowId::SingleAudio, WindowId::SingleVideo})
    Windows().Unload(viewer);
  LetEventsRun();
  app.CurrentDocument() = current;
  Menu->hide();
  const QString entry = app.Entry(DocumentsTab, current);
  // There is no viewer of documents of the program's own.
  if (IsExteriorPgmTypeD(entry)) StartExteriorProgram(entry, ExteriorFilePath(app.CurrentFolder, entry));
}

void Thumbnails::OpenAudio() {
  AppState& app = App();
  const qint32 current = app.CurrentAudio();
  app.PendingFile.clear();
  Windows().Unload(WindowId::SingleAudio);
  Windows().Unload(WindowId::SingleVideo);
  LetEventsRun();
  app.CurrentAudio() = current;
  Menu->hide();
  const QString entry = app.Entry(AudiosTab, current);
  if (GetFileExtension(entry) != "cda") {
    if (AudioAbilities() & 1) {
      ShowViewer(WindowId::SingleAudio);
    } else if (app.MsgBox) {
      app.MsgBox->MsgBox("Your computer is not configured to play audio files", 48, "Windows Setup");
    }
    return;
  }
  // A track of an audio CD plays in the viewer sibling, with the folder as
  // the command bar shows it.
  FocusCell(AudiosTab, current - Tab(AudiosTab).PageFirst);
  QString path = DisplayedCaption();
  if (!path.endsWith('/')) path += '/';
  platform::StartViewerProgram(app.ProgramFolder, path + entry);
  app.PendingFile.clear();
}
