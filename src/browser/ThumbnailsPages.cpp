// The page routines of the browser: the fill and clear of each tab, with what
// each does to the viewers first, handed to the picture page or the list
// page; and the table of each tab's routines.

#include "browser/CdTitles.h"
#include "browser/Thumbnails.h"
#include "browser/PageTexts.h"
#include "catalogue/PathParts.h"
#include "controls/NewTabControl.h"
#include "core/AppState.h"
#include "core/WindowRegistry.h"

struct Thumbnails::TabRoutines {
  void (Thumbnails::*Fill)();
  void (Thumbnails::*Clear)();
  void (Thumbnails::*KeyDown)(int index, int keyCode, int shift);
  void (Thumbnails::*ShowHighlight)();
};

const Thumbnails::TabRoutines& Thumbnails::RoutinesOf(int tab) {
  static constexpr TabRoutines routines[TabCount] = {
      {&Thumbnails::FillPicturePage, &Thumbnails::ClearPicturePage,
       &Thumbnails::ThumbImage_KeyDown, &Thumbnails::ShowHighlight1},
      {&Thumbnails::FillVideoPage, &Thumbnails::ClearVideoPage, &Thumbnails::VideoIcon_KeyDown,
       &Thumbnails::ShowHighlight2},
      {&Thumbnails::FillAudioPage, &Thumbnails::ClearAudioPage, &Thumbnails::AudioIcon_KeyDown,
       &Thumbnails::ShowHighlight3},
      {&Thumbnails::FillDocumentPage, &Thumbnails::ClearDocumentPage,
       &Thumbnails::DocumentIcon_KeyDown, &Thumbnails::ShowHighlight4},
  };
  // Any other number takes the routines of the last tab.
  return routines[tab >= PicturesTab && tab <= DocumentsTab ? tab - 1 : TabCount - 1];
}

void Thumbnails::FillPage(int tab) { (this->*RoutinesOf(tab).Fill)(); }

void Thumbnails::ClearPage(int tab) { (this->*RoutinesOf(tab).Clear)(); }

void Thumbnails::CellKeyDown(int tab, int index, int keyCode, int shift) {
  (this->*RoutinesOf(tab).KeyDown)(index, keyCode, shift);
}

void Thumbnails::ShowHighlight(int tab) {
  if (tab >= PicturesTab && tab <= DocumentsTab) (this->*RoutinesOf(tab).ShowHighlight)();
}

void Thumbnails::FillPicturePage() {
  if (QWidget* viewer = Windows().Find(WindowId::SingleImage)) {
    viewer->hide();
    if (!App().RefitInProgress) Windows().Unload(WindowId::SingleImage);
  }
  HideHighlight();
  strip_.ShowPageCount(PicturesTab, Tab(PicturesTab));
  pictures_.Fill();
  ThumbnailTabs->SetCaption(PicturesTab, TabCaption(PicturesTab, Tab(PicturesTab).Count));
  pictures_.Decode();
}

void Thumbnails::FillVideoPage() {
  if (QWidget* viewer = Windows().Find(WindowId::SingleVideo)) {
    viewer->hide();
    if (!App().RefitInProgress) Windows().Unload(WindowId::SingleVideo);
  }
  strip_.ShowPageCount(VideosTab, Tab(VideosTab));
  lists_.Fill(VideosTab);
  ThumbnailTabs->SetCaption(VideosTab, TabCaption(VideosTab, Tab(VideosTab).Count));
}

void Thumbnails::FillAudioPage() {
  if (QWidget* viewer = Windows().Find(WindowId::SingleAudio); viewer && !App().RefitInProgress)
    viewer->showMinimized();
  // An audio CD's tracks take their titles when the disc's titles are known.
  // The drive is the folder on display, or in an album the first entry's.
  const AppState& app = App();
  lists_.ReadCdTitles(app.AlbumMode ? GetFolderPart(app.Entry(AudiosTab, 0)) : app.CurrentFolder);
  strip_.ShowPageCount(AudiosTab, Tab(AudiosTab));
  lists_.Fill(AudiosTab);
  ThumbnailTabs->SetCaption(AudiosTab, TabCaption(AudiosTab, Tab(AudiosTab).Count));
}

void Thumbnails::FillDocumentPage() {
  strip_.ShowPageCount(DocumentsTab, Tab(DocumentsTab));
  lists_.Fill(DocumentsTab);
  ThumbnailTabs->SetCaption(DocumentsTab, TabCaption(DocumentsTab, Tab(DocumentsTab).Count));
}

void Thumbnails::ClearPicturePage() { pictures_.Clear(); }
void Thumbnails::ClearVideoPage() { lists_.Clear(VideosTab); }
void Thumbnails::ClearAudioPage() { lists_.Clear(AudiosTab); }
void Thumbnails::ClearDocumentPage() { lists_.Clear(DocumentsTab); }
