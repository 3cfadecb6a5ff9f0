#include "catalogue/PathRoutines.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QComboBox>
#include <QCoreApplication>
#include <QCursor>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QFontMetrics>
#include <QLineEdit>
#include <QListView>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPointer>
#include <QRandomGenerator>
#include <QTextEdit>
#include <QThread>
#include <QWidget>
#include <QWindow>

#include "platform/Twips.h"
#include "platform/WindowMove.h"

QString GetLongPath(const QString& path) {
  if (!path.contains('~')) return path;
  QString expanded = path;
  if (expanded == "~" || expanded.startsWith("~/")) expanded = QDir::homePath() + expanded.mid(1);
  const QFileInfo info(expanded);
  if (!info.exists()) return QString();
  return QDir::cleanPath(info.absoluteFilePath());
}

namespace {

const QString kMarker = QStringLiteral("/ .../");

bool Fits(const QFontMetrics& metrics, const QString& text, int widthTwips) {
  return twips::FromPixels(metrics.horizontalAdvance(text)) + 60 <= widthTwips;
}

QString Shorten(const QFontMetrics& metrics, QString text, int widthTwips, int keep,
                bool cutCharacters) {
  keep = qMax(0, keep);
  // Drop the first folder behind the root.
  if (!Fits(metrics, text, widthTwips)) {
    const qsizetype p = text.indexOf('/', keep + 1);
    if (p >= 0) text = text.left(keep) + kMarker + text.mid(p + 1);
  }
  // Then one folder after another behind the marker.
  while (!Fits(metrics, text, widthTwips)) {
    const QString before = text;
    const qsizetype p = text.indexOf('/', keep + 6);
    if (p < 0) break;
    text = text.left(keep) + kMarker + text.mid(p + 1);
    if (text == before) break;
  }
  if (cutCharacters) {
    while (!Fits(metrics, text, widthTwips) && !text.isEmpty()) text.chop(1);
  }
  // A root that ends in "/" followed by the marker leaves the separator
  // doubled: take one away.
  if (keep >= 1 && text.mid(keep - 1, 2) == "//") text = text.left(keep) + text.mid(keep + 1);
  return text;
}

}  // namespace

QString ShortenPath(const QFontMetrics& metrics, const QString& text, int widthTwips, int keep) {
  return Shorten(metrics, text, widthTwips, keep, true);
}

QString ShortenPath(const QWidget* window, const QString& text, int widthTwips, int keep) {
  return Shorten(window ? window->fontMetrics() : QFontMetrics(QFont()), text, widthTwips, keep,
                 true);
}

QString ShortenAlbumPath(const QFontMetrics& metrics, const QString& text, int widthTwips,
                         int keep) {
  return Shorten(metrics, text, widthTwips, keep, false);
}

QString ShortenAlbumPath(const QWidget* window, const QString& text, int widthTwips, int keep) {
  return Shorten(window ? window->fontMetrics() : QFontMetrics(QFont()), text, widthTwips, keep,
                 false);
}

QList<int> RandomSequence(int low, int high) {
  const qint64 n = qint64(high) - low + 1;
  if (n < 1) return {1};
  // Draw until each value is new; a table of the values taken keeps the
  // check short for long lists.
  QList<int> sequence;
  sequence.reserve(n);
  QList<bool> taken(n, false);
  QRandomGenerator* random = QRandomGenerator::global();
  while (sequence.size() < n) {
    const qint64 draw = random->bounded(n);
    if (taken[draw]) continue;
    taken[draw] = true;
    sequence.append(int(draw + low));
  }
  return sequence;
}

void WaitSeconds(double seconds) {
  QElapsedTimer clock;
  clock.start();
  const qint64 total = qint64(seconds * 1000.0);
  for (;;) {
    QCoreApplication::processEvents();
    const qint64 left = total - clock.elapsed();
    if (left <= 0) break;
    QThread::msleep(quint64(qMin<qint64>(left, 5)));
  }
}

void SelectAllText(QWidget* box) {
  if (auto* line = qobject_cast<QLineEdit*>(box)) {
    line->setSelection(0, int(line->text().length()));
  } else if (auto* text = qobject_cast<QTextEdit*>(box)) {
    text->selectAll();
  } else if (auto* plain = qobject_cast<QPlainTextEdit*>(box)) {
    plain->selectAll();
  } else if (auto* combo = qobject_cast<QComboBox*>(box)) {
    if (QLineEdit* edit = combo->lineEdit()) edit->setSelection(0, int(edit->text().length()));
  }
}

void MoveFormWithMouse(QWidget* window) {
  if (window) platform::MoveWindowWithMouse(window->window(), QCursor::pos());
}

int ListIndexAt(const QWidget* list, int xTwips, int yTwips) {
  const auto* view = qobject_cast<const QListView*>(list);
  if (!view || !view->model()) return -1;
  const int x = twips::ToPixels(xTwips);
  const int y = twips::ToPixels(yTwips);
  const QAbstractItemModel* model = view->model();
  const int count = model->rowCount(view->rootIndex());
  for (int row = 0; row < count; ++row) {
    const QRect r = view->visualRect(model->index(row, view->modelColumn(), view->rootIndex()));
    if (r.isEmpty()) continue;
    if (x >= r.left() && x <= r.left() + r.width() && y >= r.top() && y <= r.top() + r.height())
      return row;
  }
  return -1;
}
