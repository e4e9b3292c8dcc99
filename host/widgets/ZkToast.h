// A short notice.
#pragma once

#include "../ZkGlobal.h"

#include <QPixmap>
#include <QString>
#include <QWidget>

// A notice that fades by itself. It deletes itself when it has been shown.
class ZKWIDGETS_EXPORT ZkToast : public QWidget
{
    Q_OBJECT

public:
    // Parent null: the notice stands on the primary screen. The toast is centred horizontally,
    // topMargin pixels below the parent's top edge, until it is moved. Ownership stays with the toast.
    static ZkToast *
    creatToast(const QString &text, QWidget *parent, const QPixmap &icon, int topMargin);

    QString text() const;
    QPixmap icon() const;
    // Shows it for 3000 ms.
    void showToast();

private:
    ZkToast(const QString &text, QWidget *parent, const QPixmap &icon, int topMargin);
    void placeAtTop();

    QString m_text;
    QPixmap m_icon;
    int m_topMargin;
};
