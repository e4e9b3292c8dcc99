// What a workspace asks and tells the user.
#pragma once

#include <QCoreApplication>
#include <QMessageBox>
#include <QPointer>
#include <QVector>

#include <functional>

namespace zk::app {

// Questions are opened, not executed: the page must not be taken apart inside of an event loop, and
// what runs goes on meanwhile. One at a time: another one replaces it.
class PageQuestions
{
    Q_DECLARE_TR_FUNCTIONS(zk::app::PageQuestions)

public:
    struct Choice
    {
        QMessageBox::StandardButton button;
        QString text;
    };
    using Answered = std::function<void(QMessageBox::StandardButton)>;

    // The page is not owned and must outlive it.
    PageQuestions(QWidget *page, const QString &title)
        : m_page(page)
        , m_title(title)
    { }

    // The last choice is the default.
    QMessageBox *ask(const QString &text,
                     const QString &details,
                     const QVector<Choice> &choices,
                     const Answered &answered);
    QMessageBox *tell(const QString &text, const QString &details);
    // Nobody hears of the answer.
    void dismiss();
    bool isAsking() const { return m_box; }

private:
    QWidget *const m_page;
    const QString m_title;
    QPointer<QMessageBox> m_box; // the one that is open
};

} // namespace zk::app
