#pragma once
// A text box with a drop-down list that narrows, as the user types, to the
// entries of a master list that hold the typed text. Each master entry
// carries a number of item data. The control grows downward while its list
// is open and shrinks back to the text box's height when it closes.

#include <QColor>
#include <QFont>
#include <QList>
#include <QStringList>
#include <QVariant>
#include <QWidget>

class QLineEdit;
class QListWidget;
class QToolButton;

class AutoComplete : public QWidget {
  Q_OBJECT

 public:
  explicit AutoComplete(QWidget* parent = nullptr);

  // An invalid colour stands for the system's default.
  QColor BackColor() const;
  void SetBackColor(const QColor& color);
  bool Enabled() const { return isEnabled(); }
  void SetEnabled(bool enabled) { setEnabled(enabled); }
  QFont Font() const { return font(); }
  void SetFont(const QFont& font);
  QColor ForeColor() const;
  void SetForeColor(const QColor& color);
  qint32 hWnd() const;

  // The visible list, rows from 0.
  qint32 ItemData(int row) const;
  QString List(int row) const;
  int ListCount() const;

  // The master list, entries from 1.
  qint32 MasterItemData(int index) const;
  void SetMasterItemData(int index, qint32 data);
  QString MasterListValue(int index) const;
  int MasterListCount() const { return static_cast<int>(master_.size()); }

  QString Text() const;
  void SetText(const QString& text);
  int SelStart() const;
  void SetSelStart(int start);
  int SelLength() const;
  void SetSelLength(int length);
  QString SelText() const;
  void SetSelText(const QString& text);
  // The row of the last choice from the list, -1 before any.
  int SelectedItem() const { return selectedItem_; }

  // Adds one entry to the master list.
  void AddItem(const QString& item, qint32 itemData = 0);
  // Adds every text of a list (QStringList, or a QVariantList of texts).
  // Gives "" when done, otherwise the reason, and then adds nothing.
  QString AddArrayOrCollection(const QVariant& values);
  void AddItems(const QStringList& items);
  // Empties the master list and closes the list.
  void Clear();
  void Refresh();
  // Takes entry `index` (from 1) and its item data out of the master list.
  void RemoveItem(int index);
  // Opens the list on the entries that match the present text, as typing
  // would.
  void PulldownText();

  QLineEdit* txtAutoComplete() const { return text_; }
  QListWidget* lstItems() const { return list_; }
  QToolButton* ArrowButton() const { return arrow_; }

 signals:
  void Change();
  // A row was chosen from the list; its text is now in the text box.
  void ItemChosen(int row);
  void Click();
  void DblClick();
  void KeyDown(int keyCode, int shift);
  void KeyPress(int keyAscii);
  void KeyUp(int keyCode, int shift);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  int TextHeight() const;
  void CloseList();
  void ShowRows(const QList<int>& masterRows);
  void FilterList();
  void FocusList();
  void ChooseRow();
  void ArrowButton_Click();
  void txtAutoComplete_KeyUp(int keyCode, int shift);
  void OnFocusChanged(QWidget* old, QWidget* now);
  void LayOutChildren();

  QLineEdit* text_ = nullptr;
  QListWidget* list_ = nullptr;
  QToolButton* arrow_ = nullptr;
  QStringList master_;
  QList<qint32> masterData_;
  QColor backColor_;
  QColor foreColor_;
  int lastKey_ = 0;
  int selectedItem_ = -1;
  bool fillingList_ = false;  // the list's selection is being set by the control itself
};
