#include "shell/SplashMessage.h"

#include <QCoreApplication>

#include "core/AppState.h"
#include "shell/Logo.h"

void ShowSplashMessage(const QString& text) {
  if (!App().SplashShown) return;
  if (Logo* logo = Logo::Instance()) {
    logo->SetMessage(text);
    QCoreApplication::processEvents();
  }
}
