#include "core/WindowRegistry.h"

#include <QCoreApplication>
#include <QEvent>

#include "core/Trace.h"

namespace {

class WindowTrace : public QObject {
 public:
  WindowTrace(WindowId id, QWidget* window) : QObject(window), id_(id) { window->installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Show && event->type() != QEvent::Hide) return false;
    auto* window = static_cast<QWidget*>(watched);
    const QPoint at = window->mapToGlobal(QPoint(0, 0));
    Trace(QStringLiteral("%1 %2 %3,%4 %5x%6")
              .arg(event->type() == QEvent::Show ? "shown" : "hidden", WindowName(id_))
              .arg(at.x())
              .arg(at.y())
              .arg(window->width())
              .arg(window->height()));
    return false;
  }

 private:
  WindowId id_;
};

void TraceWindow(WindowId id, QWidget* window) {
  if (window && Tracing()) new WindowTrace(id, window);
}

}  // namespace

WindowRegistry& WindowRegistry::Instance() {
  static WindowRegistry registry;
  return registry;
}

void WindowRegistry::Prune() {
  std::erase_if(entries_, [](const Entry& e) { return e.window.isNull(); });
}

void WindowRegistry::Loaded(WindowId id, QWidget* window) {
  Prune();
  for (Entry& e : entries_) {
    if (e.id == id) {
      if (e.window != window) TraceWindow(id, window);
      e.window = window;
      return;
    }
  }
  TraceWindow(id, window);
  entries_.push_back({id, window});
}

QWidget* WindowRegistry::Find(WindowId id) const {
  for (const Entry& e : entries_)
    if (e.id == id && !e.window.isNull()) return e.window.data();
  return nullptr;
}

std::optional<WindowId> WindowRegistry::IdOf(const QWidget* window) const {
  if (!window) return std::nullopt;
  for (const Entry& e : entries_)
    if (e.window.data() == window) return e.id;
  return std::nullopt;
}

bool WindowRegistry::Unload(WindowId id) {
  QWidget* window = Find(id);
  if (!window) return true;
  // A window that refuses ignores its close event and stays.
  if (!window->close()) return false;
  std::erase_if(entries_, [&](const Entry& e) { return e.id == id; });
  window->deleteLater();
  return true;
}

void WindowRegistry::SetLoader(WindowId id, std::function<QWidget*()> loader) {
  loaders_[id] = std::move(loader);
}

QWidget* WindowRegistry::Load(WindowId id) {
  if (QWidget* loaded = Find(id)) return loaded;
  const auto it = loaders_.find(id);
  if (it == loaders_.end() || !it->second) return nullptr;
  QWidget* window = it->second();
  if (window) Loaded(id, window);
  return window;
}

void WindowRegistry::Closed(const QWidget* window) {
  std::erase_if(entries_, [&](const Entry& e) { return e.window.data() == window; });
}

void WindowRegistry::UnloadAllExcept(std::initializer_list<WindowId> keep) {
  std::vector<WindowId> ids = LoadedIds();
  std::reverse(ids.begin(), ids.end());
  for (WindowId id : ids) {
    if (std::find(keep.begin(), keep.end(), id) != keep.end()) continue;
    Unload(id);
    QCoreApplication::processEvents();
  }
}

std::vector<WindowId> WindowRegistry::LoadedIds() const {
  std::vector<WindowId> ids;
  for (const Entry& e : entries_)
    if (!e.window.isNull()) ids.push_back(e.id);
  return ids;
}

QStringList WindowRegistry::LoadedNames() const {
  QStringList names;
  for (WindowId id : LoadedIds()) names << WindowName(id);
  return names;
}
