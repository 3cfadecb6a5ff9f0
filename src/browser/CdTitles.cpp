#include "browser/CdTitles.h"

#include "core/AppState.h"
#include "viewers/Mci.h"

void SetCdTitleLookup(CdTitleLookup lookup) { App().CdTitles = std::move(lookup); }

bool LookUpCdTitles(const QString& folder, QStringList& titles) {
  titles.clear();
  if (!App().CdTitles) return false;
  // The disc is looked at with every media device closed, a playing film too.
  MciCloseAll();
  return App().CdTitles(folder, titles);
}
