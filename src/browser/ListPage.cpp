#include "browser/ListPage.h"

#include <QApplication>
#include <QLabel>
#include <algorithm>

#include "browser/CdTitles.h"
#include "browser/CellIcons.h"
#include "browser/PageTexts.h"
#include "catalogue/PathParts.h"
#include "core/AppState.h"
#include "platform/Twips.h"

using namespace pagegeometry;

ListPage::ListPage(QWidget* window, Listing& listing, const PageLayout& layout,
                   std::function<bool(int tab)> inFront)
    : window_(window), listing_(listing), layout_(layout), inFront_(std::move(inFront)) {}

void ListPage::EnsureCells(int tab, int count, QObject* filter) {
  count = std::max(count, 1);
  auto& icons = Icons[size_t(tab - 2)];
  auto& names = Names[size_t(tab - 2)];
  while (icons.size() > count) {
    delete icons.takeLast();
    delete names.takeLast();
  }
  const int iconPixels = twips::ToPixels(IconSize);
  const QString word = TabWord(tab).chopped(1);
  while (icons.size() < count) {
    const int index = int(icons.size());
    auto* icon = new QLabel(window_);
    icon->setObjectName(QString("%1Icon%2").arg(word).arg(index));
    icon->setPixmap(CellIcon(tab, iconPixels, window_->devicePixelRatioF()));
    icon->setScaledContents(true);
    auto* name = new QLabel(window_);
    name->setObjectName(QString("%1Name%2").arg(word).arg(index));
    name->setTextFormat(Qt::PlainText);
    for (QLabel* w : {icon, name}) {
      w->setProperty("vistrelTab", tab);
      w->setProperty("vistrelCell", index);
      w->installEventFilter(filter);
      w->hide();
    }
    icon->setFocusPolicy(Qt::NoFocus);
    icons.append(icon);
    names.append(name);
  }
}

void ListPage::PlaceCells() {
  for (size_t i = 0; i < Icons.size(); ++i) {
    for (int cell = 0; cell < Icons[i].size(); ++cell) {
      Icons[i][cell]->setGeometry(twips::ToPixels(IconCellRect(layout_, cell)));
      Names[i][cell]->setGeometry(twips::ToPixels(NameCellRect(layout_, cell)));
    }
  }
}

int ListPage::CellCount(int tab) const {
  if (tab < VideosTab || tab > DocumentsTab) return 0;
  return int(Icons[size_t(tab - 2)].size());
}

QLabel* ListPage::Icon(int tab, int cell) const {
  if (cell < 0 || cell >= CellCount(tab)) return nullptr;
  return Icons[size_t(tab - 2)][cell];
}

QLabel* ListPage::Name(int tab, int cell) const {
  if (cell < 0 || cell >= CellCount(tab)) return nullptr;
  return Names[size_t(tab - 2)][cell];
}

void ListPage::ReadCdTitles(const QString& folder) {
  cdTitlesKnown_ = false;
  cdTitles_.clear();
  const QStringList& audios = App().AudioFiles();
  const bool tracks = !audios.isEmpty() &&
                      GetFileExtension(audios.first()).compare("cda", Qt::CaseInsensitive) == 0;
  if (tracks) cdTitlesKnown_ = LookUpCdTitles(folder, cdTitles_);
}

void ListPage::Fill(int tab) {
  const AppState& app = App();
  TabState& state = listing_.Tab(tab);
  state.PageFirst = state.PageStart;
  state.PageLast = 0;
  Clear(tab);
  const auto& icons = Icons[size_t(tab - 2)];
  const auto& names = Names[size_t(tab - 2)];
  qint32 idx = state.PageStart;
  for (int cell = 0; cell < state.PageSize && cell < icons.size(); ++cell) {
    idx = state.PageStart + cell;
    if (idx >= state.Count) break;
    const QString entry = app.Entry(tab, idx);
    QString name;
    if (entry.isEmpty())
      name = QStringLiteral("(Deleted)");
    else if (tab == AudiosTab && cdTitlesKnown_ && cell < cdTitles_.size())
      // The titles follow the cell's number on the page, not the entry's
      // number in the list: a second page starts again at the first title.
      name = cdTitles_[cell];
    else
      name = app.AlbumMode ? GetBaseName(entry) : entry;
    names[cell]->setText(name);
    // The whole name for the screen reader; the label may show it cut.
    names[cell]->setAccessibleName(name);
    AdjustFilename(names[cell]);
    if (app.ShowPopupData && !entry.isEmpty()) {
      const QString tip = CellTooltip(tab, idx);
      icons[cell]->setToolTip(tip);
      names[cell]->setToolTip(tip);
    }
    if (inFront_(tab)) {
      names[cell]->show();
      icons[cell]->show();
      icons[cell]->setFocusPolicy(Qt::StrongFocus);
    }
  }
  state.PageLast = std::min(idx, state.Count - 1);
}

void ListPage::Clear(int tab) {
  const auto& icons = Icons[size_t(tab - 2)];
  const auto& names = Names[size_t(tab - 2)];
  // An icon about to hide hands the keys to the window, which holds them
  // until a cell takes them again.
  const QWidget* focus = QApplication::focusWidget();
  if (focus && (std::find(icons.cbegin(), icons.cend(), focus) != icons.cend() ||
                std::find(names.cbegin(), names.cend(), focus) != names.cend()))
    window_->setFocus(Qt::OtherFocusReason);
  for (int cell = 0; cell < icons.size(); ++cell) {
    names[cell]->hide();
    icons[cell]->hide();
    icons[cell]->setFocusPolicy(Qt::NoFocus);
    icons[cell]->setToolTip(QString());
    names[cell]->setToolTip(QString());
    names[cell]->setAccessibleName(QString());
  }
}

void ListPage::AdjustFilename(QLabel* label) const {
  if (!label) return;
  const QFontMetrics metrics(label->font());
  const auto widthOf = [&metrics](const QString& text) {
    return twips::FromPixels(metrics.horizontalAdvance(text));
  };
  QString text = label->text();
  int labelWidth = widthOf(text) + 45;
  if (labelWidth > layout_.NameWidth) labelWidth = layout_.NameWidth;
  while (!text.isEmpty() && widthOf(text) + 45 > labelWidth) text.chop(1);
  QRect geometry = label->geometry();
  geometry.setWidth(std::max(twips::ToPixels(labelWidth), 1));
  label->setGeometry(geometry);
  label->setText(text);
}

void ListPage::SetDataTooltips(int tab, bool on) {
  const AppState& app = App();
  const TabState& state = listing_.Tab(tab);
  for (int cell = 0; cell < CellCount(tab); ++cell) {
    const qint32 index = state.PageFirst + cell;
    QString tip;
    if (on && index < state.Count && index <= state.PageLast && app.HasEntry(tab, index))
      tip = CellTooltip(tab, index);
    Icon(tab, cell)->setToolTip(tip);
    Name(tab, cell)->setToolTip(tip);
  }
}
