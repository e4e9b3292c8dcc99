#include "ZkLoginDialog.h"

#include "ZkAccount.h"
#include "ZkWidgets.h"

#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace zk::app {

namespace {

constexpr int contentWidth = 360; // widget pixels
constexpr int longestName = 64; // characters

} // namespace

LoginDialog::LoginDialog(QWidget *parent)
    : ZkFramelessDialog(parent)
{
    setObjectName(QStringLiteral("LoginDialog"));
    setTitle(tr("Log In"));
    auto *const content = new QWidget;
    content->setFixedWidth(contentWidth);
    auto *const text = new QLabel(
        tr("Erasing objects needs an account. It is kept on this computer and has no password."),
        content);
    text->setWordWrap(true);
    m_name = new QLineEdit(content);
    m_name->setObjectName(QStringLiteral("LoginDialog_Name"));
    m_name->setMaxLength(longestName);
    m_name->setPlaceholderText(tr("Your name"));
    m_name->setAccessibleName(m_name->placeholderText());
    auto *const column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(12);
    column->addWidget(text);
    column->addWidget(m_name);
    setContentWidget(content);
    ZkPushButton *const cancel = addPushButton(tr("Cancel"));
    m_logIn = addPushButton(tr("Log In"), ZkPushButton::PrimaryType);
    m_logIn->setObjectName(QStringLiteral("LoginDialog_LogIn"));
    m_logIn->setDefault(true);
    m_logIn->setEnabled(false);
    connect(m_name, &QLineEdit::textChanged, this, [this](const QString &name) {
        m_logIn->setEnabled(!name.trimmed().isEmpty());
    });
    connect(cancel, &QAbstractButton::clicked, this, &QDialog::reject);
    connect(m_logIn, &QAbstractButton::clicked, this, &LoginDialog::logIn);
    m_name->setFocus();
}

void LoginDialog::logIn()
{
    if (ZkAccount::instance()->logIn(m_name->text()))
        accept();
}

} // namespace zk::app
