#include "controls/AccessibleControls.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QCoreApplication>
#include <QLineEdit>

#include "controls/AccessibleTabs.h"
#include "controls/AutoComplete.h"
#include "controls/Button.h"
#include "controls/ButtonFlat.h"
#include "controls/Headings.h"
#include "controls/Label3D.h"
#include "controls/MessageBox.h"
#include "controls/NewLabel.h"
#include "controls/NewSlider.h"
#include "controls/NewTabControl.h"
#include "controls/NumberBox.h"
#include "controls/RadioButton.h"
#include "controls/ThumbnailScroll.h"
#include "controls/TransCheck.h"
#include "controls/TransFrame.h"
#include "controls/TransRadio.h"
#include "controls/UpDown.h"

namespace {

// The name a control was given for the reader, else the text it shows.
QString NameOr(const QWidget* widget, const QString& shown) {
  const QString given = widget->accessibleName();
  return given.isEmpty() ? shown : given;
}

// A picture button: its name is the one given, else its tooltip. It shows
// pressed while the mouse holds it down, and the reader's press clicks it
// as the mouse would.
template <class Control>
class PictureButtonAccessible : public QAccessibleWidget {
 public:
  explicit PictureButtonAccessible(Control* button) : QAccessibleWidget(button, QAccessible::Button) {}

  QString text(QAccessible::Text t) const override {
    if (t == QAccessible::Name) return NameOr(widget(), widget()->toolTip());
    return QAccessibleWidget::text(t);
  }
  QAccessible::State state() const override {
    QAccessible::State s = QAccessibleWidget::state();
    s.pressed = button()->Pressed();
    return s;
  }
  QStringList actionNames() const override {
    return QStringList{pressAction()} + QAccessibleWidget::actionNames();
  }
  void doAction(const QString& action) override {
    if (action != pressAction()) return QAccessibleWidget::doAction(action);
    if (widget()->isEnabled()) emit button()->Click();
  }

 private:
  Control* button() const { return static_cast<Control*>(widget()); }
};

// The transparent check box and option button speak for the Qt button they
// wrap: the reader meets one control with the caption, not two.
class TransCheckAccessible : public QAccessibleWidget {
 public:
  explicit TransCheckAccessible(TransCheck* check) : QAccessibleWidget(check, QAccessible::CheckBox) {}

  QString text(QAccessible::Text t) const override {
    if (t == QAccessible::Name) return NameOr(widget(), check()->Caption());
    return QAccessibleWidget::text(t);
  }
  QAccessible::State state() const override {
    QAccessible::State s = QAccessibleWidget::state();
    s.checkable = true;
    s.checked = check()->Value() == 1;
    s.checkStateMixed = check()->Value() == 2;
    return s;
  }
  int childCount() const override { return 0; }
  QAccessibleInterface* child(int) const override { return nullptr; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  QStringList actionNames() const override {
    return QStringList{toggleAction()} + QAccessibleWidget::actionNames();
  }
  void doAction(const QString& action) override {
    if (action != toggleAction()) return QAccessibleWidget::doAction(action);
    if (widget()->isEnabled()) check()->SetValue(check()->Value() == 1 ? 0 : 1);
  }

 private:
  TransCheck* check() const { return static_cast<TransCheck*>(widget()); }
};

// An option button: TransRadio with its caption, or the drawn RadioButton,
// whose name is the one given. A press chooses it.
template <class Control>
class OptionAccessible : public QAccessibleWidget {
 public:
  explicit OptionAccessible(Control* option) : QAccessibleWidget(option, QAccessible::RadioButton) {}

  QString text(QAccessible::Text t) const override {
    if (t == QAccessible::Name) return NameOr(widget(), CaptionOf(option()));
    return QAccessibleWidget::text(t);
  }
  QAccessible::State state() const override {
    QAccessible::State s = QAccessibleWidget::state();
    s.checkable = true;
    s.checked = option()->Value();
    return s;
  }
  int childCount() const override { return 0; }
  QAccessibleInterface* child(int) const override { return nullptr; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  QStringList actionNames() const override {
    return QStringList{pressAction()} + QAccessibleWidget::actionNames();
  }
  void doAction(const QString& action) override {
    if (action != pressAction()) return QAccessibleWidget::doAction(action);
    if (widget()->isEnabled()) option()->SetValue(true);
  }

 private:
  static QString CaptionOf(const TransRadio* radio) { return radio->Caption(); }
  static QString CaptionOf(const RadioButton*) { return QString(); }
  Control* option() const { return static_cast<Control*>(widget()); }
};

// A label drawn by hand: its caption is its name and its value.
template <class Control>
class CaptionAccessible : public QAccessibleWidget {
 public:
  CaptionAccessible(Control* label, QAccessible::Role role) : QAccessibleWidget(label, role) {}

  QString text(QAccessible::Text t) const override {
    const auto* label = static_cast<const Control*>(widget());
    if (t == QAccessible::Name) return NameOr(widget(), label->Caption());
    if (t == QAccessible::Value && role() == QAccessible::StaticText) return label->Caption();
    return QAccessibleWidget::text(t);
  }
};

// What the slider, the scroll bar and the spin boxes share: a number
// between limits, which the reader reads and may set.
class ValueAccessible : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  using QAccessibleWidget::QAccessibleWidget;

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }
  QString text(QAccessible::Text t) const override {
    if (t == QAccessible::Value) return ShownValue();
    return QAccessibleWidget::text(t);
  }
  QVariant minimumStepSize() const override { return 1; }

 protected:
  virtual QString ShownValue() const { return currentValue().toString(); }
};

class SliderAccessible : public ValueAccessible {
 public:
  explicit SliderAccessible(NewSlider* slider) : ValueAccessible(slider, QAccessible::Slider) {}
  QVariant currentValue() const override { return slider()->Value(); }
  void setCurrentValue(const QVariant& value) override { slider()->SetValue(value.toInt()); }
  QVariant maximumValue() const override { return slider()->Max(); }
  QVariant minimumValue() const override { return 0; }

 private:
  NewSlider* slider() const { return static_cast<NewSlider*>(widget()); }
};

class ScrollAccessible : public ValueAccessible {
 public:
  explicit ScrollAccessible(ThumbnailScroll* bar) : ValueAccessible(bar, QAccessible::ScrollBar) {}
  QVariant currentValue() const override { return int(bar()->Value()); }
  void setCurrentValue(const QVariant& value) override { bar()->SetValue(value.toInt()); }
  QVariant maximumValue() const override { return int(bar()->Max()); }
  QVariant minimumValue() const override { return 0; }

 private:
  ThumbnailScroll* bar() const { return static_cast<ThumbnailScroll*>(widget()); }
};

// The number box reads as the text it shows ("1,234.50"), its value as the
// plain number; its text box stays a child, since that is what takes the
// keys.
class NumberBoxAccessible : public ValueAccessible {
 public:
  explicit NumberBoxAccessible(NumberBox* box) : ValueAccessible(box, QAccessible::SpinBox) {}
  QVariant currentValue() const override { return box()->Value().toDouble(); }
  void setCurrentValue(const QVariant& value) override {
    if (!box()->Locked()) box()->SetValue(QString::number(value.toDouble()));
  }
  QVariant maximumValue() const override { return box()->MaxValue(); }
  QVariant minimumValue() const override { return box()->MinValue(); }

 protected:
  QString ShownValue() const override { return box()->txtNumber()->text(); }

 private:
  NumberBox* box() const { return static_cast<NumberBox*>(widget()); }
};

class UpDownAccessible : public ValueAccessible {
 public:
  explicit UpDownAccessible(UpDown* upDown) : ValueAccessible(upDown, QAccessible::SpinBox) {}
  QVariant currentValue() const override { return upDown()->Value(); }
  void setCurrentValue(const QVariant& value) override { upDown()->SetValue(value.toInt()); }
  QVariant maximumValue() const override { return upDown()->Max(); }
  QVariant minimumValue() const override { return upDown()->Min(); }

 private:
  UpDown* upDown() const { return static_cast<UpDown*>(widget()); }
};

// The message box: a dialog named by its title, whose description is the
// prompt, so that a reader says both as the box comes up. The prompt label
// and the answer buttons are its children as Qt gives them.
class MessageBoxAccessible : public QAccessibleWidget {
 public:
  explicit MessageBoxAccessible(MessageBox* box) : QAccessibleWidget(box, QAccessible::Dialog) {}

  QString text(QAccessible::Text t) const override {
    const auto* box = static_cast<const MessageBox*>(widget());
    if (t == QAccessible::Name) return NameOr(box, box->TopCaption->text());
    if (t == QAccessible::Description && box->accessibleDescription().isEmpty())
      return box->MsgText->text();
    return QAccessibleWidget::text(t);
  }
};

// The text box with its drop-down list: the typed text is its value.
class AutoCompleteAccessible : public QAccessibleWidget {
 public:
  explicit AutoCompleteAccessible(AutoComplete* box) : QAccessibleWidget(box, QAccessible::ComboBox) {}

  QString text(QAccessible::Text t) const override {
    if (t == QAccessible::Value) return static_cast<const AutoComplete*>(widget())->Text();
    return QAccessibleWidget::text(t);
  }
};

// The class names below are those of the program's controls; a name that
// a control does not answer to goes on to its base class, and in the end to
// Qt's own interfaces.
QAccessibleInterface* ControlsFactory(const QString& className, QObject* object) {
  if (!object || !object->isWidgetType()) return nullptr;
  QWidget* widget = static_cast<QWidget*>(object);
  if (className == QLatin1String("Button"))
    return new PictureButtonAccessible<Button>(static_cast<Button*>(widget));
  if (className == QLatin1String("ButtonFlat"))
    return new PictureButtonAccessible<ButtonFlat>(static_cast<ButtonFlat*>(widget));
  if (className == QLatin1String("TransCheck"))
    return new TransCheckAccessible(static_cast<TransCheck*>(widget));
  if (className == QLatin1String("TransRadio"))
    return new OptionAccessible<TransRadio>(static_cast<TransRadio*>(widget));
  if (className == QLatin1String("RadioButton"))
    return new OptionAccessible<RadioButton>(static_cast<RadioButton*>(widget));
  if (className == QLatin1String("TransFrame"))
    return new CaptionAccessible<TransFrame>(static_cast<TransFrame*>(widget), QAccessible::Grouping);
  if (className == QLatin1String("NewLabel") || className == QLatin1String("NewLabel2"))
    return new CaptionAccessible<NewLabel>(static_cast<NewLabel*>(widget), QAccessible::StaticText);
  if (className == QLatin1String("Label3D"))
    return new CaptionAccessible<Label3D>(static_cast<Label3D*>(widget), QAccessible::StaticText);
  if (className == QLatin1String("Headings"))
    return new CaptionAccessible<Headings>(static_cast<Headings*>(widget), QAccessible::Heading);
  if (className == QLatin1String("NewSlider"))
    return new SliderAccessible(static_cast<NewSlider*>(widget));
  if (className == QLatin1String("ThumbnailScroll"))
    return new ScrollAccessible(static_cast<ThumbnailScroll*>(widget));
  if (className == QLatin1String("NumberBox"))
    return new NumberBoxAccessible(static_cast<NumberBox*>(widget));
  if (className == QLatin1String("UpDown")) return new UpDownAccessible(static_cast<UpDown*>(widget));
  if (className == QLatin1String("NewTabControl"))
    return accessible::MakeTabControlAccessible(static_cast<NewTabControl*>(widget));
  if (className == QLatin1String(MessageBox::staticMetaObject.className()))
    return new MessageBoxAccessible(static_cast<MessageBox*>(widget));
  if (className == QLatin1String("AutoComplete"))
    return new AutoCompleteAccessible(static_cast<AutoComplete*>(widget));
  if (className == QLatin1String("NewImage")) return new QAccessibleWidget(widget, QAccessible::Graphic);
  if (className == QLatin1String("Divider3D")) return new QAccessibleWidget(widget, QAccessible::Separator);
  return nullptr;
}

void SendState(QObject* control, void (*mark)(QAccessible::State&)) {
  if (!control || !QAccessible::isActive()) return;
  QAccessible::State changed;
  mark(changed);
  QAccessibleStateChangeEvent event(control, changed);
  QAccessible::updateAccessibility(&event);
}

}  // namespace

namespace accessible {

void InstallControls() { QAccessible::installFactory(ControlsFactory); }

void NotifyChecked(QObject* control) {
  SendState(control, [](QAccessible::State& s) { s.checked = true; });
}

void NotifyPressed(QObject* control) {
  SendState(control, [](QAccessible::State& s) { s.pressed = true; });
}

void NotifyValue(QObject* control, const QVariant& value) {
  if (!control || !QAccessible::isActive()) return;
  QAccessibleValueChangeEvent event(control, value);
  QAccessible::updateAccessibility(&event);
}

void NotifyNameChanged(QObject* control) {
  if (!control || !QAccessible::isActive()) return;
  QAccessibleEvent event(control, QAccessible::NameChanged);
  QAccessible::updateAccessibility(&event);
}

}  // namespace accessible

// Installed as the application object starts, before any window is made.
static void InstallAccessibleControls() { accessible::InstallControls(); }
Q_COREAPP_STARTUP_FUNCTION(InstallAccessibleControls)
