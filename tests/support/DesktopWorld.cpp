#include "support/DesktopWorld.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <cstdio>
#include <memory>

#undef signals
#include <gio/gio.h>

namespace testenv {

namespace {

struct WorldApplication {
  const char* id;
  const char* exec;
  const char* categories;
  QStringList types;
  bool isDefault;
};

const QList<WorldApplication>& Applications() {
  // clang-format off
  static const QList<WorldApplication> applications{
      {PlayerApp, "vistrel-test-player %U", "AudioVideo;Player;", {"video/mp4", "audio/mpeg"}, true},
      {ReaderApp, "vistrel-test-reader %f", "Office;Viewer;", {"application/pdf", "text/plain"}, true},
      {ViewerApp, "vistrel-test-viewer %f", "Graphics;Viewer;", {"image/png", "image/jpeg"}, true},
      {PainterApp, "vistrel-test-painter %F", "Graphics;2DGraphics;RasterGraphics;",
       {"image/png", "image/jpeg"}, false},
      {DvdApp, "vistrel-test-dvd %U", "AudioVideo;Video;", {"x-content/video-dvd"}, false},
      {CdApp, "vistrel-test-cd %U", "AudioVideo;Audio;", {"x-content/audio-cdda"}, false},
  };
  // clang-format on
  return applications;
}

std::unique_ptr<QTemporaryDir>& World() {
  static std::unique_ptr<QTemporaryDir> world;
  return world;
}

bool Write(const QString& path, const QByteArray& bytes) {
  QDir().mkpath(QFileInfo(path).absolutePath());
  QFile file(path);
  return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QString ProgramOf(const WorldApplication& application) {
  return QString::fromLatin1(application.exec).section(' ', 0, 0);
}

void WriteWorld(const QString& root) {
  QByteArray cache = "[MIME Cache]\n";
  QByteArray defaults = "[Default Applications]\n";
  QMap<QString, QStringList> handlers;
  for (const WorldApplication& application : Applications()) {
    const QString program = root + "/bin/" + ProgramOf(application);
    Write(program, "#!/bin/sh\nexit 0\n");
    QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QString name = ProgramOf(application).mid(int(qstrlen("vistrel-test-")));
    Write(root + "/share/applications/" + application.id,
          "[Desktop Entry]\nType=Application\nName=Test " + name.toUtf8() + "\nIcon=vistrel-test-" +
              name.toUtf8() + "\nExec=" + application.exec +
              "\nCategories=" + application.categories +
              "\nMimeType=" + application.types.join(';').toUtf8() + ";\n");
    for (const QString& type : application.types) {
      handlers[type] << application.id;
      if (application.isDefault) defaults += type.toUtf8() + "=" + application.id + "\n";
    }
  }
  for (auto it = handlers.constBegin(); it != handlers.constEnd(); ++it)
    cache += it.key().toUtf8() + "=" + it.value().join(';').toUtf8() + ";\n";
  Write(root + "/share/applications/mimeinfo.cache", cache);
  Write(root + "/etc/xdg/mimeapps.list", defaults);
  QFile::link("/usr/share/mime", root + "/share/mime");
  for (const char* folder : {"home/data/applications", "home/config", "home/cache", "aside"})
    QDir(root).mkpath(folder);
}

// Whether the desktop offers the application for the type.
bool Offered(const QString& id, const QString& type) {
  GList* all = g_app_info_get_all_for_type(type.toUtf8().constData());
  bool found = false;
  for (GList* item = all; item && !found; item = item->next)
    found = id == QString::fromUtf8(g_app_info_get_id(G_APP_INFO(item->data)));
  g_list_free_full(all, g_object_unref);
  return found;
}

const WorldApplication* Find(const QString& id) {
  for (const WorldApplication& application : Applications())
    if (id == application.id) return &application;
  return nullptr;
}

bool OfferedForAll(const WorldApplication& application, bool offered) {
  for (const QString& type : application.types)
    if (Offered(application.id, type) != offered) return false;
  return true;
}

}  // namespace

void InstallDesktopWorld() {
  World() = std::make_unique<QTemporaryDir>(QDir::tempPath() + "/vistrel-desktop-XXXXXX");
  const QString root = World()->path();
  WriteWorld(root);
  qputenv("PATH", (root + "/bin:" + qEnvironmentVariable("PATH")).toUtf8());
  qputenv("XDG_DATA_DIRS", (root + "/share").toUtf8());
  qputenv("XDG_CONFIG_DIRS", (root + "/etc/xdg").toUtf8());
  qputenv("XDG_DATA_HOME", (root + "/home/data").toUtf8());
  qputenv("XDG_CONFIG_HOME", (root + "/home/config").toUtf8());
  qputenv("XDG_CACHE_HOME", (root + "/home/cache").toUtf8());
  qunsetenv("XDG_CURRENT_DESKTOP");
  // The desktop's library takes the folders now and keeps them for the
  // whole run; the tests' own folders come later.
  g_get_user_data_dir();
  g_get_user_config_dir();
  g_get_user_cache_dir();
  g_get_system_data_dirs();
  g_get_system_config_dirs();
  if (!Offered(PlayerApp, "video/mp4"))
    std::fprintf(stderr, "The test desktop in %s is not seen by the desktop's library\n",
                 qPrintable(root));
}

QString DesktopWorldDir() { return World() ? World()->path() : QString(); }
QString DesktopApplicationsDir() { return DesktopWorldDir() + "/share/applications"; }

HiddenApplication::HiddenApplication(const QString& id) : id_(id) {
  const WorldApplication* application = Find(id);
  if (!application ||
      !QFile::rename(DesktopApplicationsDir() + "/" + id, DesktopWorldDir() + "/aside/" + id)) {
    ADD_FAILURE() << "cannot hide " << id.toStdString();
    return;
  }
  hidden_ = QTest::qWaitFor([application] { return OfferedForAll(*application, false); });
  if (!hidden_) ADD_FAILURE() << "the desktop still offers " << id.toStdString();
}

HiddenApplication::~HiddenApplication() {
  const WorldApplication* application = Find(id_);
  if (!application ||
      !QFile::rename(DesktopWorldDir() + "/aside/" + id_, DesktopApplicationsDir() + "/" + id_))
    return;
  if (!QTest::qWaitFor([application] { return OfferedForAll(*application, true); }))
    ADD_FAILURE() << "the desktop does not offer " << id_.toStdString() << " again";
}

}  // namespace testenv
