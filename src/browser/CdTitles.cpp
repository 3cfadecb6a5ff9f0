#include "browser/CdTitles.h"

#include "core/AppState.h"

void SetCdTitleLookup(CdTitleLookup lookup) { App().CdTitles = std::move(lookup); }

bool LookUpCdTitles(const QString& folder, QStringList& titles) {
  titles.clear();
  if (!App().CdTitles) return false;
  return App().CdTitles(folder, titles);
}
