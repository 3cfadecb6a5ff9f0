#include "shell/SharedMessageBox.h"

#include "core/AppState.h"

void SetMessageBoxAppearance(MsgBoxEnhanced& box) {
  box.SetBackColorBody(0xFFFFFF);
  box.SetGradientPaint(true);
  box.SetHeadingType(1);
  box.SetMoveable(true);
  box.SetTextAlignment(2);
  box.SetDefaultTitle("Vistrel");
  box.SetStartUpPosition(1);
}

MsgBoxEnhanced* CreateSharedMsgBox() {
  if (!App().MsgBox) {
    App().MsgBox = new MsgBoxEnhanced;
    SetMessageBoxAppearance(*App().MsgBox);
  }
  return App().MsgBox;
}

void ReleaseSharedMsgBox() {
  delete App().MsgBox;
  App().MsgBox = nullptr;
}
