#pragma once
// The window that asks whether to delete a file and how: into the
// wastebasket, for good, or wiped. "&Yes" keeps the way chosen as the
// setting "DeleteOption" for every later deletion; "&No" leaves the setting
// as it was. It is shown modal through VerifyDelete (FileOperations.h).

#include <array>

#include "fileops/VerifyWindow.h"

class QLabel;
class QPushButton;
class QRadioButton;

class DeleteVerify : public VerifyWindow {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::DeleteVerify;
  explicit DeleteVerify(QWidget* parent = nullptr);

  QLabel* MsgText;
  QLabel* OptionLabel;
  // "Move to Recycle Bin", "Delete completely", "Wipe file space".
  std::array<QRadioButton*, 3> dOption;
  // "&Yes" and "&No".
  std::array<QPushButton*, 2> MsgButton;

  void MsgButton_Click(int index);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  bool wheelSuspended_ = false;
};
