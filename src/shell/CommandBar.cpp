#include "shell/CommandBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <algorithm>

#include "catalogue/PathRoutines.h"
#include "platform/Twips.h"

CommandBar::CommandBar(QWidget* parent) : QWidget(parent), DirectoryName(new QLabel(this)) {
  setObjectName("CommandBar");
  DirectoryName->setObjectName("DirectoryName");
  DirectoryName->setMinimumWidth(twips::ToPixels(3000));
  DirectoryName->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  DirectoryName->setToolTip("Displays the currently selected folder or album");
  DirectoryName->hide();
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(6, 4, 6, 4);
  layout->addWidget(DirectoryName, 1);
  resize(640, 32);
}

void CommandBar::ShowDirectoryName(const QString& folderOrAlbum) {
  fullName_ = folderOrAlbum + ' ';
  FitDirectoryName();
}

QString CommandBar::DirectoryCaption() const { return DirectoryName->text().trimmed(); }

void CommandBar::ShowControls() { DirectoryName->show(); }

void CommandBar::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  FitDirectoryName();
}

void CommandBar::FitDirectoryName() {
  if (fullName_.isEmpty()) return;
  // The label is the bar's only item so far: its room is the bar's inside,
  // known even while the label is still hidden. The root "/" is kept whole;
  // folders behind it give way first.
  const QMargins margins = layout()->contentsMargins();
  const int room =
      std::max(width() - margins.left() - margins.right(), DirectoryName->minimumWidth());
  DirectoryName->setText(ShortenPath(DirectoryName, fullName_, twips::FromPixels(room), 1));
}
