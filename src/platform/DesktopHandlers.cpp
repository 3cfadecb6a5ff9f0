#include "platform/DesktopHandlers.h"
#include "platform/SiblingPrograms.h"

#include <QFile>
#include <functional>
#include <memory>

// glib's headers use "signals" as a member name, which Qt defines as a
// keyword; nothing below declares a Qt class.
#undef signals
#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

namespace platform {

namespace {

struct UnrefObject {
  void operator()(gpointer object) const { g_object_unref(object); }
};
struct FreeText {
  void operator()(gchar* text) const { g_free(text); }
};
struct FreeList {
  void operator()(GList* list) const { g_list_free_full(list, g_object_unref); }
};
struct FreeVector {
  void operator()(gchar** vector) const { g_strfreev(vector); }
};
using AppInfo = std::unique_ptr<GAppInfo, UnrefObject>;
using Text = std::unique_ptr<gchar, FreeText>;
using AppList = std::unique_ptr<GList, FreeList>;
using TextVector = std::unique_ptr<gchar*, FreeVector>;

QString FromUtf8(const gchar* text) { return text ? QString::fromUtf8(text) : QString(); }

// MIME types are compared without regard to case; the desktop's database
// writes them in lower case.
QByteArray TypeKey(const QString& mimeType) { return mimeType.trimmed().toLower().toUtf8(); }

GDesktopAppInfo* AsDesktopEntry(GAppInfo* info) {
  return info && G_IS_DESKTOP_APP_INFO(info) ? G_DESKTOP_APP_INFO(info) : nullptr;
}

// An application the desktop may offer: a desktop entry the user has not
// deleted (Hidden=true; the desktop's own default lookup still returns such
// an entry when the list of defaults names it).
bool Usable(GAppInfo* info) {
  GDesktopAppInfo* entry = AsDesktopEntry(info);
  return entry && !g_desktop_app_info_get_is_hidden(entry);
}

bool IsRasterEditor(GAppInfo* info) {
  const char* categories = g_desktop_app_info_get_categories(AsDesktopEntry(info));
  if (!categories) return false;
  return QString::fromUtf8(categories).split(';', Qt::SkipEmptyParts).contains("RasterGraphics");
}

DesktopApplication Describe(GAppInfo* info) {
  DesktopApplication application;
  GDesktopAppInfo* entry = AsDesktopEntry(info);
  if (!entry) return application;
  application.Id = FromUtf8(g_app_info_get_id(info));
  if (const char* executable = g_app_info_get_executable(info)) {
    const Text path(g_find_program_in_path(executable));
    application.Executable = FromUtf8(path.get());
  }
  const Text exec(g_desktop_app_info_get_string(entry, "Exec"));
  application.Exec = exec ? FromUtf8(exec.get()) : FromUtf8(g_app_info_get_commandline(info));
  return application;
}

// The applications for the type in the desktop's order of preference: the
// default, the recommended ones, then every other; the first that passes
// the test.
DesktopApplication FirstApplication(const QString& mimeType,
                                    const std::function<bool(GAppInfo*)>& accept) {
  const QByteArray type = TypeKey(mimeType);
  if (type.isEmpty()) return {};
  const AppInfo preferred(g_app_info_get_default_for_type(type.constData(), FALSE));
  if (preferred && Usable(preferred.get()) && accept(preferred.get()))
    return Describe(preferred.get());
  for (GList* (*listFor)(const char*) :
       {g_app_info_get_recommended_for_type, g_app_info_get_all_for_type}) {
    const AppList list(listFor(type.constData()));
    for (GList* item = list.get(); item; item = item->next) {
      GAppInfo* info = static_cast<GAppInfo*>(item->data);
      if (Usable(info) && accept(info)) return Describe(info);
    }
  }
  return {};
}

// Expands the field codes of one argument of the Exec line into none, one
// or several arguments.
void ExpandArgument(const QString& argument, const QStringList& files, GDesktopAppInfo* entry,
                    QStringList& out) {
  if (argument == "%F" || argument == "%U") {
    out << files;
    return;
  }
  if (argument == "%i") {
    const Text icon(entry ? g_desktop_app_info_get_string(entry, "Icon") : nullptr);
    if (icon && *icon) out << "--icon" << FromUtf8(icon.get());
    return;
  }
  QString expanded;
  bool onlyCodes = true;
  for (qsizetype i = 0; i < argument.size(); ++i) {
    if (argument[i] != '%' || i + 1 == argument.size()) {
      expanded += argument[i];
      onlyCodes = false;
      continue;
    }
    const QChar code = argument[++i];
    if (code == '%') {
      expanded += '%';
      onlyCodes = false;
    } else if (code == 'f' || code == 'u' || code == 'F' || code == 'U') {
      if (!files.isEmpty()) expanded += files.first();
    } else if (code == 'c') {
      if (entry) expanded += FromUtf8(g_app_info_get_name(G_APP_INFO(entry)));
    } else if (code == 'k') {
      if (entry) expanded += FromUtf8(g_desktop_app_info_get_filename(entry));
    } else if (code == 'i') {
      const Text icon(entry ? g_desktop_app_info_get_string(entry, "Icon") : nullptr);
      if (icon) expanded += FromUtf8(icon.get());
    }
    // %d %D %n %N %v %m are deprecated and, like unknown codes, dropped.
  }
  // An argument made of codes that gave nothing (a file code without a
  // file) disappears.
  if (!expanded.isEmpty() || !onlyCodes) out << expanded;
}

}  // namespace

QString MimeTypeOfName(const QString& name) {
  const QString fallback = QStringLiteral("application/octet-stream");
  if (name.isEmpty()) return fallback;
  const QByteArray encoded = QFile::encodeName(name);
  const Text contentType(g_content_type_guess(encoded.constData(), nullptr, 0, nullptr));
  if (!contentType) return fallback;
  const Text mimeType(g_content_type_get_mime_type(contentType.get()));
  return mimeType && *mimeType ? FromUtf8(mimeType.get()) : fallback;
}

DesktopApplication DefaultApplicationFor(const QString& mimeType) {
  return FirstApplication(mimeType, [](GAppInfo*) { return true; });
}

bool HasDefaultApplicationFor(const QString& mimeType) {
  return DefaultApplicationFor(mimeType).IsValid();
}

DesktopApplication RasterEditorFor(const QString& mimeType) {
  return FirstApplication(mimeType, IsRasterEditor);
}

QStringList CommandLineFor(const DesktopApplication& application, const QStringList& files) {
  if (application.Exec.trimmed().isEmpty()) return {};
  const QByteArray exec = application.Exec.toUtf8();
  gint count = 0;
  gchar** parsed = nullptr;
  if (!g_shell_parse_argv(exec.constData(), &count, &parsed, nullptr)) return {};
  const TextVector words(parsed);
  const std::unique_ptr<GDesktopAppInfo, UnrefObject> entry(
      application.Id.isEmpty() ? nullptr
                               : g_desktop_app_info_new(application.Id.toUtf8().constData()));
  QStringList commandLine;
  for (gint i = 0; i < count; ++i) {
    const QString word = FromUtf8(words.get()[i]);
    if (i == 0)
      commandLine << word;  // the program itself carries no field codes
    else
      ExpandArgument(word, files, entry.get(), commandLine);
  }
  return commandLine;
}

bool StartApplication(const DesktopApplication& application, const QStringList& files) {
  if (!application.IsValid()) return false;
  const QStringList commandLine = CommandLineFor(application, files);
  if (commandLine.isEmpty() || commandLine.first().isEmpty()) return false;
  return StartProgram(commandLine.first(), commandLine.mid(1));
}

}  // namespace platform
