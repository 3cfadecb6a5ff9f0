#include "controls/AccessibleTabs.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QLabel>
#include <QPointer>
#include <array>

#include "controls/NewTabControl.h"

namespace {

// One tab of the strip. It has no widget of its own: its caption is read
// from the tab's label and its rectangle is the label's.
class PageTabAccessible : public QAccessibleInterface, public QAccessibleActionInterface {
 public:
  PageTabAccessible(NewTabControl* tabs, int index) : tabs_(tabs), index_(index) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ActionInterface) return static_cast<QAccessibleActionInterface*>(this);
    return nullptr;
  }
  bool isValid() const override { return !tabs_.isNull(); }
  QObject* object() const override { return nullptr; }
  QWindow* window() const override {
    QAccessibleInterface* strip = parent();
    return strip ? strip->window() : nullptr;
  }
  QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(tabs_); }
  QAccessibleInterface* child(int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }

  QString text(QAccessible::Text t) const override {
    if (!tabs_) return QString();
    if (t == QAccessible::Name) return tabs_->CaptionLabel(index_)->text();
    if (t == QAccessible::Description) return tabs_->TabDescription(index_);
    return QString();
  }
  void setText(QAccessible::Text, const QString&) override {}

  QRect rect() const override {
    if (!tabs_) return QRect();
    const QLabel* label = tabs_->CaptionLabel(index_);
    return QRect(label->mapToGlobal(QPoint(0, 0)), label->size());
  }
  QAccessible::Role role() const override { return QAccessible::PageTab; }
  QAccessible::State state() const override {
    QAccessible::State s;
    if (!tabs_) {
      s.invalid = true;
      return s;
    }
    s.selectable = true;
    s.selected = tabs_->CurrentTab() == index_;
    s.disabled = !tabs_->isEnabled();
    s.invisible = !tabs_->isVisible();
    return s;
  }

  // A press brings the tab forward, as a click on it does.
  QStringList actionNames() const override { return {pressAction()}; }
  QStringList keyBindingsForAction(const QString&) const override { return {}; }
  void doAction(const QString& action) override {
    if (action != pressAction() || !tabs_ || !tabs_->isEnabled()) return;
    if (tabs_->CurrentTab() != index_) tabs_->SetCurrentTab(qint16(index_));
  }

 private:
  QPointer<NewTabControl> tabs_;
  int index_;
};

class TabControlAccessible : public QAccessibleWidget {
 public:
  explicit TabControlAccessible(NewTabControl* tabs) : QAccessibleWidget(tabs, QAccessible::PageTabList) {}
  ~TabControlAccessible() override {
    for (QAccessible::Id id : ids_)
      if (id) QAccessible::deleteAccessibleInterface(id);
  }

  // The tabs that divide the width, up to the four that have a label.
  int childCount() const override { return std::min<int>(tabs()->TabsShown(), int(ids_.size())); }
  QAccessibleInterface* child(int index) const override {
    if (index < 0 || index >= childCount()) return nullptr;
    QAccessible::Id& id = ids_[size_t(index)];
    if (!id) id = QAccessible::registerAccessibleInterface(new PageTabAccessible(tabs(), index + 1));
    return QAccessible::accessibleInterface(id);
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    for (int i = 0; i < childCount(); ++i)
      if (ids_[size_t(i)] && QAccessible::accessibleInterface(ids_[size_t(i)]) == child) return i;
    return -1;
  }
  QAccessibleInterface* childAt(int x, int y) const override {
    for (int i = 0; i < childCount(); ++i)
      if (child(i)->rect().contains(x, y)) return child(i);
    return nullptr;
  }

 private:
  NewTabControl* tabs() const { return static_cast<NewTabControl*>(widget()); }
  mutable std::array<QAccessible::Id, 4> ids_{};
};

}  // namespace

namespace accessible {

QAccessibleInterface* MakeTabControlAccessible(NewTabControl* tabs) { return new TabControlAccessible(tabs); }

void NotifyTabSelected(NewTabControl* tabs, int previous, int current) {
  if (!tabs || !QAccessible::isActive()) return;
  QAccessible::State selected;
  selected.selected = true;
  for (int tab : {previous, current}) {
    if (tab < 1 || tab > 4 || (tab == previous && previous == current)) continue;
    QAccessibleStateChangeEvent event(tabs, selected);
    event.setChild(tab - 1);
    QAccessible::updateAccessibility(&event);
  }
  if (current >= 1 && current <= 4) {
    QAccessibleEvent event(tabs, QAccessible::Selection);
    event.setChild(current - 1);
    QAccessible::updateAccessibility(&event);
  }
}

void NotifyTabCaption(NewTabControl* tabs, int index) {
  if (!tabs || !QAccessible::isActive() || index < 1 || index > 4) return;
  QAccessibleEvent event(tabs, QAccessible::NameChanged);
  event.setChild(index - 1);
  QAccessible::updateAccessibility(&event);
}

}  // namespace accessible
