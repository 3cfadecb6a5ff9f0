#include "controls/MsgBoxStyle.h"

namespace msgbox {

int Style::EffectiveDefault() const {
  return DefaultButton >= 0 && DefaultButton < Captions.size() ? DefaultButton : -1;
}

QStringList CaptionsOfSet(int buttonSet) {
  switch (buttonSet) {
    case 0: return {"&OK"};
    case 1: return {"&OK", "Cancel"};
    case 2: return {"&Abort", "&Retry", "&Ignore"};
    case 3: return {"&Yes", "&No", "Cancel"};
    case 4: return {"&Yes", "&No"};
    case 5: return {"&Retry", "Cancel"};
    default: return {};
  }
}

Style DecodeStyle(qint16 buttons) {
  // Integer division and remainder truncate towards zero, so a negative word
  // falls into no icon and no button set.
  Style style;
  const int word = buttons;
  style.DefaultButton = word / 256;
  if (style.DefaultButton < 0) style.DefaultButton = 0;
  const int rest = word % 256;
  const int icon = rest / 16 - 1;
  style.IconIndex = icon >= 0 && icon <= 3 ? icon : -1;
  style.ButtonSet = rest % 16;
  style.Captions = CaptionsOfSet(style.ButtonSet);
  return style;
}

qint16 ResultOfCaption(const QString& caption) {
  if (caption == "&OK") return ResultOk;
  if (caption == "Cancel") return ResultCancel;
  if (caption == "&Abort") return ResultAbort;
  if (caption == "&Retry") return ResultRetry;
  if (caption == "&Ignore") return ResultIgnore;
  if (caption == "&Yes") return ResultYes;
  if (caption == "&No") return ResultNo;
  return TimedOut;
}

qint16 StoredGradientDirection(int given) {
  if (given < 1 || given > 16) return 1;
  if (given <= 4) return static_cast<qint16>(given);
  // 5 <-> 6, 7 <-> 8, ...: odd values move up one, even ones down one.
  return static_cast<qint16>(given % 2 == 1 ? given + 1 : given - 1);
}

}  // namespace msgbox
