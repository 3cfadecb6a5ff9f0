#pragma once
// A hidden ordinary sizable window that exists only to be measured: the
// difference between its outer and inner size gives the width of a window
// border and the height of a title bar on this desktop.

#include <QWidget>

#include "core/WindowRoles.h"

class SizeForm : public QWidget {
  Q_OBJECT
 public:
  static constexpr WindowId Id = WindowId::SizeForm;
  explicit SizeForm(QWidget* parent = nullptr);
};

// (outer width − inner width in twips) / 2.
int MeasureBorderWidth(const QWidget* window);
// Outer height − inner height in twips − the border width.
int MeasureTitleBarHeight(const QWidget* window);
