#include "browser/AccessibleBrowser.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QLabel>
#include <QPointer>

#include "browser/PageTexts.h"
#include "browser/Thumbnails.h"
#include "controls/NewTabControl.h"
#include "catalogue/PathParts.h"
#include "controls/AccessibleControls.h"
#include "core/AppState.h"

namespace {

// The cells of the tab in front that hold an entry of the page on display.
int FilledCells(Thumbnails& browser) {
  const int tab = browser.CurrentTab();
  const TabState& state = browser.Tab(tab);
  if (state.Count < 1 || state.PageLast < state.PageFirst) return 0;
  return std::min(int(state.PageLast - state.PageFirst + 1), browser.CellCount(tab));
}

// The cell a widget of the browser is (an icon or a picture, not the name
// beside an icon), as its tab and number; tab 0 for any other widget.
struct CellPlace {
  int Tab = 0;
  int Cell = -1;
};

CellPlace PlaceOf(Thumbnails& browser, const QWidget* widget) {
  const QVariant tab = widget->property("vistrelTab");
  if (!tab.isValid()) return {};
  const int cell = widget->property("vistrelCell").toInt();
  if (browser.Cell(tab.toInt(), cell) != widget) return {};
  return {tab.toInt(), cell};
}

// The widgets of the browser the reader meets besides the list: all but
// the cells and the names beside the icons, which the list stands for.
QList<QWidget*> PlainChildren(const QWidget* browser) {
  QList<QWidget*> children;
  for (QObject* object : browser->children()) {
    if (!object->isWidgetType()) continue;
    auto* widget = static_cast<QWidget*>(object);
    if (widget->isWindow() || widget->property("vistrelTab").isValid()) continue;
    children << widget;
  }
  return children;
}

// The page on display: a list of the filled cells of the tab in front.
class CellListAccessible : public QAccessibleInterface {
 public:
  explicit CellListAccessible(Thumbnails* browser) : browser_(browser) {}

  bool isValid() const override { return !browser_.isNull(); }
  QObject* object() const override { return nullptr; }
  QWindow* window() const override {
    QAccessibleInterface* owner = parent();
    return owner ? owner->window() : nullptr;
  }
  QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(browser_); }
  int childCount() const override { return browser_ ? FilledCells(*browser_) : 0; }
  QAccessibleInterface* child(int index) const override {
    if (index < 0 || index >= childCount()) return nullptr;
    return QAccessible::queryAccessibleInterface(browser_->Cell(browser_->CurrentTab(), index));
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    if (!browser_ || !child || !child->object() || !child->object()->isWidgetType()) return -1;
    const CellPlace place = PlaceOf(*browser_, static_cast<QWidget*>(child->object()));
    if (place.Tab != browser_->CurrentTab() || place.Cell >= childCount()) return -1;
    return place.Cell;
  }
  QAccessibleInterface* childAt(int x, int y) const override {
    for (int i = 0; i < childCount(); ++i)
      if (QAccessibleInterface* cell = child(i); cell && cell->rect().contains(x, y)) return cell;
    return nullptr;
  }

  QString text(QAccessible::Text t) const override {
    if (!browser_) return QString();
    const int tab = browser_->CurrentTab();
    if (t == QAccessible::Name) return TabWord(tab);
    // What the bottom strip says of the tab: "1 to 15 of 20 picture files".
    if (t == QAccessible::Description) return browser_->ThumbnailTabs->TabDescription(tab);
    return QString();
  }
  void setText(QAccessible::Text, const QString&) override {}
  QRect rect() const override {
    QRect area;
    for (int i = 0; i < childCount(); ++i)
      if (QAccessibleInterface* cell = child(i)) area |= cell->rect();
    return area;
  }
  QAccessible::Role role() const override { return QAccessible::List; }
  QAccessible::State state() const override {
    QAccessible::State s;
    if (!browser_) {
      s.invalid = true;
      return s;
    }
    s.readOnly = true;
    s.invisible = !browser_->isVisible();
    return s;
  }

 private:
  QPointer<Thumbnails> browser_;
};

class BrowserAccessible : public QAccessibleWidget {
 public:
  explicit BrowserAccessible(Thumbnails* browser) : QAccessibleWidget(browser, QAccessible::Client) {
    list_ = QAccessible::registerAccessibleInterface(new CellListAccessible(browser));
  }
  ~BrowserAccessible() override { QAccessible::deleteAccessibleInterface(list_); }

  QAccessibleInterface* List() const { return QAccessible::accessibleInterface(list_); }

  // The plain widgets in the window's order, the list last.
  int childCount() const override { return int(PlainChildren(widget()).size()) + 1; }
  QAccessibleInterface* child(int index) const override {
    const QList<QWidget*> children = PlainChildren(widget());
    if (index == children.size()) return List();
    if (index < 0 || index > children.size()) return nullptr;
    return QAccessible::queryAccessibleInterface(children[index]);
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    const QList<QWidget*> children = PlainChildren(widget());
    if (child == List()) return int(children.size());
    if (!child || !child->object() || !child->object()->isWidgetType()) return -1;
    return int(children.indexOf(static_cast<QWidget*>(child->object())));
  }

 private:
  QAccessible::Id list_ = 0;
};

// A label or picture of the browser. The cells are items of the list,
// named by their files; the rest read as Qt's labels do.
class BrowserLabelAccessible : public QAccessibleWidget {
 public:
  explicit BrowserLabelAccessible(QWidget* widget) : QAccessibleWidget(widget) {}

  QAccessibleInterface* parent() const override {
    if (Place().Tab != 0)
      if (auto* owner = dynamic_cast<BrowserAccessible*>(QAccessible::queryAccessibleInterface(Browser())))
        return owner->List();
    return QAccessibleWidget::parent();
  }
  QAccessible::Role role() const override {
    if (Place().Tab != 0) return QAccessible::ListItem;
    const auto* label = qobject_cast<const QLabel*>(widget());
    return label && !label->text().isEmpty() ? QAccessible::StaticText : QAccessible::Graphic;
  }
  QString text(QAccessible::Text t) const override {
    const CellPlace place = Place();
    if (t == QAccessible::Name && widget()->accessibleName().isEmpty()) {
      if (place.Tab != 0) return EntryName(place);
      if (const auto* label = qobject_cast<const QLabel*>(widget())) return label->text();
    }
    return QAccessibleWidget::text(t);
  }
  QAccessible::State state() const override {
    QAccessible::State s = QAccessibleWidget::state();
    const CellPlace place = Place();
    if (place.Tab == 0) return s;
    s.selectable = true;
    const TabState& tab = Browser()->Tab(place.Tab);
    s.selected = place.Tab == Browser()->CurrentTab() && tab.PageFirst + place.Cell == App().Current(place.Tab);
    return s;
  }

 private:
  Thumbnails* Browser() const { return static_cast<Thumbnails*>(widget()->parentWidget()); }
  CellPlace Place() const {
    Thumbnails* browser = qobject_cast<Thumbnails*>(widget()->parentWidget());
    return browser ? PlaceOf(*browser, widget()) : CellPlace{};
  }
  // The name the cell shows: the file, or its title on an audio CD as the
  // page gave it.
  QString EntryName(const CellPlace& place) const {
    if (place.Tab != PicturesTab) {
      const QLabel* name = Browser()->Name(place.Tab, place.Cell);
      if (name && name->text() == QLatin1String("(Deleted)")) return name->text();
      if (name && !name->accessibleName().isEmpty()) return name->accessibleName();
    }
    const QString entry = App().Entry(place.Tab, Browser()->Tab(place.Tab).PageFirst + place.Cell);
    if (entry.isEmpty()) return QStringLiteral("(Deleted)");
    return App().AlbumMode ? GetBaseName(entry) : entry;
  }
};

QAccessibleInterface* BrowserFactory(const QString& className, QObject* object) {
  if (!object || !object->isWidgetType()) return nullptr;
  auto* widget = static_cast<QWidget*>(object);
  if (className == QLatin1String(Thumbnails::staticMetaObject.className()))
    return new BrowserAccessible(static_cast<Thumbnails*>(widget));
  // Decided by the parent alone: the widget may be asked for before the
  // page has made it a cell.
  if ((className == QLatin1String("QLabel") || className == QLatin1String("NewImage")) &&
      qobject_cast<Thumbnails*>(widget->parentWidget()))
    return new BrowserLabelAccessible(widget);
  return nullptr;
}

}  // namespace

namespace accessible {

void InstallBrowser() {
  // The controls first: a factory installed later is asked first, and the
  // browser's cells are labels and pictures of the control library.
  InstallControls();
  QAccessible::installFactory(BrowserFactory);
}

}  // namespace accessible
