#include "fileops/DeleteVerify.h"

#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include "core/AppState.h"
#include "core/BrowserCommands.h"
#include "core/Settings.h"
#include "core/WindowRegistry.h"
#include "fileops/FileOperations.h"
#include "platform/Twips.h"

namespace {

// Measures of the window, in twips.
constexpr int Width = 5400;
constexpr int Margin = 360;
constexpr int OptionTop = 1035;
constexpr int OptionHeight = 300;
constexpr int ButtonTop = OptionTop + 3 * OptionHeight + 240;
constexpr int ButtonWidth = 1095;
constexpr int ButtonHeight = 375;
constexpr int ButtonGap = 105;
constexpr int Height = ButtonTop + ButtonHeight + 300;

constexpr const char* OptionCaptions[3] = {"Move to Recycle Bin", "Delete completely",
                                           "Wipe file space"};

}  // namespace

DeleteVerify::DeleteVerify(QWidget* parent) : VerifyWindow(Id, " Delete Media File", parent) {
  setFixedSize(twips::ToPixels(Width), twips::ToPixels(Height));

  MsgText = AddLabel("MsgText", "Are you sure you wish to delete this file?", Margin, 300,
                     Width - 2 * Margin, 285);
  QFont bold = MsgText->font();
  bold.setBold(true);
  MsgText->setFont(bold);
  OptionLabel = AddLabel("OptionLabel", "Delete Option:", Margin, 720, Width - 2 * Margin, 255);

  const int chosen = settings::GetInt("DeleteOption", 0);
  for (int i = 0; i < 3; ++i) {
    auto* option = new QRadioButton(OptionCaptions[i], this);
    option->setObjectName(QString("dOption%1").arg(i));
    option->setGeometry(twips::ToPixels(Margin + 240), twips::ToPixels(OptionTop + i * OptionHeight),
                        twips::ToPixels(Width - 2 * Margin - 240), twips::ToPixels(OptionHeight));
    dOption[size_t(i)] = option;
  }
  // Form_Load: the radio button of the setting; a value out of range
  // leaves the first.
  dOption[size_t(chosen >= 0 && chosen <= 2 ? chosen : 0)]->setChecked(true);

  const char* captions[2] = {"&Yes", "&No"};
  const int rowLeft = (Width - (2 * ButtonWidth + ButtonGap)) / 2;
  for (int i = 0; i < 2; ++i) {
    QPushButton* button = AddButton(QString("MsgButton%1").arg(i), captions[i], App().ColorLightGrey);
    button->setGeometry(twips::ToPixels(rowLeft + i * (ButtonWidth + ButtonGap)),
                        twips::ToPixels(ButtonTop), twips::ToPixels(ButtonWidth),
                        twips::ToPixels(ButtonHeight));
    connect(button, &QPushButton::clicked, this, [this, i] { MsgButton_Click(i); });
    MsgButton[size_t(i)] = button;
  }
  MsgButton[0]->setDefault(true);
  CentreOnMainWindow();
}

void DeleteVerify::MsgButton_Click(int index) {
  if (index == 0) {
    for (int i = 0; i < 3; ++i)
      if (dOption[size_t(i)]->isChecked()) settings::SaveSetting("DeleteOption", QString::number(i));
    Answer(6);
  } else {
    Answer(7);
  }
}

void DeleteVerify::showEvent(QShowEvent* event) {
  VerifyWindow::showEvent(event);
  CentreOnMainWindow();
  // The caller puts the wheel back once it has the answer.
  if (!wheelSuspended_) {
    wheelSuspended_ = true;
    SuspendMouseWheel();
  }
  MsgButton[0]->setFocus();
}

int VerifyDelete() {
  // A window closed without an answer counts as cancelled.
  App().ReplaceAnswer = 2;
  ShowVerifyWindowModal(new DeleteVerify(Windows().Find(WindowId::MainForm)));
  return App().ReplaceAnswer;
}
