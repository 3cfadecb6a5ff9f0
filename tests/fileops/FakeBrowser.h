#pragma once
// A stand-in for the browser, registered as it is, that notes what the file
// windows ask of it.

#include <QStringList>
#include <QWidget>

#include "core/BrowserCommands.h"
#include "core/WindowRegistry.h"

class FakeBrowser : public QWidget, public BrowserCommands {
 public:
  FakeBrowser() { Windows().Loaded(WindowId::Thumbnails, this); }
  void SuspendMouseWheel() override {}
  void ResumeMouseWheel() override {}
  void RefreshCurrentTooltip() override { Calls << "RefreshCurrentTooltip"; }
  void CurrentEntryRenamed(const QString& entry) override { Calls << "CurrentEntryRenamed " + entry; }
  void HighlightItem(int tab, qint32 index) override {
    Calls << QString("HighlightItem %1 %2").arg(tab).arg(index);
  }
  void MarkItemDeleted(int tab, qint32 index) override {
    Calls << QString("MarkItemDeleted %1 %2").arg(tab).arg(index);
  }
  void FocusCurrentItem() override { Calls << "FocusCurrentItem"; }

  QStringList Calls;
};
