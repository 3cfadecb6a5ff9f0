#include "platform/SiblingPrograms.h"
#include "platform/DesktopHandlers.h"
#include "platform/Services.h"

#include <xcb/xcb.h>
#include <xcb/xcb_ewmh.h>

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QProcess>
#include <QRegularExpression>
#include <cstdlib>

namespace platform {

namespace {

auto& Finder() { return TheServices().WindowFinder; }
auto& Starter() { return TheServices().ProgramStarter; }

QString WindowCaption(xcb_ewmh_connection_t* ewmh, xcb_window_t window) {
  xcb_ewmh_get_utf8_strings_reply_t name;
  if (xcb_ewmh_get_wm_name_reply(ewmh, xcb_ewmh_get_wm_name(ewmh, window), &name, nullptr)) {
    const QString caption = QString::fromUtf8(name.strings, static_cast<int>(name.strings_len));
    xcb_ewmh_get_utf8_strings_reply_wipe(&name);
    return caption;
  }
  // Windows that only carry the old-style name.
  xcb_connection_t* connection = ewmh->connection;
  xcb_get_property_reply_t* reply = xcb_get_property_reply(
      connection,
      xcb_get_property(connection, 0, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 0, 1024),
      nullptr);
  QString caption;
  if (reply) {
    caption = QString::fromLatin1(static_cast<const char*>(xcb_get_property_value(reply)),
                                  xcb_get_property_value_length(reply));
    free(reply);
  }
  return caption;
}

quint64 FindOnX11(const QString& caption) {
  if (QGuiApplication::platformName() != "xcb") return 0;
  xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
  if (!connection || xcb_connection_has_error(connection)) {
    if (connection) xcb_disconnect(connection);
    return 0;
  }
  quint64 found = 0;
  xcb_ewmh_connection_t ewmh;
  if (xcb_ewmh_init_atoms_replies(&ewmh, xcb_ewmh_init_atoms(connection, &ewmh), nullptr)) {
    xcb_ewmh_get_windows_reply_t clients;
    if (xcb_ewmh_get_client_list_reply(&ewmh, xcb_ewmh_get_client_list(&ewmh, 0), &clients,
                                       nullptr)) {
      for (uint32_t i = 0; i < clients.windows_len && !found; ++i) {
        if (WindowCaption(&ewmh, clients.windows[i]) == caption) found = clients.windows[i];
      }
      xcb_ewmh_get_windows_reply_wipe(&clients);
    }
    xcb_ewmh_connection_wipe(&ewmh);
  }
  xcb_disconnect(connection);
  return found;
}

// The sibling's executable in the program folder; "" when it is not there.
QString SiblingIn(const QString& programFolder, const QString& name) {
  const QFileInfo sibling(QDir(programFolder).filePath(name));
  return sibling.isFile() && sibling.isExecutable() ? sibling.filePath() : QString();
}

// The desktop's application for a kind of content, started without a file.
bool StartHandlerOf(const QString& mimeType) {
  return StartApplication(DefaultApplicationFor(mimeType), {});
}

// What the viewer would have done with its argument, done by the desktop.
bool StartViewerOnDesktop(const QString& argument) {
  const QString word = argument.trimmed().toLower();
  if (word.isEmpty()) return false;
  if (word == "//audio") return StartHandlerOf("audio/mpeg");
  if (word == "//video") return StartHandlerOf("video/mp4");
  if (word == "//cd") return StartHandlerOf("x-content/audio-cdda");
  if (word == "//dvd") return StartHandlerOf("x-content/video-dvd");
  // "//sleep", "//alarm" and any other command word have no counterpart.
  if (word.startsWith("//")) return false;
  // A track of an audio CD is played by the desktop's CD player, which
  // takes the disc rather than a file.
  static const QRegularExpression track("^track\\d\\d\\.cda$",
                                        QRegularExpression::CaseInsensitiveOption);
  if (track.match(QFileInfo(argument).fileName()).hasMatch())
    return StartHandlerOf("x-content/audio-cdda");
  return StartApplication(DefaultApplicationFor(MimeTypeOfName(argument)), {argument});
}

}  // namespace

quint64 FindWindowByCaption(const QString& caption) {
  if (Finder()) return Finder()(caption);
  return FindOnX11(caption);
}

bool StartProgram(const QString& path, const QStringList& arguments) {
  if (Starter()) return Starter()(path, arguments);
  return QProcess::startDetached(path, arguments);
}

bool StartViewerProgram(const QString& programFolder, const QString& argument) {
  const QString sibling = SiblingIn(programFolder, "Lorvane");
  if (sibling.isEmpty()) return StartViewerOnDesktop(argument);
  return StartProgram(sibling, argument.isEmpty() ? QStringList() : QStringList{argument});
}

bool StartPaintProgram(const QString& programFolder, const QString& picture) {
  const QString sibling = SiblingIn(programFolder, "Tintara");
  if (!sibling.isEmpty())
    return StartProgram(sibling, picture.isEmpty() ? QStringList() : QStringList{picture});
  const QString type = picture.isEmpty() ? QStringLiteral("image/png") : MimeTypeOfName(picture);
  return StartApplication(RasterEditorFor(type),
                          picture.isEmpty() ? QStringList() : QStringList{picture});
}

void SetWindowFinder(std::function<quint64(const QString&)> finder) {
  Finder() = std::move(finder);
}

void SetProgramStarter(std::function<bool(const QString&, const QStringList&)> starter) {
  Starter() = std::move(starter);
}

}  // namespace platform
