#include "shell/WindowRegistry.h"

#include <QCoreApplication>
#include <algorithm>

WindowRegistry& WindowRegistry::Instance() {
  static WindowRegistry registry;
  return registry;
}

void WindowRegistry::Prune() {
  std::erase_if(entries_, [](const Entry& e) { return e.window.isNull(); });
}

void WindowRegistry::Loaded(const QString& name, QWidget* window) {
  Prune();
  for (Entry& e : entries_) {
    if (e.name == name) {
      e.window = window;
      return;
    }
  }
  entries_.push_back({name, window});
}

QWidget* WindowRegistry::Find(const QString& name) const {
  for (const Entry& e : entries_)
    if (e.name == name && !e.window.isNull()) return e.window.data();
  return nullptr;
}

bool WindowRegistry::IsLoaded(const QString& name) const { return Find(name) != nullptr; }

bool WindowRegistry::Unload(const QString& name) {
  QWidget* window = Find(name);
  if (!window) return true;
  // A window that refuses ignores its close event and stays.
  if (!window->close()) return false;
  std::erase_if(entries_, [&](const Entry& e) { return e.name == name; });
  window->deleteLater();
  return true;
}

void WindowRegistry::UnloadAllExcept(const QStringList& keep) {
  QStringList names = LoadedNames();
  std::reverse(names.begin(), names.end());
  for (const QString& name : names) {
    if (keep.contains(name)) continue;
    Unload(name);
    QCoreApplication::processEvents();
  }
}

QStringList WindowRegistry::LoadedNames() const {
  QStringList names;
  for (const Entry& e : entries_)
    if (!e.window.isNull()) names << e.name;
  return names;
}
