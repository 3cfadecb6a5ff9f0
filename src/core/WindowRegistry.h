#pragma once
// The one place where windows are loaded, shown and unloaded. A window is
// known by its identifier (WindowRoles.h); unloading closes it, and a window
// may refuse (it then ignores the close and sets CloseRefused), in which
// case it stays loaded. A window class that names its identifier as
// `static constexpr WindowId Id` is reached typed: Windows().Get<Thumbnails>().

#include <QPointer>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <initializer_list>
#include <map>
#include <optional>
#include <vector>

#include "core/WindowRoles.h"

class WindowRegistry {
 public:
  static WindowRegistry& Instance();

  // Registers a window that has been made; replaces a former one of that id.
  void Loaded(WindowId id, QWidget* window);
  template <typename T>
  void Loaded(T* window) {
    Loaded(T::Id, window);
  }
  QWidget* Find(WindowId id) const;
  bool IsLoaded(WindowId id) const { return Find(id) != nullptr; }
  template <typename T>
  T* Get() const {
    return qobject_cast<T*>(Find(T::Id));
  }
  // The identifier a loaded window is registered under.
  std::optional<WindowId> IdOf(const QWidget* window) const;

  // Closes and deletes the window. False when it refused to close.
  bool Unload(WindowId id);
  // How a window is made, for the windows that the program loads again
  // itself (a refit brings some back). Load gives the loaded window, or
  // makes it through its loader; nullptr when it has none.
  void SetLoader(WindowId id, std::function<QWidget*()> loader);
  QWidget* Load(WindowId id);
  // A window that closed itself (its close accepted) is no longer loaded.
  void Closed(const QWidget* window);
  // Unloads every loaded window but the ones given, in the reverse order of
  // loading, letting pending events run after each.
  void UnloadAllExcept(std::initializer_list<WindowId> keep);
  // The loaded windows, in the order of loading.
  std::vector<WindowId> LoadedIds() const;
  // Their names, for messages and tests.
  QStringList LoadedNames() const;
  // Forgets every window (for tests, between cases).
  void Clear() {
    entries_.clear();
    loaders_.clear();
  }

 private:
  struct Entry {
    WindowId id;
    QPointer<QWidget> window;
  };
  std::vector<Entry> entries_;
  std::map<WindowId, std::function<QWidget*()>> loaders_;
  void Prune();
};

inline WindowRegistry& Windows() { return WindowRegistry::Instance(); }
