#include "controls/AutoComplete.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QToolButton>
#include <algorithm>

#include "controls/AutoCompleteFilter.h"
#include "platform/KeyCodes.h"

namespace {

// The open list shows at most this many rows; more scroll.
constexpr int VisibleRows = 8;
constexpr int ItemDataRole = Qt::UserRole;

}  // namespace

AutoComplete::AutoComplete(QWidget* parent) : QWidget(parent) {
  text_ = new QLineEdit(this);
  text_->setObjectName(QStringLiteral("txtAutoComplete"));
  list_ = new QListWidget(this);
  list_->setObjectName(QStringLiteral("lstItems"));
  list_->setSelectionMode(QAbstractItemView::SingleSelection);
  list_->hide();
  arrow_ = new QToolButton(this);
  arrow_->setObjectName(QStringLiteral("ArrowButton"));
  arrow_->setArrowType(Qt::DownArrow);
  arrow_->setFocusPolicy(Qt::NoFocus);
  setFocusProxy(text_);

  text_->installEventFilter(this);
  list_->installEventFilter(this);
  list_->viewport()->installEventFilter(this);

  connect(text_, &QLineEdit::textChanged, this, [this] { emit Change(); });
  connect(arrow_, &QToolButton::clicked, this, [this] { ArrowButton_Click(); });
  // Moving through the list by key or mouse shows the row in the text box.
  connect(list_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (fillingList_ || row < 0 || !list_->isVisible()) return;
    text_->setText(list_->item(row)->text());
  });
  connect(qApp, &QApplication::focusChanged, this, &AutoComplete::OnFocusChanged);

  resize(120, TextHeight());
  LayOutChildren();
}

int AutoComplete::TextHeight() const { return text_->sizeHint().height(); }

void AutoComplete::LayOutChildren() {
  const int h = TextHeight();
  const int button = h;
  text_->setGeometry(0, 0, std::max(0, width() - button), h);
  arrow_->setGeometry(std::max(0, width() - button), 0, button, h);
  list_->setGeometry(0, h, width(), std::max(0, height() - h));
}

void AutoComplete::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  // Closed, the control is exactly as high as its text box.
  if (!list_->isVisible() && height() != TextHeight()) {
    resize(width(), TextHeight());
    return;
  }
  LayOutChildren();
}

// ---- Properties ----

QColor AutoComplete::BackColor() const {
  return backColor_.isValid() ? backColor_ : text_->palette().color(QPalette::Base);
}

void AutoComplete::SetBackColor(const QColor& color) {
  backColor_ = color;
  for (QWidget* w : {static_cast<QWidget*>(text_), static_cast<QWidget*>(list_)}) {
    QPalette palette = QApplication::palette(w);
    if (color.isValid()) palette.setColor(QPalette::Base, color);
    w->setPalette(palette);
  }
  SetForeColor(foreColor_);
}

QColor AutoComplete::ForeColor() const {
  return foreColor_.isValid() ? foreColor_ : text_->palette().color(QPalette::Text);
}

void AutoComplete::SetForeColor(const QColor& color) {
  foreColor_ = color;
  for (QWidget* w : {static_cast<QWidget*>(text_), static_cast<QWidget*>(list_)}) {
    QPalette palette = w->palette();
    palette.setColor(QPalette::Text,
                     color.isValid() ? color : QApplication::palette(w).color(QPalette::Text));
    w->setPalette(palette);
  }
}

void AutoComplete::SetFont(const QFont& font) {
  setFont(font);
  if (!list_->isVisible()) resize(width(), TextHeight());
  LayOutChildren();
}

qint32 AutoComplete::hWnd() const { return static_cast<qint32>(effectiveWinId()); }

qint32 AutoComplete::ItemData(int row) const {
  const QListWidgetItem* item = list_->item(row);
  return item ? item->data(ItemDataRole).toInt() : 0;
}

QString AutoComplete::List(int row) const {
  const QListWidgetItem* item = list_->item(row);
  return item ? item->text() : QString();
}

int AutoComplete::ListCount() const { return list_->count(); }

qint32 AutoComplete::MasterItemData(int index) const {
  if (index < 1 || index > master_.size()) return 0;
  return masterData_.at(index - 1);
}

void AutoComplete::SetMasterItemData(int index, qint32 data) {
  if (index < 1 || index > master_.size()) return;
  masterData_[index - 1] = data;
}

QString AutoComplete::MasterListValue(int index) const {
  if (index < 1 || index > master_.size()) return QString();
  return master_.at(index - 1);
}

QString AutoComplete::Text() const { return text_->text(); }
void AutoComplete::SetText(const QString& text) { text_->setText(text); }

int AutoComplete::SelStart() const {
  return text_->hasSelectedText() ? text_->selectionStart() : text_->cursorPosition();
}
void AutoComplete::SetSelStart(int start) {
  text_->setCursorPosition(std::clamp(start, 0, static_cast<int>(text_->text().size())));
}
int AutoComplete::SelLength() const { return text_->selectionLength(); }
void AutoComplete::SetSelLength(int length) {
  const int start = SelStart();
  const int room = static_cast<int>(text_->text().size()) - start;
  text_->setSelection(start, std::clamp(length, 0, room));
}
QString AutoComplete::SelText() const { return text_->selectedText(); }
void AutoComplete::SetSelText(const QString& text) { text_->insert(text); }

// ---- Methods ----

void AutoComplete::AddItem(const QString& item, qint32 itemData) {
  master_ << item;
  masterData_ << itemData;
}

QString AutoComplete::AddArrayOrCollection(const QVariant& values) {
  QStringList texts;
  if (values.typeId() == QMetaType::QStringList) {
    texts = values.toStringList();
  } else if (values.typeId() == QMetaType::QVariantList) {
    for (const QVariant& element : values.toList()) {
      if (element.typeId() != QMetaType::QString) return "An invalid element is present in the list";
      texts << element.toString();
    }
  } else {
    return "Expected: Array or Collection";
  }
  AddItems(texts);
  return QString();
}

void AutoComplete::AddItems(const QStringList& items) {
  for (const QString& item : items) AddItem(item);
}

void AutoComplete::Clear() {
  master_.clear();
  masterData_.clear();
  CloseList();
}

void AutoComplete::Refresh() {
  update();
  text_->update();
  list_->update();
}

void AutoComplete::RemoveItem(int index) {
  if (index < 1 || index > master_.size()) return;
  master_.removeAt(index - 1);
  masterData_.removeAt(index - 1);
}

void AutoComplete::PulldownText() { FilterList(); }

// ---- The list ----

void AutoComplete::CloseList() {
  fillingList_ = true;
  list_->hide();
  list_->clear();
  fillingList_ = false;
  resize(width(), TextHeight());
}

void AutoComplete::ShowRows(const QList<int>& masterRows) {
  QStringList wanted;
  for (int i : masterRows) wanted << master_.at(i);
  QStringList present;
  for (int row = 0; row < list_->count(); ++row) present << list_->item(row)->text();

  if (wanted != present) {
    // Rebuild in master order, keeping the highlighted row where it stays.
    fillingList_ = true;
    const QString current = list_->currentItem() ? list_->currentItem()->text() : QString();
    list_->clear();
    for (int i : masterRows) {
      auto* item = new QListWidgetItem(master_.at(i), list_);
      item->setData(ItemDataRole, masterData_.at(i));
    }
    const int keep = current.isEmpty() ? -1 : static_cast<int>(wanted.indexOf(current));
    if (keep >= 0) list_->setCurrentRow(keep);
    fillingList_ = false;
  }

  if (list_->count() == 0) {
    CloseList();
    return;
  }
  const int rows = std::min(list_->count(), VisibleRows);
  const int listHeight = list_->sizeHintForRow(0) * rows + 2 * list_->frameWidth();
  list_->show();
  raise();
  resize(width(), TextHeight() + listHeight);
  LayOutChildren();
}

void AutoComplete::FilterList() {
  const QString typed = text_->text();
  if (typed.isEmpty()) {
    CloseList();
    return;
  }
  ShowRows(autocomplete::Matches(master_, typed));
}

void AutoComplete::FocusList() {
  if (list_->currentRow() < 0) {
    fillingList_ = true;
    list_->setCurrentRow(0);
    fillingList_ = false;
  }
  list_->setFocus();
}

void AutoComplete::ChooseRow() {
  const int row = list_->currentRow();
  if (row < 0 || !list_->isVisible()) return;
  selectedItem_ = row;
  text_->setText(list_->item(row)->text());
  CloseList();
  text_->setFocus();
  emit ItemChosen(row);
}

void AutoComplete::ArrowButton_Click() {
  const int before = list_->count();
  QList<int> all;
  for (int i = 0; i < master_.size(); ++i) all << i;
  const bool wasOpen = list_->isVisible();
  ShowRows(all);
  if (wasOpen && list_->count() == before) {
    // A second click on the arrow closes the list again.
    text_->setFocus();
    CloseList();
  } else if (list_->count() != before) {
    FocusList();
  }
  if (!list_->isVisible()) text_->setFocus();
}

void AutoComplete::txtAutoComplete_KeyUp(int keyCode, int shift) {
  lastKey_ = keyCode;
  switch (keyCode) {
    case keys::Return:
      CloseList();
      break;
    case keys::Down:
      FilterList();
      if (list_->isVisible()) FocusList();
      break;
    case keys::Next:
      if (list_->isVisible())
        FocusList();
      else
        ArrowButton_Click();
      break;
    default:
      FilterList();
      break;
  }
  emit KeyUp(keyCode, shift);
}

void AutoComplete::OnFocusChanged(QWidget*, QWidget* now) {
  // Focus that leaves the control closes the list; moving between the text
  // box and the list does not.
  if (!now || !list_->isVisible()) return;
  if (now == this || isAncestorOf(now)) return;
  CloseList();
}

bool AutoComplete::eventFilter(QObject* watched, QEvent* event) {
  const auto type = event->type();
  if (watched == text_) {
    if (type == QEvent::KeyPress) {
      auto* key = static_cast<QKeyEvent*>(event);
      emit KeyDown(keys::KeyCode(key), keys::ShiftOf(key));
      if (const int ascii = keys::KeyAscii(key)) emit KeyPress(ascii);
    } else if (type == QEvent::KeyRelease) {
      auto* key = static_cast<QKeyEvent*>(event);
      txtAutoComplete_KeyUp(keys::KeyCode(key), keys::ShiftOf(key));
    } else if (type == QEvent::MouseButtonRelease &&
               static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
      CloseList();
      emit Click();
    } else if (type == QEvent::MouseButtonDblClick) {
      emit DblClick();
    }
    return false;
  }
  if (watched == list_ && type == QEvent::KeyPress) {
    auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
      ChooseRow();
      return true;
    }
    if (key->key() == Qt::Key_Escape) {
      CloseList();
      text_->setFocus();
      return true;
    }
    return false;
  }
  if (watched == list_->viewport() && type == QEvent::MouseButtonRelease &&
      static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
    if (!list_->itemAt(static_cast<QMouseEvent*>(event)->position().toPoint())) return false;
    ChooseRow();
    return true;
  }
  return false;
}
