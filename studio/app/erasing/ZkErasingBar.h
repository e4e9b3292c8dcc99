#pragma once

#include <QPair>
#include <QString>
#include <QVector>
#include <QWidget>

class QLabel;
class QPushButton;
class QShortcut;

namespace zk::app {

// The bar over an AI erasing workspace: whose it is, what was saved to be erased later, and how to leave.
// Decides nothing.
class ErasingBar : public QWidget
{
    Q_OBJECT

public:
    explicit ErasingBar(QWidget *parent = nullptr);

    // Keys and what they do, translated.
    static QVector<QPair<QString, QString>> shortcuts();

    void setTitle(const QString &clipName);
    // Without one there is nothing about them.
    void setSavedSelections(int count);
    // While not, only Close can be clicked.
    void setIdle(bool isIdle);
    void setClosable(bool isClosable);

Q_SIGNALS:
    void eraseClicked();
    void discardClicked();
    void closeClicked();

protected:
    void changeEvent(QEvent *event) override;

private:
    QPushButton *addButton(const QString &name);
    void retranslate();

    int m_savedCount = 0;
    QLabel *m_title;
    QWidget *m_saved;
    QLabel *m_savedText;
    QPushButton *m_erase = nullptr;
    QPushButton *m_discard = nullptr;
    QPushButton *m_close = nullptr;
};

} // namespace zk::app
