#pragma once
// BalloonHelp: help popups with a title. A control given a balloon shows,
// when the mouse rests on it, a small window with the title in bold and the
// text below it; the lines of the text are separated by "\r\n".

#include <QHash>
#include <QObject>
#include <QString>
#include <memory>

class HoverTip;
class QWidget;

class BalloonHelp : public QObject {
  Q_OBJECT
 public:
  explicit BalloonHelp(QObject* parent = nullptr);
  ~BalloonHelp() override;

  // Gives a control its balloon, or a known control its new text and title.
  void SetBalloon(QWidget* control, const QString& text, const QString& title);
  void RemoveBalloon(QWidget* control);
  // Removes every balloon.
  void Clear();

  int Count() const;
  bool Has(const QWidget* control) const;
  QString TextOf(const QWidget* control) const;
  QString TitleOf(const QWidget* control) const;

  // Shows the balloon of a control at once; hides the one that is up.
  void Show(QWidget* control);
  void Hide();
  // The control whose balloon is up, or null.
  QWidget* Shown() const;
  // The popup as rich text: the title in bold, then the lines.
  static QString PopupText(const QString& text, const QString& title);

 private:
  struct Balloon {
    QString Text;
    QString Title;
  };
  QHash<const QWidget*, Balloon> balloons_;
  std::unique_ptr<HoverTip> tip_;
};
