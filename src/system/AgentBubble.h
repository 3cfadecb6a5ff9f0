#pragma once
// The speech bubble of the tutorial's character: the line being spoken, in
// a rounded balloon whose tail points at the character's head. A line too
// long for the balloon is shown a page at a time, each page for its share of
// the speaking time.

#include <QStringList>
#include <QTimer>
#include <QWidget>

class AgentBubble : public QWidget {
  Q_OBJECT
 public:
  explicit AgentBubble(QWidget* character);

  // Shows the line beside the character for `durationMs`, page by page.
  void ShowLine(const QString& text, int durationMs);
  // Takes the balloon away.
  void Clear();
  // Places the balloon over the character's head again (after a move).
  void FollowCharacter();

  // The page on show, and the pages of the line (for tests).
  QString PageText() const { return page_ < pages_.size() ? pages_[page_] : QString(); }
  QStringList Pages() const { return pages_; }

  // Splits a text into pages of at most `maxLines` lines of `width` pixels
  // in the bubble's font, at blanks; a word longer than a line stands alone.
  QStringList SplitPages(const QString& text, int width, int maxLines) const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void ShowPage(int index);
  QPainterPath Outline() const;

  QWidget* character_;
  QStringList pages_;
  QList<int> pageMs_;
  int page_ = 0;
  bool tailDown_ = true;
  int tailX_ = 0;
  QTimer pageTimer_;
};
