#include "platform/SiblingPrograms.h"
#include "platform/Services.h"

#include <xcb/xcb.h>
#include <xcb/xcb_ewmh.h>

#include <QGuiApplication>
#include <QProcess>
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

}  // namespace

quint64 FindWindowByCaption(const QString& caption) {
  if (Finder()) return Finder()(caption);
  return FindOnX11(caption);
}

bool StartProgram(const QString& path, const QStringList& arguments) {
  if (Starter()) return Starter()(path, arguments);
  return QProcess::startDetached(path, arguments);
}

void SetWindowFinder(std::function<quint64(const QString&)> finder) {
  Finder() = std::move(finder);
}

void SetProgramStarter(std::function<bool(const QString&, const QStringList&)> starter) {
  Starter() = std::move(starter);
}

}  // namespace platform
