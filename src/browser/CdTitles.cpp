#include "browser/CdTitles.h"

namespace {
CdTitleLookup& Lookup() {
  static CdTitleLookup lookup;
  return lookup;
}
}  // namespace

void SetCdTitleLookup(CdTitleLookup lookup) { Lookup() = std::move(lookup); }

bool LookUpCdTitles(const QString& folder, QStringList& titles) {
  titles.clear();
  if (!Lookup()) return false;
  return Lookup()(folder, titles);
}
