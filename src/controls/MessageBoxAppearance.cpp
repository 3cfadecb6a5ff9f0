#include "controls/MessageBoxAppearance.h"

#include "controls/MsgBoxEnhanced.h"
#include "core/AppState.h"

void SetMessageBoxAppearance() {
  MsgBoxEnhanced* box = App().MsgBox;
  if (!box) return;
  box->SetBackColorBody(0xFFFFFF);
  box->SetGradientPaint(true);
  box->SetHeadingType(1);
  box->SetMoveable(true);
  box->SetTextAlignment(2);
  box->SetDefaultTitle("Vistrel");
  box->SetStartUpPosition(1);
}
