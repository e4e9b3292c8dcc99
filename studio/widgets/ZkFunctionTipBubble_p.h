// Not public: the bubble that a tip is shown in.
#pragma once

#include <QWidget>

// Goes with the first press of the mouse, wherever it is.
class ZkFunctionTipBubble : public QWidget
{
    Q_OBJECT

public:
    // Lies in the window of the widget that it belongs to, and goes with either.
    ZkFunctionTipBubble(int tip, const QString &text, QWidget *owner);
    ~ZkFunctionTipBubble() override;

    int tip() const { return m_tip; }
    // Below that point, with the arrow on it.
    void pointAt(const QPoint &globalPosition);
    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int m_tip;
    int m_arrow = 0; // from the left
};
