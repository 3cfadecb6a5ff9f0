#pragma once
// The one place where windows are loaded, shown and unloaded. A window is
// known by its name; unloading closes it, and a window may refuse (it then
// ignores the close and sets CloseRefused), in which case it stays loaded.

#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <vector>

class WindowRegistry {
 public:
  static WindowRegistry& Instance();

  // Registers a window that has been made; replaces a former one of that name.
  void Loaded(const QString& name, QWidget* window);
  QWidget* Find(const QString& name) const;
  bool IsLoaded(const QString& name) const;
  template <typename T>
  T* Get(const QString& name) const {
    return qobject_cast<T*>(Find(name));
  }

  // Closes and deletes the window. False when it refused to close.
  bool Unload(const QString& name);
  // Unloads every loaded window but the ones named, in the reverse order of
  // loading, letting pending events run after each.
  void UnloadAllExcept(const QStringList& keep);
  // Names of the loaded windows, in the order of loading.
  QStringList LoadedNames() const;

 private:
  struct Entry {
    QString name;
    QPointer<QWidget> window;
  };
  std::vector<Entry> entries_;
  void Prune();
};

inline WindowRegistry& Windows() { return WindowRegistry::Instance(); }
