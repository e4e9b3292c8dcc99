#include "ZkPageQuestions.h"

#include "ZkWidgets.h"

#include <QPushButton>

namespace zk::app {

namespace {

constexpr int signSide = 24; // widget pixels

// One of the skin's, as the platform's own do not go with it.
void setSign(QMessageBox *box, const QString &name)
{
    box->setIconPixmap(ZkSkinManager::instance()->icon(name).pixmap(signSide, signSide));
}

} // namespace

QMessageBox *PageQuestions::ask(const QString &text,
                                const QString &details,
                                const QVector<Choice> &choices,
                                const Answered &answered)
{
    dismiss();
    auto *const box = new QMessageBox(QMessageBox::NoIcon, m_title, text, {}, m_page);
    box->setTextFormat(Qt::PlainText); // names of files are no markup
    box->setInformativeText(details);
    setSign(box, QStringLiteral("info"));
    for (const Choice &choice : choices)
        box->addButton(choice.button)->setText(choice.text);
    box->setDefaultButton(choices.last().button);
    box->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(box, &QDialog::finished, m_page, [answered, box] {
        answered(box->standardButton(box->clickedButton()));
    });
    m_box = box;
    box->open();
    return box;
}

void PageQuestions::dismiss()
{
    if (!m_box)
        return;
    m_box->disconnect(m_page);
    m_box->close();
    m_box.clear();
}

QMessageBox *PageQuestions::tell(const QString &text, const QString &details)
{
    const auto nothing = [](QMessageBox::StandardButton) {};
    QMessageBox *const box = ask(text, details, {{QMessageBox::Ok, tr("OK")}}, nothing);
    setSign(box, QStringLiteral("warning"));
    return box;
}

} // namespace zk::app
