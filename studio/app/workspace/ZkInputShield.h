#pragma once

#include <QObject>
#include <QPointer>
#include <QVector>
#include <QWidget>

namespace zk::app {

// Keeps input and shortcuts from widgets and what is in them while it is raised. They look as they do
// otherwise: what lasts as long as a stroke would only flicker if they were disabled.
class InputShield : public QObject
{
    Q_OBJECT

public:
    // The widgets are not owned; one that dies is forgotten.
    explicit InputShield(const QVector<QWidget *> &widgets, QObject *parent);

    // Initially not raised.
    void setRaised(bool raised);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool covers(const QObject *object) const;

    QVector<QPointer<QWidget>> m_widgets;
    bool m_isRaised = false;
};

} // namespace zk::app
