// A number by slider and by typing.
#pragma once

#include "ZkBasicWidgets.h"

#include <memory>

class QDoubleSpinBox;

// A slider beside a spin box that show one value. The user changes it by dragging, clicking or keys on
// the slider, and by typing, keys or the wheel on the spin box.
class ZKWIDGETS_EXPORT ZkSpinBoxSlider : public ZkWidget
{
    Q_OBJECT

public:
    explicit ZkSpinBoxSlider(QWidget *parent = nullptr);
    ~ZkSpinBoxSlider() override;

    double value() const;
    // Clamped to the range and rounded to the decimals. Reports with sigValueChanged alone, and only a
    // change; report false: not at all.
    void setValue(double value, bool report = true);
    // Bounds, inclusive. A value beyond them is clamped and reported with sigValueChanged. Refused when
    // the minimum is above the maximum.
    bool setRange(double minimum, double maximum);
    double minimum() const;
    double maximum() const;
    // Initially 0; the default value itself is not clamped, going back to it is.
    void setDecimals(int decimals);
    void setDefaultValue(double value);
    double defaultValue() const;
    // A change by the user: sigValueChangedBegin, sigValueChanged, sigValueChangedEnd.
    void restoreDefaultValue();
    bool isDefaultValue() const;
    // How the spin box takes the focus; normally Qt::StrongFocus.
    void setSpinBoxFocusPolicy(Qt::FocusPolicy policy);

    QDoubleSpinBox *spinBox() const;
    QSlider *slider() const;
    // What both of them say to a screen reader.
    void setFieldName(const QString &name);

Q_SIGNALS:
    // Around what the user does in one go: a drag of the slider, an edit of the spin box, one key, one
    // step of the wheel. An End follows every Begin.
    void sigValueChangedBegin();
    void sigValueChanged(double value);
    void sigValueChangedEnd();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> d;
};
